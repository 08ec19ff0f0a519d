#include "sdk/link/websocket_impl.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/clock.h"
#include "platform/socket.h"
#include "platform/wipe.h"
#include "sdk/errors.h"
#include "sdk/link/json_writer.h"

namespace zephlinksdk {

namespace {

constexpr const char* kOrigin = "easywsclient://";
constexpr const char* kSource = "zephlink_sdk";
constexpr int kPollMs = 100;
constexpr std::uint64_t kPauseMs = 250;
// How long the destructor (or, at the end of the process, finish()) waits for a handshake under way and for the last
// bytes to be sent.
constexpr std::uint64_t kLastMs = 80;
constexpr std::uint64_t kLastMsOfProcess = 500;

thread_local bool isChannelThread = false;

std::atomic<std::uint64_t> nextId{0};

/// Returns the text of a request: `[event, members, source]` and a line feed.
WipedText envelope(const char* event, const Json::Value& members) {
  WipedText text;
  (text += "[\"").append(event) += "\",";
  appendJson(text, members);
  (text += ",\"").append(kSource) += "\"]\n";
  return text;
}

/// Returns the event's name without parsing: the text between the bracket's quote and the next quote.
std::optional<std::string_view> eventName(std::string_view message) {
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

/// Calls the handler of an entry with an error of the channel and cancels its time-out.
bool reportError(EventDescription& entry, const Json::Value& error) {
  const bool done = entry.handler(WebsocketImpl::kSdkError, WebsocketImpl::kSdkError, error);
  entry.sentAt = 0;
  entry.delivered = true;
  return done;
}

/// Reports an error without members, which reads as ZephlinkSDK_Error_Sdk. Allocates no memory.
bool reportNoMemory(EventDescription& entry) { return reportError(entry, Json::Value()); }

}  // namespace

/// The delivery of one message to the entries of the table: parsed at most once, when first required. Throws
/// std::bad_alloc before it calls a handler.
class WebsocketImpl::Delivery {
 public:
  Delivery(JsonParser& jsonParser, std::string_view name, const std::string& text)
      : parser(jsonParser), event(name), message(text) {}

