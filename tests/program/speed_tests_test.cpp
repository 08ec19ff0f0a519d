// Speed tests, stream tests and the reason of the last disconnect.
#include <gtest/gtest.h>

#include <ctime>

#include "tests/program_case.h"

namespace tests {
namespace {

/// Seconds since the epoch of a local time in 2024.
std::string timeOf(int month, int day, int hour) {
  std::tm time{};
  time.tm_year = 124;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = hour;
  time.tm_isdst = -1;
  return std::to_string(std::mktime(&time));
}

/// The three words that end in a report of runs, and their requests.
struct Word {
  std::vector<std::string> words;
  const char* request;
};
const Word kShow{{"show", "speedtest"}, "request_speedtest_results"};
const Word kSpeed{{"speedtest", "anything"}, "speedtest"};
const Word kStream{{"streamtest", "a", "b"}, "streamtest"};

void checkRuns(const Word& word, const std::string& data, const std::string& out) {
  check({.words = word.words,
         .answers = {{word.request, {event("report_speedtest_results", data)}}},
         .sent = {request(word.request)},
         .out = printed(out)});
}

/// A run that holds nothing but its time and its city, as it comes and as it is printed.
std::string run(const std::string& time, const std::string& city) {
  return R"({"time":")" + time + R"(","city":")" + city + "\"}";
}
std::string shownRun(const std::string& time, const std::string& city) {
  return R"({"city":")" + city +
         R"(","country":"","downloadSpeed":0.0,"isError":false,"latency":0,)"
         R"("numConnections":0,"time":)" +
         time + R"(,"type":"speed","uploadSpeed":0.0})";
}

TEST(SpeedTests, PrintEveryKindOfRun) {
  const std::string common =
      R"("time":"2024-03-04T05:00:00","country":"de","city":"frankfurt","num_connections":3,"download":220.5,)"
      R"("upload":40,"latency":25,"msg":"No tunnel","resolution":"1080p","fps":60,"jitter":4,"loss":0.25)";
  const std::string shown =
      R"("city":"frankfurt","country":"de","latency":25,"numConnections":3,"time":)" + timeOf(3, 4, 5) + ",";
  const std::string speeds = R"("isError":false,"downloadSpeed":220.5,"uploadSpeed":40.0,)";
  for (const Word& word : {kShow, kSpeed, kStream}) {
    checkRuns(word, "[{" + common + R"(,"type":2,"error":false}])",
              "[{" + shown + speeds + R"("type":"streaming","resolution":"1080p","fps":60,"jitter":4,"loss":0.25}])");
    checkRuns(word, "[{" + common + R"(,"type":2,"error":true}])",
              "[{" + shown + R"("type":"streaming","isError":true,"errorMessage":"No tunnel"}])");
    checkRuns(word, "[{" + common + R"(,"type":1,"error":true}])",
              "[{" + shown + R"("type":"speed","isError":true,"errorMessage":"No tunnel"}])");
    checkRuns(word, "[]", "[]");
    checkRuns(word, "null", "[]");
  }
  for (const char* type : {"0", "1", "3", "\"2\"", "null", "-2"}) {
    checkRuns(kShow, "[{" + common + R"(,"type":)" + type + "}]", "[{" + shown + speeds + R"("type":"speed"}])");
  }
}

