// Large records on small stacks.
#include <gtest/gtest.h>

#include <string>

#include "tests/process.h"
#include "tests/scripted_daemon.h"

namespace tests {
namespace {

/// The limit holds for the main thread and, as their default, for all others. One directory takes three quarters of it.
TEST(Stack, NeedsNoMoreThanAMebibyteForTheDirectory) {
  ScriptedDaemon daemon({{"request_directory", {event("report_directory", R"([{"country":"us"}])")}}});
  const std::string line = std::string("ulimit -s 1024 && exec '") + ZEPHCTL_PATH + "' -p " +
                           std::to_string(daemon.port()) + " show servers";
  const ProgramRun run = Process({"/bin/sh", "-c", line}).finish();
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(run.out.find("\"tag\" : \"us--0\""), std::string::npos);
}

}  // namespace
}  // namespace tests
