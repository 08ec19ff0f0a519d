// The session with daemons that die, restart, close, hang or stay silent. Tests control the clock where the session
// waits for its own periods; the library's time-outs, five seconds, are real.
#include "zephlinksdk/session.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <boost/asio/write.hpp>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/sdk/host.h"
#include "tests/sdk/manual_clock.h"
#include "tests/sdk/raw_server.h"

namespace tests {
namespace {

using namespace std::chrono_literals;
using zephlinksdk::Session;
using zephlinksdk::SessionOptions;
using zephlinksdk::SessionStatus;

using Statuses = std::vector<SessionStatus>;
using enum SessionStatus;

const std::string kAskState = R"(["request_current_state",null,"zephlink_sdk"])";
const std::string kAskVersion = R"(["request_version_data",null,"zephlink_sdk"])";
const std::string kAskAdapters = R"(["request_networks",null,"zephlink_sdk"])";
const std::string kAskStats = R"(["stat_subscribe",{"enable":true,"periods":[0,24]},"zephlink_sdk"])";

Answers script(int state = 2) {
  return {{"request_version_data", {kVersionReport}},
          {"request_current_state", {stateReport(state)}},
          {"request_networks", {event("report_networks", R"({"networks":[]})")}}};
}

/// A session with a controlled clock, subscribed to the state and the adapters, and the data that its handlers
/// received.
struct ObservedSession {
  Watched<Statuses> statuses;
  Watched<std::vector<std::uint32_t>> states;
  Watched<std::size_t> adapters;
  std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
  std::optional<Session> session;

  explicit ObservedSession(std::uint16_t port, SessionOptions options = {}) {
    options.clock = clock;
    session.emplace(
        configFor(port),
        [this](SessionStatus status) { statuses.change([&](auto& received) { received.push_back(status); }); },
        options);
    session->subscribeStats({0, 24});
    session->subscribe(&ZephlinkSDK_getState, [this](const ZephlinkSDK_StateResult& record) {
      states.change([&](auto& received) { received.push_back(record.state); });
    });
    session->subscribe(&ZephlinkSDK_getAdapters, [this](const ZephlinkSDK_AdaptersResult&) {
      adapters.change([](std::size_t& count) { ++count; });
    });
  }

  /// Waits until this is the latest status.
  bool waitFor(SessionStatus status) {
    return statuses.waitUntil([&](const Statuses& received) { return !received.empty() && received.back() == status; });
  }

  bool waitForStates(std::size_t count) {
    return states.waitUntil([&](const auto& received) { return received.size() >= count; });
  }

