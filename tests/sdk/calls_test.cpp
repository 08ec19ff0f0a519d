// Calls, subscriptions and listeners, used as by a host.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/sdk/host.h"

namespace tests {
namespace {

using State = ZephlinkSDK_StateResult;
using Version = ZephlinkSDK_VersionResult;

bool within(std::chrono::seconds limit, const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::steady_clock::now() - start < limit;
}

TEST(Calls, SynchronousCallReturnsTheAnswerOfItsOwnDaemon) {
  Host one(statesAndVersion({2}));
  Host two(statesAndVersion({6}));
  for (const auto& [host, state] : {std::pair(&one, ZephlinkSDK_State_LoggedIn), {&two, ZephlinkSDK_State_Connected}}) {
    const auto record = ZephlinkSDK_getState(host->sdk, nullptr, nullptr);
    EXPECT_FALSE(record.hasError);
    EXPECT_EQ(record.errorCode, ZephlinkSDK_Error_None);
    EXPECT_EQ(record.state, state);
  }
}

TEST(Calls, ImmediateRecordOfAnAsynchronousCallIsMarked) {
  Collector<Version> versions;
  Host host(statesAndVersion({}));
  const auto immediate = ZephlinkSDK_getVersion(host.sdk, versions.collect, &versions);
  EXPECT_FALSE(immediate.hasError);
  EXPECT_EQ(immediate.errorCode, ZephlinkSDK_Error_AsyncCall);
  EXPECT_STREQ(immediate.errorMessage, "Result is an async call SDK");
  ASSERT_TRUE(versions.waitFor(1));
  // The record in the callback keeps the mark of an asynchronous call.
  EXPECT_FALSE(versions.all()[0].hasError);
  EXPECT_EQ(versions.all()[0].errorCode, ZephlinkSDK_Error_AsyncCall);
  EXPECT_EQ(versions.all()[0].handle, immediate.handle);
  EXPECT_EQ(versions.all()[0].build, 4);
}

TEST(Calls, OneShotCallEndsWithItsFirstAnswerWhateverTheCallbackReturns) {
  Collector<Version> versions;
  Host host({{"request_version_data", {kVersionReport, kVersionReport}}, {"request_current_state", {stateReport(0)}}});
  ZephlinkSDK_getVersion(host.sdk, versions.collect, &versions);
  // Answered after both version reports.
  ZephlinkSDK_getState(host.sdk, nullptr, nullptr);
  EXPECT_EQ(versions.all().size(), 1U);
}

TEST(Calls, SubscriptionStaysUntilItsCallbackReturnsFalse) {
  Collector<State> states;
  Host host(statesAndVersion({1, 2, 3, 4}));
  states.answer = [](const State& record) { return record.state != 3; };
  ZephlinkSDK_getState(host.sdk, states.collect, &states);
  ZephlinkSDK_getVersion(host.sdk, nullptr, nullptr);
  const auto records = states.all();
  ASSERT_EQ(records.size(), 3U);
  for (std::size_t i = 0; i < records.size(); ++i) EXPECT_EQ(records[i].state, i + 1);
}

TEST(Calls, ListenerStaysUntilItsCallbackReturnsFalse) {
  const std::string peer = event("report_networksharing_new_peer_available", "{}");
  Collector<ZephlinkSDK_NetworkSharingPairResult> peers;
  Host host({{"request_version_data", {peer, peer, kVersionReport}}});
  peers.answer = [](const auto&) { return false; };
  ZephlinkSDK_listenForNetworkShareNewPeerAvailable(host.sdk, peers.collect, &peers);
  ZephlinkSDK_getVersion(host.sdk, nullptr, nullptr);
  EXPECT_EQ(peers.all().size(), 1U);
}

TEST(Calls, RemovedListenerReceivesNothing) {
  Collector<State> states;
  Host host(statesAndVersion({1}));
  const auto handle = ZephlinkSDK_getState(host.sdk, states.collect, &states).handle;
  ASSERT_TRUE(states.waitFor(1));
  for (const std::uint64_t each : {handle, handle, ~std::uint64_t{0}}) ZephlinkSDK_removeListener(host.sdk, each);
  host.daemon.send(stateReport(2));
  ZephlinkSDK_getVersion(host.sdk, nullptr, nullptr);
  EXPECT_EQ(states.all().size(), 1U);
}

TEST(Calls, OneReportAnswersAllWaitingCalls) {
  Host host;
  std::atomic<int> answered{0};
  std::thread reporter([&] {
    EXPECT_TRUE(host.daemon.waitForRequests(4));
    host.daemon.send(stateReport(5));
  });
  onThreads(4, [&](int) { answered += ZephlinkSDK_getState(host.sdk, nullptr, nullptr).state == 5 ? 1 : 0; });
  reporter.join();
  EXPECT_EQ(answered, 4);
}

TEST(Calls, SynchronousCallFromACallbackIsRefused) {
  Collector<State> states;
  Host host(statesAndVersion({1}));
  Version inner{};
  states.answer = [&](const State&) {
    inner = ZephlinkSDK_getVersion(host.sdk, nullptr, nullptr);
    return true;
  };
  ZephlinkSDK_getState(host.sdk, states.collect, &states);
  ASSERT_TRUE(states.waitFor(1));
  EXPECT_TRUE(inner.hasError);
  EXPECT_EQ(inner.errorCode, ZephlinkSDK_Error_SyncCallInCallback);
  EXPECT_STREQ(inner.errorMessage, "Synchronous call used from within asynchronous callback. Not supported");
  EXPECT_EQ(host.daemon.received().size(), 1U);
}

TEST(Calls, CallbackMayRegisterAndRemove) {
  Collector<State> first;
  Collector<State> second;
  Collector<Version> versions;
  Host host(statesAndVersion({1}));
  second.answer = [](const State&) { return false; };
  first.answer = [&](const State& record) {
    // Receives the next report, not the current one: its request was not sent yet.
    ZephlinkSDK_getState(host.sdk, second.collect, &second);
    ZephlinkSDK_getVersion(host.sdk, versions.collect, &versions);
    ZephlinkSDK_removeListener(host.sdk, record.handle);
    return true;
  };
  ZephlinkSDK_getState(host.sdk, first.collect, &first);
  ASSERT_TRUE(versions.waitFor(1));
  EXPECT_EQ(first.all().size(), 1U);
  EXPECT_EQ(second.all().size(), 1U);
  EXPECT_EQ(host.daemon.received().size(), 3U);
}

TEST(Calls, TimedOutSubscriptionStaysForLaterReports) {
  Collector<State> states;
  Host host;
  ZephlinkSDK_getState(host.sdk, states.collect, &states);
  ASSERT_TRUE(states.waitFor(1));
  EXPECT_TRUE(states.all()[0].hasError);
  EXPECT_EQ(states.all()[0].errorCode, ZephlinkSDK_Error_Timeout);
  host.daemon.send(stateReport(2));
  ASSERT_TRUE(states.waitFor(2));
  // Only the head's error flag is cleared.
  EXPECT_FALSE(states.all()[1].hasError);
  EXPECT_EQ(states.all()[1].errorCode, ZephlinkSDK_Error_Timeout);
  EXPECT_EQ(states.all()[1].state, ZephlinkSDK_State_LoggedIn);
}

TEST(Calls, SubscriptionOutlivesTheConnection) {
  Collector<State> states;
  Host host(statesAndVersion({1}));
  ZephlinkSDK_getState(host.sdk, states.collect, &states);
  ASSERT_TRUE(states.waitFor(1));
  host.daemon.socket().drop(1);
  ASSERT_TRUE(host.daemon.waitForConnections(2));
  EXPECT_EQ(ZephlinkSDK_getVersion(host.sdk, nullptr, nullptr).build, 4);
  host.daemon.send(stateReport(2));
  ASSERT_TRUE(states.waitFor(2));
  EXPECT_EQ(host.daemon.received().size(), 2U);
}

TEST(Calls, CallersAreServedWhileTheLinkIsClosing) {
  Collector<State> states;
  Host host;
  ASSERT_TRUE(host.daemon.waitForConnections(1));
  host.daemon.socket().close(1);
  // The channel thread never sleeps here; other threads must still be able to register and remove.
  EXPECT_TRUE(within(std::chrono::seconds(4), [&] {
    for (int i = 0; i < 1000; ++i) {
      ZephlinkSDK_removeListener(host.sdk, ZephlinkSDK_getState(host.sdk, states.collect, &states).handle);
    }
  }));
  EXPECT_EQ(states.all().size(), 0U);
}

TEST(Calls, HelloIsSentFirstAndOnce) {
  const std::string request = R"(["request_current_state",null,"zephlink_sdk"])";
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"A host of my own, with a long name",
       {R"(["set_app_name",{"name":"A host of my own, with a long n"},"zephlink_sdk"])", request}},
      {"", {request}}};
  for (const auto& [name, received] : cases) {
    ScriptedDaemon daemon(statesAndVersion({1}));
    const Sdk sdk(ZephlinkSDK_create(configFor(daemon.port(), name)));
    ZephlinkSDK_getState(sdk.get(), nullptr, nullptr);
    EXPECT_EQ(daemon.received(), received);
  }
}

