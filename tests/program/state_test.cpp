// state, version and what every action shares: options, faults, errors, output.
#include <gtest/gtest.h>

#include "tests/process.h"
#include "tests/program_case.h"

namespace tests {
namespace {

constexpr const char* kStateRequest = R"(["request_current_state",null,"zephlink_sdk"])";

std::string stateObject(const std::string& word) { return "{\n\t\"state\" : \"" + word + "\"\n}"; }

ProgramCase stateCase(const std::string& report, const std::string& out) {
  return {.words = {"state"}, .answers = {{"request_current_state", {report}}}, .sent = {kStateRequest}, .out = out};
}

TEST(State, PrintsTheWordOfEachState) {
  const std::pair<const char*, const char*> words[] = {
      {"0", "LOGGED_OUT"},    {"1", "LOGGING_IN"},    {"2", "LOGGED_IN"},      {"3", "AUTO_CONNECTING"},
      {"4", "CONNECTING"},    {"5", "DISCONNECTING"}, {"6", "CONNECTED"},      {"7", "OVERLIMIT"},
      {"8", "UNKNOWN"},       {"9", "UNKNOWN"},       {"-1", "UNKNOWN"},       {"2.9", "LOGGED_IN"},
      {"true", "LOGGING_IN"}, {"null", "LOGGED_OUT"}, {"\"6\"", "LOGGED_OUT"}, {"99999999999", "LOGGED_OUT"},
      {"[6]", "LOGGED_OUT"},  {"{}", "LOGGED_OUT"},
  };
  for (const auto& [number, word] : words) {
    check(stateCase(event("report_current_state", std::string(R"({"state":)") + number + "}"), stateObject(word)));
  }
}

TEST(State, TakesAnyReportOfItsName) {
  for (const char* data : {"null", "{}", "[]", "5", "\"text\""}) {
    check(stateCase(event("report_current_state", data), stateObject("LOGGED_OUT")));
  }
  check(stateCase(R"(["report_current_state"])", stateObject("LOGGED_OUT")));
}

TEST(State, PassesOverOtherMessages) {
  ProgramCase row = stateCase(event("report_current_state", R"({"state":6})"), stateObject("CONNECTED"));
  auto& reports = row.answers["request_current_state"];
  reports.insert(reports.begin(), {"", "[\"\"]", "[[]]", "{\"report_current_state\":1}", "[\"report_current_state",
                                   event("report_networks", "[]"), event("sdk_error", R"({"type":1})"),
                                   event("report_settings_error", R"({"setting":"x","msg":"y"})"),
                                   event("report_current_state2", "{}")});
  check(row);
}

TEST(State, ReportsBrokenJsonAndGoesOn) {
  ProgramCase row = stateCase(R"(["report_current_state",{"state":6},)", stateObject("CONNECTED"));
  row.err =
      "Failed to parse JSON: * Line 1, Column 37\n  Syntax error: value, object or array expected.\n\n"
      "JSON was: [\"report_current_state\",{\"state\":6},\n";
  check(row);
}

TEST(State, SurvivesNestingBeyondTheParsersLimit) {
  const std::string report = R"(["report_current_state",)" + std::string(1200, '[') + std::string(1200, ']') + "]";
  ProgramCase row = stateCase(report, stateObject("LOGGED_OUT"));
  row.err = "Failed to parse JSON: Exceeded stackLimit in readValue().\nJSON was: " + report + "\n";
  check(row);
}

TEST(State, TakesAMessageOfFiveMebibytes) {
  const std::string padding(std::size_t{5} * 1024 * 1024, 'x');
  check(stateCase(event("report_current_state", R"({"a":")" + padding + R"(","state":6})"), stateObject("CONNECTED")));
}

TEST(Version, PrintsItsNumbers) {
  const std::string zeros = "{\n\t\"bug\" : 0,\n\t\"build\" : 0,\n\t\"maj\" : 0,\n\t\"min\" : 0\n}";
  const std::vector<std::string> sent = {R"(["request_version_data",null,"zephlink_sdk"])"};
  const auto version = [&](const char* data, const std::string& out) {
    check({.words = {"version"},
           .answers = {{"request_version_data", {event("report_version_data", data)}}},
           .sent = sent,
           .out = out});
  };
  version(R"({"maj":1,"min":2,"bug":3,"build":65535})",
          "{\n\t\"bug\" : 3,\n\t\"build\" : 65535,\n\t\"maj\" : 1,\n\t\"min\" : 2\n}");
  version("{}", zeros);
  version(R"({"maj":65536,"min":"2","bug":null,"build":[3]})", zeros);
}

TEST(Frame, RefusesWordsBehindPlainActions) {
  for (const ProgramCase& row : {invalidCase({"state", "x"}, "state"), invalidCase({"state", "-h"}, "state"),
                                 invalidCase({"version", ""}, "version")}) {
    check(row);
  }
}

/// With an empty list of words behind the port option, or words that name no action.
TEST(Frame, PrintsTheUsageForUnknownWords) {
  const ProgramRun help = Process({ZEPHCTL_PATH, "--help", "extra"}).finish();
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.err, "");
  EXPECT_NE(help.out.find(" v14.9.1.12483\nUsage : "), std::string::npos);
  EXPECT_NE(help.out.find("\nActions:\n   adapter datalimit daily "), std::string::npos);
  EXPECT_TRUE(help.out.ends_with("\n   transportretry <time in seconds>\n   version\n"));

  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"Help"}, {}, {"-i", "1.2.3.4", "state"}, {"-p", "1", "state"}, {"states"}, {""}}) {
    check({.words = words, .err = help.out, .status = 4});
  }
  check({.words = {"help", "any", "words"}, .out = help.out});
  EXPECT_EQ(Process({ZEPHCTL_PATH}).finish().out, help.out);
  EXPECT_EQ(Process({ZEPHCTL_PATH, "-h"}).finish().out, help.out);
  // An option without its value is an action word.
  for (const char* option : {"-i", "-p", "--ip", "--port"}) {
    const ProgramRun run = Process({ZEPHCTL_PATH, option}).finish();
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(run.err, help.out);
  }
}

