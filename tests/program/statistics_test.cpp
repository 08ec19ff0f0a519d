// stats: its requests, its end, and reports that arrive while it runs.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "platform/clock.h"
#include "tests/program_case.h"

namespace tests {
namespace {

const std::string kSubscribe = request("stat_subscribe", R"({"enable":true})");
const std::string kUnsubscribe = request("stat_subscribe", R"({"enable":false})");
const std::string kConnected = event("report_current_state", R"({"state":6})");
const std::string kConnectedBlock = block("state", R"({"state":"CONNECTED"})");
const std::string kStreaming = event("report_streaming_stats", "{}");
const std::string kStreamingBlock =
    block("streaming_stats", R"({"badCpu":false,"badLatency":false,"badLoss":false,"badMemory":false,
                                 "bondingMode":"speed","streams":[]})");

std::string connectionsAt(int time) {
  return event("report_connection_stats", R"({"time":)" + std::to_string(time) + R"(,"connections":[]})");
}
std::string connectionsBlock(int time) {
  return block("connection_stats", R"({"time":)" + std::to_string(time) + R"(,"connections":[]})");
}

/// Runs until one second after the first event. The keep-alive may be sent between any two requests.
TEST(Stats, RequestsEverythingAndEndsAfterItsDuration) {
  ScriptedDaemon daemon({{"request_current_state", {kConnected}}});
  const ProgramRun run = zephctl(daemon.port(), {"stats", "1", "day", "networksharing", "week", "month", "total",
                                                 "networksharing", "current", "networksharing"});
  EXPECT_EQ(run.out, kConnectedBlock);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, 0);
  ASSERT_TRUE(daemon.waitForRequests(8));
  std::vector<std::string> received = daemon.received();
  const auto repeated = std::find(received.begin(), received.end(), kSubscribe);
  ASSERT_NE(repeated, received.end());
  received.erase(repeated);
  EXPECT_EQ(received,
            (std::vector<std::string>{
                request("stat_subscribe", R"({"enable":true,"periods":[24,168,720,4294967295,0]})"),
                request("request_current_state"), request("request_networks"), request("request_connection_stats"),
                request("request_session_stats"), request("request_streaming_stats"), kUnsubscribe}));
}

TEST(Stats, AcceptsPeriodsAsNumbersAndNames) {
  const std::pair<std::vector<std::string>, const char*> rows[] = {
      {{"stats"}, ""},
      {{"stats", "0"}, ""},
      {{"stats", "-1", "24"}, R"(,"periods":[24])"},
      {{"stats", " +9", "day"}, R"(,"periods":[24])"},
      {{"stats", "2147483647", "4294967295", "0", "100"}, R"(,"periods":[4294967295,0,100])"},
  };
  for (const auto& [words, periods] : rows) {
    ScriptedDaemon daemon;
    Process run(command(daemon.port(), words));
    ASSERT_TRUE(daemon.waitForRequests(1));
    EXPECT_EQ(daemon.received()[0], request("stat_subscribe", std::string(R"({"enable":true)") + periods + "}"));
  }
}

/// Errors are printed on stderr, count as events, and do not change the status.
TEST(Stats, PrintsTimeoutsInTheErrorForm) {
  ScriptedDaemon daemon;
  const auto start = std::chrono::steady_clock::now();
  const ProgramRun run = zephctl(daemon.port(), {"stats", "1"});
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  std::string errors;
  for (int i = 0; i < 5; ++i) errors += block("error", errorObject(3841, "Timeout waiting for result", "Timeout"));
  EXPECT_EQ(run.err, errors);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, 0);
}

TEST(Stats, PrintsLaterReportsOfEachKindAlsoAfterReconnecting) {
  ScriptedDaemon daemon({{"request_current_state", {kConnected}}});
  Process run(command(daemon.port(), {"stats"}));
  ASSERT_TRUE(run.waitForOutput(kConnectedBlock));
  // The last subscription: reports that arrive before it is established would be lost.
  ASSERT_TRUE(daemon.waitForRequest(request("request_streaming_stats")));
  std::string shown = kConnectedBlock;
  const std::pair<std::string, std::string> events[] = {
      {kStreaming, kStreamingBlock},
      {event("report_session_stats", "{}"), block("session_stats", "{}")},
      {connectionsAt(3), connectionsBlock(3)},
      {event("report_networks", "[]"), block("adapters", "[]")},
      {event("report_version_data", "{}"), ""},
      {kConnected, kConnectedBlock},
  };
  for (const auto& [text, printed] : events) {
    daemon.send(text);
    shown += printed;
    // Each block must be printed before the next event is sent.
    ASSERT_TRUE(run.waitForOutput(shown));
  }
  daemon.socket().drop(1);
  ASSERT_TRUE(daemon.waitForConnections(2));
  daemon.send(connectionsAt(9));
  shown += connectionsBlock(9);
  ASSERT_TRUE(run.waitForOutput(shown));
  run.kill();
  EXPECT_EQ(run.finish().out, shown);
}

/// All five requests are answered before the burst, so that none of them times out on a slow machine.
TEST(Stats, PrintsABurstWholeAndInOrder) {
  ProgramCase row{.words = {"stats"},
                  .answers = {{"request_current_state", {kConnected}},
                              {"request_networks", {event("report_networks", "[]")}},
                              {"request_connection_stats", {connectionsAt(0)}},
                              {"request_session_stats", {event("report_session_stats", "{}")}},
                              {"request_streaming_stats", {kStreaming}}},
                  .out = kConnectedBlock + block("adapters", "[]") + connectionsBlock(0) +
                         block("session_stats", "{}") + kStreamingBlock,
                  .endless = true};
  for (int i = 1; i <= 10000; ++i) {
    row.answers["request_streaming_stats"].push_back(connectionsAt(i));
    row.out += connectionsBlock(i);
  }
  check(row);
}

TEST(Stats, RequestsFiveMinutesOfHistoryOnTheMonotonicClock) {
  ScriptedDaemon daemon({{"request_historic_connection_stats", {event("report_historic_connection_stats", "[]")}}});
  const std::uint64_t before = zephlinksdk::monotonicMs();
  EXPECT_EQ(zephctl(daemon.port(), {"stats", "historic"}).status, 0);
  ASSERT_EQ(daemon.received().size(), 1U);
  const Json::Value members = parsed(daemon.received()[0])[1];
  ASSERT_EQ(members.getMemberNames(), std::vector<std::string>{"dataSince"});
  EXPECT_GE(members["dataSince"].asUInt64(), before - 300000);
  EXPECT_LE(members["dataSince"].asUInt64(), zephlinksdk::monotonicMs() - 300000);
}

}  // namespace
}  // namespace tests
