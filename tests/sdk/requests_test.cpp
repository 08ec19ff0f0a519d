// Requests that the program's arguments cannot produce, and calls that the library refuses.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/comma_locale.h"
#include "tests/program_case.h"
#include "tests/sdk/host.h"

namespace tests {
namespace {

/// Reports a failure at the caller's line.
template <class Record>
void expectRefused(const Record& record, std::uint32_t code = ZephlinkSDK_Error_InvalidArgument,
                   int line = __builtin_LINE()) {
  const testing::ScopedTrace trace(__FILE__, line, "");
  EXPECT_TRUE(record.hasError);
  EXPECT_EQ(record.errorCode, code);
  EXPECT_STREQ(record.errorMessage, ZephlinkSDK_errorText(code));
}

/// A number that converts to any enumeration.
struct Number {
  unsigned value;

  template <class Enumeration>
  operator Enumeration() const {
    return static_cast<Enumeration>(value);
  }
};

TEST(Refusals, IncludeANullObject) {
  expectRefused(ZephlinkSDK_getState(nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_getAdapters(nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_connectToProxy(nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionRateLimit(nullptr, "eth0", nullptr, nullptr));
  expectRefused(ZephlinkSDK_exitDaemon(nullptr));
  ZephlinkSDK_destroy(nullptr);
  ZephlinkSDK_removeListener(nullptr, 0);
  ZephlinkSDK_defaultConfig(nullptr);
}

TEST(Refusals, ComeBeforeAnythingIsSent) {
  Host host({{"request_current_state", {stateReport(0)}}});
  zephlinksdk::ZephlinkSDK* sdk = host.sdk;
  // Connecting and the account.
  expectRefused(ZephlinkSDK_connectCombined(sdk, static_cast<const char*>(nullptr), nullptr, nullptr));
  expectRefused(ZephlinkSDK_connectToCountry(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_connectToCity(sdk, "us", nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_connectToServer(sdk, nullptr, "nyc", 3, nullptr, nullptr));
  expectRefused(ZephlinkSDK_connectToExactServer(sdk, "us", nullptr, 3, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethodCombined(sdk, "user", nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethodCountry(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethodExactServer(sdk, nullptr, nullptr, 3, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethod(sdk, ZephlinkSDK_ConnectMethod_Last, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethod(sdk, ZephlinkSDK_ConnectMethod_Auto, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethod(sdk, ZephlinkSDK_ConnectMethod_Country, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethod(sdk, ZephlinkSDK_ConnectMethod_Exact, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethod(sdk, ZephlinkSDK_ConnectMethod_IgnoreLast, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectMethod(sdk, Number{10}, nullptr, nullptr));
  expectRefused(ZephlinkSDK_connect(sdk, ZephlinkSDK_ConnectMethod_Country, nullptr, nullptr), ZephlinkSDK_Error_Sdk);
  expectRefused(ZephlinkSDK_connect(sdk, ZephlinkSDK_ConnectMethod_Exact, nullptr, nullptr), ZephlinkSDK_Error_Sdk);
  expectRefused(ZephlinkSDK_login(sdk, "bob", nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_loginOAuth(sdk, nullptr, nullptr, nullptr));
  // Settings, adapters and privacy.
  expectRefused(ZephlinkSDK_setConnectionTransportMode(sdk, ZephlinkSDK_TransportMode_Proxy, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionTransportMode(sdk, ZephlinkSDK_TransportMode_Share, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setMode(sdk, Number{3}, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionEncryption(sdk, nullptr, true, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setForwardPorts(sdk, 1, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setDownstreamSubnets(sdk, 1, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionPriorities(sdk, "eth0", Number{5}, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionPriorities(sdk, nullptr, Number{0}, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionDirectionalMode(sdk, nullptr, Number{1}, Number{1}, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionRateLimit(sdk, nullptr, 1, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setConnectionRateLimit(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setAdapterMonthlyDataLimit(sdk, nullptr, 1, 1, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setAdapterDailyDataLimit(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_addAdapterDailyDataLimitBoost(sdk, nullptr, 1, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setAdapterOverlimitRatelimit(sdk, nullptr, 1, nullptr, nullptr));
  expectRefused(ZephlinkSDK_resetAdapterUsage(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setDNSServers(sdk, 1, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setCaptivePortalLoginMode(sdk, true, nullptr, nullptr, nullptr));
  // Rule lists, logs and statistics.
  expectRefused(ZephlinkSDK_setFirewallDomains(sdk, 1, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setLocalProxyPorts(sdk, 1, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setLocalProxyDomainWatchlistEnable(sdk, nullptr, true, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setDaemonLogSettings(sdk, {1, 2, 3, Number{4}}, nullptr, nullptr));
  expectRefused(ZephlinkSDK_sendLogReport(sdk, nullptr, "text", ".", nullptr, nullptr));
  expectRefused(ZephlinkSDK_sendLogReport(sdk, "a@b.example", "text", nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_subscribeStats(sdk, true, 1, nullptr));
  // Network sharing.
  expectRefused(ZephlinkSDK_connectToNetworkShareViaConnectCode(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_reconnectToNetworkShare(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_requestNetworkSharingPair(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_allowNetworkSharingPair(sdk, nullptr, true, nullptr, nullptr));
  expectRefused(ZephlinkSDK_unpairNetworkSharingPeer(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setNetworkSharingPeerAutoReconnect(sdk, nullptr, true, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setNetworkSharingDisplayName(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setNetworkSharingPairRequestBehavior(sdk, Number{3}, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setNetworkSharingAutoPairBehavior(sdk, Number{3}, nullptr, nullptr));
  // Safe browsing.
  expectRefused(ZephlinkSDK_initSafeBrowsing(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setSafeBrowsingConfig(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_refreshSafeBrowsingToken(sdk, nullptr, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setSafeBrowsingLogLevel(sdk, Number{5}, nullptr, nullptr));
  expectRefused(ZephlinkSDK_setSafeBrowsingSafeNetworkOverride(sdk, Number{3}, nullptr, nullptr));
  // Listeners without a callback.
  constexpr auto kNoCallback = ZephlinkSDK_Error_CallbackRequired;
  EXPECT_STREQ(ZephlinkSDK_errorText(kNoCallback), "A callback is required for this call");
  expectRefused(ZephlinkSDK_listenForNetworkSharePeerStatusChange(sdk, nullptr, nullptr), kNoCallback);
  expectRefused(ZephlinkSDK_listenForNetworkSharePairRequest(sdk, nullptr, nullptr), kNoCallback);
  expectRefused(ZephlinkSDK_listenForNetworkShareNewPeerAvailable(sdk, nullptr, nullptr), kNoCallback);
  expectRefused(ZephlinkSDK_listenForSafeBrowsingError(sdk, nullptr, nullptr), kNoCallback);
  expectRefused(ZephlinkSDK_listenForSafeBrowsingBlock(sdk, nullptr, nullptr), kNoCallback);
  // Sent after everything before it.
  EXPECT_FALSE(ZephlinkSDK_getState(sdk, nullptr, nullptr).hasError);
  EXPECT_EQ(host.daemon.received(), std::vector<std::string>{request("request_current_state")});
}

TEST(Requests, SendOtherConnectMethodsAsAuto) {
  Host host({{"server_auto_connect", {stateReport(6)}}});
  for (const unsigned method : {ZephlinkSDK_ConnectMethod_Auto + 0U, ZephlinkSDK_ConnectMethod_Proxy + 0U, 10U}) {
    EXPECT_FALSE(ZephlinkSDK_connect(host.sdk, Number{method}, nullptr, nullptr).hasError);
  }
  EXPECT_EQ(host.daemon.received(),
            std::vector<std::string>(3, request("server_auto_connect", R"({"server":"auto"})")));
}

/// Returns `text` repeated `times` times, separated by commas.
std::string repeated(int times, const std::string& text) {
  std::string all;
  for (int i = 0; i < times; ++i) all += (i == 0 ? "" : ",") + text;
  return all;
}

TEST(Requests, AreCutToTheDaemonsLimits) {
  const std::string settings = event("report_connection_settings", "{}");
  Host host({{"set_connection_forward_ports", {settings}},
             {"set_downstream_subnets", {settings}},
             {"set_connection_transport", {settings}},
             {"set_dns_servers", {event("report_privacy_settings", "{}")}},
             {"set_cplogin_enable", {event("report_cplogin_network", "{}")}},
             {"set_streaming_ipv4", {event("report_streaming_settings", "{}")}},
             {"set_firewall_ports", {event("report_firewall_settings", "{}")}},
             {"set_localproxy_ipv6", {event("report_localproxy_settings", "{}")}}});
  std::vector<std::string> sent;
  // Each call was answered, so its request has arrived.
  const auto expectSent = [&](const auto& record, const std::string& name, const std::string& members) {
    EXPECT_FALSE(record.hasError) << name;
    sent.push_back(request(name, members));
    EXPECT_EQ(host.daemon.received(), sent);
  };

  // Port 0 and ranges are skipped, but count among the first 20.
  ZephlinkSDK_ProtocolPortPair rules[22] = {};
  rules[1] = {ZephlinkSDK_PortProtocol_Udp, 1, 0};
  rules[2] = {ZephlinkSDK_PortProtocol_Tcp, 100, 200};
  rules[19] = {Number{7}, 65535, 0};
  rules[20] = {ZephlinkSDK_PortProtocol_Tcp, 20, 0};
  expectSent(ZephlinkSDK_setForwardPorts(host.sdk, 22, rules, nullptr, nullptr), "set_connection_forward_ports",
             R"({"forward_ports":[{"port":1,"portRangeEnd":0,"proto":"udp"},{"port":65535,"portRangeEnd":0}]})");
  expectSent(ZephlinkSDK_setForwardPorts(host.sdk, 0, nullptr, nullptr, nullptr), "set_connection_forward_ports",
             R"({"forward_ports":[]})");

  // Arrays without a terminating zero.
  ZephlinkSDK_Subnet subnets[11] = {};
  std::ranges::fill(subnets[9].address, 'a');
  subnets[9].prefixLength = 255;
  expectSent(ZephlinkSDK_setDownstreamSubnets(host.sdk, 11, subnets, nullptr, nullptr), "set_downstream_subnets",
             "{\"downstream_subnets\":[" + repeated(9, R"({"address":"","prefix_length":0})") + R"(,{"address":")" +
                 std::string(46, 'a') + R"(","prefix_length":255}]})");
  char addresses[4][ZephlinkSDK_AddressSize] = {"1.1.1.1"};
  std::ranges::fill(addresses[2], 'd');
  expectSent(ZephlinkSDK_setDNSServers(host.sdk, 4, addresses, nullptr, nullptr), "set_dns_servers",
             R"({"dns_addresses":["1.1.1.1","",")" + std::string(46, 'd') + "\"]}");

  expectSent(ZephlinkSDK_setCaptivePortalLoginMode(host.sdk, false, "eth0", nullptr, nullptr), "set_cplogin_enable",
             R"({"enable":false,"network":"eth0"})");
  expectSent(ZephlinkSDK_setConnectionTransportMode(host.sdk, Number{7}, nullptr, nullptr), "set_connection_transport",
             R"({"transport_mode":"auto"})");
  const std::vector<in_addr> manyAddresses(300);
  expectSent(ZephlinkSDK_setStreamingIPv4(host.sdk, 300, manyAddresses.data(), nullptr, nullptr), "set_streaming_ipv4",
             "{\"ipv4\":[" + repeated(100, "\"0.0.0.0\"") + "]}");
  const ZephlinkSDK_ProtocolPortPair unknown{Number{2}, 3, 4};
  expectSent(ZephlinkSDK_setFirewallPorts(host.sdk, 1, &unknown, nullptr, nullptr), "set_firewall_ports",
             R"({"ports":[{"port":3,"portRangeEnd":4}]})");
  expectSent(ZephlinkSDK_setLocalProxyIPv6(host.sdk, 0, nullptr, nullptr, nullptr), "set_localproxy_ipv6",
             R"({"ipv6":[]})");
}

TEST(Numbers, AreTheSameUnderEveryLocale) {
  Host host({{"set_overflow_threshold",
              {event("report_connection_settings",
                     R"({"connection_secondary_speed_activation":1234567.5,"max_redundant":1e3})")}},
             {"request_speedtest_results",
              {event("report_speedtest_results", R"([{"time":"2024-01-02T03:04:05","download":12.5,"msg":0.25}])")}}});
  const CommaLocale locale;
  const auto settings = ZephlinkSDK_setOverflowThreshold(host.sdk, 12.5, nullptr, nullptr);
  EXPECT_EQ(host.daemon.received(), std::vector<std::string>{request("set_overflow_threshold", R"({"speed":12.5})")});
  EXPECT_FALSE(settings.hasError);
  EXPECT_EQ(settings.overflowThreshold, 1234567.5);
  EXPECT_EQ(settings.maxRedundant, 1000U);
  const auto run = ZephlinkSDK_getSpeedTestResults(host.sdk, nullptr, nullptr).runs[0];
  EXPECT_GT(run.time, 1704000000);
  EXPECT_EQ(run.downloadSpeed, 12.5);
  EXPECT_STREQ(run.errorMessage, "0.25");
}

TEST(Config, NeedsNoTerminators) {
  ScriptedDaemon daemon({{"request_current_state", {stateReport(2)}}});
  ZephlinkSDK_Config config = configFor(daemon.port());
  std::ranges::fill(config.appName, 'n');
  // 127.0.0.1, padded with octal zeros to fill the array.
  const std::string_view end = "177.0.0.1";
  std::ranges::fill(config.address, '0');
  std::ranges::copy(end, std::end(config.address) - end.size());
  const Sdk sdk(ZephlinkSDK_create(config));
  EXPECT_EQ(ZephlinkSDK_getState(sdk.get(), nullptr, nullptr).state, ZephlinkSDK_State_LoggedIn);
}

}  // namespace
}  // namespace tests
