// Arguments of a problem report that no command line can have, and log settings heard of later.
#include <gtest/gtest.h>

#include "tests/sdk/host.h"

namespace tests {
namespace {

TEST(LogCalls, RefuseTextsThatAreNotThere) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  EXPECT_EQ(ZephlinkSDK_sendLogReport(sdk.get(), nullptr, "text", ".", nullptr, nullptr).errorCode,
            ZephlinkSDK_Error_InvalidArgument);
  EXPECT_EQ(ZephlinkSDK_sendLogReport(sdk.get(), "a@b.example", "text", nullptr, nullptr, nullptr).errorCode,
            ZephlinkSDK_Error_InvalidArgument);
  EXPECT_EQ(ZephlinkSDK_exitDaemon(nullptr).errorCode, ZephlinkSDK_Error_InvalidArgument);
  EXPECT_FALSE(ZephlinkSDK_eraseLogs(sdk.get()).hasError);
  ASSERT_TRUE(daemon.waitForRequests(1));
  EXPECT_EQ(daemon.heard()[0], R"(["erase_all_log_files",null,"zephlink_sdk"])");
}

TEST(LogCalls, KeepTheLevelThatAReportDoesNotName) {
  ScriptedDaemon daemon({{"request_log_settings",
                          {event("report_log_settings", R"({"daemon":{"file_size":1,"log_level":"error"}})"),
                           event("report_log_settings", R"({"daemon":{"total_files":2,"log_level":"loud"}})")}}});
  const Sdk sdk = connectTo(daemon.port());
  Collector<ZephlinkSDK_LogSettingsResult> reports;
  ZephlinkSDK_getLogSettings(sdk.get(), reports.collect, &reports);
  ASSERT_TRUE(reports.waitFor(2));
  const auto later = reports.all()[1].daemon;
  EXPECT_EQ(later.logLevel, ZephlinkSDK_DaemonLogLevel_Error);
  EXPECT_EQ(later.fileSize, 0);
  EXPECT_EQ(later.totalFiles, 2);
}

}  // namespace
}  // namespace tests
