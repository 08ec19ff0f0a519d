// A session: one connection to the daemon that keeps itself and its subscriptions alive, for whatever runs long. C++20,
// header-only, over the functions of zephlinksdk.h alone.
//
//     zephlinksdk::Session session(config, [](zephlinksdk::SessionStatus status) { ... });
//     session.subscribe(&ZephlinkSDK_getAdapters, [](const ZephlinkSDK_AdaptersResult& record) { ... });
//     session.subscribeStats();
//     const ZephlinkSDK_StateResult state = session.call(&ZephlinkSDK_getState);
//
// What it does
//
// - Silence: when no report has come for `probeAfter`, the session asks for the daemon's version. Any report counts as
//   a sign of life. After `quietAfter` without one it replaces its object, which covers a lost connection, a daemon
//   that was restarted, and a close frame, after which an object does not reconnect.
// - Forgotten subscriptions: each new object subscribes anew. On an object that lives on, the session repeats all
//   requests when reports that came by themselves cease for `renewAfter`, and in any case every `refreshEvery`.
// - A daemon that cannot be reached: an object tries to connect several times a second for 5 seconds, then a new one
//   takes over, without what the old one had queued.
// - A daemon that does not answer, or does not let the session live for `mostPause`: the pause before a new object
//   doubles from `leastPause` to `mostPause`.
//
// Threads
//
// - One thread of the session supervises, besides those of the object. It sleeps until a deadline or an event.
// - Record handlers run one after the other on the object's channel thread, under the rules of its callbacks: make no
//   synchronous calls there. The status handler runs on the session's thread, at the same time as a record handler
//   perhaps; while it runs nothing is supervised.
// - Every function of Session may be called from any thread and in handlers, but for the destructor.
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
  Live,         ///< reports come
  Quiet,        ///< no report for SessionOptions::quietAfter
  Unreachable,  ///< no connection to a daemon for 5 seconds
  Mute,         ///< connected for 5 seconds without an answer; or the object failed, for example without memory
};

/// Returns the status as a word in lower case, a constant.
constexpr const char* sessionStatusText(SessionStatus status) {
  constexpr const char* kTexts[] = {"connecting", "live", "quiet", "unreachable", "mute"};
  const auto index = static_cast<std::size_t>(status);
  return index < std::size(kTexts) ? kTexts[index] : "unknown";
}

/// What a session reads the time from and sleeps on. The default is the system's steady clock; tests derive from it to
/// turn the clock. An object belongs to one session.
class SessionClock {
 public:
  /// A moment of this clock.
  using time_point = std::chrono::steady_clock::time_point;

  SessionClock() = default;
  virtual ~SessionClock() = default;
  SessionClock(const SessionClock&) = delete;
  SessionClock& operator=(const SessionClock&) = delete;

  /// Thread-safe. Never goes back.
  virtual time_point now() { return std::chrono::steady_clock::now(); }

  /// Returns at `deadline` or after a `wake`, also after one that came since the last return. One thread calls it.
  virtual void sleepUntil(time_point deadline) {
    std::unique_lock lock(mutex);
    woken.wait_until(lock, deadline, [this] { return awake; });
    awake = false;
  }

  /// Ends the current `sleepUntil`, or the next. Thread-safe.
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

/// The periods of a session. The defaults fit statistics that come every second.
struct SessionOptions {
  /// Silence after which the daemon is asked for its version.
  std::chrono::milliseconds probeAfter{1500};
  /// Silence after which the status is Quiet and the object is replaced. REQUIRES: more than `probeAfter`.
  std::chrono::milliseconds quietAfter{3000};
  /// Time without reports that were not answers to the session, after which all requests are repeated, once. More than
  /// the longest usual distance between reports.
  std::chrono::milliseconds renewAfter{2500};
  /// All requests are repeated in this period, whatever comes.
  std::chrono::milliseconds refreshEvery{30000};
  /// The first pause before a new object, which later ones double.
  std::chrono::milliseconds leastPause{1000};
  /// The longest of these pauses.
  std::chrono::milliseconds mostPause{60000};
  /// Null: the system's clock.
  std::shared_ptr<SessionClock> clock = nullptr;
};

/// Owns one connection to a daemon. See the head of this file.
class Session {
 public:
  /// Gets the new status, on the session's thread.
  using StatusHandler = std::function<void(SessionStatus)>;
  /// Names a subscription of one session. No two are the same.
  using SubscriptionId = std::uint64_t;

  /// Starts to connect and returns at once. `onStatus` (may be empty) gets every change of the status, perhaps
  /// before the constructor has returned; the first status is Connecting. Throws std::system_error if the system has no
  /// thread left, std::bad_alloc without memory.
  ///
  /// REQUIRES: the texts of `config` are terminated.
  explicit Session(const ZephlinkSDK_Config& config, StatusHandler onStatus = {}, SessionOptions options = {})
      : daemon(config),
        statusHandler(std::move(onStatus)),
        periods(std::move(options)),
        clock(periods.clock ? periods.clock : std::make_shared<SessionClock>()),
        supervisor(&Session::supervise, this) {}

