// Calls, subscriptions and listeners as a host makes them.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "tests/sdk/host.h"

namespace tests {
namespace {

using StateCollector = Collector<ZephlinkSDK_StateResult>;
using VersionCollector = Collector<ZephlinkSDK_VersionResult>;

std::string stateReport(int state) {
  return event("report_current_state", "{\"state\":" + std::to_string(state) + "}");
}

const std::string kVersionReport = event("report_version_data", R"({"maj":1,"min":2,"bug":3,"build":4})");

TEST(Calls, SynchronousCallReturnsTheAnswer) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(6)}}});
  const Sdk sdk = connectTo(daemon.port());
  const auto record = ZephlinkSDK_getState(sdk.get(), nullptr, nullptr);
  EXPECT_FALSE(record.hasError);
  EXPECT_EQ(record.errorCode, ZephlinkSDK_Error_None);
  EXPECT_EQ(record.state, ZephlinkSDK_State_Connected);
}

TEST(Calls, ImmediateRecordOfAnAsynchronousCallIsMarked) {
  ScriptedDaemon daemon({{"request_version_data", {kVersionReport}}});
  const Sdk sdk = connectTo(daemon.port());
  VersionCollector versions;
  const auto immediate = ZephlinkSDK_getVersion(sdk.get(), VersionCollector::collect, &versions);
  EXPECT_FALSE(immediate.hasError);
  EXPECT_EQ(immediate.errorCode, ZephlinkSDK_Error_AsyncCall);
  EXPECT_STREQ(immediate.errorMessage, "Result is an async call SDK");
  ASSERT_TRUE(versions.waitFor(1));
  // The mark stays in the record that the callback gets.
  EXPECT_FALSE(versions.all()[0].hasError);
  EXPECT_EQ(versions.all()[0].errorCode, ZephlinkSDK_Error_AsyncCall);
  EXPECT_EQ(versions.all()[0].handle, immediate.handle);
  EXPECT_EQ(versions.all()[0].build, 4);
}

TEST(Calls, OneShotCallEndsWithItsFirstAnswerWhateverTheCallbackReturns) {
  ScriptedDaemon daemon(
      {{"request_version_data", {kVersionReport, kVersionReport}}, {"request_current_state", {stateReport(0)}}});
  const Sdk sdk = connectTo(daemon.port());
  VersionCollector versions;
  ZephlinkSDK_getVersion(sdk.get(), VersionCollector::collect, &versions);
  // Answered behind both version reports.
  ZephlinkSDK_getState(sdk.get(), nullptr, nullptr);
  EXPECT_EQ(versions.all().size(), 1U);
}

TEST(Calls, SubscriptionStaysUntilItsCallbackReturnsFalse) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(1), stateReport(2), stateReport(3), stateReport(4)}},
                         {"request_version_data", {kVersionReport}}});
  const Sdk sdk = connectTo(daemon.port());
  StateCollector states;
  states.answer = [](const ZephlinkSDK_StateResult& record) { return record.state != 3; };
  ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &states);
  ZephlinkSDK_getVersion(sdk.get(), nullptr, nullptr);
  const auto records = states.all();
  ASSERT_EQ(records.size(), 3U);
  for (std::size_t i = 0; i < records.size(); ++i) EXPECT_EQ(records[i].state, i + 1);
}

TEST(Calls, RemovedListenerHearsNoMore) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(1)}}, {"request_version_data", {kVersionReport}}});
  const Sdk sdk = connectTo(daemon.port());
  StateCollector states;
  const auto immediate = ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &states);
  ASSERT_TRUE(states.waitFor(1));
  ZephlinkSDK_removeListener(sdk.get(), immediate.handle);
  ZephlinkSDK_removeListener(sdk.get(), immediate.handle);
  ZephlinkSDK_removeListener(sdk.get(), ~std::uint64_t{0});
  daemon.send(stateReport(2));
  ZephlinkSDK_getVersion(sdk.get(), nullptr, nullptr);
  EXPECT_EQ(states.all().size(), 1U);
}

TEST(Calls, OneReportAnswersAllThatWaitForIt) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  std::vector<std::thread> callers;
  std::atomic<int> answered{0};
  for (int i = 0; i < 4; ++i) {
    callers.emplace_back([&] {
      if (ZephlinkSDK_getState(sdk.get(), nullptr, nullptr).state == 5) ++answered;
    });
  }
  ASSERT_TRUE(daemon.waitForRequests(4));
  daemon.send(stateReport(5));
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(answered, 4);
}

