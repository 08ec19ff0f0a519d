// stats historic, and the session statistics of the stream.
#include <gtest/gtest.h>
#include <json/json.h>

#include <sstream>

#include "sdk/platform/clock.h"
#include "tests/program_case.h"
#include "tests/stream_run.h"

namespace tests {
namespace {

constexpr const char* kRequest = "request_historic_connection_stats";
constexpr const char* kReport = "report_historic_connection_stats";

std::string errorOf(const std::string& message) { return errorBlock(3840, "An error in the SDK", message); }

/// Runs `stats historic` against one report.
ProgramRun history(const std::string& data) {
  ScriptedDaemon daemon({{kRequest, {event(kReport, data)}}});
  return zephctl(daemon.port(), {"stats", "historic"});
}

std::string connection(const std::string& members) {
  return R"({"adapterID":"","congested":false,"connected":false,"connectionID":"","inFlight":0,"inFlightWindow":0,
    "jitterMs":-1,"latencyMs":0,"localIp":"","lossReceive":0.0,"lossSend":0.0,"mos":0.0,"numberOfSockets":0,
    "privateIp":"","protocol":"tcp","receiveBps":0,"receiveBytes":0,"receiveEstimateMbps":0.0,"remoteIp":"",
    "sendBps":0,"sendBytes":0,"sendEstimateMbps":0.0,"sleeping":false,"totalBps":0,)" +
         members + "}";
}

std::string sample(const std::string& time, const std::string& connections) {
  return block("connection_stats", R"({"time":)" + time + R"(,"connections":[)" + connections + "]}");
}

/// A sample of one connection with this packed text.
std::string packed(const std::string& text) { return R"([{"time":1,"connections":{"a":{"tcp":")" + text + R"("}}}])"; }

const std::string kPacked =
    "10"
    "000000012a05f200"
    "0000000a"
    "ffffffff"
    "00Ff"
    "19"
    "ff";

TEST(History, AsksForFiveMinutesOnTheMonotonicClock) {
  ScriptedDaemon daemon({{kRequest, {event(kReport, "[]")}}});
  const std::uint64_t before = zephlinksdk::monotonicMs();
  const ProgramRun run = zephctl(daemon.port(), {"stats", "historic", "any", "words"});
  EXPECT_EQ(run.out, sample("0", ""));
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, 0);
  Json::Value request;
  ASSERT_EQ(daemon.heard().size(), 1U);
  std::istringstream(daemon.heard()[0]) >> request;
  EXPECT_EQ(request[0].asString(), kRequest);
  ASSERT_EQ(request[1].getMemberNames(), std::vector<std::string>{"dataSince"});
  EXPECT_GE(request[1]["dataSince"].asUInt64(), before - 300000);
  EXPECT_LE(request[1]["dataSince"].asUInt64(), zephlinksdk::monotonicMs() - 300000);
}

TEST(History, PrintsEachSampleAndTheLastOneTwice) {
  const std::string first = sample("7", connection(R"("adapterID":"a","protocol":"udp","connected":true,
      "totalBps":5000000000,"inFlight":10,"inFlightWindow":4294967295,"latencyMs":255,"lossReceive":0.25,
      "lossSend":2.5499999999999998)"));
  // Adapters and protocols come in the order of their names; an unknown protocol leaves what stood in its place before.
  const std::string second = sample("9", connection(R"("adapterID":"a2","protocol":"udp")") + "," +
                                             connection(R"("adapterID":"b","protocol":"https","sleeping":true)") + "," +
                                             connection(R"("adapterID":"b","protocol":"share")"));
  const std::string zeros(40, '0');
  const auto text = [](const std::string& name, const std::string& packed) {
    return "\"" + name + "\":\"" + packed + "\"";
  };
  const ProgramRun run =
      history(R"([{"time":7,"connections":{"a":{)" + text("udp", kPacked) + R"(}}},{"time":9,"connections":{"b":{)" +
              text("share", "00" + zeros) + "," + text("https", "01" + zeros) + R"(},"a2":{)" +
              text("quic", "x0" + zeros) + R"(},"0":{},"1":5}}])");
  EXPECT_EQ(run.out, first + second + second);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, 0);
}

TEST(History, PrintsEmptyRecordsForSamplesWithoutContent) {
  const std::string empty = sample("0", "");
  EXPECT_EQ(history(R"([{"time":1},{"connections":{}},5])").out, empty + empty + empty + empty);
  for (const char* data : {"null", "5", "{}", "[]"}) EXPECT_EQ(history(data).out, empty) << data;
  for (const char* connections : {"{}", "[5]", "null", R"({"a":[1]})"}) {
    EXPECT_EQ(history(std::string(R"([{"time":-1,"connections":)") + connections + "}]").out,
              sample("18446744073709551615", "") + sample("18446744073709551615", ""));
  }
}

