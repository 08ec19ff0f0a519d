// Test runs in a time zone of their own.
#include <gtest/gtest.h>

#include <string>

#include "tests/process.h"
#include "tests/scripted_daemon.h"

namespace tests {
namespace {

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

}  // namespace
}  // namespace tests