  /// Returns true to remove the entry.
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
    if (parsed) return;
    std::string errors;
    const bool whole = parser.parse(message, root, errors);
    parsed = true;
    if (whole) return;
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
  if (thread.start([](void* self) { static_cast<WebsocketImpl*>(self)->run(); }, this)) return;
  stopSockets();
  throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
}

WebsocketImpl::~WebsocketImpl() {
  if (!thread.started()) return;
  ending = true;
  waker->wake();
  thread.join();
  // Closes without a close frame.
  if (socket) socket->abandon();
  socket.reset();
  handshake.reset();
  waker.reset();
  stopSockets();
}

void WebsocketImpl::finish() {
  if (!thread.started()) return;
  ending = true;
  {
    const std::lock_guard lock(linkMutex);
    finished = true;
    exchangeOnceMore(anyRequestQueued() ? kLastMsOfProcess : kLastMs);
  }
  thread.detach();
}

bool WebsocketImpl::onChannelThread() { return isChannelThread; }

void WebsocketImpl::send(const char* event, const Json::Value& members) {
  Texts text;
  text.push_back(envelope(event, members));
  queue(text);
}

void WebsocketImpl::announce(const char* event, const Json::Value& members) {
  {
    const std::lock_guard lock(sendMutex);
    announcementQueued = true;
  }
  send(event, members);
}

/// Takes the texts. Does not throw.
void WebsocketImpl::queue(Texts& texts) {
  lastQueued = monotonicMs();
  {
    const std::lock_guard lock(sendMutex);
    sendQueue.splice(sendQueue.end(), texts);
  }
  if (sleeping.exchange(false)) waker->wake();
}

bool WebsocketImpl::anyQueued() {
  const std::lock_guard lock(sendMutex);
  return !sendQueue.empty();
}

bool WebsocketImpl::anyRequestQueued() {
  const std::lock_guard lock(sendMutex);
  return sendQueue.size() > (announcementQueued ? 1U : 0U);
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
  Texts texts(std::make_move_iterator(entry->requests.begin()), std::make_move_iterator(entry->requests.end()));
  entry->handler = std::move(handler);
  entry->sentAt = monotonicMs();
  entries.add(id, std::move(entry));
  queue(texts);
}

void WebsocketImpl::removeEventDescription(std::uint64_t id) { entries.remove(id, !isChannelThread); }

void WebsocketImpl::run() {
  isChannelThread = true;
  std::unique_lock lock(linkMutex);
  while (!ending) {
    try {
      serve(lock);
    } catch (const std::exception&) {
      recoverFromNoMemory();
    }
  }
  if (!finished) exchangeOnceMore(kLastMs);
}

/// One round of the thread: waits for an event and handles it.
void WebsocketImpl::serve(std::unique_lock<std::mutex>& lock) {
  if (socket && socket->getReadyState() == WebSocketClient::CLOSING) {
    // After a close frame the client does not reconnect; time-outs still run.
    lock.unlock();
    std::this_thread::yield();
    lock.lock();
    if (!ending) scanTimeouts();
    return;
  }
  if (socket && socket->getReadyState() == WebSocketClient::CLOSED) {
    socket.reset();
    pause();
  }
  exchange();
  wait(lock);
  if (ending) return;
  dispatch();
  scanTimeouts();
}

/// Performs the work that requires no waiting: a step of connecting, or sending queued texts.
void WebsocketImpl::exchange() {
  if (!socket) connect();
  if (!socket) return;
  flushQueue();
  socket->flush();
}

void WebsocketImpl::connect() {
  if (!handshake) {
    if (monotonicMs() < pausedUntil) return;
    handshake = std::make_unique<Handshake>("ws://" + address + ":" + std::to_string(port) + "/", kOrigin, &*waker);
  }
  const Handshake::State state = handshake->advance();
  if (state == Handshake::State::kUnderWay) return;
  if (state == Handshake::State::kDone) {
    socket = WebSocketClient::fromHandshake(*handshake);
    socket->wakeBy(&*waker);
  } else {
    pause();
  }
  handshake.reset();
}

void WebsocketImpl::pause() { pausedUntil = monotonicMs() + kPauseMs; }

/// Unlocks and waits for the next event of the link. Waits for queued texts only if the link is open.
void WebsocketImpl::wait(std::unique_lock<std::mutex>& lock) {
  SocketHandle handle = kNoSocket;
  bool forWriting = false;
  int limit = kPollMs;
  if (socket) {
    if (!parser) parser.emplace();
    handle = socket->handle();
    forWriting = socket->hasUnsent();
    sleeping = true;
    if (anyQueued()) limit = 0;
  } else if (handshake) {
    handle = handshake->handle();
    forWriting = handshake->wantsToWrite();
  } else {
    const std::uint64_t now = monotonicMs();
    limit = static_cast<int>(std::min<std::uint64_t>(kPollMs, pausedUntil > now ? pausedUntil - now : 0));
  }
  if (ending) limit = 0;
  lock.unlock();
  waitForSocket(handle, forWriting, &*waker, limit);
  sleeping = false;
  lock.lock();
}

/// Reads what has arrived and delivers it.
void WebsocketImpl::dispatch() {
  if (!socket) return;
  if (!parser) parser.emplace();
  socket->poll(0);
  socket->dispatch([this](const std::string& message) { onMessage(message); });
}

void WebsocketImpl::flushQueue() {
  const std::lock_guard lock(sendMutex);
  while (!sendQueue.empty()) {
    socket->sendText(sendQueue.front());
    sendQueue.pop_front();
    announcementQueued = false;
  }
}

/// The last round of an object: finishes a handshake under way, sends queued texts and handles what has arrived. Starts
/// no new connection.
void WebsocketImpl::exchangeOnceMore(std::uint64_t patienceMs) {
  const bool wasChannelThread = std::exchange(isChannelThread, true);
  try {
    const std::uint64_t end = monotonicMs() + patienceMs;
    const auto timeLeft = [end] {
      const std::uint64_t now = monotonicMs();
      return static_cast<int>(end > now ? end - now : 0);
    };
    if (socket || handshake || pausedUntil == 0) exchange();
    while (handshake && timeLeft() > 0) {
      handshake->wait(timeLeft());
      exchange();
    }
    if (socket && socket->getReadyState() == WebSocketClient::OPEN) {
      socket->wakeBy(nullptr);
      dispatch();
      flushQueue();
      socket->flush();
      while (socket->hasUnsent() && socket->getReadyState() == WebSocketClient::OPEN && timeLeft() > 0) {
        socket->poll(timeLeft());
      }
    }
  } catch (const std::exception&) {
    // Out of memory: nothing more can be sent.
  }
  isChannelThread = wasChannelThread;
}

void WebsocketImpl::scanTimeouts() {
  const bool connected = socket && socket->getReadyState() != WebSocketClient::CLOSED;
  entries.forEachOverdue(monotonicMs(), [connected](EventDescription& entry) {
    try {
      Json::Value error(Json::objectValue);
      error["msg"] = connected ? "Timeout" : "Unable to connect";
      error["type"] = static_cast<Json::UInt>(connected ? ZephlinkSDK_Error_Timeout : ZephlinkSDK_Error_NotConnected);
      return reportError(entry, error);
    } catch (const std::exception&) {
      return reportNoMemory(entry);
    }
  });
}

void WebsocketImpl::onMessage(const std::string& message) {
  const auto event = eventName(message);
  if (!event) return;
  std::optional<Delivery> delivery;
  entries.forEachOfEvent(*event, [&](EventDescription& entry) {
    try {
      if (!delivery) delivery.emplace(*parser, *event, message);
      return delivery->to(entry);
    } catch (const std::exception&) {
      // An unreadable report must not look like a report without members.
      return reportNoMemory(entry);
    }
  });
}

/// Closes the link, whose buffers may be incomplete, and fails all waiting calls.
void WebsocketImpl::recoverFromNoMemory() {
  handshake.reset();
  if (socket) socket->abandon();
  pause();
  entries.forEachPending(reportNoMemory);
}

}  // namespace zephlinksdk
