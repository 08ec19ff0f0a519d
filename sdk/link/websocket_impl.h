// The event channel: one thread that keeps a connection to the daemon, writes requests, delivers each event to the
// waiting entries and handles time-outs.
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
/// `linkMutex`, then the table's mutex or `sendMutex`. While a handler runs, only `linkMutex` of these is locked.
class WebsocketImpl {
 public:
  using ExpectedEvent = zephlinksdk::ExpectedEvent;
  using EventDescription = zephlinksdk::EventDescription;
  using Handler = EventDescription::Handler;

  static constexpr std::uint64_t kDefaultTimeoutMs = EventDescription::kDefaultTimeoutMs;

  /// The event that the channel itself delivers for a time-out and when out of memory.
  static constexpr const char* kSdkError = "sdk_error";

  struct wsWrapperOptions {
    /// The call has a callback and does not wait.
    bool async = false;
    /// The entry remains for later reports while its callback returns true.
    bool subscription = false;
    /// The name under which the daemon refuses the setting that the call changes; empty for other calls.
    std::string settingName = {};
  };

  /// Starts the sockets layer and the thread, which connects at once. Throws `std::system_error` if the system cannot
  /// start a thread. If the sockets layer does not start, the object has no thread.
  WebsocketImpl(const char* daemonAddress, std::uint16_t daemonPort);

  /// Writes the queue a last time and ends the thread, within 100 ms unless a handler runs. Pending entries are
  /// destroyed without calling their handlers.
  ~WebsocketImpl();
  WebsocketImpl(const WebsocketImpl&) = delete;
  WebsocketImpl& operator=(const WebsocketImpl&) = delete;

  /// Performs the thread's remaining work in the caller's thread, for a process that exits right afterwards: sends
  /// queued texts and handles what has arrived. Takes at most 100 ms unless a handler runs, or half a second if a
  /// request waits for a connection that is being opened. REQUIRES: the object is neither used nor destroyed
  /// afterwards.
  void finish();

  /// Queues the first text. It may be lost: the destructor does not wait longer to send it.
  void announce(const char* event, const Json::Value& members);

  /// Queues a request that the daemon does not answer. Thread-safe.
  void send(const char* event, const Json::Value& members = {});

  static void addRequest(EventDescription& description, const char* event, const Json::Value& members = {});
  static void addExpectedEvent(EventDescription& description, const char* event);
  static void addExpectedEvent(EventDescription& description, const char* event, const Json::Value& filter);
  static void addListenEvent(EventDescription& description, const char* event);

  /// Returns an id for an entry, counted from 0 across the process. Thread-safe.
  static std::uint64_t takeId();

  /// Adds the entry to the table, then queues its requests, so that no answer can arrive before the entry exists.
  /// Thread-safe, also from a handler; does not wait for handlers. If it throws std::bad_alloc, neither the entry nor a
  /// request is added.
  void addEventDescription(std::uint64_t id, EventDescription description, Handler handler);

  /// Removes the entry from the table; ignores an unknown id. Waits for the entry's handler to end, unless the caller
  /// is a channel thread of any object.
  void removeEventDescription(std::uint64_t id);

  /// Returns whether the caller is a channel thread, where waiting for an answer would deadlock.
  static bool onChannelThread();

  /// Returns when the last request was queued, in monotonic milliseconds. Thread-safe.
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
  // Guards the link: the handshake, the socket and the parser. The thread unlocks it only to wait.
  std::mutex linkMutex;
  std::unique_ptr<Handshake> handshake;
  std::unique_ptr<WebSocketClient> socket;
  std::optional<JsonParser> parser;
  // No connection attempt before this time, in monotonic milliseconds; 0 before the first attempt.
  std::uint64_t pausedUntil = 0;
  std::atomic<bool> ending{false};
  // Whether finish() has completed.
  bool finished = false;
  // Whether queueing a text must wake the thread.
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
