// The stream at the end of a pipe that nobody reads any more.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/program_case.h"

namespace tests {
namespace {

TEST(Stats, EndsWhenItsPipeCloses) {
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
TEST(Stats, IgnoresAFullDevice) {
  ScriptedDaemon daemon({{"request_current_state", {event("report_current_state", R"({"state":6})")}}});
  const std::string stats = std::string("'") + ZEPHCTL_PATH + "' -p " + std::to_string(daemon.port()) + " stats 1";
  const ProgramRun run = Process({"/bin/sh", "-c", stats + " > /dev/full"}).finish();
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, 0);
}

}  // namespace
}  // namespace tests
