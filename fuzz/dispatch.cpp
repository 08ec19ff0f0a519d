// Fuzzes the dispatcher with a table of waiting entries, over a real connection. Lines of the input that start with "x"
// or "l" add an entry that expects or listens; all other lines are messages:
//
//   x<flags><event> [filter]      flags is one character; the low bits of its code are flags (see Flag)
//   l<flags><event>
//
// For any input, each entry receives what a simple model of the table delivers to it, in the order of the entries, and
// the channel keeps working.
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <cstdio>
#include <map>
#include <semaphore>
#include <utility>

#include "fuzz/check.h"
#include "sdk/link/websocket_impl.h"

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using zephlinksdk::WebsocketImpl;
using Lines = std::vector<std::string>;

constexpr std::size_t kLargestInput = 16384;
constexpr const char* kEnd = "fuzz_end";
// The most entries that entries may add: a message could otherwise grow the table forever.
constexpr std::size_t kMostAdded = 64;

enum Flag : unsigned {
  kDone = 1,         // the handler ends its entry
  kRemovesSelf = 2,  // the handler removes its own entry
  kRemovesNext = 4,  // the handler removes the next entry
  kAddsCopy = 8,     // the handler adds an entry like its own that ends with its first event
  kRawOnly = 16,
};

struct Plan {
  bool listens = false;
  unsigned flags = 0;
  std::string event;
  Json::Value filter;

  bool has(Flag flag) const { return (flags & flag) != 0; }
};

bool isPlan(const std::string& line) { return line.size() >= 2 && (line[0] == 'x' || line[0] == 'l'); }

Plan planOf(const std::string& line) {
  Plan plan;
  plan.listens = line[0] == 'l';
  plan.flags = static_cast<std::uint8_t>(line[1]) & 31U;
  const std::size_t blank = plan.listens ? std::string::npos : line.find(' ');
  plan.event = line.substr(2, blank - 2);
  if (blank != std::string::npos) fuzz::parseJson(std::string_view(line).substr(blank), plan.filter);
  return plan;
}

/// The handler of an entry. Entries are numbered in the order in which they were added. Logs the call and changes the
/// table, either the model or the real one.
template <class Table>
void handle(Table& table, std::size_t entry, const Plan& plan, const std::string& event, const std::string& message) {
  table.log += std::to_string(entry) + " " + event + " " + message + "\n";
  if (plan.has(kAddsCopy) && table.added < kMostAdded) table.add({plan.listens, kDone, plan.event, plan.filter});
  if (plan.has(kRemovesNext)) table.remove(entry + 1);
  if (plan.has(kRemovesSelf)) table.remove(entry);
}

/// The simplest model of the table.
struct Model {
  std::map<std::size_t, Plan> entries;
  std::size_t added = 0;
  std::string log;

  void add(const Plan& plan) { entries.emplace(added++, plan); }
  void remove(std::size_t entry) { entries.erase(entry); }

  void receive(const std::string& message) {
    if (message.size() <= 4 || !message.starts_with("[\"")) return;
    const std::size_t end = message.find('"', 2);
    if (end == std::string::npos) return;
    const std::string event = message.substr(2, end - 2);
    Json::Value root;
    fuzz::parseJson(message, root);
    const std::size_t count = added;
    for (std::size_t entry = 0; entry < count; ++entry) {
      const auto found = entries.find(entry);
      if (found == entries.end() || found->second.event != event) continue;
      const Plan plan = found->second;
      if (!plan.listens && !passes(plan.filter, root)) continue;
      handle(*this, entry, plan, event, message);
      if (plan.has(kDone)) remove(entry);
    }
  }

  static bool passes(const Json::Value& filter, const Json::Value& root) {
    if (!filter.isObject()) return true;
    const bool hasData = root.isArray() && root.size() > 1 && root[1].isObject();
    for (const std::string& name : filter.getMemberNames()) {
      if (!hasData || !root[1].isMember(name)) return false;
      if (!filter[name].isNull() && filter[name] != root[1][name]) return false;
    }
    return true;
  }
};

/// The real table. Used on the channel thread while messages arrive, and on the target's thread before and afterwards.
struct Table {
  WebsocketImpl& channel;
  std::map<std::size_t, std::uint64_t> ids = {};
  std::size_t added = 0;
  std::string log = {};

  ~Table() {
    for (const auto& [entry, id] : ids) channel.removeEventDescription(id);
  }

  void add(const Plan& plan) {
    WebsocketImpl::EventDescription description;
    description.timeoutMs = 0;
    description.rawOnly = plan.has(kRawOnly);
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
          handle(*this, entry, plan, event, message);
          return plan.has(kDone);
        });
  }

  void remove(std::size_t entry) {
    if (ids.contains(entry)) channel.removeEventDescription(ids[entry]);
  }
};

/// Returns a text message of less than 64 KiB as a daemon's frame.
std::string frameOf(const std::string& text) {
  std::string head = "\x81";
  if (text.size() < 126) {
    head += static_cast<char>(text.size());
  } else {
    head += {126, static_cast<char>(text.size() >> 8U), static_cast<char>(text.size())};
  }
  return head + text;
}

/// A channel and its daemon, which sends all messages of an input in one write: one write per frame is three times
/// slower.
struct Link {
  asio::io_context context;
  tcp::acceptor acceptor{context, {asio::ip::address_v4::loopback(), 0}};
  tcp::socket daemon{context};
  WebsocketImpl channel{"127.0.0.1", acceptor.local_endpoint().port()};
  /// Released by the channel thread after the last message.
  std::binary_semaphore ended{0};

  Link() {
    acceptor.accept(daemon);
    daemon.set_option(tcp::no_delay(true));
    std::string request;
    asio::read_until(daemon, asio::dynamic_buffer(request), "\r\n\r\n");
    asio::write(daemon, asio::buffer(std::string_view("HTTP/1.1 101 Switching Protocols\r\n\r\n")));
    WebsocketImpl::EventDescription description;
    WebsocketImpl::addListenEvent(description, kEnd);
    channel.addEventDescription(WebsocketImpl::takeId(), std::move(description),
                                [this](const std::string&, const std::string&, const Json::Value&) {
                                  ended.release();
                                  return false;
                                });
  }

  void play(const Lines& messages) {
    std::string bytes;
    for (const std::string& message : messages) bytes += frameOf(message);
    bytes += frameOf(std::string("[\"") + kEnd + "\",{}]");
    asio::write(daemon, asio::buffer(bytes));
    fuzz::check(ended.try_acquire_for(std::chrono::seconds(20)), "the channel keeps working after any input");
  }
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The channel prints a line for each invalid message.
  stderr = std::fopen("/dev/null", "w");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Link link;
  const std::string_view input = fuzz::textOf(data, size);
  if (size > kLargestInput || input.find(kEnd) != std::string_view::npos) return 0;
  // The name of an entry's event is a C string.
  if (input.find('\0') != std::string_view::npos) return 0;

  Model model;
  Table table{link.channel};
  Lines messages;
  for (const std::string& line : fuzz::piecesOf(input)) {
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
  fuzz::check(table.log == model.log, "entries receive what the model delivers",
              "expected:\n" + model.log + "delivered:\n" + table.log);
  return 0;
}
