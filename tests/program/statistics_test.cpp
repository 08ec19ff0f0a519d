// stats: the stream, its words, and what it shows of connections and tracked streams.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "cli/usage.h"
#include "tests/program_case.h"
#include "tests/stream_run.h"

namespace tests {
namespace {

constexpr const char* kSubscribe = R"(["stat_subscribe",{"enable":true},"zephlink_sdk"])";
constexpr const char* kUnsubscribe = R"(["stat_subscribe",{"enable":false},"zephlink_sdk"])";
const std::string kConnected = event("report_current_state", R"({"state":6})");
const std::string kConnectedBlock = "[\"state\",\n{\n\t\"state\" : \"CONNECTED\"\n}]\n\n";

std::string connectionsShown(const std::string& data) {
  return streamed({{"request_connection_stats", {event("report_connection_stats", data)}}}, 1).out;
}

std::string streamsShown(const std::string& data) {
  return streamed({{"request_streaming_stats", {event("report_streaming_stats", data)}}}, 1).out;
}

/// `members` laid over what an entry without members prints.
std::string connection(const std::string& members) {
  return R"({"adapterID":"","congested":false,"connected":false,"connectionID":"","inFlight":0,"inFlightWindow":0,
    "jitterMs":-1,"latencyMs":0,"localIp":"","lossReceive":0.0,"lossSend":0.0,"mos":0.0,"numberOfSockets":0,
    "privateIp":"","protocol":"auto","receiveBps":0,"receiveBytes":0,"receiveEstimateMbps":0.0,"remoteIp":"",
    "sendBps":0,"sendBytes":0,"sendEstimateMbps":0.0,"sleeping":false,"totalBps":0)" +
         (members.empty() ? "" : "," + members) + "}";
}

std::string connectionStats(const std::string& time, const std::string& connections) {
  return block("connection_stats", R"({"time":)" + time + R"(,"connections":[)" + connections + "]}");
}

TEST(ConnectionStats, ShowsEveryMember) {
  EXPECT_EQ(connectionsShown(R"({"time":18446744073709551615,"connections":[{
      "bInF":1,"bInFL":-2,"cnnct":true,"zzz":7,"guid":"{a}","key":"k","localIp":"10.0.0.1","lsR":0.25,"lsS":0.5,
      "ltMs":3,"privateIp":"10.0.0.2","protocol":"https","numConns":4,"remoteIp":"10.0.0.3","totBps":5000000000,
      "sndBps":6000000000,"rcvBps":7000000000,"sndEstMbps":8.5,"rcvEstMbps":9.5,"jtMs":10,"mos":4.2,
      "sndBytes":18446744073709551614,"rcvBytes":12,"congested":true}]})"),
            connectionStats("18446744073709551615", R"({
      "inFlight":1,"inFlightWindow":-2,"connected":true,"sleeping":true,"adapterID":"{a}","connectionID":"k",
      "localIp":"10.0.0.1","lossReceive":0.25,"lossSend":0.5,"latencyMs":3,"privateIp":"10.0.0.2","protocol":"https",
      "numberOfSockets":4,"remoteIp":"10.0.0.3","totalBps":5000000000,"sendBps":6000000000,"receiveBps":7000000000,
      "sendEstimateMbps":8.5,"receiveEstimateMbps":9.5,"jitterMs":10,"mos":4.1999998092651367,
      "sendBytes":18446744073709551614,"receiveBytes":12,"congested":true})"));
}

TEST(ConnectionStats, ReadsMissingAndWrongMembersAsNothing) {
  EXPECT_EQ(connectionsShown(R"({"time":"5","connections":[{},7,{"bInF":"1","cnnct":{},"zzz":"x","guid":[1],"jtMs":null,
      "protocol":null,"numConns":-1,"mos":"4","sndBytes":-1,"ltMs":2.9,"key":12}]})"),
            connectionStats("0", connection("") + "," + connection("") + "," +
                                     connection(R"("jitterMs":0,"protocol":"tcp","numberOfSockets":4294967295,
                                                   "latencyMs":2,"connectionID":"12")")));
  for (const char* data : {"null", "[]", "{}", R"({"time":5})", R"({"connections":[{}]})"}) {
    EXPECT_EQ(connectionsShown(data), connectionStats("0", "")) << data;
  }
  for (const char* list : {"null", "5", "[]", "{}"}) {
    EXPECT_EQ(connectionsShown(std::string(R"({"time":5,"connections":)") + list + "}"), connectionStats("5", ""));
  }
}

