// What a host sees of the last disconnect and the program does not show.
#include <gtest/gtest.h>

#include "tests/sdk/host.h"

namespace tests {
namespace {

TEST(LastDisconnectCall, ReadsTheSessionsTimes) {
  ScriptedDaemon daemon({{"request_disconnect_reason",
                          {event("report_disconnect_reason",
                                 R"({"disconnectReason":"SLEEP","sessionEnd":9000000000,"sessionLength":-2})")}}});
  const Sdk sdk = connectTo(daemon.port());
  const auto record = ZephlinkSDK_getLastDisconnectEvent(sdk.get(), nullptr, nullptr);
  EXPECT_EQ(record.disconnectReason, ZephlinkSDK_DisconnectReason_Sleep);
  EXPECT_EQ(record.sessionEnd, 9000000000);
  EXPECT_EQ(record.sessionLength, -2);
}

}  // namespace
}  // namespace tests
