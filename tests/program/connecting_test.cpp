// Time-outs of connecting and disconnecting.
#include <gtest/gtest.h>

#include <chrono>

#include "tests/program_case.h"

namespace tests {
namespace {

/// Disconnecting times out after ten seconds; connecting and signing in, started earlier, after a minute.
TEST(Disconnect, TimesOutLongBeforeConnectAndLogin) {
  ScriptedDaemon daemon;
  Process connecting(command(daemon.port(), {"connect"}));
  Process signingIn(command(daemon.port(), {"login", "auto"}));
  ASSERT_TRUE(daemon.waitForRequests(3));
  const auto start = std::chrono::steady_clock::now();
  const ProgramRun run = zephctl(daemon.port(), {"disconnect"});
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(run.err, errorObject(3841, "Timeout waiting for result", "Timeout"));
  EXPECT_EQ(run.status, 1);
  EXPECT_GE(took, std::chrono::seconds(10));
  EXPECT_LT(took, std::chrono::seconds(20));
  daemon.send(event("report_current_state", R"({"state":6})"));
  EXPECT_EQ(parsed(connecting.finish().out)["tag"], "--0");
  EXPECT_EQ(parsed(signingIn.finish().out)["state"], "CONNECTED");
}

}  // namespace
}  // namespace tests