TEST(ConnectionStats, CutsWhatHasNoRoom) {
  const std::string text(150, 'x');
  std::string sent;
  std::string shown;
  for (int i = 0; i < 30; ++i) {
    const std::string comma = i == 0 ? "" : ",";
    sent += comma + R"({"ltMs":)" + std::to_string(i) + R"(,"guid":")" + text + R"(","localIp":")" + text + "\"}";
    if (i >= 25) continue;
    shown += comma + connection(R"("latencyMs":)" + std::to_string(i) + R"(,"adapterID":")" + text.substr(0, 99) +
                                R"(","localIp":")" + text.substr(0, 45) + "\"");
  }
  EXPECT_EQ(connectionsShown(R"({"time":1,"connections":[)" + sent + "]}"), connectionStats("1", shown));
}

/// A text that names no protocol leaves the field as the report before left it.
TEST(ConnectionStats, KnowsItsProtocols) {
  const char* rows[][2] = {{R"("x")", "tcp"},       {R"("tcp")", "tcp"},     {R"("udp")", "udp"},
                           {R"("https")", "https"}, {R"("proxy")", "proxy"}, {R"("tcp-multi")", "tcp-multi"},
                           {R"("share")", "share"}, {R"("auto")", "share"},  {R"("TCP")", "share"}};
  std::vector<std::string> reports;
  std::string shown;
  for (const auto& [sent, name] : rows) {
    reports.push_back(
        event("report_connection_stats", std::string(R"({"time":1,"connections":[{"protocol":)") + sent + "}]}"));
    shown += connectionStats("1", connection(std::string(R"("protocol":")") + name + "\""));
  }
  EXPECT_EQ(streamed({{"request_connection_stats", reports}}, static_cast<int>(reports.size())).out, shown);
}

std::string trackedStream(const std::string& members) {
  return R"({"active":false,"averageDownloadSpeed":0.0,"averageUploadSpeed":0.0,"domain":"","downloadSpeed":0.0,
    "duration":0,"failoverSaves":0,"groupId":0,"health":"stopped","id":0,"name":"","protocol":"",
    "redundantModeSaves":0,"remoteIp":"","remotePort":0,"speedModeSaves":0,"startTime":0,"uploadSpeed":0.0)" +
         (members.empty() ? "" : "," + members) + "}";
}

std::string streamingStats(const std::string& streams, const std::string& members = "") {
  return block("streaming_stats", R"({"badCpu":false,"badLatency":false,"badLoss":false,"badMemory":false,
    "bondingMode":"speed")" + (members.empty() ? "" : "," + members) +
                                      R"(,"streams":[)" + streams + "]}");
}

TEST(StreamingStats, ShowsEveryMember) {
  EXPECT_EQ(streamsShown(R"({"bonding_mode":"RD","streams":[{
      "active":true,"duration":1,"id":2,"group_id":3,"start_time":4,"upload_speed":5.5,"download_speed":6.5,
      "average_upload_speed":7.5,"average_download_speed":8.5,"redundant_saves":9,"speed_saves":10,
      "failover_saves":18446744073709551615,"name":"n","health":2,"remoteIp":"10.0.0.1","remote_port":65537,
      "protocol":"udp","hostname":"h"}]})"),
            streamingStats(R"({"active":true,"duration":1,"id":2,"groupId":3,"startTime":4,"uploadSpeed":5.5,
      "downloadSpeed":6.5,"averageUploadSpeed":7.5,"averageDownloadSpeed":8.5,"redundantModeSaves":9,
      "speedModeSaves":10,"failoverSaves":18446744073709551615,"name":"n","health":"good","remoteIp":"10.0.0.1",
      "remotePort":1,"protocol":"udp","domain":"h"})",
                           R"("bondingMode":"redundant")"));
  for (const auto& [wire, key] : {std::pair{"badLoss", "badLoss"},
                                  {"badLatency", "badLatency"},
                                  {"badCpu", "badCpu"},
                                  {"badMemory", "badMemory"}}) {
    EXPECT_EQ(streamsShown(std::string("{\"") + wire + "\":true}"),
              streamingStats("", std::string("\"") + key + "\":true"));
  }
}

