// Settings, adapters and privacy as a host uses them: what the program's words cannot reach.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/program_case.h"
#include "tests/sdk/host.h"

namespace tests {
namespace {

/// Arrays that no zero ends.
template <std::size_t N>
void fill(char (&text)[N], char letter) {
  std::memset(text, letter, N);
}

TEST(Settings, RefuseArgumentsBeforeAnythingIsSent) {
  ScriptedDaemon daemon({{"request_connection_settings", {event("report_connection_settings", "{}")}}});
  const Sdk owner = connectTo(daemon.port());
  zephlinksdk::ZephlinkSDK* sdk = owner.get();
  constexpr auto kPriority = static_cast<ZephlinkSDK_ConnectionPriority>(5);
  constexpr auto kMode = ZephlinkSDK_ConnectionDirectionalMode_On;
  const auto expectRefused = [](const ZephlinkSDK_Result& result) {
    EXPECT_TRUE(result.hasError);
    EXPECT_EQ(result.errorCode, ZephlinkSDK_Error_InvalidArgument);
    EXPECT_STREQ(result.errorMessage, "An invalid argument was supplied");
  };
  expectRefused(ZephlinkSDK_setConnectionTransportMode(sdk, ZephlinkSDK_TransportMode_Proxy, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionTransportMode(sdk, ZephlinkSDK_TransportMode_Share, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionEncryption(sdk, nullptr, true, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setForwardPorts(sdk, 1, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setDownstreamSubnets(sdk, 1, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionPriorities(sdk, "eth0", kPriority, nullptr, nullptr));
  expectRefused(
      ZephlinkSDK_setConnectionPriorities(sdk, nullptr, ZephlinkSDK_ConnectionPriority_Never, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionDirectionalMode(sdk, nullptr, kMode, kMode, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionRateLimit(sdk, nullptr, 1, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionRateLimit(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setAdapterMonthlyDataLimit(sdk, nullptr, 1, 1, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setAdapterDailyDataLimit(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_addAdapterDailyDataLimitBoost(sdk, nullptr, 1, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setAdapterOverlimitRatelimit(sdk, nullptr, 1, nullptr, nullptr));
  expectRefused(ZephlinkSDK_resetAdapterUsage(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setDNSServers(sdk, 1, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setCaptivePortalLoginMode(sdk, true, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_getAdapters(nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionRateLimit(nullptr, "eth0", nullptr, nullptr));
  // Behind anything that might have been sent.
  EXPECT_FALSE(ZephlinkSDK_getSettings(sdk, nullptr, nullptr).hasError);
  EXPECT_EQ(daemon.heard().size(), 1U);
}

TEST(Settings, SendNoMoreThanTheDaemonTakes) {
  const std::string settings = event("report_connection_settings", "{}");
  ScriptedDaemon daemon({{"set_connection_forward_ports", {settings}},
                         {"set_downstream_subnets", {settings}},
                         {"set_connection_transport", {settings}},
                         {"set_dns_servers", {event("report_privacy_settings", "{}")}},
                         {"set_cplogin_enable", {event("report_cplogin_network", "{}")}}});
  const Sdk sdk = connectTo(daemon.port());

  // Port 0 and ranges are passed over, but count among the first 20.
  ZephlinkSDK_ProtocolPortPair rules[22] = {};
  rules[1] = {ZephlinkSDK_PortProtocol_Udp, 1, 0};
  rules[2] = {ZephlinkSDK_PortProtocol_Tcp, 100, 200};
  rules[19] = {static_cast<ZephlinkSDK_PortProtocol>(7), 65535, 0};
  rules[20] = {ZephlinkSDK_PortProtocol_Tcp, 20, 0};
  ZephlinkSDK_setForwardPorts(sdk.get(), 22, rules, nullptr, nullptr);
  ZephlinkSDK_setForwardPorts(sdk.get(), 0, nullptr, nullptr, nullptr);

  ZephlinkSDK_Subnet subnets[11] = {};
  fill(subnets[9].address, 'a');
  subnets[9].prefixLength = 255;
  ZephlinkSDK_setDownstreamSubnets(sdk.get(), 11, subnets, nullptr, nullptr);

  char addresses[4][ZephlinkSDK_AddressSize] = {"1.1.1.1"};
  fill(addresses[2], 'd');
  ZephlinkSDK_setDNSServers(sdk.get(), 4, addresses, nullptr, nullptr);
  ZephlinkSDK_setCaptivePortalLoginMode(sdk.get(), false, "eth0", nullptr, nullptr);
  ZephlinkSDK_setConnectionTransportMode(sdk.get(), static_cast<ZephlinkSDK_TransportMode>(7), nullptr, nullptr);

  std::string nineSubnets;
  for (int i = 0; i < 9; ++i) nineSubnets += R"({"address":"","prefix_length":0},)";
  const std::string ports =
      R"({"forward_ports":[{"port":1,"portRangeEnd":0,"proto":"udp"},{"port":65535,"portRangeEnd":0}]})";
  const std::string lastSubnet = R"({"address":")" + std::string(46, 'a') + R"(","prefix_length":255})";
  const std::vector<std::string> sent = {
      request("set_connection_forward_ports", ports),
      request("set_connection_forward_ports", R"({"forward_ports":[]})"),
      request("set_downstream_subnets", "{\"downstream_subnets\":[" + nineSubnets + lastSubnet + "]}"),
      request("set_dns_servers", R"({"dns_addresses":["1.1.1.1","",")" + std::string(46, 'd') + "\"]}"),
      request("set_cplogin_enable", R"({"enable":false,"network":"eth0"})"),
      request("set_connection_transport", R"({"transport_mode":"auto"})"),
  };
  EXPECT_EQ(daemon.heard(), sent);
}

TEST(Settings, ReadWhatIsNotPrinted) {
  ScriptedDaemon daemon(
      {{"request_connection_settings",
        {event("report_connection_settings", R"({"language":"english","perconn_dscp_expose":{"b":true,"a":false}})")}},
       {"request_privacy_settings",
        {event("report_privacy_settings", R"({"do_not_store_credentials":true})"),
         event("report_privacy_settings", R"({"api_protection":true})")}}});
  const Sdk sdk = connectTo(daemon.port());
  const auto settings = ZephlinkSDK_getSettings(sdk.get(), nullptr, nullptr);
  EXPECT_STREQ(settings.language, "en");
  ASSERT_EQ(settings.perConnectionDscpExposeCount, 2);
  EXPECT_STREQ(settings.perConnectionDscpExpose[0].adapterID, "a");
  EXPECT_FALSE(settings.perConnectionDscpExpose[0].exposed);
  EXPECT_STREQ(settings.perConnectionDscpExpose[1].adapterID, "b");
  EXPECT_TRUE(settings.perConnectionDscpExpose[1].exposed);

  using PrivacyCollector = Collector<ZephlinkSDK_PrivacySettingsResult>;
  PrivacyCollector privacy;
  ZephlinkSDK_getPrivacySettings(sdk.get(), PrivacyCollector::collect, &privacy);
  ASSERT_TRUE(privacy.waitFor(2));
  EXPECT_TRUE(privacy.all()[0].doNotStoreCredentials && !privacy.all()[0].apiProtection);
  EXPECT_TRUE(privacy.all()[1].apiProtection && !privacy.all()[1].doNotStoreCredentials);
}

TEST(Settings, SubscribersKeepListsThatAReportLeavesOut) {
  ScriptedDaemon daemon({{"request_connection_settings",
                          {event("report_connection_settings",
                                 R"({"forward_ports":[{"port":80}],"perconn_encryption":true,"encrypted":true,
                                     "perconn_encryption_settings":{"a":true},"num_target_connections":{"upload":3}})"),
                           event("report_connection_settings", R"({"perconn_encryption":true})"),
                           event("report_connection_settings", R"({"forward_ports":[]})")}}});
  const Sdk sdk = connectTo(daemon.port());
  using SettingsCollector = Collector<ZephlinkSDK_SettingsResult>;
  SettingsCollector settings;
  ZephlinkSDK_getSettings(sdk.get(), SettingsCollector::collect, &settings);
  ASSERT_TRUE(settings.waitFor(3));
  const auto records = settings.all();
  EXPECT_EQ(records[0].targetUploadConnections, 3);
  EXPECT_EQ(records[1].targetUploadConnections, 0);
  EXPECT_FALSE(records[1].encrypted);
  EXPECT_EQ(records[1].forwardedPortCount, 1);
  EXPECT_EQ(records[1].perConnectionEncryptionCount, 1);
  EXPECT_EQ(records[2].forwardedPortCount, 0);
  EXPECT_EQ(records[2].perConnectionEncryptionCount, 0);
}

TEST(CaptivePortal, CheckOutlivesTheTimeOutOfOthers) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  using CheckCollector = Collector<ZephlinkSDK_CaptivePortalCheckResult>;
  CheckCollector networks;
  ZephlinkSDK_checkForCaptivePortals(sdk.get(), CheckCollector::collect, &networks);
  EXPECT_EQ(ZephlinkSDK_getPrivacySettings(sdk.get(), nullptr, nullptr).errorCode, ZephlinkSDK_Error_Timeout);
  daemon.send(event("report_captive_networks", R"({"networks":["wlan0"]})"));
  ASSERT_TRUE(networks.waitFor(1));
  EXPECT_FALSE(networks.all()[0].hasError);
  EXPECT_STREQ(networks.all()[0].networks[0], "wlan0");
}

}  // namespace
}  // namespace tests
