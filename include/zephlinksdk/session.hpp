// A session: a connection to the daemon that keeps itself and its subscriptions alive, for long-running hosts. C++20,
// header-only; uses only the functions of zephlinksdk.h.
//
//     zephlinksdk::Session session(config, [](zephlinksdk::SessionStatus status) { ... });
//     session.subscribe(&ZephlinkSDK_getAdapters, [](const ZephlinkSDK_AdaptersResult& record) { ... });
//     session.subscribeStats();
//     const ZephlinkSDK_StateResult state = session.call(&ZephlinkSDK_getState);
//
// What it does
//
// - Silent daemon: when no report has arrived for `probeAfter`, the session requests the daemon's version. Any report
//   counts as a sign of life. After `quietAfter` without a report it replaces its object. This covers a lost
//   connection, a restarted daemon, and a close frame, after which an object does not reconnect.
// - Lost subscriptions: each new object subscribes again. On an existing object, the session repeats all requests when
//   unsolicited reports stop for `renewAfter`, and in any case every `refreshEvery`.
// - Unreachable daemon: an object tries to connect several times a second for 5 seconds. Then a new object replaces it,
//   and requests queued on the old one are dropped.
// - Unresponsive daemon: if the daemon does not answer, or sessions do not stay live for `mostPause`, the pause before
//   each new object doubles from `leastPause` to `mostPause`.
//
// Threads
//
// - In addition to the object's threads, the session has one thread of supervision. It sleeps until a deadline or an
//   event.
// - Record handlers run one at a time on the object's channel thread, under the rules of its callbacks: they must not
//   make synchronous calls. The status handler runs on the session's thread, possibly concurrently with a record
//   handler; supervision pauses while it runs.
// - Every function of Session except the destructor may be called from any thread and in handlers.
// - Handlers must not throw: an exception ends the process.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <concepts>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <iterator>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "zephlinksdk/zephlinksdk.h"

namespace zephlinksdk {

/// The state of the link between a session and the daemon.
enum class SessionStatus : std::uint8_t {
  Connecting,   ///< no report yet, and no failure
  Live,         ///< reports arrive
  Quiet,        ///< no report for SessionOptions::quietAfter
  Unreachable,  ///< no connection to a daemon for 5 seconds
  Mute,         ///< connected for 5 seconds without an answer; or the object failed, for example when out of memory
};

/// Returns the status as a lower-case word, a constant.
constexpr const char* sessionStatusText(SessionStatus status) {
  constexpr const char* kTexts[] = {"connecting", "live", "quiet", "unreachable", "mute"};
  const auto index = static_cast<std::size_t>(status);
  return index < std::size(kTexts) ? kTexts[index] : "unknown";
}

/// The clock of a session, which also puts its thread to sleep. The default is the system's steady clock; tests derive
/// from it to control the time. Each clock belongs to one session.
class SessionClock {
 public:
  /// A point in time of this clock.
  using time_point = std::chrono::steady_clock::time_point;

  SessionClock() = default;
  virtual ~SessionClock() = default;
  SessionClock(const SessionClock&) = delete;
  SessionClock& operator=(const SessionClock&) = delete;

  /// Returns the current time, which never decreases. Thread-safe.
  virtual time_point now() { return std::chrono::steady_clock::now(); }

  /// Returns at `deadline` or after a `wake`, including one since the last return. Called by one thread only.
  virtual void sleepUntil(time_point deadline) {
    std::unique_lock lock(mutex);
    woken.wait_until(lock, deadline, [this] { return awake; });
    awake = false;
  }

  /// Ends the current `sleepUntil`, or the next one. Thread-safe.
  virtual void wake() {
    {
      const std::lock_guard lock(mutex);
      awake = true;
    }
    woken.notify_one();
  }

