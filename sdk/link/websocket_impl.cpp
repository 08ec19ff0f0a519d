#include "sdk/link/websocket_impl.h"

#include <chrono>
#include <cstdio>
#include <utility>

#include "sdk/errors.h"
#include "sdk/link/json.h"
#include "sdk/platform/clock.h"
#include "sdk/platform/socket.h"
#include "sdk/platform/wipe.h"

namespace zephlinksdk {

namespace {

constexpr const char* kOrigin = "easywsclient://";
constexpr const char* kSource = "zephlink_sdk";
constexpr int kPollMs = 100;
constexpr std::chrono::milliseconds kPause{250};

thread_local bool isChannelThread = false;

std::atomic<std::uint64_t> nextId{0};

/// A text may hold a password or a token: it does not stay in freed memory.
void forget(std::string& text) { wipe(text.data(), text.size()); }

/// The text of a request: `[event, members, source]` and a line feed.
std::string envelope(const char* event, const Json::Value& members) {
  Json::Value request(Json::arrayValue);
  request[0] = event;
  request[1] = members;
  request[2] = kSource;
  std::string json = compactJson(request);
  std::string text;
  text.reserve(json.size() + 1);
  text.append(json).append("\n");
  forget(json);
  return text;
}

/// The event's name, read without parsing: the text between the bracket's quote and the next one.
std::optional<std::string> eventName(const std::string& message) {
  if (message.size() <= 4 || message[0] != '[' || message[1] != '"') return std::nullopt;
  const std::size_t end = message.find('"', 2);
  if (end == std::string::npos) return std::nullopt;
  return message.substr(2, end - 2);
}

bool passes(const Json::Value& filter, const Json::Value& data) {
  if (!filter.isObject()) return true;
  for (auto wanted = filter.begin(); wanted != filter.end(); ++wanted) {
    const std::string key = wanted.name();
    if (!has(data, key.c_str())) return false;
    if (!wanted->isNull() && *wanted != member(data, key.c_str())) return false;
  }
  return true;
}

}  // namespace

/// One message on its way through the table: parsed at most once, on the first need.
class WebsocketImpl::Delivery {
 public:
  Delivery(JsonParser& jsonParser, std::string name, const std::string& text)
      : parser(jsonParser), event(std::move(name)), message(text) {}

  /// True when the entry is done and goes.
  bool to(EventDescription& entry) {
    bool remove = false;
    for (const std::string& name : entry.listenEvents) {
      if (name == event) remove = deliver(entry) || remove;
    }
    for (const ExpectedEvent& expected : entry.expectedEvents) {
      if (expected.event != event || !matches(expected)) continue;
      remove = deliver(entry) || remove;
      break;
    }
    return remove;
  }

 private:
  bool deliver(EventDescription& entry) {
    if (!entry.rawOnly) parse();
    const bool done = entry.handler(event, message, root);
    if (done || !entry.keepsTimeout) entry.sentAt = 0;
    entry.delivered = true;
    return done;
  }

  bool matches(const ExpectedEvent& expected) {
    if (expected.members.empty()) return true;
    parse();
    for (const Json::Value& filter : expected.members) {
      if (!passes(filter, element(root, 1))) return false;
    }
    return true;
  }

  void parse() {
    if (std::exchange(parsed, true)) return;
    std::string errors;
    if (parser.parse(message, root, errors)) return;
    std::fprintf(stderr, "Failed to parse JSON: %s\n", errors.c_str());
    std::fprintf(stderr, "JSON was: %s\n", message.c_str());
  }