  /// Ends the connection and all subscriptions; waits for running handlers, and never for the daemon. No handler runs
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

  /// Subscribes by a function that "stays subscribed" or listens, for example &ZephlinkSDK_getState or
  /// &ZephlinkSDK_listenForNetworkSharePairRequest: the handler gets every record of the daemon, until `unsubscribe`,
  /// whatever becomes of the connection. Returns at once; the request is sent by the session's thread.
  ///
  /// Time-outs do not reach the handler: they appear as the status. Other failures do, with `hasError` true. Records
  /// that were lost with the connection are not made up for; the request is repeated, which brings the latest.
  template <class Record>
  SubscriptionId subscribe(Record (*function)(ZephlinkSDK*, Callback<Record>, void*),
                           std::type_identity_t<std::function<void(const Record&)>> handler) {
    return add(std::make_shared<SubscriptionTo<Record>>(*this, function, std::move(handler), false));
  }

  /// The same for a function whose callback runs once, for example &ZephlinkSDK_getVersion: it is called on each object
  /// and again with every repetition of the requests, and the handler gets each answer.
  template <class Record>
  SubscriptionId poll(Record (*function)(ZephlinkSDK*, Callback<Record>, void*),
                      std::type_identity_t<std::function<void(const Record&)>> handler) {
    return add(std::make_shared<SubscriptionTo<Record>>(*this, function, std::move(handler), true));
  }