  /// Waits until the requests were answered for the n-th time and the session sleeps until its next request.
  bool waitForRest(std::size_t nth = 1) {
    return waitForStates(nth) && adapters.waitUntil([&](std::size_t count) { return count >= nth; }) && waitFor(Live) &&
           clock->waitForSleep(1500ms);
  }
};

std::ptrdiff_t timesAsked(ScriptedDaemon& daemon, const std::string& request) {
  const auto received = daemon.received();
  return std::ranges::count(received, request);
}

/// Returns the number of entries of a folder of /proc; 0 on systems without it.
std::ptrdiff_t entriesOf(const char* folder) {
  std::error_code failed;
  return std::distance(std::filesystem::directory_iterator(folder, failed), {});
}

TEST(Session, RepeatsAllRequestsWhenReportsCease) {
  ScriptedDaemon daemon(script());
  ObservedSession observed(daemon.port());
  ASSERT_TRUE(observed.waitForRest());
  for (const std::string& request : {kAskState, kAskAdapters, kAskStats}) {
    EXPECT_TRUE(daemon.waitForRequest(request)) << request;
  }
  const auto before = timesAsked(daemon, kAskVersion);
  observed.clock->advance(1500ms);
  ASSERT_TRUE(daemon.waitForRequest(kAskVersion, before + 1));
  ASSERT_TRUE(observed.waitForRest());
  EXPECT_EQ(timesAsked(daemon, kAskAdapters), 1);
  EXPECT_EQ(observed.statuses.get(), Statuses{Live});
}

TEST(Session, RepeatsAllRequestsInAPeriodAndDeliversOnce) {
  ScriptedDaemon daemon(script());
  ObservedSession observed(daemon.port(), {.probeAfter = 60s, .quietAfter = 90s});
  Watched<int> versions;
  observed.session->poll(&ZephlinkSDK_getVersion,
                         [&](const ZephlinkSDK_VersionResult&) { versions.change([](int& count) { ++count; }); });
  for (const int times : {1, 2, 3}) {
    ASSERT_TRUE(observed.waitFor(Live));
    ASSERT_TRUE(observed.waitForStates(static_cast<std::size_t>(times)));
    for (const std::string& request : {kAskState, kAskAdapters, kAskStats}) {
      ASSERT_TRUE(daemon.waitForRequest(request, times)) << request;
    }
    ASSERT_TRUE(versions.waitUntil([times](int count) { return count >= times; }));
    ASSERT_TRUE(observed.clock->waitForSleep(30s));
    if (times < 3) observed.clock->advance(30s);
  }
  EXPECT_EQ(timesAsked(daemon, kAskState), 3);
  EXPECT_EQ(observed.states.get().size(), 3U);
  EXPECT_GE(timesAsked(daemon, kAskVersion), 3);
  observed.session.reset();
}

TEST(Session, ResubscribesAfterADaemonIsKilledAndRestarted) {
  std::optional<ScriptedDaemon> daemon(std::in_place, script());
  const std::uint16_t port = daemon->port();
  ObservedSession observed(port);
  ASSERT_TRUE(observed.waitForRest());
  daemon.reset();
  observed.clock->advance(3s);
  ASSERT_TRUE(observed.waitFor(Quiet));
  daemon.emplace(script(6), port);
  ASSERT_TRUE(observed.waitForRest(2));
  for (const std::string& request : {kAskState, kAskAdapters, kAskStats}) {
    EXPECT_TRUE(daemon->waitForRequest(request)) << request;
  }
  EXPECT_EQ(observed.states.get().back(), 6U);
  EXPECT_EQ(observed.statuses.get(), (Statuses{Live, Quiet, Live}));
}

TEST(Session, ResubscribesAfterAnUndetectedRestart) {
  std::optional<ScriptedDaemon> daemon(std::in_place, script());
  const std::uint16_t port = daemon->port();
  ObservedSession observed(port);
  ASSERT_TRUE(observed.waitForStates(1));
  ASSERT_TRUE(observed.waitForRest());
  daemon->send(stateReport(6));  // unsolicited reports must continue
  ASSERT_TRUE(observed.waitForStates(2));
  daemon.reset();
  daemon.emplace(script(3), port);
  ASSERT_TRUE(daemon->waitForConnections(1));
  observed.clock->advance(2500ms);
  ASSERT_TRUE(daemon->waitForRequest(kAskAdapters));
  ASSERT_TRUE(daemon->waitForRequest(kAskStats));
  ASSERT_TRUE(observed.waitForStates(3));
  EXPECT_EQ(observed.states.get().back(), 3U);
  EXPECT_EQ(observed.statuses.get(), Statuses{Live});
}

TEST(Session, ReconnectsAfterACloseFrame) {
  ScriptedDaemon daemon(script());
  ObservedSession observed(daemon.port());
  ASSERT_TRUE(observed.waitForRest());
  daemon.socket().close(1);
  observed.clock->advance(3s);
  ASSERT_TRUE(daemon.waitForConnections(2));
  ASSERT_TRUE(observed.waitForRest(2));
  EXPECT_TRUE(daemon.waitForRequest(kAskAdapters, 2));
  EXPECT_EQ(observed.statuses.get(), (Statuses{Live, Quiet, Live}));
}

TEST(Session, BacksOffFromADaemonThatEndsEveryConnection) {
  ScriptedDaemon daemon(script());
  ObservedSession observed(daemon.port(), {.quietAfter = 4s});
  auto endAgain = [&, connection = zephsim::Connection{0}]() mutable {
    ASSERT_TRUE(observed.waitForRest(++connection));
    daemon.socket().close(connection);
    observed.clock->advance(4s);
  };
  endAgain();  // no pause after the first
  for (const auto pause : {1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s}) {
    endAgain();
    ASSERT_TRUE(observed.clock->waitForSleep(pause)) << pause.count();
    EXPECT_EQ(observed.session->status(), Quiet);
    observed.clock->advance(pause);
  }
  // A minute of life resets the pause.
  ASSERT_TRUE(observed.waitForRest(10));
  for (int i = 0; i < 45; ++i) {
    observed.clock->advance(1500ms);
    ASSERT_TRUE(observed.clock->waitForSleep(1500ms));
  }
  endAgain();
  ASSERT_TRUE(daemon.waitForConnections(11));
  EXPECT_TRUE(observed.waitForRest(11));
}

TEST(Session, KeepsNoQueueForAnUnreachableDaemon) {
  ScriptedDaemon daemon(script());
  daemon.socket().pauseAccepting();
  std::promise<void> paused;
  daemon.socket().post([&paused] { paused.set_value(); });
  paused.get_future().wait();
  ObservedSession observed(daemon.port());
  observed.session->call([](zephlinksdk::ZephlinkSDK* sdk) {
    return ZephlinkSDK_logout(
        sdk, [](auto, void*) { return false; }, nullptr);
  });
  ASSERT_TRUE(observed.waitFor(Unreachable));
  daemon.socket().resumeAccepting();
  ASSERT_TRUE(observed.waitForRest());
  EXPECT_EQ(observed.statuses.get(), (Statuses{Unreachable, Live}));
  EXPECT_THAT(daemon.received(), testing::Not(testing::Contains(testing::HasSubstr("logout"))));
  EXPECT_EQ(timesAsked(daemon, kAskAdapters), 1);
}

TEST(Session, ReconnectsAMinuteAfterAMuteDaemon) {
  std::optional<ScriptedDaemon> daemon(std::in_place, Answers{});
  const std::uint16_t port = daemon->port();
  ObservedSession observed(port, {.leastPause = 60s});
  ASSERT_TRUE(observed.waitFor(Mute));
  ASSERT_TRUE(observed.clock->waitForSleep(60s));
  daemon.reset();
  daemon.emplace(script(), port);
  observed.clock->advance(59s);
  ASSERT_TRUE(observed.clock->waitForSleep(1s));
  EXPECT_EQ(observed.session->call(&ZephlinkSDK_getState).errorCode, ZephlinkSDK_Error_NotConnected);
  EXPECT_TRUE(daemon->received().empty());
  observed.clock->advance(1s);
  ASSERT_TRUE(observed.waitFor(Live));
  EXPECT_EQ(observed.session->call(&ZephlinkSDK_getState).state, 2U);
}

/// Answers each connection with a text and closes it.
class RefusingServer {
 public:
  RefusingServer() {
    accept();
    thread = std::thread([this] { context.run(); });
  }
  ~RefusingServer() {
    context.stop();
    thread.join();
  }
  RefusingServer(const RefusingServer&) = delete;
  RefusingServer& operator=(const RefusingServer&) = delete;

