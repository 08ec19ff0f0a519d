// The dispatcher with a table of waiting entries, over a real connection. Lines of the input that begin with "x" or "l"
// add an entry that expects or listens; all others are messages:
//
//   x<flags><event> [filter]      flags is one character, of whose code the low bits count (see Flag)
//   l<flags><event>
//
// Whatever comes, each entry gets what a plain model of the table gives it, in the order of the entries, and the
// channel goes on.
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <map>
#include <mutex>
#include <utility>

#include "fuzz/check.h"
#include "fuzz/loopback_daemon.h"
#include "sdk/link/websocket_impl.h"

namespace {

using zephlinksdk::WebsocketImpl;
using Lines = std::vector<std::string>;

constexpr std::size_t kLargestInput = 16384;
constexpr const char* kEnd = "fuzz_end";
// Of entries that entries add: a message could otherwise keep the table growing.
constexpr std::size_t kMostAdded = 64;

enum Flag : unsigned {
  kDone = 1,         // the handler wants no more
  kRemovesSelf = 2,  // the handler takes its own entry out
  kRemovesNext = 4,  // and the one that came behind it
  kAddsCopy = 8,     // the handler adds an entry like its own, done at once
  kRawOnly = 16,
};

struct Plan {
  bool listens = false;
  unsigned flags = 0;
  std::string event;
  Json::Value filter;
};

/// One call of a handler: which entry, in the order in which all were added, and with what.
struct Delivery {
  std::size_t entry;
  std::string event;
  std::string message;

  bool operator==(const Delivery&) const = default;
};

std::string textOf(const std::vector<Delivery>& log) {
  std::string text;
  for (const Delivery& each : log) text += std::to_string(each.entry) + " " + each.event + " " + each.message + "\n";
  return text;
}

Json::Value parse(std::string_view text) {
  Json::Value value;
  std::string errors;
  zephlinksdk::JsonParser().parse(text, value, errors);
  return value;
}

Plan planOf(const std::string& line) {
  Plan plan;
  plan.listens = line[0] == 'l';
  plan.flags = static_cast<std::uint8_t>(line[1]) & 31U;
  const std::size_t blank = plan.listens ? std::string::npos : line.find(' ');
  plan.event = line.substr(2, blank - 2);
  if (blank != std::string::npos) plan.filter = parse(std::string_view(line).substr(blank));
  return plan;
}

bool isPlan(const std::string& line) { return line.size() >= 2 && (line[0] == 'x' || line[0] == 'l'); }

// ---- The model ----

/// The table, as simply as it can be told.
class Model {
 public:
  void add(const Plan& plan) { entries.emplace(added++, plan); }

  void receive(const std::string& message) {
    if (message.size() <= 4 || !message.starts_with("[\"")) return;
    const std::size_t end = message.find('"', 2);
    if (end == std::string::npos) return;
    const std::string event = message.substr(2, end - 2);
    const Json::Value root = parse(message);
    const std::size_t count = added;
    for (std::size_t id = 0; id < count; ++id) {
      const auto found = entries.find(id);
      if (found == entries.end() || found->second.event != event) continue;
      const Plan plan = found->second;
      if (!plan.listens && !passes(plan.filter, root)) continue;
      log.push_back({id, event, message});
      if ((plan.flags & kAddsCopy) != 0 && added < kMostAdded) add({plan.listens, kDone, plan.event, plan.filter});
      if ((plan.flags & kRemovesNext) != 0) entries.erase(id + 1);
      if ((plan.flags & (kRemovesSelf | kDone)) != 0) entries.erase(id);
    }
  }

  std::vector<Delivery> log;

 private:
  static bool passes(const Json::Value& filter, const Json::Value& root) {
    if (!filter.isObject()) return true;
    const bool hasData = root.isArray() && root.size() > 1 && root[1].isObject();
    for (const std::string& name : filter.getMemberNames()) {
      if (!hasData || !root[1].isMember(name)) return false;
      if (!filter[name].isNull() && filter[name] != root[1][name]) return false;
    }
    return true;
  }