TEST(Calls, SynchronousCallFromACallbackIsRefused) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(1)}}});
  const Sdk sdk = connectTo(daemon.port());
  StateCollector states;
  ZephlinkSDK_VersionResult inner{};
  states.answer = [&](const ZephlinkSDK_StateResult&) {
    inner = ZephlinkSDK_getVersion(sdk.get(), nullptr, nullptr);
    return true;
  };
  ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &states);
  ASSERT_TRUE(states.waitFor(1));
  EXPECT_TRUE(inner.hasError);
  EXPECT_EQ(inner.errorCode, ZephlinkSDK_Error_SyncCallInCallback);
  EXPECT_STREQ(inner.errorMessage, "Synchronous call used from within asynchronous callback. Not supported");
  EXPECT_EQ(daemon.heard().size(), 1U);
}

TEST(Calls, CallbackMayRegisterAndRemove) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(1)}}, {"request_version_data", {kVersionReport}}});
  const Sdk sdk = connectTo(daemon.port());
  StateCollector first;
  StateCollector second;
  VersionCollector versions;
  second.answer = [](const ZephlinkSDK_StateResult&) { return false; };
  std::uint64_t own = 0;
  first.answer = [&](const ZephlinkSDK_StateResult& record) {
    own = record.handle;
    // Hears of the next report, not of the one under way: its request has not left yet.
    ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &second);
    ZephlinkSDK_getVersion(sdk.get(), VersionCollector::collect, &versions);
    ZephlinkSDK_removeListener(sdk.get(), own);
    return true;
  };
  ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &first);
  ASSERT_TRUE(versions.waitFor(1));
  EXPECT_EQ(first.all().size(), 1U);
  EXPECT_EQ(second.all().size(), 1U);
  EXPECT_EQ(daemon.heard().size(), 3U);
}

TEST(Calls, TimedOutSubscriptionStaysForLaterReports) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  StateCollector states;
  ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &states);
  ASSERT_TRUE(states.waitFor(1));
  EXPECT_TRUE(states.all()[0].hasError);
  EXPECT_EQ(states.all()[0].errorCode, ZephlinkSDK_Error_Timeout);
  daemon.send(stateReport(2));
  ASSERT_TRUE(states.waitFor(2));
  // Only the flag of the head is cleared.
  EXPECT_FALSE(states.all()[1].hasError);
  EXPECT_EQ(states.all()[1].errorCode, ZephlinkSDK_Error_Timeout);
  EXPECT_EQ(states.all()[1].state, ZephlinkSDK_State_LoggedIn);
}

TEST(Calls, SubscriptionOutlivesTheConnection) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(1)}}, {"request_version_data", {kVersionReport}}});
  const Sdk sdk = connectTo(daemon.port());
  StateCollector states;
  ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &states);
  ASSERT_TRUE(states.waitFor(1));
  daemon.socket().drop(1);
  ASSERT_TRUE(daemon.waitForConnections(2));
  EXPECT_EQ(ZephlinkSDK_getVersion(sdk.get(), nullptr, nullptr).build, 4);
  daemon.send(stateReport(2));
  ASSERT_TRUE(states.waitFor(2));
  EXPECT_EQ(daemon.heard().size(), 2U);
}

TEST(Calls, SeveralObjectsKeepApart) {
  ScriptedDaemon one({{"request_current_state", {stateReport(1)}}});
  ScriptedDaemon two({{"request_current_state", {stateReport(2)}}});
  const Sdk first = connectTo(one.port());
  const Sdk second = connectTo(two.port());
  EXPECT_EQ(ZephlinkSDK_getState(first.get(), nullptr, nullptr).state, 1U);
  EXPECT_EQ(ZephlinkSDK_getState(second.get(), nullptr, nullptr).state, 2U);
}