TEST(History, KeepsTheFirst25Connections) {
  std::string sent;
  std::string shown;
  for (int i = 10; i < 40; ++i) {
    const std::string comma = i == 10 ? "" : ",";
    const std::string name = "a" + std::to_string(i);
    // What finds no room is not read either.
    sent += comma + "\"" + name + R"(":{"tcp":")" + (i < 35 ? "00" + std::string(40, '0') : "") + "\"}";
    if (i < 35) shown += comma + connection(R"("adapterID":")" + name + "\"");
  }
  const std::string block = sample("1", shown);
  EXPECT_EQ(history(R"([{"time":1,"connections":{)" + sent + "}}]").out, block + block);
}

/// Conversions stop where the digits stop, as the C library's do.
TEST(History, ReadsPackedNumbersAsFarAsTheyGo) {
  const std::string shown = sample("1", connection(R"("adapterID":"a","connected":true,"totalBps":161,"inFlight":-16,
      "inFlightWindow":31,"latencyMs":2,"lossReceive":-0.01,"lossSend":0.15)"));
  EXPECT_EQ(history(packed("1x"
                           "    0x00000000a1"
                           "-0000010"
                           "  1fzzzz"
                           "+002"
                           "-1"
                           "fg"))
                .out,
            shown + shown);
}

TEST(History, EndsWithTheErrorOfAPackedText) {
  const std::string zeros(36, '0');
  const std::pair<std::string, const char*> rows[] = {
      {"", "invalid string position"},
      {"1", "invalid string position"},
      {"10", "invalid stoll argument"},
      {"100", "invalid string position"},
      {"10xxxxxxxxxxxxxxxx" + zeros, "invalid stoll argument"},
      {"10ffffffffffffffff" + zeros, "stoll argument out of range"},
      {"108000000000000000zzzzzzzz" + zeros, "stoll argument out of range"},
      {"10" + zeros + "19", "invalid stoll argument"},
      {"10" + zeros + "  00", "invalid stoll argument"},
  };
  for (const auto& [text, message] : rows) {
    const ProgramRun run = history(packed(text));
    EXPECT_EQ(run.err, errorOf(message)) << text;
    EXPECT_EQ(run.out, "") << text;
    EXPECT_EQ(run.status, 0);
  }
  // Samples before the faulty one are shown, those behind it not.
  const std::string good = R"({"time":3,"connections":{}})";
  const ProgramRun run = history("[" + good + R"(,{"time":4,"connections":{"a":{"tcp":7}}},)" + good + "]");
  EXPECT_EQ(run.out, sample("3", ""));
  EXPECT_EQ(run.err, errorOf("invalid string position"));
}

TEST(History, EndsByItsTimeout) {
  ScriptedDaemon daemon;
  const ProgramRun run = zephctl(daemon.port(), {"stats", "historic"});
  EXPECT_EQ(run.err, errorBlock(3841, "Timeout waiting for result", "Timeout"));
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, 0);
}

ProgramRun sessions(const std::string& data) {
  return streamed({{"request_session_stats", {event("report_session_stats", data)}}}, 1);
}

/// What a period without members prints, with `members` laid over it.
std::string period(const std::string& name, const std::string& members = "") {
  return "\"" + name + R"(":{"bytesReceived":0,"bytesSent":0,"daysSinceFirst":0,"encryptedBytesReceived":0,
    "encryptedBytesSent":0,"maxDownloadSpeed":0.0,"maxUploadSpeed":0.0,"mbpsDownBenefit":0.0,"mbpsUpBenefit":0.0,
    "numFailovers":0,"numSessions":0,"periodStartTime":0,"retransBytes":0,"totalConnectedMinutes":0,
    "captivePortal":{"detections":0,"successes":0},
    "packetHandler":{"bytesIn":0,"bytesOut":0,"packetsIn":0,"packetsOut":0,"retries":0},
    "streaming":{"totalFailoverSaves":0,"totalRedundantModeSaves":0,"totalSpeedModeSaves":0,"totalStreams":0,
      "uniqueSaves":0},
    "tun":{"bufferWaits":0,"bytesIn":0,"bytesOut":0,"droppedIncoming":0,"packetWaits":0,"packetsIn":0,"packetsOut":0,
      "readQueue":0})" +
         (members.empty() ? "" : "," + members) + "}";
}