 private:
  std::mutex mutex;
  std::condition_variable woken;
  bool awake = false;
};

/// The periods of a session. The defaults suit statistics that arrive every second.
struct SessionOptions {
  /// The silence after which the session requests the daemon's version.
  std::chrono::milliseconds probeAfter{1500};
  /// The silence after which the status becomes Quiet and the object is replaced. REQUIRES: more than `probeAfter`.
  std::chrono::milliseconds quietAfter{3000};
  /// The time without unsolicited reports after which all requests are repeated, once. Should exceed the usual interval
  /// between reports.
  std::chrono::milliseconds renewAfter{2500};
  /// The period in which all requests are repeated in any case.
  std::chrono::milliseconds refreshEvery{30000};
  /// The first pause before a new object; each later pause is twice as long.
  std::chrono::milliseconds leastPause{1000};
  /// The longest pause before a new object.
  std::chrono::milliseconds mostPause{60000};
  /// Null: the system's clock.
  std::shared_ptr<SessionClock> clock = nullptr;
};

/// Owns one connection to a daemon. See the top of this file.
class Session {
 public:
  /// Receives the new status, on the session's thread.
  using StatusHandler = std::function<void(SessionStatus)>;
  /// Identifies a subscription of one session. Unique within the session.
  using SubscriptionId = std::uint64_t;

  /// Starts to connect and returns at once. `onStatus` (may be empty) receives every change of the status, possibly
  /// before the constructor returns; the first status is Connecting. Throws std::system_error if the system cannot
  /// start a thread, std::bad_alloc when out of memory.
  ///
  /// REQUIRES: the texts of `config` are terminated.
  explicit Session(const ZephlinkSDK_Config& config, StatusHandler onStatus = {}, SessionOptions options = {})
      : daemon(config),
        statusHandler(std::move(onStatus)),
        periods(std::move(options)),
        clock(periods.clock ? periods.clock : std::make_shared<SessionClock>()),
        supervisor(&Session::supervise, this) {}

  /// Ends the connection and all subscriptions. Waits for running handlers, but never for the daemon. No handler runs
  /// afterwards.
  ///
  /// REQUIRES: not called in a handler; no other thread is in a function of this object.
  ~Session() {
    stopping = true;
    clock->wake();
    supervisor.join();
  }

  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Returns the latest status.
  SessionStatus status() const { return currentStatus; }

  /// Subscribes with a function that "stays subscribed" or listens, for example &ZephlinkSDK_getState or
  /// &ZephlinkSDK_listenForNetworkSharePairRequest. Until `unsubscribe`, the handler receives every record of the
  /// daemon, across reconnections. Returns at once; the session's thread sends the request.
  ///
  /// Time-outs are not passed to the handler: they change the status. Other failures are, with `hasError` true. Records
  /// lost with a connection are not replayed; the repeated request delivers the latest.
  template <class Record>
  SubscriptionId subscribe(Record (*function)(ZephlinkSDK*, Callback<Record>, void*),
                           std::type_identity_t<std::function<void(const Record&)>> handler) {
    return add(std::make_shared<SubscriptionTo<Record>>(*this, function, std::move(handler), false));
  }

  /// Like `subscribe`, for a function whose callback runs once, for example &ZephlinkSDK_getVersion. The session calls
  /// it on each object and whenever it repeats the requests; the handler receives each answer.
  template <class Record>
  SubscriptionId poll(Record (*function)(ZephlinkSDK*, Callback<Record>, void*),
                      std::type_identity_t<std::function<void(const Record&)>> handler) {
    return add(std::make_shared<SubscriptionTo<Record>>(*this, function, std::move(handler), true));
  }

  /// Ends a subscription of `subscribe` or `poll`. Waits for a running handler, unless called in that handler: after it
  /// returns, the handler no longer runs. The handler object may be destroyed later, by the session's thread. Ignores
  /// an unknown id.
  ///
  /// REQUIRES: the caller has not locked a mutex that the handler locks.
  void unsubscribe(SubscriptionId id) {
    std::shared_ptr<Subscription> found;
    {
      const std::lock_guard lock(mutex);
      const auto at = std::ranges::find(subscriptions, id, &Subscription::id);
      if (at == subscriptions.end()) return;
      found = *at;
    }
    {
      const std::lock_guard lock(found->delivery);
      found->ended = true;
    }
    {
      // Wake the supervisor only after the removal: it ends subscriptions that are no longer in the list.
      const std::lock_guard lock(mutex);
      std::erase(subscriptions, found);
      subscriptionsChanged = true;
    }
    clock->wake();
  }