TEST(StreamingStats, ReadsMissingAndWrongMembersAsNothing) {
  for (const char* data : {"null", "{}", "7", R"({"streams":null,"bonding_mode":5,"badLoss":"x"})"}) {
    EXPECT_EQ(streamsShown(data), streamingStats("")) << data;
  }
  const std::string poor = R"("health":"poor")";
  EXPECT_EQ(streamsShown(R"({"bonding_mode":"STR","streams":[{},null,{"health":1},{"health":3},{"health":-2},
      {"id":"1","name":[],"remote_port":4294967296,"start_time":-1}]})"),
            streamingStats(trackedStream("") + "," + trackedStream("") + "," + trackedStream(poor) + "," +
                               trackedStream("") + "," + trackedStream("") + "," + trackedStream(""),
                           R"("bondingMode":"streaming")"));
}

TEST(StreamingStats, CutsWhatHasNoRoom) {
  const std::string text(300, 'x');
  std::string sent;
  std::string shown;
  for (int i = 0; i < 11; ++i) {
    const std::string comma = i == 0 ? "" : ",";
    const std::string id = R"("id":)" + std::to_string(i) + ",";
    const auto texts = [&](std::size_t name, std::size_t ip, std::size_t protocol, const char* key, std::size_t host) {
      return id + R"("name":")" + text.substr(0, name) + R"(","remoteIp":")" + text.substr(0, ip) +
             R"(","protocol":")" + text.substr(0, protocol) + "\",\"" + key + "\":\"" + text.substr(0, host) + "\"";
    };
    sent += comma + "{" + texts(300, 300, 300, "hostname", 300) + "}";
    if (i < 10) shown += comma + trackedStream(texts(49, 45, 31, "domain", 255));
  }
  EXPECT_EQ(streamsShown(R"({"streams":[)" + sent + "]}"), streamingStats(shown));
}

TEST(Stats, RefusesFaultyWords) {
  const std::vector<std::string> rows[] = {
      {"-2"},
      {"x"},
      {""},
      {"day"},
      {"networksharing"},
      {"2147483648"},
      {"3x"},
      {"3", "years"},
      {"3", ""},
      {"3", "24x"},
      {"3", "-1"},
      {"3", "4294967296"},
      {"3", "historic"},
      {"3", "Day"},
      {"3", "1", "2", "3", "4", "5", "6"},
      {"3", "day", "week", "networksharing", "month", "total", "current", "day"},
  };
  for (std::vector<std::string> words : rows) {
    words.insert(words.begin(), "stats");
    check(invalidCase(words, cli::usage::stats));
  }
}

/// Runs to its end, a second behind the first event. The keep-alive may fall between any two requests.
TEST(Stats, AsksForEverythingAndEndsByItsDuration) {
  ScriptedDaemon daemon({{"request_current_state", {kConnected}}});
  const ProgramRun run = zephctl(daemon.port(), {"stats", "1", "day", "networksharing", "week", "month", "total",
                                                 "networksharing", "current", "networksharing"});
  EXPECT_EQ(run.out, kConnectedBlock);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, 0);
  ASSERT_TRUE(daemon.waitForRequests(8));
  std::vector<std::string> heard = daemon.heard();
  const auto repeated = std::find(heard.begin(), heard.end(), kSubscribe);
  ASSERT_NE(repeated, heard.end());
  heard.erase(repeated);
  const auto plain = [](const std::string& name) { return "[\"" + name + R"(",null,"zephlink_sdk"])"; };
  EXPECT_EQ(heard, (std::vector<std::string>{
                       R"(["stat_subscribe",{"enable":true,"periods":[24,168,720,4294967295,0]},"zephlink_sdk"])",
                       plain("request_current_state"), plain("request_networks"), plain("request_connection_stats"),
                       plain("request_session_stats"), plain("request_streaming_stats"), kUnsubscribe}));
}