TEST(SpeedTests, ReadWhatTheyCan) {
  const std::string nothing = shownRun("0", "");
  checkRuns(kShow,
            R"([{},5,{"time":[],"country":{},"city":null,"num_connections":"3","download":"1","upload":[],)"
            R"("latency":-1,"error":"true","loss":1}])",
            "[" + nothing + "," + nothing + "," + nothing + "]");
  checkRuns(kShow,
            R"([{"country":"0123456789","city":"01234567890123456789x","num_connections":65537,"latency":65538,)"
            R"("type":2,"resolution":"1080p60","fps":-1,"jitter":65539,"download":true,"upload":1e3}])",
            R"([{"country":"012345678","city":"0123456789012345678","numConnections":1,"latency":2,"isError":false,)"
            R"("time":0,"type":"streaming","resolution":"1080p","fps":0,"jitter":3,"loss":0.0,"downloadSpeed":1.0,)"
            R"("uploadSpeed":1000.0}])");
  checkRuns(kShow, R"([{"error":true,"msg":")" + std::string(250, 'm') + "\"}]",
            R"([{"city":"","country":"","isError":true,"latency":0,"numConnections":0,"time":0,"type":"speed",)"
            R"("errorMessage":")" +
                std::string(199, 'm') + "\"}]");
  const std::pair<const char*, std::string> times[] = {
      {"2024-01-02T03:00:00Z", timeOf(1, 2, 3)},
      {"2024-07-02T03:00:00.5", timeOf(7, 2, 3)},

      {"2024-01-02 03:04:05", "0"},
      {"2024-13-02T03:04:05", "0"},
      {"1960-01-02T03:04:05", "0"},
      {"1704164645", "0"},
      {"", "0"},
  };
  for (const auto& [text, time] : times) checkRuns(kShow, "[" + run(text, "x") + "]", "[" + shownRun(time, "x") + "]");
}

TEST(SpeedTests, ShowTheFirstRunsAndStartWithTheNewest) {
  const std::string six = "[" + run("2024-01-02T00:00:00", "a") + "," + run("2024-01-01T00:00:00", "b") + "," +
                          run("bad", "c") + "," + run("2024-01-03T00:00:00", "d") + "," +
                          run("2024-01-01T00:00:00", "e") + "," + run("2024-02-03T00:00:00", "f") + "]";
  checkRuns(kShow, six,
            "[" + shownRun(timeOf(1, 2, 0), "a") + "," + shownRun(timeOf(1, 1, 0), "b") + "," + shownRun("0", "c") +
                "," + shownRun(timeOf(1, 3, 0), "d") + "," + shownRun(timeOf(1, 1, 0), "e") + "]");
  for (const Word& word : {kSpeed, kStream}) {
    checkRuns(word, six, "[" + shownRun(timeOf(2, 3, 0), "f") + "]");
    // Of one time the later.
    checkRuns(word, "[" + run("2024-01-02T00:00:00", "a") + "," + run("2024-01-02T00:00:00", "b") + "]",
              "[" + shownRun(timeOf(1, 2, 0), "b") + "]");
    checkRuns(word, "[" + run("bad", "a") + "," + run("2024-01-02T00:00:00", "b") + "," + run("bad", "c") + "]",
              "[" + shownRun(timeOf(1, 2, 0), "b") + "]");
    checkRuns(word, "[" + run("bad", "a") + "," + run("", "b") + "]", "[]");
  }
}

TEST(LastDisconnect, PrintsItsReason) {
  const auto reason = [](const std::string& data, const char* word) {
    check({.words = {"show", "disconnect"},
           .answers = {{"request_disconnect_reason", {event("report_disconnect_reason", data)}}},
           .sent = {request("request_disconnect_reason")},
           .out = std::string("{\n\t\"disconnectReason\" : \"") + word + "\"\n}"});
  };
  for (const char* word : {"UNKNOWN", "CONNECTIVITY", "AIRPLANE", "REBOOT", "UPDATE", "CRASH", "SLEEP", "USERINITIATED",
                           "TORRENT", "SERVICESTOP", "STARTTIMEOUT", "INACTIVETIMEOUT", "SETTINGCHANGERECONNECT",
                           "DNSTIMEOUT", "TUNNELTIMEOUT", "OVERQUOTA", "SAFENETWORK", "NONE"}) {
    reason(std::string(R"({"sessionEnd":5,"sessionLength":6,"disconnectReason":")") + word + "\"}", word);
  }
  for (const char* data : {"null", "{}", R"({"disconnectReason":"none"})", R"({"disconnectReason":3})"}) {
    reason(data, "UNKNOWN");
  }
}

}  // namespace
}  // namespace tests