  /// Makes the daemon send statistics about once a second, as ZephlinkSDK_subscribeStats does; repeats that for every
  /// new object and whenever the requests are repeated. `hours` are the periods of the session statistics: the first
  /// ZephlinkSDK_MaxSessionPeriods are used; if empty, the daemon chooses. Replaces the previous call.
  void subscribeStats(const std::vector<std::uint32_t>& hours = {}) {
    Stats wanted{.enabled = true};
    for (const std::uint32_t period : hours) {
      if (wanted.count < wanted.hours.size()) wanted.hours[wanted.count++] = period;
    }
    setStats(wanted);
  }

  /// Makes the daemon stop the statistics of `subscribeStats`.
  void unsubscribeStats() { setStats({}); }

  /// Calls a function of the library with the current object, `arguments`, no callback and no user data: a synchronous
  /// call, with that function's time-out. Example: `session.call(&ZephlinkSDK_setMode, ZephlinkSDK_BondingMode_Speed)`.
  /// May be called right after construction. Fails at once with ZephlinkSDK_Error_NotConnected during a pause, when
  /// there is no object. An object that is replaced during the call is destroyed after the call.
  template <class Record, class... Parameters, class... Arguments>
  Record call(Record (*function)(ZephlinkSDK*, Parameters...),
              Arguments&&... arguments) requires(sizeof...(Parameters) == sizeof...(Arguments) + 2) {
    const Lease lease(*this);
    if (lease.sdk() == nullptr) return notConnected<Record>();
    return function(lease.sdk(), std::forward<Arguments>(arguments)..., nullptr, nullptr);
  }

  /// Like `call`, for more than one synchronous call: `work` receives the current object and returns a record. It must
  /// not keep the object. Callbacks that it registers end with that object: prefer `subscribe`.
  template <std::invocable<ZephlinkSDK*> Work>
  std::invoke_result_t<Work, ZephlinkSDK*> call(Work&& work) {
    const Lease lease(*this);
    if (lease.sdk() == nullptr) return notConnected<std::invoke_result_t<Work, ZephlinkSDK*>>();
    return std::forward<Work>(work)(lease.sdk());
  }

 private:
  struct Object;

 public:
  /// Prevents the destruction of the current object, for asynchronous calls on it: end them before the lease.
  ///
  /// REQUIRES: the session outlives the lease.
  class Lease {
   public:
    /// Waits until the session has created its first object, which it does at once.
    explicit Lease(Session& owner) : session(owner) {
      std::unique_lock lock(session.mutex);
      session.firstOpened.wait(lock, [this] { return session.hasOpened; });
      object = session.current;
      if (object) ++object->users;
    }
    ~Lease() {
      if (!object) return;
      bool last = false;
      {
        const std::lock_guard lock(session.mutex);
        last = --object->users == 0 && object != session.current;
      }
      if (last) session.clock->wake();
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

    /// Returns the object. Null during a pause, when the session has no object.
    ZephlinkSDK* sdk() const { return object ? object->sdk : nullptr; }

   private:
    Session& session;
    std::shared_ptr<Object> object;
  };

 private:
  using time_point = SessionClock::time_point;
  using Handle = std::optional<std::uint64_t>;

  static constexpr time_point kNever = time_point::min();
  /// An upper bound for one sleep.
  static constexpr std::chrono::hours kLongest{1};

  struct Stats {
    bool enabled = false;
    std::uint8_t count = 0;
    std::array<std::uint32_t, ZephlinkSDK_MaxSessionPeriods> hours{};
  };

  /// An object of the library and the number of `call`s that use it.
  struct Object {
    ZephlinkSDK* sdk = nullptr;
    int users = 0;
  };

  /// A subscription, independent of its record type.
  struct Subscription {
    Subscription() = default;
    virtual ~Subscription() = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    /// Subscribes on a new object, which sends the request. Returns the handle.
    virtual Handle begin(ZephlinkSDK* sdk) = 0;
    /// Repeats the request. Returns the handle of that call.
    virtual Handle repeat(ZephlinkSDK* sdk) = 0;