TEST(SessionStats, ShowsEveryMember) {
  EXPECT_EQ(sessions(R"({"100":{
      "bytes_recv":1,"bytes_sent":2,"encrypted_bytes_recv":3,"encrypted_bytes_sent":-4,"max_download_mbps":5.5,
      "max_upload_mbps":6.5,"days_since_first":7,"num_failovers":8,"num_sessions":9,"retrans_bytes":10,
      "session_start_time":11,"total_connected_minutes":12,
      "down_benefit":{"num_connections":2,"combined_mbps":20.5,"fastest_conn_mbps":7.25},
      "up_benefit":{"num_connections":-1,"combined_mbps":1,"fastest_conn_mbps":3.5},
      "tun":{"packets_in":15,"packets_out":16,"bytes_in":17,"bytes_out":18,"buffer_waits":19,"packet_waits":20,
        "read_queue":21,"dropped_incoming":-1},
      "packet_handler":{"packets_in":23,"packets_out":24,"bytes_in":25,"bytes_out":26,"retries":9223372036854775808},
      "cp_benefit":{"cp_detect":28,"cp_success":29},
      "streaming":{"total_failover_saves":30,"total_speed_saves":31,"total_redundant_saves":32,"total_streams":33,
        "unique_saves":18446744073709551615}}})")
                .out,
            block("session_stats", R"({"100":{
      "bytesReceived":1,"bytesSent":2,"encryptedBytesReceived":3,"encryptedBytesSent":-4,"maxDownloadSpeed":5.5,
      "maxUploadSpeed":6.5,"daysSinceFirst":7,"numFailovers":8,"numSessions":9,"retransBytes":10,
      "periodStartTime":11,"totalConnectedMinutes":12,"mbpsDownBenefit":13.25,"mbpsUpBenefit":-2.5,
      "tun":{"packetsIn":15,"packetsOut":16,"bytesIn":17,"bytesOut":18,"bufferWaits":19,"packetWaits":20,
        "readQueue":21,"droppedIncoming":18446744073709551615},
      "packetHandler":{"packetsIn":23,"packetsOut":24,"bytesIn":25,"bytesOut":26,"retries":0},
      "captivePortal":{"detections":28,"successes":29},
      "streaming":{"totalFailoverSaves":30,"totalSpeedModeSaves":31,"totalRedundantModeSaves":32,"totalStreams":33,
        "uniqueSaves":18446744073709551615}}})"));
}

TEST(SessionStats, NamesItsPeriods) {
  const std::pair<const char*, std::string> rows[] = {
      {"null", ""},
      {"[{}]", ""},
      {R"({"24":{},"720":null})", period("day") + "," + period("month")},
      {R"({"24x":{},"168":5,"0":{"tun":7},"4294967295":{}})",
       period("current") + "," + period("week") + "," + period("day") + "," + period("total")},
      {R"({"-1":{}," +7 hours":{"down_benefit":{"combined_mbps":9.5}},"-4294967295":{}})",
       period("7") + "," + period("total") + "," + period("1")},
      // Of one period twice the later stays.
      {R"({"24":{"num_sessions":1},"24h":{"num_sessions":2}})", period("day", R"("numSessions":2)")},
      // In the order of the names the first five are kept, and no more are read.
      {R"({"9":{},"8":{},"15":{},"14":{},"13":{},"12":{},"11":{},"x":{}})",
       period("11") + "," + period("12") + "," + period("13") + "," + period("14") + "," + period("15")},
  };
  for (const auto& [data, shown] : rows) {
    EXPECT_EQ(sessions(data).out, block("session_stats", "{" + shown + "}")) << data;
  }
}

TEST(SessionStats, TurnsANameThatIsNoNumberIntoAnError) {
  const std::pair<const char*, const char*> rows[] = {
      {R"({"24":{},"day":{}})", "invalid stoul argument"},
      {R"({"":{}})", "invalid stoul argument"},
      {R"({"4294967296":{}})", "stoul argument out of range"},
      {R"({"99999999999999999999":{}})", "stoul argument out of range"},
      {R"({"-4294967296":{}})", "stoul argument out of range"},
  };
  for (const auto& [data, message] : rows) {
    const std::string good = event("report_session_stats", R"({"24":{}})");
    const ProgramRun run = streamed({{"request_session_stats", {event("report_session_stats", data), good}}}, 1);
    EXPECT_EQ(run.err, errorOf(message)) << data;
    EXPECT_EQ(run.out, block("session_stats", "{" + period("day") + "}")) << data;
  }
}

}  // namespace
}  // namespace tests
