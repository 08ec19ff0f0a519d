// The event channel: one thread that keeps a connection to the daemon, writes request texts, matches each event against
// the table of waiting entries and ends what waits too long.
#pragma once

#include <json/json.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "sdk/link/json.h"
#include "sdk/link/websocket_client.h"
#include "sdk/platform/waker.h"

namespace zephlinksdk {

/// Owns the thread, the connection, the table and the queue of texts. Handlers run on the channel thread with
/// `entriesMutex` held. Lock order: `entriesMutex`, `lifecycleMutex`, `sendMutex`.
class WebsocketImpl {
 public:
  static constexpr std::uint64_t kDefaultTimeoutMs = 5000;

  /// The event under which the channel itself tells an entry of its time-out.
  static constexpr const char* kSdkError = "sdk_error";

  /// Called on the channel thread with the event's name, the whole message and, if some entry asked for it, its parsed
  /// form. True removes the entry.
  using Handler = std::function<bool(const std::string& event, const std::string& message, const Json::Value& root)>;

  /// A report that answers a request: its name and, where not every such report will do, the members that must be
  /// there with an equal value (null: with any value).
  struct ExpectedEvent {
    std::string event;
    std::vector<Json::Value> members;
  };

  /// One waiting entry of the table.
  struct EventDescription {
    /// An entry with none here never times out.
    std::vector<ExpectedEvent> expectedEvents;
    /// Delivered without a filter.
    std::vector<std::string> listenEvents;
    /// Finished texts, sent in order once the entry stands in the table.
    std::vector<std::string> requests;
    Handler handler;
    /// Monotonic milliseconds; 0 when no time-out is pending.
    std::uint64_t sentAt = 0;
    /// Does not ask for the message to be parsed.
    bool rawOnly = false;
    /// 0: never.
    std::uint64_t timeoutMs = kDefaultTimeoutMs;
    bool delivered = false;
    /// An event that the handler refuses leaves the time-out running, where it otherwise ends it.
    bool keepsTimeout = false;
  };

  struct wsWrapperOptions {
    /// A callback was given: the call does not wait.
    bool async = false;
    /// The entry stays for later reports as long as its callback returns true.
    bool subscription = false;
    /// The name under which the daemon refuses the setting that the call changes; empty for any other call.
    std::string settingName = {};
  };

  /// Starts the sockets layer and the thread, which begins to connect at once. Throws `std::system_error` when the
  /// system gives no thread. Where the sockets layer does not start the object stands without a thread.
  WebsocketImpl(const char* daemonAddress, std::uint16_t daemonPort);

  /// Ends the thread after a last write of the queue. Entries still waiting go without a call.
  ~WebsocketImpl();
  WebsocketImpl(const WebsocketImpl&) = delete;
  WebsocketImpl& operator=(const WebsocketImpl&) = delete;

  /// Queues a request that no report answers. Any thread.
  void send(const char* event, const Json::Value& members = {});

  static void addRequest(EventDescription& description, const char* event, const Json::Value& members = {});
  static void addExpectedEvent(EventDescription& description, const char* event);
  static void addExpectedEvent(EventDescription& description, const char* event, const Json::Value& filter);
  static void addListenEvent(EventDescription& description, const char* event);

  /// An id for an entry, counted from 0 in the whole process. Any thread.
  static std::uint64_t takeId();

  /// Puts the entry into the table, then queues its requests, so that no answer can overtake it. Any thread, also from
  /// a handler.
  void addEventDescription(std::uint64_t id, EventDescription description, Handler handler);

  /// Takes the entry out of the table; an unknown id does nothing. Once it returns on another thread than the channel's
  /// the entry's handler no longer runs.
  void removeEventDescription(std::uint64_t id);

  /// Whether the caller is a channel thread, where waiting for an answer would wait for ever.
  static bool onChannelThread();

 private:
  class Delivery;
  using Entry = std::shared_ptr<EventDescription>;

  void run();
  void serveSocket();
  bool connect();
  void flushQueue();
  void pause();
  void yieldToOthers() const;
  bool scanAndContinue();
  void scanTimeouts();
  void onMessage(const std::string& message);
  template <class Visit>
  void forEachEntry(Visit visit);
  std::unique_lock<std::recursive_mutex> lockEntries();

  std::string address;
  std::uint16_t port;
  std::unique_ptr<WebSocketClient> socket;
  std::mutex lifecycleMutex;
  std::condition_variable stopping;
  bool running = false;
  std::map<std::uint64_t, Entry> entries;
  std::recursive_mutex entriesMutex;
  std::deque<std::string> sendQueue;
  std::mutex sendMutex;
  // How many other threads want a lock that the channel thread takes in every round.
  std::atomic<int> waiting{0};
  std::optional<Waker> waker;
  // The channel thread's.
  JsonParser parser;
  std::thread thread;
};

}  // namespace zephlinksdk