TEST(Calls, ManyThreadsCallAtOnce) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(6)}}, {"request_version_data", {kVersionReport}}});
  const Sdk sdk = connectTo(daemon.port());
  std::vector<std::thread> callers;
  std::atomic<int> wrong{0};
  for (int i = 0; i < 8; ++i) {
    callers.emplace_back([&] {
      StateCollector states;
      for (int round = 0; round < 20; ++round) {
        if (ZephlinkSDK_getState(sdk.get(), nullptr, nullptr).state != 6) ++wrong;
        if (ZephlinkSDK_getVersion(sdk.get(), nullptr, nullptr).build != 4) ++wrong;
        const auto handle = ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &states).handle;
        ZephlinkSDK_removeListener(sdk.get(), handle);
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(wrong, 0);
}

TEST(Calls, CallersAreServedWhileTheLinkIsClosing) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  ASSERT_TRUE(daemon.waitForConnections(1));
  daemon.socket().close(1);
  StateCollector states;
  // The channel thread never sleeps now; registering and removing must get their turn all the same.
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 1000; ++i) {
    const auto handle = ZephlinkSDK_getState(sdk.get(), StateCollector::collect, &states).handle;
    ZephlinkSDK_removeListener(sdk.get(), handle);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
  EXPECT_EQ(states.all().size(), 0U);
}

TEST(Calls, HelloComesFirstAndOnce) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(1)}}});
  const Sdk sdk(ZephlinkSDK_create(configFor(daemon.port(), "A host of my own, with a long name")));
  ZephlinkSDK_getState(sdk.get(), nullptr, nullptr);
  const std::vector<std::string> heard = daemon.heard();
  ASSERT_EQ(heard.size(), 2U);
  EXPECT_EQ(heard[0], R"(["set_app_name",{"name":"A host of my own, with a long n"},"zephlink_sdk"])");

  ScriptedDaemon silent({{"request_current_state", {stateReport(1)}}});
  const Sdk nameless(ZephlinkSDK_create(configFor(silent.port(), "")));
  ZephlinkSDK_getState(nameless.get(), nullptr, nullptr);
  EXPECT_EQ(silent.heard().size(), 1U);
}

TEST(Calls, TextsQueuedJustBeforeTheEndLeave) {
  ScriptedDaemon daemon;
  {
    const Sdk sdk = connectTo(daemon.port());
    const unsigned int periods[] = {24, 168, 720, 1, 2, 3};
    EXPECT_FALSE(ZephlinkSDK_subscribeStats(sdk.get(), true, 6, periods).hasError);
    EXPECT_FALSE(ZephlinkSDK_subscribeStats(sdk.get(), false, 6, periods).hasError);
  }
  // The keep-alive thread may have repeated the first in between.
  EXPECT_TRUE(daemon.waitForRequest(R"(["stat_subscribe",{"enable":false},"zephlink_sdk"])"));
  EXPECT_EQ(daemon.heard().front(), R"(["stat_subscribe",{"enable":true,"periods":[24,168,720,1,2]},"zephlink_sdk"])");
}

TEST(Calls, KeepAliveRepeatsTheSubscriptionAtOnce) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  const unsigned int day = 24;
  ZephlinkSDK_subscribeStats(sdk.get(), true, 1, &day);
  ASSERT_TRUE(daemon.waitForRequests(2));
  EXPECT_EQ(daemon.heard()[1], R"(["stat_subscribe",{"enable":true},"zephlink_sdk"])");
}

TEST(Calls, EndsAtOnceInEveryStateOfTheLink) {
  ScriptedDaemon daemon;
  std::uint16_t closedPort = 0;
  { closedPort = ScriptedDaemon().port(); }
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 20; ++i) {
    { const Sdk connecting = connectTo(daemon.port()); }
    { const Sdk refusedByAll = connectTo(closedPort); }
  }
  const Sdk pausing = connectTo(closedPort);
  // Twenty pauses waited to their ends would take five.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(Calls, NullHandlesAndArgumentsAreRefused) {
  EXPECT_EQ(ZephlinkSDK_getState(nullptr, nullptr, nullptr).errorCode, ZephlinkSDK_Error_InvalidArgument);
  ZephlinkSDK_destroy(nullptr);
  ZephlinkSDK_removeListener(nullptr, 0);
  ZephlinkSDK_defaultConfig(nullptr);
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  EXPECT_EQ(ZephlinkSDK_subscribeStats(sdk.get(), true, 1, nullptr).errorCode, ZephlinkSDK_Error_InvalidArgument);
}

}  // namespace
}  // namespace tests
