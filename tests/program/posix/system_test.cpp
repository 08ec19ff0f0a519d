// POSIX only: symbolic links, time zones, stack limits, closed pipes, full devices.
#include <gtest/gtest.h>

#include <cinttypes>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string_view>

#include "platform/clock.h"
#include "tests/program_case.h"

namespace tests {
namespace {

TEST(LogReportOnPosix, ResolvesLinksAndReportsFailures) {
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

/// Counts the occurrences of a text in the memory of a child process. Throws if the system refuses access.
int countInMemory(const std::string& process, const std::string& text) {
  std::ifstream regions("/proc/" + process + "/maps");
  std::ifstream memory("/proc/" + process + "/mem", std::ios::binary);
  if (!regions || !memory) throw std::runtime_error("cannot read the memory of a process");
  int count = 0;
  for (std::string line; std::getline(regions, line);) {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    char access[5] = {};
    if (std::sscanf(line.c_str(), "%" SCNx64 "-%" SCNx64 " %4s", &begin, &end, access) != 3) continue;
    // Larger regions belong to a sanitizer.
    constexpr std::uint64_t kLargest = std::uint64_t{256} << 20;
    if (std::string_view(access).substr(0, 2) != "rw" || end - begin > kLargest) continue;
    std::string bytes(end - begin, '\0');
    memory.clear();
    memory.seekg(static_cast<std::streamoff>(begin)).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    for (std::size_t at = bytes.find(text); at != std::string::npos; at = bytes.find(text, at + 1)) ++count;
  }
  return count;
}

/// While the call waits, the prompt's buffer is the only copy.
TEST(SecretsOnPosix, HaveOneCopyInMemory) {
  const std::string secret = "hush-5e2a-0123456789-abcdefghijklmnopqrstuvwxyz";
  for (const std::string words : {"login user", "login oauth", "refresh oauth"}) {
    SCOPED_TRACE(words);
    ScriptedDaemon daemon;
    const std::string line = std::string("echo $$; exec '") + ZEPHCTL_PATH + "' -p " + std::to_string(daemon.port());
    Process run({"/bin/sh", "-c", line + " " + words}, secret + "\n");
    ASSERT_TRUE(daemon.waitForRequests(1));
    EXPECT_NE(daemon.received()[0].find(secret), std::string::npos);
    const std::string out = run.outputSoFar();
    EXPECT_EQ(countInMemory(out.substr(0, out.find('\n')), secret), 1);
  }
}

/// On other systems an argument cannot contain such bytes.
TEST(ArgumentsOnPosix, AreSentAsUtf8) {
  check({.words = {"networksharing", "set", "displayname", "a\xE2\x82\"b\xFF\xC3\xA9"},
         .answers = {{"set_networksharing_display_name",
                      {event(
                          "report_settings_error",
                          "{\"setting\":\"set_networksharing_display_name\",\"type\":12,\"msg\":\"\xE2\x82z\xFF\"}")}}},
         .sent = {request("set_networksharing_display_name", R"({"display_name":"a\ufffd\ufffd\"b\ufffd\u00e9"})")},
         .err = errorObject(12, "Setting locked by account configuration", "\xEF\xBF\xBD\xEF\xBF\xBDz\xEF\xBF\xBD"),
         .status = 1});
}

TEST(SpeedTestsOnPosix, UseLocalTimeWithDaylightSaving) {
  ScriptedDaemon daemon(
      {{"request_speedtest_results",
        {event("report_speedtest_results", R"([{"time":"2024-01-02T03:04:05"},{"time":"2024-07-02T03:04:05"}])")}}});
  const ProgramRun run = Process({"/usr/bin/env", "TZ=EST5EDT,M3.2.0,M11.1.0", ZEPHCTL_PATH, "-p",
                                  std::to_string(daemon.port()), "show", "speedtest"})
                             .finish();
  EXPECT_NE(run.out.find("\"time\" : 1704182645,"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"time\" : 1719903845,"), std::string::npos) << run.out;
}

/// One second after system start; only some systems let a test set its clock.
TEST(StatsOnPosix, RequestsNoHistoryBeforeTheClocksZero) {
  const auto seconds = static_cast<std::int64_t>(zephlinksdk::monotonicMs() / 1000);
  const std::vector<std::string> young{"/usr/bin/unshare", "--time", "--monotonic", std::to_string(1 - seconds)};
  const auto onYoungSystem = [&young](std::vector<std::string> words) {
    words.insert(words.begin(), young.begin(), young.end());
    return Process(words).finish();
  };
  if (!std::filesystem::exists(young[0]) || onYoungSystem({"/bin/true"}).status != 0) GTEST_SKIP() << "no clock to set";
  ScriptedDaemon daemon({{"request_historic_connection_stats", {event("report_historic_connection_stats", "[]")}}});
  EXPECT_EQ(onYoungSystem(command(daemon.port(), {"stats", "historic"})).status, 0);
  EXPECT_EQ(daemon.received(),
            std::vector<std::string>{request("request_historic_connection_stats", R"({"dataSince":0})")});
}

/// The limit applies to the main thread and is the default for all others. One directory takes three quarters of it.
TEST(StackOnPosix, OneMebibyteSufficesForTheDirectory) {
  ScriptedDaemon daemon({{"request_directory", {event("report_directory", R"([{"country":"us"}])")}}});
  const std::string line = std::string("ulimit -s 1024 && exec '") + ZEPHCTL_PATH + "' -p " +
                           std::to_string(daemon.port()) + " show servers";
  const ProgramRun run = Process({"/bin/sh", "-c", line}).finish();
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(run.out.find("\"tag\" : \"us--0\""), std::string::npos);
}

/// The signal ends a stream; an action that ends without it keeps its status.
TEST(ClosedPipe, EndsStreamsOnly) {
  const struct {
    std::string words, report;
    int status;
  } rows[] = {
      {"stats", "report_current_state", 128 + SIGPIPE},
      {"safebrowsing errors", "report_safe_browsing_lookup_error", 128 + SIGPIPE},
      {"safebrowsing redirects 9", "report_safe_browsing_block", 128 + SIGPIPE},
      {"stats historic", "report_historic_connection_stats", 0},
      {"encryption on", "report_connection_settings", 0},
      {"stats nothing", "report_current_state", 2},
      {"help", "report_current_state", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.words);
    ScriptedDaemon daemon;
    const std::string command =
        std::string("'") + ZEPHCTL_PATH + "' -p " + std::to_string(daemon.port()) + " " + row.words;
    // The action starts after its reader has closed the pipe.
    Process run({"/bin/sh", "-c",
                 "exec 3>&1; gone=$(mktemp -u) && mkfifo $gone; (read -r _ <$gone; " + command +
                     R"( 2>&1; echo "status $?" >&3) | { exec <&-; echo >$gone; }; rm $gone)"});
    ASSERT_TRUE(sendUntilPrinted(daemon, run, event(row.report, "[]"), "status "));
    EXPECT_EQ(run.finish().out, "status " + std::to_string(row.status) + "\n");
  }
}

/// A failing standard output neither ends the program nor fails it.
TEST(StatsOnPosix, IgnoresAFullDevice) {
  ScriptedDaemon daemon({{"request_current_state", {event("report_current_state", R"({"state":6})")}}});
  const std::string stats = std::string("'") + ZEPHCTL_PATH + "' -p " + std::to_string(daemon.port()) + " stats 1";
  const ProgramRun run = Process({"/bin/sh", "-c", stats + " > /dev/full"}).finish();
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, 0);
}

}  // namespace
}  // namespace tests
