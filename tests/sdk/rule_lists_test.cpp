// What a host sees of the rule lists and the program does not show.
#include <gtest/gtest.h>

#include "tests/sdk/host.h"

namespace tests {
namespace {

TEST(RuleListCalls, SendNoMoreThanAListHolds) {
  ScriptedDaemon daemon({{"set_streaming_ipv4", {event("report_streaming_settings", "{}")}},
                         {"set_firewall_ports", {event("report_firewall_settings", "{}")}}});
  const Sdk sdk = connectTo(daemon.port());
  const std::vector<in_addr> addresses(300);
  EXPECT_FALSE(ZephlinkSDK_setStreamingIPv4(sdk.get(), 300, addresses.data(), nullptr, nullptr).hasError);
  const ZephlinkSDK_ProtocolPortPair unknown{static_cast<ZephlinkSDK_PortProtocol>(2), 3, 4};
  EXPECT_FALSE(ZephlinkSDK_setFirewallPorts(sdk.get(), 1, &unknown, nullptr, nullptr).hasError);

  std::string hundred;
  for (int i = 0; i < 100; ++i) hundred += i == 0 ? "\"0.0.0.0\"" : ",\"0.0.0.0\"";
  const std::vector<std::string> sent = {
      "[\"set_streaming_ipv4\",{\"ipv4\":[" + hundred + "]},\"zephlink_sdk\"]",
      R"(["set_firewall_ports",{"ports":[{"port":3,"portRangeEnd":4}]},"zephlink_sdk"])"};
  EXPECT_EQ(daemon.heard(), sent);
}

TEST(RuleListCalls, RefuseEntriesThatAreNotThere) {
  ScriptedDaemon daemon({{"set_localproxy_ipv6", {event("report_localproxy_settings", "{}")}}});
  const Sdk sdk = connectTo(daemon.port());
  EXPECT_EQ(ZephlinkSDK_setFirewallDomains(sdk.get(), 1, nullptr, nullptr, nullptr).errorCode,
            ZephlinkSDK_Error_InvalidArgument);
  EXPECT_EQ(ZephlinkSDK_setLocalProxyPorts(sdk.get(), 1, nullptr, nullptr, nullptr).errorCode,
            ZephlinkSDK_Error_InvalidArgument);
  EXPECT_EQ(ZephlinkSDK_setLocalProxyDomainWatchlistEnable(sdk.get(), nullptr, true, nullptr, nullptr).errorCode,
            ZephlinkSDK_Error_InvalidArgument);
  EXPECT_FALSE(ZephlinkSDK_setLocalProxyIPv6(sdk.get(), 0, nullptr, nullptr, nullptr).hasError);
  EXPECT_EQ(daemon.heard().size(), 1U);
}

TEST(RuleListCalls, ReadTheWholeLocalProxy) {
  std::string domains;
  for (int i = 0; i < 13; ++i) domains += (i == 0 ? "\"d" : ",\"d") + std::to_string(i) + "\"";
  const std::string service = R"({"title":"Films","enabled":true,"watchedDomains":[)" + domains +
                              R"(],"proxiedDomains":["p0",")" + std::string(60, 'p') + "\"]}";
  ScriptedDaemon daemon(
      {{"request_localproxy_settings",
        {event("report_localproxy_settings", R"({"matchMode":"denylist","watchlist_enabled":true,"enabled":false,)"
                                             R"("domain_watchlist":[)" +
                                                 service + "]}")}}});
  const Sdk sdk = connectTo(daemon.port());
  const auto record = ZephlinkSDK_getLocalProxySettings(sdk.get(), nullptr, nullptr);
  EXPECT_EQ(record.matchMode, ZephlinkSDK_LocalProxyMatchMode_DenyList);
  EXPECT_TRUE(record.watchlistEnabled);
  EXPECT_FALSE(record.enabled);
  ASSERT_EQ(record.serviceCount, 1);
  EXPECT_EQ(record.services[0].watchedDomainCount, 12);
  EXPECT_STREQ(record.services[0].watchedDomains[11], "d11");
  EXPECT_EQ(record.services[0].proxiedDomainCount, 2);
  EXPECT_STREQ(record.services[0].proxiedDomains[0], "p0");
  EXPECT_EQ(std::string(record.services[0].proxiedDomains[1]), std::string(49, 'p'));
}

/// Later reports of a subscription go into the same record.
TEST(RuleListCalls, KeepNothingOfTheReportBefore) {
  ScriptedDaemon daemon(
      {{"request_firewall_settings",
        {event("report_firewall_settings",
               R"({"mode":"denylist","domains":["a"],"ports":[{"proto":"udp","port":1},{"proto":"udp","port":2}]})"),
         event("report_firewall_settings", R"({"mode":"none","ports":[{"port":3}]})")}}});
  const Sdk sdk = connectTo(daemon.port());
  Collector<ZephlinkSDK_FirewallSettingsResult> reports;
  ZephlinkSDK_getFirewallSettings(sdk.get(), reports.collect, &reports);
  ASSERT_TRUE(reports.waitFor(2));
  const auto all = reports.all();
  EXPECT_EQ(all[0].ports[0].protocol, ZephlinkSDK_PortProtocol_Udp);
  EXPECT_EQ(all[1].mode, ZephlinkSDK_FirewallMode_Off);
  EXPECT_EQ(all[1].domainCount, 0);
  EXPECT_EQ(all[1].portCount, 1);
  EXPECT_EQ(all[1].ports[0].protocol, ZephlinkSDK_PortProtocol_Tcp);
}

}  // namespace
}  // namespace tests