  /// Ends what `subscribe` or `poll` began. Once it returns, the handler no longer runs: it waits for a running
  /// handler, unless it is called in that handler. The handler object may be destroyed later, by the session's thread.
  /// An unknown id does nothing.
  ///
  /// REQUIRES: the caller has locked no mutex that the handler locks.
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
      // Only now: the supervisor ends what is no longer in the list.
      const std::lock_guard lock(mutex);
      std::erase(subscriptions, found);
      subscriptionsChanged = true;
    }
    clock->wake();
  }

  /// Makes the daemon send statistics about once a second, as ZephlinkSDK_subscribeStats does, and repeats that for
  /// every new object and with every repetition of the requests. `hours` are the periods of the session statistics, of
  /// which the first ZephlinkSDK_MaxSessionPeriods count; empty leaves them to the daemon. Replaces the previous call.
  void subscribeStats(const std::vector<std::uint32_t>& hours = {}) {
    Stats wanted{.enabled = true};
    for (const std::uint32_t period : hours) {
      if (wanted.count < wanted.hours.size()) wanted.hours[wanted.count++] = period;
    }
    setStats(wanted);
  }

  /// Makes the daemon stop what `subscribeStats` started.
  void unsubscribeStats() { setStats({}); }

  /// Calls a function of the library with the current object, `arguments`, no callback and no user data: a synchronous
  /// call, with that function's time-out. `session.call(&ZephlinkSDK_setMode, ZephlinkSDK_BondingMode_Speed)`. May be
  /// made right after construction. Fails at once with ZephlinkSDK_Error_NotConnected during a pause, when there is no
  /// object. An object that is replaced during the call lives until the call has ended.
  template <class Record, class... Parameters, class... Arguments>
  Record call(Record (*function)(ZephlinkSDK*, Parameters...),
              Arguments&&... arguments) requires(sizeof...(Parameters) == sizeof...(Arguments) + 2) {
    const Lease lease(*this);
    if (lease.sdk() == nullptr) return notConnected<Record>();
    return function(lease.sdk(), std::forward<Arguments>(arguments)..., nullptr, nullptr);
  }

  /// The same for what is more than one synchronous call: `work` gets the current object and returns a record. It must
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
  /// Keeps the current object from being destroyed, for asynchronous calls on it: end them before the lease.
  ///
  /// REQUIRES: the session lives as long.
  class Lease {
   public:
    /// Waits until the session has made its first object, which it does at once.
    explicit Lease(Session& ofSession) : session(ofSession) {
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
  /// An upper bound of one sleep.
  static constexpr std::chrono::hours kLongest{1};

  struct Stats {
    bool enabled = false;
    std::uint8_t count = 0;
    std::array<std::uint32_t, ZephlinkSDK_MaxSessionPeriods> hours{};
  };

  /// An object of the library, and how many calls of `call` are using it.
  struct Object {
    ZephlinkSDK* sdk = nullptr;
    int users = 0;
  };

  /// A subscription, without the type of its record.
  struct Subscription {
    Subscription() = default;
    virtual ~Subscription() = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    /// Subscribes on a new object; the request is sent. Returns the handle.
    virtual Handle begin(ZephlinkSDK* sdk) = 0;
    /// Sends the request once more. Returns the handle of that call.
    virtual Handle repeat(ZephlinkSDK* sdk) = 0;

    SubscriptionId id = 0;
    /// Locked while the handler runs, which may end its own subscription.
    std::recursive_mutex delivery;
    bool ended = false;
    /// Requests that no record has followed yet.
    std::atomic<int> unanswered{0};
    // The supervisor's.
    bool begun = false;
    Handle handle;
    Handle repeated;
  };

  template <class Record>
  struct SubscriptionTo final : Subscription {
    using Function = Record (*)(ZephlinkSDK*, Callback<Record>, void*);

    SubscriptionTo(Session& ofSession, Function asks, std::function<void(const Record&)> getsRecords, bool runsOnce)
        : session(ofSession), function(asks), handler(std::move(getsRecords)), once(runsOnce) {}

    Handle begin(ZephlinkSDK* sdk) override {
      this->unanswered = 1;
      return handleOf(function(sdk, onRecord, this));
    }

    Handle repeat(ZephlinkSDK* sdk) override {
      ++this->unanswered;
      // The answer reaches what `begin` subscribed, if that is still there.
      constexpr auto kIgnore = [](Record, void*) { return false; };
      return handleOf(once ? function(sdk, onRecord, this) : function(sdk, kIgnore, nullptr));
    }

    static bool onRecord(Record record, void* userData) noexcept {
      auto& self = *static_cast<SubscriptionTo*>(userData);
      if (timedOut(record)) return true;
      self.session.heard(self.unanswered);
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

  /// `unanswered` of the subscription: a report that is no answer came by itself.
  void heard(std::atomic<int>& unanswered) {
    const time_point now = clock->now();
    if (unanswered > 0) {
      --unanswered;
    } else {
      lastUnasked = now;
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

  /// Does what is due and returns when to look again.
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
      // Without memory nothing can be relied on but a fresh start.
      markOpened();
      replace(SessionStatus::Mute, std::max<std::chrono::milliseconds>(pause, periods.leastPause), now);
      return reopenAt;
    }
  }

  /// Looks at how long the daemon has been silent. Returns the next deadline.
  time_point watch(time_point now) {
    const time_point last = lastReport;
    if (last == kNever) return now + kLongest;  // the first answer or its time-out wakes us
    if (now - last >= periods.quietAfter) {
      replace(SessionStatus::Quiet, pause, now);
      return reopenAt;
    }
    if (currentStatus != SessionStatus::Live) liveSince = now;
    setStatus(SessionStatus::Live);
    const time_point unasked = lastUnasked;
    const bool ceased = unasked != kNever && now - unasked >= periods.renewAfter;
    if (ceased || now - renewed >= periods.refreshEvery) {
      repeatRequests(now);
    } else if (now - last >= periods.probeAfter && !probing) {
      probe();
    }
    const time_point due = last + (now - last >= periods.probeAfter ? periods.quietAfter : periods.probeAfter);
    const time_point ceases = unasked == kNever || ceased ? due : unasked + periods.renewAfter;
    return std::min({due, ceases, renewed + periods.refreshEvery});
  }

  /// The version, which every daemon reports when asked, has not come in time.
  void giveUp(std::uint32_t code, time_point now) {
    if (!current) return;
    const time_point last = lastReport;
    if (last != kNever && now - last < periods.quietAfter) return;  // the request was lost, the daemon is not
    if (code == ZephlinkSDK_Error_NotConnected) {
      replace(SessionStatus::Unreachable, {}, now);
    } else {
      replace(SessionStatus::Mute, std::max<std::chrono::milliseconds>(pause, periods.leastPause), now);
    }
  }

  /// Ends the object; the next one is opened after `wait`. Whatever had to be paced makes the next pause longer, unless
  /// the session was live for long.
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
    retired.reserve(retired.size() + 1);  // so that close() needs no memory
    auto opened = std::make_shared<Object>();
    lastReport = kNever;
    lastUnasked = kNever;
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

  /// Lets calls go on that waited for the first object, or for the failure to create it.
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

  /// Destroys replaced objects that no call uses any more.
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

  /// Begins and ends subscriptions as other threads asked.
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
    lastUnasked = kNever;
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
  /// The last one that came by itself.
  std::atomic<time_point> lastUnasked{kNever};
  std::atomic<bool> probing{false};
  std::atomic<std::uint32_t> failure{ZephlinkSDK_Error_None};

  /// Guards the following. Not locked in calls of the library and of handlers.
  std::mutex mutex;
  std::vector<std::shared_ptr<Subscription>> subscriptions;
  bool subscriptionsChanged = false;
  SubscriptionId nextId = 0;
  Stats stats;
  bool statsChanged = false;
  std::shared_ptr<Object> current;  // only the supervisor changes it
  bool hasOpened = false;
  std::condition_variable firstOpened;

  // The supervisor's.
  std::vector<std::shared_ptr<Subscription>> served;  ///< begun on the current object
  std::vector<std::shared_ptr<Object>> retired;       ///< replaced, but used by a call
  Handle probeHandle;
  time_point renewed = kNever;
  time_point liveSince = kNever;
  time_point reopenAt = kNever;
  std::chrono::milliseconds pause{0};

  std::thread supervisor;  // last: it uses all of the above
};

}  // namespace zephlinksdk