  std::map<std::size_t, Plan> entries;
  std::size_t added = 0;
};

// ---- The real thing ----

class Table {
 public:
  explicit Table(WebsocketImpl& to) : channel(to) {}
  ~Table() {
    for (const auto& [entry, id] : ids) channel.removeEventDescription(id);
  }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  void add(const Plan& plan) {
    WebsocketImpl::EventDescription description;
    description.timeoutMs = 0;
    description.rawOnly = (plan.flags & kRawOnly) != 0;
    if (plan.listens) {
      WebsocketImpl::addListenEvent(description, plan.event.c_str());
    } else if (plan.filter.isNull()) {
      WebsocketImpl::addExpectedEvent(description, plan.event.c_str());
    } else {
      WebsocketImpl::addExpectedEvent(description, plan.event.c_str(), plan.filter);
    }
    const std::size_t entry = added++;
    ids[entry] = WebsocketImpl::takeId();
    channel.addEventDescription(
        ids[entry], std::move(description),
        [this, entry, plan](const std::string& event, const std::string& message, const Json::Value&) {
          return deliver(entry, plan, event, message);
        });
  }

  /// Only once the channel has seen the end.
  const std::vector<Delivery>& deliveries() const { return log; }

 private:
  bool deliver(std::size_t entry, const Plan& plan, const std::string& event, const std::string& message) {
    log.push_back({entry, event, message});
    if ((plan.flags & kAddsCopy) != 0 && added < kMostAdded) add({plan.listens, kDone, plan.event, plan.filter});
    if ((plan.flags & kRemovesNext) != 0) remove(entry + 1);
    if ((plan.flags & kRemovesSelf) != 0) remove(entry);
    return (plan.flags & kDone) != 0;
  }

  void remove(std::size_t entry) {
    if (ids.contains(entry)) channel.removeEventDescription(ids[entry]);
  }

  WebsocketImpl& channel;
  // Of the channel thread while messages come, of the target's before and behind that.
  std::map<std::size_t, std::uint64_t> ids;
  std::size_t added = 0;
  std::vector<Delivery> log;
};

/// Opened by the channel thread when the last message has gone through the table.
class Gate {
 public:
  void open() {
    const std::lock_guard lock(mutex);
    isOpen = true;
    changed.notify_one();
  }

  void pass() {
    std::unique_lock lock(mutex);
    const bool opened = changed.wait_for(lock, std::chrono::seconds(20), [this] { return isOpen; });
    fuzz::check(opened, "the channel goes on whatever came");
    isOpen = false;
  }

 private:
  std::mutex mutex;
  std::condition_variable changed;
  bool isOpen = false;
};

struct Link {
  fuzz::LoopbackDaemon daemon;
  WebsocketImpl channel{"127.0.0.1", daemon.port()};
  Gate end;

  Link() {
    daemon.accept();
    WebsocketImpl::EventDescription description;
    WebsocketImpl::addListenEvent(description, kEnd);
    channel.addEventDescription(WebsocketImpl::takeId(), std::move(description),
                                [this](const std::string&, const std::string&, const Json::Value&) {
                                  end.open();
                                  return false;
                                });
  }

  void play(const Lines& messages) {
    for (const std::string& message : messages) daemon.send(message);
    daemon.send(std::string("[\"") + kEnd + "\",{}]");
    daemon.flush();
    end.pass();
  }
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Broken messages are told one by one.
  stderr = std::fopen("/dev/null", "w");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Link link;
  const std::string_view input = fuzz::textOf(data, size);
  if (size > kLargestInput || input.find(kEnd) != std::string_view::npos) return 0;
  // An event's name is a C string where entries are described.
  if (input.find('\0') != std::string_view::npos) return 0;

  Model model;
  Table table(link.channel);
  Lines messages;
  for (const std::string& line : fuzz::linesOf(input)) {
    if (isPlan(line)) {
      const Plan plan = planOf(line);
      model.add(plan);
      table.add(plan);
    } else {
      messages.push_back(line);
    }
  }
  for (const std::string& message : messages) model.receive(message);
  link.play(messages);
  fuzz::check(table.deliveries() == model.log, "entries get what the model gives them",
              "expected:\n" + textOf(model.log) + "delivered:\n" + textOf(table.deliveries()));
  return 0;
}