  JsonParser& parser;
  std::string event;
  const std::string& message;
  Json::Value root;
  bool parsed = false;
};

WebsocketImpl::WebsocketImpl(const char* daemonAddress, std::uint16_t daemonPort)
    : address(daemonAddress), port(daemonPort) {
  if (!startSockets()) return;
  waker.emplace();
  running = true;
  thread = std::thread(&WebsocketImpl::run, this);
}

WebsocketImpl::~WebsocketImpl() {
  if (!thread.joinable()) return;
  waiting.fetch_add(1);
  {
    const std::lock_guard lock(lifecycleMutex);
    waiting.fetch_sub(1);
    running = false;
  }
  stopping.notify_all();
  waker->wake();
  thread.join();
  if (socket) socket->close();
  socket.reset();
  waker.reset();
  stopSockets();
  for (std::string& text : sendQueue) forget(text);
}

bool WebsocketImpl::onChannelThread() { return isChannelThread; }

void WebsocketImpl::send(const char* event, const Json::Value& members) {
  std::string text = envelope(event, members);
  {
    const std::lock_guard lock(sendMutex);
    sendQueue.push_back(std::move(text));
  }
  if (waker) waker->wake();
}

void WebsocketImpl::addRequest(EventDescription& description, const char* event, const Json::Value& members) {
  description.requests.push_back(envelope(event, members));
}

void WebsocketImpl::addExpectedEvent(EventDescription& description, const char* event) {
  description.expectedEvents.push_back({event, {}});
}

void WebsocketImpl::addExpectedEvent(EventDescription& description, const char* event, const Json::Value& filter) {
  description.expectedEvents.push_back({event, {filter}});
}

void WebsocketImpl::addListenEvent(EventDescription& description, const char* event) {
  description.listenEvents.emplace_back(event);
}

std::uint64_t WebsocketImpl::takeId() { return nextId.fetch_add(1); }

void WebsocketImpl::addEventDescription(std::uint64_t id, EventDescription description, Handler handler) {
  auto entry = std::make_shared<EventDescription>(std::move(description));
  std::vector<std::string> requests = std::move(entry->requests);
  entry->handler = std::move(handler);
  {
    const auto lock = lockEntries();
    entry->sentAt = monotonicMs();
    entries.emplace(id, std::move(entry));
  }
  {
    const std::lock_guard lock(sendMutex);
    for (std::string& text : requests) sendQueue.push_back(std::move(text));
  }
  if (waker) waker->wake();
}

void WebsocketImpl::removeEventDescription(std::uint64_t id) {
  Entry removed;  // Outlives the lock: an entry's destructor may be a caller's code.
  const auto lock = lockEntries();
  const auto found = entries.find(id);
  if (found == entries.end()) return;
  removed = std::move(found->second);
  entries.erase(found);
}

/// The lock as every thread but the channel's own loop takes it: announced, so that a channel thread that never sleeps
/// steps aside.
std::unique_lock<std::recursive_mutex> WebsocketImpl::lockEntries() {
  waiting.fetch_add(1);
  std::unique_lock lock(entriesMutex);
  waiting.fetch_sub(1);
  return lock;
}

void WebsocketImpl::run() {
  isChannelThread = true;
  do {
    serveSocket();
  } while (scanAndContinue());
}

void WebsocketImpl::serveSocket() {
  if (!socket && !connect()) return pause();
  switch (socket->getReadyState()) {
    case WebSocketClient::OPEN:
      flushQueue();
      socket->poll(kPollMs);
      socket->dispatch([this](const std::string& message) { onMessage(message); });
      break;
    case WebSocketClient::CLOSED:
      socket.reset();
      pause();
      break;
    default:
      // A daemon that has said goodbye is not asked again: the link stays as it is until the process ends, and calls
      // end in their time-outs.
      yieldToOthers();
  }
}

bool WebsocketImpl::connect() {
  const std::string url = "ws://" + address + ":" + std::to_string(port) + "/";
  socket = WebSocketClient::fromUrl(url, kOrigin);
  if (socket) socket->wakeBy(&*waker);
  return socket != nullptr;
}

void WebsocketImpl::flushQueue() {
  const std::lock_guard lock(sendMutex);
  while (!sendQueue.empty()) {
    socket->sendText(sendQueue.front());
    forget(sendQueue.front());
    sendQueue.pop_front();
  }
}

void WebsocketImpl::pause() {
  std::unique_lock lock(lifecycleMutex);
  stopping.wait_for(lock, kPause, [this] { return !running; });
}

void WebsocketImpl::yieldToOthers() const {
  do {
    std::this_thread::yield();
  } while (waiting.load() > 0);
}

/// The end of a round: time-outs, and whether another round follows. The last one writes what was queued just before.
bool WebsocketImpl::scanAndContinue() {
  const std::lock_guard entriesLock(entriesMutex);
  scanTimeouts();
  const std::lock_guard lifecycleLock(lifecycleMutex);
  if (running) return true;
  if (socket && socket->getReadyState() == WebSocketClient::OPEN) {
    flushQueue();
    socket->wakeBy(nullptr);
    socket->poll(socket->hasUnsent() ? kPollMs : 0);
  }
  return false;
}

/// Visits the entries that stand in the table now, oldest first, and takes out those for which `visit` returns true. A
/// handler may add entries, which are not visited, and remove any.
template <class Visit>
void WebsocketImpl::forEachEntry(Visit visit) {
  if (entries.empty()) return;
  const std::uint64_t last = entries.rbegin()->first;
  for (auto next = entries.begin(); next != entries.end() && next->first <= last;) {
    const std::uint64_t id = next->first;
    const Entry entry = next->second;
    if (visit(*entry)) entries.erase(id);
    next = entries.upper_bound(id);
  }
}

void WebsocketImpl::scanTimeouts() {
  const std::uint64_t now = monotonicMs();
  forEachEntry([this, now](EventDescription& entry) {
    if (entry.timeoutMs == 0 || entry.sentAt == 0 || entry.expectedEvents.empty()) return false;
    // An entry may have come after `now` was taken.
    if (now <= entry.sentAt || now - entry.sentAt <= entry.timeoutMs) return false;
    const bool connected = socket && socket->getReadyState() != WebSocketClient::CLOSED;
    Json::Value error(Json::objectValue);
    error["msg"] = connected ? "Timeout" : "Unable to connect";
    error["type"] = static_cast<Json::UInt>(connected ? ZephlinkSDK_Error_Timeout : ZephlinkSDK_Error_NotConnected);
    const bool done = entry.handler(kSdkError, kSdkError, error);
    entry.sentAt = 0;
    entry.delivered = true;
    return done;
  });
}

void WebsocketImpl::onMessage(const std::string& message) {
  auto event = eventName(message);
  if (!event) return;
  Delivery delivery(parser, std::move(*event), message);
  const std::lock_guard lock(entriesMutex);
  forEachEntry([&delivery](EventDescription& entry) { return delivery.to(entry); });
}

}  // namespace zephlinksdk