  std::uint16_t port() const { return acceptor.local_endpoint().port(); }

 private:
  void accept() {
    acceptor.async_accept([this](boost::system::error_code failed, boost::asio::ip::tcp::socket socket) {
      if (failed) return;
      boost::asio::write(socket, boost::asio::buffer("HTTP/1.1 403 Forbidden\r\n\r\n", 26), failed);
      accept();
    });
  }

  boost::asio::io_context context;
  boost::asio::ip::tcp::acceptor acceptor{context, {boost::asio::ip::address_v4::loopback(), nextPort()}};
  std::thread thread;
};

TEST(Session, SurvivesADaemonThatRefusesTheUpgrade) {
  std::optional<RefusingServer> refusing(std::in_place);
  const std::uint16_t port = refusing->port();
  ObservedSession observed(port);
  ASSERT_TRUE(observed.waitFor(Unreachable));
  refusing.reset();
  const ScriptedDaemon daemon(script(), port);
  ASSERT_TRUE(observed.waitForRest());
  EXPECT_EQ(observed.statuses.get(), (Statuses{Unreachable, Live}));
}

TEST(Session, SurvivesADaemonThatHangs) {
  std::optional<SilentPeer> hanging(std::in_place);
  const std::uint16_t port = hanging->port();
  ObservedSession observed(port);
  ASSERT_TRUE(observed.waitFor(Unreachable));
  hanging.reset();
  const ScriptedDaemon daemon(script(), port);
  ASSERT_TRUE(observed.waitForRest());
  EXPECT_EQ(observed.statuses.get(), (Statuses{Unreachable, Live}));
}

TEST(Session, EndsAtOnceWhileTheDaemonHangs) {
  const SilentPeer hanging;
  for (int i = 0; i < 5; ++i) {
    ObservedSession observed(hanging.port());
    const auto begun = std::chrono::steady_clock::now();
    observed.session.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begun, 1s);
  }
}

TEST(Session, ACallOutlivesTheObjectThatItUses) {
  ScriptedDaemon daemon(script());
  ObservedSession observed(daemon.port());
  ASSERT_TRUE(observed.waitForRest());
  // A request that the session itself never sends: once it has arrived, the call uses the first object.
  auto settings = std::async(std::launch::async, [&] { return observed.session->call(&ZephlinkSDK_getSettings); });
  ASSERT_TRUE(daemon.waitForRequest(R"(["request_connection_settings",null,"zephlink_sdk"])"));
  daemon.socket().close(1);
  observed.clock->advance(3s);
  ASSERT_TRUE(daemon.waitForConnections(2));
  ASSERT_TRUE(observed.waitForRest(2));
  EXPECT_EQ(settings.wait_for(0s), std::future_status::timeout);
  EXPECT_EQ(settings.get().errorCode, ZephlinkSDK_Error_Timeout);
  EXPECT_EQ(observed.statuses.get(), (Statuses{Live, Quiet, Live}));
}

TEST(Session, AcceptsCallsAtOnce) {
  ScriptedDaemon daemon(script());
  for (int i = 0; i < 20; ++i) {
    Session session(configFor(daemon.port()));
    EXPECT_NE(Session::Lease(session).sdk(), nullptr);
    EXPECT_FALSE(session.call(&ZephlinkSDK_getVersion).hasError);
  }
}

TEST(Session, EndsSubscriptions) {
  ScriptedDaemon daemon(script());
  ObservedSession observed(daemon.port());
  ASSERT_TRUE(observed.waitForRest());
  Watched<int> once;
  std::promise<Session::SubscriptionId> id;
  auto known = id.get_future().share();
  id.set_value(observed.session->subscribe(&ZephlinkSDK_getState, [&, known](const ZephlinkSDK_StateResult&) {
    observed.session->unsubscribe(known.get());
    once.change([](int& count) { ++count; });
  }));
  ASSERT_TRUE(once.waitUntil([](int count) { return count == 1; }));
  std::atomic<int> never{0};
  const auto other =
      observed.session->subscribe(&ZephlinkSDK_getState, [&never](const ZephlinkSDK_StateResult&) { ++never; });
  observed.session->unsubscribe(other);
  observed.session->unsubscribe(other);
  const int before = never;
  const std::size_t states = observed.states.get().size();
  daemon.send(stateReport(3));
  ASSERT_TRUE(observed.waitForStates(states + 1));
  observed.session.reset();
  EXPECT_EQ(once.get(), 1);
  EXPECT_EQ(never, before);
}

TEST(Session, ForwardsFailuresOfTheDaemon) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(2)}},
                         {"request_session_stats", {event("report_session_stats", R"({"no number":{}})")}}});
  ObservedSession observed(daemon.port());
  Collector<ZephlinkSDK_SessionStatsResult> got;
  observed.session->subscribe(&ZephlinkSDK_getSessionStats, [&got](const ZephlinkSDK_SessionStatsResult& record) {
    Collector<ZephlinkSDK_SessionStatsResult>::collect(record, &got);
  });
  ASSERT_TRUE(got.waitFor(1));
  EXPECT_TRUE(got.all()[0].hasError);
  observed.session.reset();
}

