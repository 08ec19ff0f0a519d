// Behaviour common to all actions: options, the usage, large answers, and daemons that are unreachable or disappear.
#include <gtest/gtest.h>

#include "tests/process.h"
#include "tests/program_case.h"

namespace tests {
namespace {

constexpr const char* kLoggedIn = "{\n\t\"state\" : \"LOGGED_IN\"\n}";

TEST(Frame, AcceptsAMessageOfFiveMebibytes) {
  const std::string padding(std::size_t{5} * 1024 * 1024, 'x');
  check({.words = {"state"},
         .answers = {{"request_current_state",
                      {event("report_current_state", R"({"a":")" + padding + R"(","state":2})")}}},
         .sent = {request("request_current_state")},
         .out = kLoggedIn});
}

TEST(Frame, PrintsTheUsage) {
  const ProgramRun help = Process({ZEPHCTL_PATH, "--help", "extra"}).finish();
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.err, "");
  EXPECT_NE(help.out.find(" v14.9.1.12483\nUsage : "), std::string::npos);
  EXPECT_NE(help.out.find("\nActions:\n   adapter datalimit daily "), std::string::npos);
  EXPECT_TRUE(help.out.ends_with("\n   transportretry <time in seconds>\n   version\n"));

  // Nothing after the port option.
  check({.words = {}, .err = help.out, .status = 4});
  check({.words = {"help", "any", "words"}, .out = help.out});
  EXPECT_EQ(Process({ZEPHCTL_PATH}).finish().out, help.out);
  EXPECT_EQ(Process({ZEPHCTL_PATH, "-h"}).finish().out, help.out);
  // An option without a value is an unknown action.
  for (const char* option : {"-i", "-p", "--ip", "--port"}) {
    const ProgramRun run = Process({ZEPHCTL_PATH, option}).finish();
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(run.err, help.out);
  }
}

TEST(Frame, AcceptsAddressThenPort) {
  ScriptedDaemon daemon({{"request_current_state", {event("report_current_state", R"({"state":2})")}}});
  const std::string port = std::to_string(daemon.port());
  // A port is truncated to 16 bits.
  const std::string wrapped = std::to_string(daemon.port() + 65536);
  for (const std::vector<std::string>& options : {std::vector<std::string>{"-i", "127.0.0.1", "-p", port},
                                                  {"--ip", "localhost", "--port", port},
                                                  {"-p", wrapped}}) {
    std::vector<std::string> words{ZEPHCTL_PATH};
    words.insert(words.end(), options.begin(), options.end());
    words.emplace_back("state");
    const ProgramRun run = Process(words).finish();
    EXPECT_EQ(run.out, kLoggedIn);
    EXPECT_EQ(run.status, 0);
  }
}

const std::string kUnableToConnect =
    errorObject(3845, "Not able to establish connection to daemon", "Unable to connect");

TEST(Frame, ReportsAMissingDaemon) {
  const ClosedPort port;
  const auto start = std::chrono::steady_clock::now();
  Process notListening(command(port.number(), {"state"}));
  Process notFound({ZEPHCTL_PATH, "-i", "no host of this name", "state"});
  for (Process* process : {&notListening, &notFound}) {
    const ProgramRun run = process->finish();
    EXPECT_EQ(run.err, kUnableToConnect);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.status, 1);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  }
  // Requests that the daemon does not answer succeed without output.
  for (const std::vector<std::string>& words : {std::vector<std::string>{"daemon", "exit"}, {"log", "erase"}}) {
    const ProgramRun run = zephctl(port.number(), words);
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(run.status, 0);
  }
}

TEST(Frame, TimesOutAfterACloseFrame) {
  ScriptedDaemon daemon;
  Process run(command(daemon.port(), {"state"}));
  ASSERT_TRUE(daemon.waitForRequests(1));
  daemon.socket().close(1);
  const ProgramRun ended = run.finish();
  EXPECT_EQ(ended.err, errorObject(3841, "Timeout waiting for result", "Timeout"));
  EXPECT_EQ(ended.status, 1);
}

TEST(Frame, ReportsTheStateOfALostLink) {
  ScriptedDaemon daemon;
  Process run(command(daemon.port(), {"state"}));
  ASSERT_TRUE(daemon.waitForRequests(1));
  daemon.socket().pauseAccepting();
  daemon.socket().drop(1);
  EXPECT_EQ(run.finish().err, kUnableToConnect);
  // Neither the request nor the hello is sent again.
  EXPECT_EQ(daemon.received().size(), 1U);
}

}  // namespace
}  // namespace tests