TEST(Stats, TakesPeriodsAsNumbersAndWords) {
  const std::pair<std::vector<std::string>, const char*> rows[] = {
      {{"stats"}, nullptr},
      {{"stats", "0"}, nullptr},
      {{"stats", "-1", "24"}, "24"},
      {{"stats", " +9", "day"}, "24"},
      {{"stats", "2147483647", "4294967295", "0", "100"}, "4294967295,0,100"},
  };
  for (const auto& [words, periods] : rows) {
    ScriptedDaemon daemon;
    std::vector<std::string> all{ZEPHCTL_PATH, "-p", std::to_string(daemon.port())};
    all.insert(all.end(), words.begin(), words.end());
    Process run(all);
    ASSERT_TRUE(daemon.waitForRequests(1));
    EXPECT_EQ(daemon.heard()[0], periods == nullptr ? kSubscribe
                                                    : std::string(R"(["stat_subscribe",{"enable":true,"periods":[)") +
                                                          periods + R"(]},"zephlink_sdk"])");
  }
}

/// Errors come on the other stream, count as events, and change no status.
TEST(Stats, PrintsTimeoutsInTheErrorForm) {
  ScriptedDaemon daemon;
  const auto start = std::chrono::steady_clock::now();
  const ProgramRun run = zephctl(daemon.port(), {"stats", "1"});
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  std::string errors;
  for (int i = 0; i < 5; ++i) errors += errorBlock(3841, "Timeout waiting for result", "Timeout");
  EXPECT_EQ(run.err, errors);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, 0);
}

TEST(Stats, PrintsLaterReportsOfEachKindAsTheyCome) {
  ScriptedDaemon daemon({{"request_current_state", {kConnected}}});
  Process run({ZEPHCTL_PATH, "-p", std::to_string(daemon.port()), "stats"});
  ASSERT_TRUE(run.waitForOutput(kConnectedBlock));
  std::string shown = kConnectedBlock;
  const std::pair<std::string, std::string> events[] = {
      {event("report_streaming_stats", "{}"), streamingStats("")},
      {event("report_session_stats", "{}"), block("session_stats", "{}")},
      {event("report_connection_stats", R"({"time":3,"connections":[]})"), connectionStats("3", "")},
      {event("report_networks", "[]"), block("adapters", "[]")},
      {event("report_version_data", "{}"), ""},
      {kConnected, kConnectedBlock},
  };
  for (const auto& [text, printed] : events) {
    daemon.send(text);
    shown += printed;
    // Each block stands there before the next event exists.
    ASSERT_TRUE(run.waitForOutput(shown));
  }
  run.kill();
  EXPECT_EQ(run.finish().out, shown);
}

TEST(Stats, GoesOnBehindALostConnection) {
  ScriptedDaemon daemon({{"request_current_state", {kConnected}}});
  Process run({ZEPHCTL_PATH, "-p", std::to_string(daemon.port()), "stats"});
  ASSERT_TRUE(run.waitForOutput(kConnectedBlock));
  daemon.socket().drop(1);
  ASSERT_TRUE(daemon.waitForConnections(2));
  daemon.send(event("report_connection_stats", R"({"time":9,"connections":[]})"));
  const std::string behind = connectionStats("9", "");
  ASSERT_TRUE(run.waitForOutput(behind));
  run.kill();
  EXPECT_EQ(run.finish().out, kConnectedBlock + behind);
}

TEST(Stats, PrintsABurstWholeAndInOrder) {
  std::vector<std::string> reports;
  std::string shown;
  const std::string padding = R"(,"connections":[{"guid":")" + std::string(90, 'a') + "\"}]}";
  const std::string entry = connection(R"("adapterID":")" + std::string(90, 'a') + "\"");
  for (int i = 0; i < 2000; ++i) {
    reports.push_back(event("report_connection_stats", R"({"time":)" + std::to_string(i) + padding));
    shown += connectionStats(std::to_string(i), entry);
  }
  EXPECT_EQ(streamed({{"request_connection_stats", reports}}, 2000).out, shown);
}

}  // namespace
}  // namespace tests