TEST(Calls, TextsQueuedJustBeforeDestructionAreSent) {
  Host host;
  const unsigned int periods[] = {24, 168, 720, 1, 2, 3};
  EXPECT_FALSE(ZephlinkSDK_subscribeStats(host.sdk, true, 6, periods).hasError);
  EXPECT_FALSE(ZephlinkSDK_subscribeStats(host.sdk, false, 6, periods).hasError);
  host.owner.reset();
  // The keep-alive thread may have repeated the first request in between.
  EXPECT_TRUE(host.daemon.waitForRequest(R"(["stat_subscribe",{"enable":false},"zephlink_sdk"])"));
  EXPECT_EQ(host.daemon.received().front(),
            R"(["stat_subscribe",{"enable":true,"periods":[24,168,720,1,2]},"zephlink_sdk"])");
}

TEST(Calls, KeepAliveRepeatsTheSubscriptionAtOnce) {
  Host host;
  const unsigned int day = 24;
  ZephlinkSDK_subscribeStats(host.sdk, true, 1, &day);
  ASSERT_TRUE(host.daemon.waitForRequests(2));
  EXPECT_EQ(host.daemon.received()[1], R"(["stat_subscribe",{"enable":true},"zephlink_sdk"])");
}

/// The repetition has no periods: between the requests of a host it would undo the first one.
TEST(Calls, KeepAliveFollowsTheRequestsOfTheHost) {
  const std::vector<std::string> own{
      R"(["stat_subscribe",{"enable":true,"periods":[24]},"zephlink_sdk"])",
      R"(["request_current_state",null,"zephlink_sdk"])", R"(["request_networks",null,"zephlink_sdk"])",
      R"(["request_connection_stats",null,"zephlink_sdk"])", R"(["request_session_stats",null,"zephlink_sdk"])"};
  for (int round = 0; round < 50; ++round) {
    Collector<State> states;
    Collector<ZephlinkSDK_AdaptersResult> adapters;
    Collector<ZephlinkSDK_ConnectionStatsResult> connections;
    Collector<ZephlinkSDK_SessionStatsResult> sessions;
    Host host;
    const std::uint32_t day = 24;
    ZephlinkSDK_subscribeStats(host.sdk, true, 1, &day);
    ZephlinkSDK_getState(host.sdk, states.collect, &states);
    ZephlinkSDK_getAdapters(host.sdk, adapters.collect, &adapters);
    ZephlinkSDK_getConnectionStats(host.sdk, connections.collect, &connections);
    ZephlinkSDK_getSessionStats(host.sdk, sessions.collect, &sessions);
    ASSERT_TRUE(host.daemon.waitForRequests(own.size()));
    auto received = host.daemon.received();
    received.resize(own.size());
    ASSERT_EQ(received, own) << "in round " << round;
  }
}

TEST(Calls, DestructionIsPromptInEveryStateOfTheLink) {
  ScriptedDaemon daemon;
  const ClosedPort closedPort;
  // Twenty full pauses would take five seconds.
  EXPECT_TRUE(within(std::chrono::seconds(5), [&] {
    for (int i = 0; i < 20; ++i) {
      connectTo(daemon.port());
      connectTo(closedPort.number());
    }
  }));
}

}  // namespace
}  // namespace tests
