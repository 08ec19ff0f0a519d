// zephtop in a tmux terminal: sizes, keys, and a daemon that dies.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <regex>
#include <sstream>
#include <thread>

#include "tests/scripted_daemon.h"
#include "tests/sdk/host.h"

namespace tests {
namespace {

using Clock = std::chrono::steady_clock;

/// Returns the output of a shell command, both streams.
std::string shell(const std::string& command) {
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  std::string output;
  std::array<char, 4096> part{};
  while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe)) output.append(part.data(), count);
  pclose(pipe);
  return output;
}

/// A terminal of this size that runs a command, and ends it on destruction.
class Terminal {
 public:
  Terminal(int columns, int rows, const std::string& command)
      : tmux("tmux -u -f /dev/null -L zephtop" + std::to_string(getpid()) + "_" + std::to_string(++count)) {
    shell(tmux + " new-session -d -x " + std::to_string(columns) + " -y " + std::to_string(rows) +
          " 'exec timeout --foreground 100 " + command + "'");
  }
  ~Terminal() { shell(tmux + " kill-server"); }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  void press(const std::string& keys) const { shell(tmux + " send-keys " + keys); }
  std::string screen() const { return shell(tmux + " capture-pane -p"); }
  std::string colours() const { return shell(tmux + " capture-pane -e -p"); }

  /// Waits until the screen contains `text`; the failure message contains the screen.
  testing::AssertionResult shows(const std::string& text, std::chrono::milliseconds patience = kPatience) const {
    const auto end = Clock::now() + patience;
    std::string now = screen();
    while (now.find(text) == std::string::npos) {
      if (Clock::now() > end) return testing::AssertionFailure() << "no \"" << text << "\" in\n" << now;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      now = screen();
    }
    return testing::AssertionSuccess();
  }

 private:
  // One server per terminal: the previous one may still be ending.
  static inline int count = 0;
  std::string tmux;
};

std::string adaptersReport(int count) {
  std::string list;
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    list += std::string(i > 1 ? "," : "") + R"({"guid":"if)" + number + R"(","name":"Adapter )" + number +
            R"(","connectionState":2,"priority":0,"workingPriority":0})";
  }
  return event("report_networks", "[" + list + "]");
}

Answers answersWith(int adapters) {
  return {{"request_version_data", {kVersionReport}},
          {"request_current_state", {stateReport(6)}},
          {"request_networks", {adaptersReport(adapters)}},
          {"set_network_priority",
           {event("report_settings_error", R"({"setting":"set_network_priority","type":11,"msg":"That is locked"})")}}};
}

std::string zephtop(std::uint16_t port, const std::string& environment = "LC_ALL=C.UTF-8") {
  return "env " + environment + " " ZEPHTOP_PATH " -p " + std::to_string(port);
}

class ZephtopScreen : public testing::Test {
 protected:
  void SetUp() override {
    if (std::system("command -v tmux >/dev/null") != 0) GTEST_SKIP() << "tmux is not installed";
  }
};

TEST_F(ZephtopScreen, FitsThreeSizesAndShowsADaemonThatDies) {
  for (const auto& [columns, rows] : {std::pair{60, 15}, {80, 24}, {150, 45}}) {
    SCOPED_TRACE(std::to_string(columns) + "x" + std::to_string(rows));
    auto daemon = std::make_unique<ScriptedDaemon>(answersWith(3));
    const Terminal terminal(columns, rows, zephtop(daemon->port()));
    ASSERT_TRUE(terminal.shows("● connected"));
    ASSERT_TRUE(terminal.shows("Adapter 3"));
    EXPECT_TRUE(terminal.shows("live"));
    EXPECT_TRUE(terminal.shows("? help   q quit"));
    std::istringstream lines(terminal.screen());
    std::string line;
    int count = 0;
    while (std::getline(lines, line)) ++count;
    EXPECT_LE(count, rows);

    // Also if the display is paused.
    terminal.press("Space");
    ASSERT_TRUE(terminal.shows("PAUSED"));
    const auto died = Clock::now();
    daemon.reset();
    EXPECT_TRUE(terminal.shows("gone"));
    // On a loaded machine, capturing the screen may take longer than drawing it.
    EXPECT_LT(Clock::now() - died, std::chrono::milliseconds(2500));
    const std::string screen = terminal.screen();
    EXPECT_NE(screen.find("○ unknown"), std::string::npos) << screen;
    EXPECT_EQ(screen.find("●"), std::string::npos) << screen;
    terminal.press("q");
  }
}