    SubscriptionId id = 0;
    /// Locked while the handler runs. Recursive, because the handler may end its own subscription.
    std::recursive_mutex delivery;
    bool ended = false;
    /// Requests that no record has answered yet.
    std::atomic<int> unanswered{0};
    // Used by the supervisor only.
    bool begun = false;
    Handle handle;
    Handle repeated;
  };

  template <class Record>
  struct SubscriptionTo final : Subscription {
    using Function = Record (*)(ZephlinkSDK*, Callback<Record>, void*);

    SubscriptionTo(Session& owner, Function subscribeFunction, std::function<void(const Record&)> recordHandler,
                   bool runsOnce)
        : session(owner), function(subscribeFunction), handler(std::move(recordHandler)), once(runsOnce) {}

    Handle begin(ZephlinkSDK* sdk) override {
      this->unanswered = 1;
      return handleOf(function(sdk, onRecord, this));
    }

    Handle repeat(ZephlinkSDK* sdk) override {
      ++this->unanswered;
      // The subscription of `begin` receives the answer, if it still exists.
      constexpr auto kIgnore = [](Record, void*) { return false; };
      return handleOf(once ? function(sdk, onRecord, this) : function(sdk, kIgnore, nullptr));
    }

    static bool onRecord(Record record, void* userData) noexcept {
      auto& self = *static_cast<SubscriptionTo*>(userData);
      if (timedOut(record)) return true;
      self.session.noteReport(self.unanswered);
      {
        const std::lock_guard lock(self.delivery);
        if (!self.ended && self.handler) self.handler(record);
      }
      self.session.wakeUnlessLive();
      return true;
    }

    Session& session;
    Function function;
    std::function<void(const Record&)> handler;
    bool once;
  };

  /// The handle of a refused call is not valid.
  template <class Record>
  static Handle handleOf(const Record& call) {
    return call.hasError ? Handle() : Handle(call.handle);
  }

  template <class Record>
  static bool timedOut(const Record& record) {
    return record.hasError &&
           (record.errorCode == ZephlinkSDK_Error_Timeout || record.errorCode == ZephlinkSDK_Error_NotConnected);
  }

  template <class Record>
  static Record notConnected() {
    Record record{};
    record.hasError = true;
    record.errorCode = ZephlinkSDK_Error_NotConnected;
    std::snprintf(record.errorMessage, sizeof record.errorMessage, "%s",
                  ZephlinkSDK_errorText(ZephlinkSDK_Error_NotConnected));
    return record;
  }

  // ---- Any thread --------------------------------------------------------------------------------------------------

  SubscriptionId add(const std::shared_ptr<Subscription>& added) {
    {
      const std::lock_guard lock(mutex);
      added->id = nextId++;
      subscriptions.push_back(added);
      subscriptionsChanged = true;
    }
    clock->wake();
    return added->id;
  }

  void setStats(const Stats& wanted) {
    {
      const std::lock_guard lock(mutex);
      stats = wanted;
      statsChanged = true;
    }
    clock->wake();
  }

  // ---- The channel thread ------------------------------------------------------------------------------------------

  /// `unanswered` is that of the subscription: a report that answers no request is unsolicited.
  void noteReport(std::atomic<int>& unanswered) {
    const time_point now = clock->now();
    if (unanswered > 0) {
      --unanswered;
    } else {
      lastUnsolicited = now;
    }
    lastReport = now;
  }

  void wakeUnlessLive() {
    if (currentStatus != SessionStatus::Live) clock->wake();
  }

  static bool onProbe(ZephlinkSDK_VersionResult record, void* userData) noexcept {
    auto& session = *static_cast<Session*>(userData);
    session.probing = false;
    if (timedOut(record)) {
      session.failure = record.errorCode;
    } else {
      session.lastReport = session.clock->now();
    }
    session.clock->wake();
    return false;
  }

  // ---- The supervisor's thread -------------------------------------------------------------------------------------

  void supervise() noexcept {
    while (!stopping) clock->sleepUntil(nextStep());
    close();
    destroyUnused();
  }

