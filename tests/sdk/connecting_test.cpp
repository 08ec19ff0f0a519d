// Connecting and the account as a host calls them: what is refused, and what reaches a callback.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/sdk/host.h"

namespace tests {
namespace {

TEST(Arguments, AreRefusedBeforeAnythingIsSent) {
  ScriptedDaemon daemon({{"request_current_state", {event("report_current_state", "{}")}}});
  const Sdk sdk = connectTo(daemon.port());
  const auto check = [](const ZephlinkSDK_Result& record, std::uint32_t code) {
    EXPECT_TRUE(record.hasError);
    EXPECT_EQ(record.errorCode, code);
    EXPECT_STREQ(record.errorMessage, zephlinksdk::errorText(code));
  };
  const char* const null = nullptr;
  constexpr std::uint32_t kInvalid = ZephlinkSDK_Error_InvalidArgument;
  check(ZephlinkSDK_connectCombined(sdk.get(), null, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_connectToCountry(sdk.get(), null, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_connectToCity(sdk.get(), "us", null, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_connectToServer(sdk.get(), null, "nyc", 3, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_connectToExactServer(sdk.get(), "us", null, 3, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_setConnectMethodCombined(sdk.get(), "user", null, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_setConnectMethodCountry(sdk.get(), null, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_setConnectMethodExactServer(sdk.get(), null, null, 3, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_login(sdk.get(), "bob", null, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_loginOAuth(sdk.get(), null, nullptr, nullptr), kInvalid);
  check(ZephlinkSDK_connectToProxy(nullptr, nullptr, nullptr), kInvalid);
  for (const auto method : {ZephlinkSDK_ConnectMethod_Last, ZephlinkSDK_ConnectMethod_Auto,
                            ZephlinkSDK_ConnectMethod_Country, ZephlinkSDK_ConnectMethod_Exact,
                            ZephlinkSDK_ConnectMethod_IgnoreLast, static_cast<ZephlinkSDK_ConnectMethod>(10)}) {
    check(ZephlinkSDK_setConnectMethod(sdk.get(), method, nullptr, nullptr), kInvalid);
  }
  for (const auto method : {ZephlinkSDK_ConnectMethod_Country, ZephlinkSDK_ConnectMethod_Exact}) {
    check(ZephlinkSDK_connect(sdk.get(), method, nullptr, nullptr), ZephlinkSDK_Error_Sdk);
  }
  ASSERT_FALSE(ZephlinkSDK_getState(sdk.get(), nullptr, nullptr).hasError);
  EXPECT_EQ(daemon.heard().size(), 1U);
}

TEST(Connect, TakesEveryOtherMethodForAuto) {
  ScriptedDaemon daemon({{"server_auto_connect", {event("report_current_state", R"({"state":6})")}}});
  const Sdk sdk = connectTo(daemon.port());
  const std::vector<ZephlinkSDK_ConnectMethod> methods = {
      ZephlinkSDK_ConnectMethod_Auto, ZephlinkSDK_ConnectMethod_Proxy, static_cast<ZephlinkSDK_ConnectMethod>(10)};
  for (const auto method : methods) EXPECT_FALSE(ZephlinkSDK_connect(sdk.get(), method, nullptr, nullptr).hasError);
  EXPECT_EQ(daemon.heard(),
            std::vector<std::string>(methods.size(), R"(["server_auto_connect",{"server":"auto"},"zephlink_sdk"])"));
}

TEST(Directory, ReachesACallbackAgainAndAgain) {
  ScriptedDaemon daemon(
      {{"request_directory", {event("report_directory", R"([{"country":"us","publicIP":["a","b"]},{}])")}}});
  const Sdk sdk = connectTo(daemon.port());
  Collector<ZephlinkSDK_DirectoryResult> directories;
  const auto begun = ZephlinkSDK_getDirectory(sdk.get(), directories.collect, &directories);
  EXPECT_EQ(begun.errorCode, ZephlinkSDK_Error_AsyncCall);
  ASSERT_TRUE(directories.waitFor(1));
  daemon.send(event("report_directory", R"([{"country":"de","publicIP":["c"]}])"));
  ASSERT_TRUE(directories.waitFor(2));
  const auto all = directories.all();
  EXPECT_EQ(all[0].count, 2U);
  EXPECT_EQ(all[0].servers[0].publicIPCount, 2);
  EXPECT_EQ(all[1].count, 1U);
  EXPECT_STREQ(all[1].servers[0].country, "de");
  EXPECT_EQ(all[1].servers[0].publicIPCount, 1);
  EXPECT_STREQ(all[1].servers[0].publicIP[0], "c");
}

/// Setting a value reports the whole record and is no subscription; reading it is one.
TEST(DirectorySettings, StaySubscribedUnderBothNames) {
  const std::string report = event("report_directory_settings", R"({"domain":"d"})");
  ScriptedDaemon daemon({{"request_directory_url", {report}}, {"set_directory_domain", {report}}});
  const Sdk sdk = connectTo(daemon.port());
  Collector<ZephlinkSDK_DirectorySettingsResult> set;
  Collector<ZephlinkSDK_DirectorySettingsResult> esni;
  ZephlinkSDK_setDirectoryDomain(sdk.get(), "d", set.collect, &set);
  ASSERT_TRUE(set.waitFor(1));
  ZephlinkSDK_setEnableEsni(sdk.get(), true, esni.collect, &esni);
  ASSERT_TRUE(esni.waitFor(1));
  daemon.send(report);
  ASSERT_TRUE(esni.waitFor(2));
  EXPECT_EQ(set.all().size(), 1U);
}

}  // namespace
}  // namespace tests