TEST_F(ZephtopScreen, ScrollsTwentyFiveAdapters) {
  ScriptedDaemon daemon(answersWith(25));
  const Terminal terminal(60, 15, zephtop(daemon.port()));
  ASSERT_TRUE(terminal.shows("of 25"));
  EXPECT_EQ(terminal.screen().find("Adapter 25"), std::string::npos);
  terminal.press("-N 24 Down");
  EXPECT_TRUE(terminal.shows("● Adapter 25"));
  EXPECT_TRUE(terminal.shows("-25 of 25"));
  terminal.press("-N 24 Up");
  EXPECT_TRUE(terminal.shows("adapters 1-"));
  // The bytes of one step of the mouse wheel, down and up.
  terminal.press("-H -N 24 1b 5b 4d 61 26 26");
  EXPECT_TRUE(terminal.shows("● Adapter 25"));
  terminal.press("-H -N 24 1b 5b 4d 60 26 26");
  EXPECT_TRUE(terminal.shows("adapters 1-"));
}

TEST_F(ZephtopScreen, AsksBeforeAChangeAndShowsTheRefusal) {
  ScriptedDaemon daemon(answersWith(2));
  const Terminal terminal(80, 24, zephtop(daemon.port()));
  ASSERT_TRUE(terminal.shows("Adapter 2"));
  terminal.press("Down p");
  ASSERT_TRUE(terminal.shows("Priority of Adapter 2"));
  terminal.press("Down Enter");
  ASSERT_TRUE(terminal.shows("Really set the priority of Adapter 2 to always?"));
  EXPECT_TRUE(std::ranges::none_of(daemon.received(), [](const std::string& request) {
    return request.find("set_network_priority") != std::string::npos;
  }));
  terminal.press("y");
  EXPECT_TRUE(terminal.shows("to always: That is locked"));
  EXPECT_TRUE(std::ranges::any_of(daemon.received(), [](const std::string& request) {
    return request.find("set_network_priority") != std::string::npos;
  }));
}

TEST_F(ZephtopScreen, ReadOnlyHasNoKeysThatChange) {
  ScriptedDaemon daemon(answersWith(1));
  const Terminal terminal(80, 24, zephtop(daemon.port()) + " --read-only");
  ASSERT_TRUE(terminal.shows("Adapter 1"));
  terminal.press("d");
  terminal.press("?");
  ASSERT_TRUE(terminal.shows("Keys"));
  EXPECT_EQ(terminal.screen().find("disconnect"), std::string::npos);
}

TEST_F(ZephtopScreen, WorksWithoutUtf8AndColours) {
  const std::regex colour("\x1B\\[[0-9;]*3[0-8]");  // except 39, the default colour
  ScriptedDaemon daemon(answersWith(1));
  {
    const Terminal terminal(80, 24, zephtop(daemon.port(), "LC_ALL=C NO_COLOR=1"));
    ASSERT_TRUE(terminal.shows("* connected"));
    const std::string screen = terminal.screen();
    EXPECT_TRUE(std::ranges::all_of(screen, [](char letter) { return static_cast<unsigned char>(letter) < 128; }));
    EXPECT_FALSE(std::regex_search(terminal.colours(), colour));
  }
  const Terminal coloured(80, 24, zephtop(daemon.port()));
  ASSERT_TRUE(coloured.shows("● connected"));
  EXPECT_TRUE(std::regex_search(coloured.colours(), colour));
}

TEST_F(ZephtopScreen, RefusesADumbTerminal) {
  const Terminal terminal(80, 24, "sh -c \"TERM=dumb " ZEPHTOP_PATH "; echo status \\$?; sleep 100\"");
  EXPECT_TRUE(terminal.shows("dumb terminal"));
  EXPECT_TRUE(terminal.shows("status 1"));
}

}  // namespace
}  // namespace tests