  /// Performs the due work and returns the next deadline.
  time_point nextStep() noexcept {
    const time_point now = clock->now();
    try {
      destroyUnused();
      if (const std::uint32_t code = failure.exchange(ZephlinkSDK_Error_None)) giveUp(code, now);
      if (!current) {
        if (now < reopenAt) return reopenAt;
        open(now);
      }
      serveChanges();
      return watch(now);
    } catch (const std::exception&) {
      // Out of memory: only a new object is reliable.
      markOpened();
      replace(SessionStatus::Mute, std::max<std::chrono::milliseconds>(pause, periods.leastPause), now);
      return reopenAt;
    }
  }

  /// Checks how long the daemon has been silent. Returns the next deadline.
  time_point watch(time_point now) {
    const time_point last = lastReport;
    if (last == kNever) return now + kLongest;  // the first answer or its time-out wakes the thread
    if (now - last >= periods.quietAfter) {
      replace(SessionStatus::Quiet, pause, now);
      return reopenAt;
    }
    if (currentStatus != SessionStatus::Live) liveSince = now;
    setStatus(SessionStatus::Live);
    const time_point unsolicited = lastUnsolicited;
    const bool ceased = unsolicited != kNever && now - unsolicited >= periods.renewAfter;
    if (ceased || now - renewed >= periods.refreshEvery) {
      repeatRequests(now);
    } else if (now - last >= periods.probeAfter && !probing) {
      probe();
    }
    const time_point due = last + (now - last >= periods.probeAfter ? periods.quietAfter : periods.probeAfter);
    const time_point ceases = unsolicited == kNever || ceased ? due : unsolicited + periods.renewAfter;
    return std::min({due, ceases, renewed + periods.refreshEvery});
  }

  /// Called after a version request, which every daemon answers, has timed out.
  void giveUp(std::uint32_t code, time_point now) {
    if (!current) return;
    const time_point last = lastReport;
    if (last != kNever && now - last < periods.quietAfter) return;  // the request was lost, not the daemon
    if (code == ZephlinkSDK_Error_NotConnected) {
      replace(SessionStatus::Unreachable, {}, now);
    } else {
      replace(SessionStatus::Mute, std::max<std::chrono::milliseconds>(pause, periods.leastPause), now);
    }
  }

  /// Closes the object and opens the next one after `wait`. Doubles the next pause, except for Unreachable; resets it
  /// if the session was live for `mostPause`.
  void replace(SessionStatus status, std::chrono::milliseconds wait, time_point now) {
    close();
    destroyUnused();
    if (currentStatus == SessionStatus::Live && now - liveSince >= periods.mostPause) pause = wait = {};
    if (status != SessionStatus::Unreachable) {
      pause = std::min(std::max<std::chrono::milliseconds>(2 * std::max(wait, pause), periods.leastPause),
                       periods.mostPause);
    }
    reopenAt = now + wait;
    setStatus(status);
  }

  void open(time_point now) {
    retired.reserve(retired.size() + 1);  // so that close() allocates no memory
    auto opened = std::make_shared<Object>();
    lastReport = kNever;
    lastUnsolicited = kNever;
    renewed = now;
    opened->sdk = ZephlinkSDK_create(daemon);
    {
      const std::lock_guard lock(mutex);
      current = std::move(opened);
      statsChanged = stats.enabled;
    }
    markOpened();
    probe();
  }

  /// Resumes calls that waited for the first object, or for the failure to create it.
  void markOpened() {
    {
      const std::lock_guard lock(mutex);
      if (std::exchange(hasOpened, true)) return;
    }
    firstOpened.notify_all();
  }

  void close() {
    if (!current) return;
    ZephlinkSDK* sdk = current->sdk;
    for (const auto& subscription : served) detach(*subscription, sdk);
    remove(probeHandle, sdk);
    probing = false;
    failure = ZephlinkSDK_Error_None;
    const std::lock_guard lock(mutex);
    retired.push_back(std::move(current));
    current = nullptr;
  }

