// The event channel: one thread that keeps a connection to the daemon, writes request texts, matches each event against
// the table of waiting entries and ends what waits too long.
#pragma once

#include <json/json.h>

#include <atomic>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/thread.h"
#include "platform/waker.h"
#include "sdk/link/entry_table.h"
#include "sdk/link/handshake.h"
#include "sdk/link/json.h"
#include "sdk/link/websocket_client.h"

namespace zephlinksdk {

/// Owns the thread, the connection, the table and the queue of texts. Handlers run on the channel thread. Lock order:
/// `linkMutex`, then the table's or `sendMutex`. No lock but `linkMutex` is held while a handler runs.
class WebsocketImpl {
 public:
  using ExpectedEvent = zephlinksdk::ExpectedEvent;
  using EventDescription = zephlinksdk::EventDescription;
  using Handler = EventDescription::Handler;

  static constexpr std::uint64_t kDefaultTimeoutMs = EventDescription::kDefaultTimeoutMs;

  /// The event under which the channel itself reports a time-out, or that memory has run out.
  static constexpr const char* kSdkError = "sdk_error";

  struct wsWrapperOptions {
    /// A callback was given: the call does not wait.
    bool async = false;
    /// The entry stays for later reports as long as its callback returns true.
    bool subscription = false;
    /// The name under which the daemon refuses the setting that the call changes; empty for any other call.
    std::string settingName = {};
  };

  /// Starts the sockets layer and the thread, which begins to connect at once. Throws `std::system_error` when the
  /// system gives no thread. Where the sockets layer does not start the object exists without a thread.
  WebsocketImpl(const char* daemonAddress, std::uint16_t daemonPort);

  /// Ends the thread after a last write of the queue, within 100 ms unless a handler runs. Pending entries are
  /// destroyed without calling their handlers.
  ~WebsocketImpl();
  WebsocketImpl(const WebsocketImpl&) = delete;
  WebsocketImpl& operator=(const WebsocketImpl&) = delete;

  /// Does the last work of the thread in the caller's place, for a process that ends right after: sends what is queued
  /// and handles what has arrived. Unless a handler runs it takes 100 ms at most, or half a second if a request waits
  /// for a connection that is being opened. Do not use the object afterwards, and do not destroy it.
  void finish();

  /// Queues the first text, which may be lost: the end of an object does not wait longer to send it.
  void announce(const char* event, const Json::Value& members);

  /// Queues a request that no report answers. Any thread.
  void send(const char* event, const Json::Value& members = {});

  static void addRequest(EventDescription& description, const char* event, const Json::Value& members = {});
  static void addExpectedEvent(EventDescription& description, const char* event);
  static void addExpectedEvent(EventDescription& description, const char* event, const Json::Value& filter);
  static void addListenEvent(EventDescription& description, const char* event);

  /// An id for an entry, counted from 0 in the whole process. Any thread.
  static std::uint64_t takeId();

  /// Puts the entry into the table, then queues its requests, so that no answer can overtake it. Any thread, also from
  /// a handler; does not wait for handlers. Throws std::bad_alloc, and then neither the entry nor a request is added.
  void addEventDescription(std::uint64_t id, EventDescription description, Handler handler);

  /// Removes the entry from the table; an unknown id does nothing. Waits for the entry's handler to end, unless the
  /// caller is a channel thread, of this object or of another.
  void removeEventDescription(std::uint64_t id);

  /// Whether the caller is a channel thread, where waiting for an answer would wait for ever.
  static bool onChannelThread();

  /// When the last request was queued, in monotonic milliseconds. Any thread.
  std::uint64_t lastQueuedMs() const { return lastQueued.load(); }

 private:
  class Delivery;
  using Texts = std::list<WipedText>;

  void run();
  void serve(std::unique_lock<std::mutex>& lock);
  void wait(std::unique_lock<std::mutex>& lock);
  void exchange();
  void connect();
  void pause();
  void queue(Texts& texts);
  bool anyQueued();
  bool anyRequestQueued();
  void flushQueue();
  void dispatch();
  void onMessage(const std::string& message);
  void scanTimeouts();
  void recoverFromNoMemory();
  void exchangeOnceMore(std::uint64_t patienceMs);

  std::string address;
  std::uint16_t port;
  // Guards what belongs to the link: the handshake, the socket and the parser. The thread releases it only to wait.
  std::mutex linkMutex;
  std::unique_ptr<Handshake> handshake;
  std::unique_ptr<WebSocketClient> socket;
  std::optional<JsonParser> parser;
  // Monotonic milliseconds until which no connection is tried; 0 before the first try.
  std::uint64_t pausedUntil = 0;
  std::atomic<bool> ending{false};
  // Whether finish() has done the last work.
  bool finished = false;
  // Whether a newly queued text must wake the thread.
  std::atomic<bool> sleeping{false};
  EntryTable entries;
  Texts sendQueue;
  bool announcementQueued = false;
  std::mutex sendMutex;
  std::atomic<std::uint64_t> lastQueued{0};
  std::optional<Waker> waker;
  Thread thread;
};

}  // namespace zephlinksdk