int rounds(int otherwise) {
  const char* text = std::getenv("ZEPHCTL_ROUNDS");
  return text != nullptr ? std::atoi(text) : otherwise;
}

TEST(Session, LeaksNothingOverManyRestarts) {
  ScriptedDaemon daemon(script());
  ObservedSession observed(daemon.port(), {.leastPause = 0ms, .mostPause = 0ms});
  std::ptrdiff_t descriptors = 0;
  std::ptrdiff_t threads = 0;
  const int wanted = rounds(1000);
  for (int n = 1; n <= wanted; ++n) {
    ASSERT_TRUE(daemon.waitForConnections(static_cast<std::size_t>(n)));
    ASSERT_TRUE(observed.waitForRest(static_cast<std::size_t>(n)));
    if (n == 3) descriptors = entriesOf("/proc/self/fd");
    if (n == 3) threads = entriesOf("/proc/self/task");
    if (n == wanted) break;
    daemon.socket().close(static_cast<zephsim::Connection>(n));
    observed.clock->advance(3s);
    ASSERT_TRUE(observed.statuses.waitUntil(
        [n](const Statuses& all) { return all.size() >= 2 * static_cast<std::size_t>(n); }));
  }
  // The server may not have detected the end of the last connections yet.
  EXPECT_LE(entriesOf("/proc/self/fd"), descriptors + 10);
  EXPECT_LE(entriesOf("/proc/self/task"), threads);
}

