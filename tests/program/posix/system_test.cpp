// What only these systems have: links, zones of time, bounds of stacks, pipes that close, devices that are full.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>

#include "sdk/platform/clock.h"
#include "tests/program_case.h"

namespace tests {
namespace {

TEST(LogReportOnPosix, ResolvesLinksAndTellsFailures) {
  namespace fs = std::filesystem;
  const fs::path folder =
      fs::canonical(fs::temp_directory_path()) / ("zephctl_" + std::to_string(std::random_device()()));
  fs::create_directory(folder);
  std::ofstream(folder / "\xC3\xA4.log") << "log";
  fs::create_symlink("\xC3\xA4.log", folder / "link");
  fs::create_symlink("loop", folder / "loop");
  const std::string sentName = "\"" + folder.string() + "/\\u00e4.log\"";
  for (const fs::path& link : {folder / "link", fs::relative(folder) / "link"}) {
    check(
        {.words = {"log", "report", "a@b.example", "", link.string()},
         .answers = {{"send_log_report", {event("report_log_result", "{}")}}},
         .sent = {request("send_log_report", R"({"email":"a@b.example","filename":)" + sentName + R"(,"message":""})")},
         .out = "{\n\t\"ticketId\" : \"\"\n}"});
  }

  const auto tells = [](const fs::path& path, std::errc reason) {
    const fs::filesystem_error failure("exists", path, std::make_error_code(reason));
    check({.words = {"log", "report", "a@b.example", "text", path.string()},
           .err = errorObject(3840, "An error in the SDK", std::string(failure.what()).substr(0, 199)),
           .status = 1});
  };
  tells(folder / "loop", std::errc::too_many_symbolic_link_levels);
  tells(std::string(300, 'x'), std::errc::filename_too_long);
  fs::remove_all(folder);
}

TEST(SpeedTestsOnPosix, AreDatedInLocalTimeWithItsSummer) {
  ScriptedDaemon daemon(
      {{"request_speedtest_results",
        {event("report_speedtest_results", R"([{"time":"2024-01-02T03:04:05"},{"time":"2024-07-02T03:04:05"}])")}}});
  const ProgramRun run = Process({"/usr/bin/env", "TZ=EST5EDT,M3.2.0,M11.1.0", ZEPHCTL_PATH, "-p",
                                  std::to_string(daemon.port()), "show", "speedtest"})
                             .finish();
  EXPECT_NE(run.out.find("\"time\" : 1704182645,"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"time\" : 1719903845,"), std::string::npos) << run.out;
}

/// A second behind the start of a system; only some let a test set its own clock.
TEST(StatsOnPosix, AsksForHistoryFromTheClocksBeginningAtTheEarliest) {
  const auto seconds = static_cast<std::int64_t>(zephlinksdk::monotonicMs() / 1000);
  const std::vector<std::string> young{"/usr/bin/unshare", "--time", "--monotonic", std::to_string(1 - seconds)};
  const auto onYoungSystem = [&young](std::vector<std::string> words) {
    words.insert(words.begin(), young.begin(), young.end());
    return Process(words).finish();
  };
  if (!std::filesystem::exists(young[0]) || onYoungSystem({"/bin/true"}).status != 0) GTEST_SKIP() << "no clock to set";
  ScriptedDaemon daemon({{"request_historic_connection_stats", {event("report_historic_connection_stats", "[]")}}});
  EXPECT_EQ(onYoungSystem(command(daemon.port(), {"stats", "historic"})).status, 0);
  EXPECT_EQ(daemon.heard(),
            std::vector<std::string>{request("request_historic_connection_stats", R"({"dataSince":0})")});
}

/// The limit holds for the main thread and, as their default, for all others. One directory takes three quarters of it.
TEST(StackOnPosix, NeedsNoMoreThanAMebibyteForTheDirectory) {
  ScriptedDaemon daemon({{"request_directory", {event("report_directory", R"([{"country":"us"}])")}}});
  const std::string line = std::string("ulimit -s 1024 && exec '") + ZEPHCTL_PATH + "' -p " +
                           std::to_string(daemon.port()) + " show servers";
  const ProgramRun run = Process({"/bin/sh", "-c", line}).finish();
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(run.out.find("\"tag\" : \"us--0\""), std::string::npos);
}

TEST(StatsOnPosix, EndsWhenItsPipeCloses) {
  ScriptedDaemon daemon({{"request_current_state", {event("report_current_state", R"({"state":6})")}}});
  const std::string stats = std::string("'") + ZEPHCTL_PATH + "' -p " + std::to_string(daemon.port()) + " stats";
  // The reader takes one line, as `head -1` does, and tells when it has closed its end.
  Process run({"/bin/sh", "-c",
               "(" + stats + R"(; echo "status $?" >&2) | { read -r line; echo "$line"; exec <&-; echo closed; })"});
  ASSERT_TRUE(run.waitForOutput("closed\n"));
  // The one subscription that surely stands by now.
  daemon.send(event("report_current_state", R"({"state":2})"));
  const ProgramRun ended = run.finish();
  EXPECT_EQ(ended.out, "[\"state\",\nclosed\n");
  EXPECT_EQ(ended.err, "status " + std::to_string(128 + SIGPIPE) + "\n");
}

/// A standard output that takes nothing is no reason to end, nor to fail.
TEST(StatsOnPosix, IgnoresAFullDevice) {
  ScriptedDaemon daemon({{"request_current_state", {event("report_current_state", R"({"state":6})")}}});
  const std::string stats = std::string("'") + ZEPHCTL_PATH + "' -p " + std::to_string(daemon.port()) + " stats 1";
  const ProgramRun run = Process({"/bin/sh", "-c", stats + " > /dev/full"}).finish();
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, 0);
}

}  // namespace
}  // namespace tests