  /// Destroys replaced objects that no call uses.
  void destroyUnused() {
    const auto unused = [this](const std::shared_ptr<Object>& object) {
      const std::lock_guard lock(mutex);
      return object->users == 0;
    };
    for (const auto& object : retired) {
      if (unused(object)) ZephlinkSDK_destroy(std::exchange(object->sdk, nullptr));
    }
    std::erase_if(retired, [](const std::shared_ptr<Object>& object) { return object->sdk == nullptr; });
  }

  /// Starts and ends subscriptions as requested by other threads.
  void serveChanges() {
    std::vector<std::shared_ptr<Subscription>> before;
    {
      const std::lock_guard lock(mutex);
      if (subscriptionsChanged) {
        before = subscriptions;
        before.swap(served);
        subscriptionsChanged = false;
      }
    }
    for (const auto& subscription : before) {
      if (isEnded(*subscription)) detach(*subscription, current->sdk);
    }
    for (const auto& subscription : served) {
      if (!std::exchange(subscription->begun, true)) subscription->handle = subscription->begin(current->sdk);
    }
    sendStats(false);
  }

  static bool isEnded(Subscription& subscription) {
    const std::lock_guard lock(subscription.delivery);
    return subscription.ended;
  }

  static void detach(Subscription& subscription, ZephlinkSDK* sdk) {
    remove(subscription.handle, sdk);
    remove(subscription.repeated, sdk);
    subscription.begun = false;
  }

  static void remove(Handle& handle, ZephlinkSDK* sdk) {
    if (handle) ZephlinkSDK_removeListener(sdk, *handle);
    handle.reset();
  }

  void sendStats(bool again) {
    Stats wanted;
    {
      const std::lock_guard lock(mutex);
      if (!std::exchange(statsChanged, false) && !(again && stats.enabled)) return;
      wanted = stats;
    }
    ZephlinkSDK_subscribeStats(current->sdk, wanted.enabled, wanted.count, wanted.hours.data());
  }

  void repeatRequests(time_point now) {
    renewed = now;
    lastUnsolicited = kNever;
    for (const auto& subscription : served) {
      remove(subscription->repeated, current->sdk);
      subscription->repeated = subscription->repeat(current->sdk);
    }
    sendStats(true);
    if (!probing) probe();
  }

  void probe() {
    probing = true;
    const ZephlinkSDK_VersionResult begun = ZephlinkSDK_getVersion(current->sdk, onProbe, this);
    probeHandle = handleOf(begun);
    if (!begun.hasError) return;
    probing = false;
    failure = begun.errorCode;
    clock->wake();
  }

  void setStatus(SessionStatus status) {
    if (currentStatus.exchange(status) != status && statusHandler) statusHandler(status);
  }

  // Constant after construction.
  const ZephlinkSDK_Config daemon;
  const StatusHandler statusHandler;
  const SessionOptions periods;
  const std::shared_ptr<SessionClock> clock;

  // Shared by all threads.
  std::atomic<bool> stopping{false};
  std::atomic<SessionStatus> currentStatus{SessionStatus::Connecting};
  std::atomic<time_point> lastReport{kNever};
  /// The time of the last unsolicited report.
  std::atomic<time_point> lastUnsolicited{kNever};
  std::atomic<bool> probing{false};
  std::atomic<std::uint32_t> failure{ZephlinkSDK_Error_None};

  /// Guards the following. Not locked during calls of the library or of handlers.
  std::mutex mutex;
  std::vector<std::shared_ptr<Subscription>> subscriptions;
  bool subscriptionsChanged = false;
  SubscriptionId nextId = 0;
  Stats stats;
  bool statsChanged = false;
  std::shared_ptr<Object> current;  // changed by the supervisor only
  bool hasOpened = false;
  std::condition_variable firstOpened;

  // Used by the supervisor only.
  std::vector<std::shared_ptr<Subscription>> served;  ///< started on the current object
  std::vector<std::shared_ptr<Object>> retired;       ///< replaced, but still used by a call
  Handle probeHandle;
  time_point renewed = kNever;
  time_point liveSince = kNever;
  time_point reopenAt = kNever;
  std::chrono::milliseconds pause{0};

  std::thread supervisor;  // last member: the thread uses all of the above
};

}  // namespace zephlinksdk