TEST(Frame, TakesAddressThenPort) {
  ScriptedDaemon daemon({{"request_current_state", {event("report_current_state", R"({"state":2})")}}});
  const std::string port = std::to_string(daemon.port());
  // A port keeps its low 16 bits.
  const std::string wrapped = std::to_string(daemon.port() + 65536);
  for (const std::vector<std::string>& options : {std::vector<std::string>{"-i", "127.0.0.1", "-p", port},
                                                  {"--ip", "localhost", "--port", port},
                                                  {"-p", wrapped}}) {
    std::vector<std::string> words{ZEPHCTL_PATH};
    words.insert(words.end(), options.begin(), options.end());
    words.emplace_back("state");
    const ProgramRun run = Process(words).finish();
    EXPECT_EQ(run.out, stateObject("LOGGED_IN"));
    EXPECT_EQ(run.status, 0);
  }
}

TEST(Frame, TellsWhenNoDaemonListens) {
  std::uint16_t port = 0;
  { port = ScriptedDaemon().port(); }
  const auto start = std::chrono::steady_clock::now();
  const ProgramRun run = zephctl(port, {"state"});
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(run.err, errorObject(3845, "Not able to establish connection to daemon", "Unable to connect"));
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, 1);
  EXPECT_GE(took, std::chrono::seconds(5));
}

TEST(Frame, TellsWhenNoAnswerComes) {
  check({.words = {"state"},
         .sent = {kStateRequest},
         .err = errorObject(3841, "Timeout waiting for result", "Timeout"),
         .status = 1});
}

TEST(Frame, TimesOutBehindACloseFrame) {
  ScriptedDaemon daemon;
  Process run({ZEPHCTL_PATH, "-p", std::to_string(daemon.port()), "state"});
  ASSERT_TRUE(daemon.waitForRequests(1));
  daemon.socket().close(1);
  const ProgramRun ended = run.finish();
  EXPECT_EQ(ended.err, errorObject(3841, "Timeout waiting for result", "Timeout"));
  EXPECT_EQ(ended.status, 1);
}

TEST(Frame, NamesTheSituationOfTheLinkWhenItIsLost) {
  ScriptedDaemon daemon;
  Process run({ZEPHCTL_PATH, "-p", std::to_string(daemon.port()), "state"});
  ASSERT_TRUE(daemon.waitForRequests(1));
  daemon.socket().pauseAccepting();
  daemon.socket().drop(1);
  EXPECT_EQ(run.finish().err, errorObject(3845, "Not able to establish connection to daemon", "Unable to connect"));
  // The request is not sent again, nor is the hello.
  EXPECT_EQ(daemon.heard().size(), 1U);
}

TEST(Frame, EndsWhenTheNameCannotBeLookedUp) {
  const ProgramRun run = Process({ZEPHCTL_PATH, "-i", "no host of this name", "state"}).finish();
  EXPECT_EQ(run.err, errorObject(3845, "Not able to establish connection to daemon", "Unable to connect"));
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, 1);
}

}  // namespace
}  // namespace tests