TEST(Session, ManyThreadsMayUseItThroughRestarts) {
  ScriptedDaemon daemon(statesAndVersion({6}));
  Session session(configFor(daemon.port()), {},
                  {.probeAfter = 5ms,
                   .quietAfter = 20ms,
                   .renewAfter = 10ms,
                   .refreshEvery = 15ms,
                   .leastPause = 1ms,
                   .mostPause = 1ms});
  std::atomic<bool> over{false};
  std::atomic<bool> connected{true};
  std::thread goodbyes([&] {
    for (int n = 1; n <= rounds(200) / 20; ++n) {
      connected = connected && daemon.waitForConnections(static_cast<std::size_t>(n));
      daemon.send(stateReport(1));
      daemon.socket().close(static_cast<zephsim::Connection>(n));
    }
    over = true;
  });
  std::atomic<int> late{0};
  onThreads(4, [&](int thread) {
    while (!over) {
      std::atomic<bool> gone{false};
      const auto id = session.subscribe(&ZephlinkSDK_getState, [&](const ZephlinkSDK_StateResult&) {
        if (gone) ++late;
      });
      if (thread == 0) session.subscribeStats({24});
      // Asynchronous: a lost synchronous call would take five seconds.
      session.call([](zephlinksdk::ZephlinkSDK* sdk) {
        return ZephlinkSDK_getVersion(
            sdk, [](auto, void*) { return false; }, nullptr);
      });
      std::this_thread::yield();
      session.unsubscribe(id);
      gone = true;
    }
  });
  goodbyes.join();
  EXPECT_TRUE(connected);
  EXPECT_EQ(late, 0);
}

}  // namespace
}  // namespace tests
