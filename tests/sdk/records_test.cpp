// Record contents that a host sees but the program does not print, mostly in subscriptions: later reports are read into
// the same record.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/sdk/host.h"

namespace tests {
namespace {

/// Returns the records that `call` receives when these reports answer its request.
template <class Record>
std::vector<Record> recordsOf(Record (&call)(zephlinksdk::ZephlinkSDK*, zephlinksdk::Callback<Record>, void*),
                              const std::string& request, const std::string& report,
                              const std::vector<std::string>& data) {
  Answers answers;
  for (const std::string& members : data) answers[request].push_back(event(report, members));
  Collector<Record> records;
  Host host(answers);
  call(host.sdk, records.collect, &records);
  if (!records.waitFor(data.size())) throw std::runtime_error("a report is lost");
  return records.all();
}

TEST(Directory, ReachesACallbackRepeatedly) {
  const auto all =
      recordsOf(ZephlinkSDK_getDirectory, "request_directory", "report_directory",
                {R"([{"country":"us","publicIP":["a","b"]},{}])", R"([{"country":"de","publicIP":["c"]}])"});
  EXPECT_EQ(all[0].errorCode, ZephlinkSDK_Error_AsyncCall);
  EXPECT_EQ(all[0].count, 2U);
  EXPECT_EQ(all[0].servers[0].publicIPCount, 2);
  EXPECT_EQ(all[1].count, 1U);
  EXPECT_STREQ(all[1].servers[0].country, "de");
  EXPECT_EQ(all[1].servers[0].publicIPCount, 1);
  EXPECT_STREQ(all[1].servers[0].publicIP[0], "c");
}

/// Setting a value reports the whole record and does not subscribe; reading it does.
TEST(DirectorySettings, StaySubscribedUnderBothNames) {
  const std::string report = event("report_directory_settings", R"({"domain":"d"})");
  Collector<ZephlinkSDK_DirectorySettingsResult> set;
  Collector<ZephlinkSDK_DirectorySettingsResult> esni;
  Host host({{"request_directory_url", {report}}, {"set_directory_domain", {report}}});
  ZephlinkSDK_setDirectoryDomain(host.sdk, "d", set.collect, &set);
  ASSERT_TRUE(set.waitFor(1));
  ZephlinkSDK_setEnableEsni(host.sdk, true, esni.collect, &esni);
  ASSERT_TRUE(esni.waitFor(1));
  host.daemon.send(report);
  ASSERT_TRUE(esni.waitFor(2));
  EXPECT_EQ(set.all().size(), 1U);
}

TEST(LogSettings, KeepTheLevelThatAReportOmits) {
  const auto later = recordsOf(ZephlinkSDK_getLogSettings, "request_log_settings", "report_log_settings",
                               {R"({"daemon":{"file_size":1,"log_level":"error"}})",
                                R"({"daemon":{"total_files":2,"log_level":"loud"}})"})[1]
                         .daemon;
  EXPECT_EQ(later.logLevel, ZephlinkSDK_DaemonLogLevel_Error);
  EXPECT_EQ(later.fileSize, 0);
  EXPECT_EQ(later.totalFiles, 2);
}

TEST(LastDisconnect, ReportsTheSessionsTimes) {
  const auto record =
      recordsOf(ZephlinkSDK_getLastDisconnectEvent, "request_disconnect_reason", "report_disconnect_reason",
                {R"({"disconnectReason":"SLEEP","sessionEnd":9000000000,"sessionLength":-2})"})[0];
  EXPECT_EQ(record.disconnectReason, ZephlinkSDK_DisconnectReason_Sleep);
  EXPECT_EQ(record.sessionEnd, 9000000000);
  EXPECT_EQ(record.sessionLength, -2);
}

TEST(Peers, StatusListenerReceivesFailuresWithoutAnError) {
  Collector<ZephlinkSDK_NetworkSharingConnectionResult> changes;
  Host host;
  ZephlinkSDK_listenForNetworkSharePeerStatusChange(host.sdk, changes.collect, &changes);
  ASSERT_TRUE(host.daemon.waitForConnections(1));
  for (const char* change : {R"({"uuid":"a","peer_role":"host","peerStatus":1,"tunnelStatus":9,"type":3,"msg":"no"})",
                             // An unknown role keeps the previous value.
                             R"({"uuid":"b","peer_role":"guest","peerStatus":2,"tunnelStatus":10})"}) {
    host.daemon.send(event("report_networksharing_peer_status_change", change));
  }
  ASSERT_TRUE(changes.waitFor(2));
  const auto expectChange = [](const ZephlinkSDK_NetworkSharingConnectionResult& record, const char* uuid,
                               std::uint32_t code, const char* message, ZephlinkSDK_PeerStatus peerStatus,
                               ZephlinkSDK_PeerTunnelStatus tunnelStatus) {
    SCOPED_TRACE(uuid);
    EXPECT_FALSE(record.hasError);
    EXPECT_EQ(record.errorCode, code);
    EXPECT_STREQ(record.errorMessage, message);
    EXPECT_STREQ(record.uuid, uuid);
    EXPECT_EQ(record.role, ZephlinkSDK_PeerRole_Host);
    EXPECT_EQ(record.peerStatus, peerStatus);
    EXPECT_EQ(record.tunnelStatus, tunnelStatus);
  };
  expectChange(changes.all()[0], "a", ZephlinkSDK_Error_InvalidCredentials, "no",
               ZephlinkSDK_PeerStatus_Unauthenticated, ZephlinkSDK_PeerTunnelStatus_Paused);
  expectChange(changes.all()[1], "b", ZephlinkSDK_Error_None, "", ZephlinkSDK_PeerStatus_Authenticated,
               ZephlinkSDK_PeerTunnelStatus_Inactive);
}

TEST(Peers, FailedPairingKeepsThePeersName) {
  Host host({{"request_networksharing_pair",
              {event("report_networksharing_peer_status_change",
                     R"({"uuid":"p","display_name":"P","have_auth_token":true,"type":1,"msg":"gone"})")}}});
  const auto record = ZephlinkSDK_requestNetworkSharingPair(host.sdk, "p", nullptr, nullptr);
  EXPECT_TRUE(record.hasError);
  EXPECT_EQ(record.errorCode, ZephlinkSDK_Error_Network);
  EXPECT_STREQ(record.errorMessage, "gone");
  EXPECT_STREQ(record.uuid, "p");
  EXPECT_STREQ(record.displayName, "P");
  EXPECT_FALSE(record.haveAuthToken);
}

TEST(Peers, LaterListsReplaceEarlierPeers) {
  const auto lists = recordsOf(ZephlinkSDK_getNetworkSharesAvailable, "request_networksharing_sharesavailable",
                               "report_networksharing_sharesavailable",
                               {R"([{"uuid":"a","display_name":"A","supports_host":true,"peer_as_host":)"
                                R"({"allow":true,"peerStatus":2,"tunnelStatus":1,"usage":{"week":7}}},{}])",
                                R"([{"uuid":"b"}])"});
  EXPECT_EQ(lists[0].peerCount, 2);
  EXPECT_EQ(lists[0].peers[0].peerAsHost.usageWeek, 7U);
  EXPECT_EQ(lists[1].peerCount, 1);
  const auto& last = lists[1].peers[0];
  EXPECT_STREQ(last.uuid, "b");
  EXPECT_STREQ(last.displayName, "");
  EXPECT_FALSE(last.supportsHost);
  EXPECT_FALSE(last.peerAsHost.allowed);
  EXPECT_EQ(last.peerAsHost.peerStatus, ZephlinkSDK_PeerStatus_Disconnected);
  EXPECT_EQ(last.peerAsHost.tunnelStatus, ZephlinkSDK_PeerTunnelStatus_Inactive);
  EXPECT_EQ(last.peerAsHost.usageWeek, 0U);
}

TEST(LocalProxy, IsReadUpToTheSizeOfItsLists) {
  const std::string names = R"("d0","d1","d2","d3","d4","d5","d6","d7","d8","d9","d10","d11","d12")";
  const auto record =
      recordsOf(ZephlinkSDK_getLocalProxySettings, "request_localproxy_settings", "report_localproxy_settings",
                {R"({"matchMode":"denylist","watchlist_enabled":true,"enabled":false,"domain_watchlist":[)"
                 R"({"title":"Films","enabled":true,"watchedDomains":[)" +
                 names + R"(],"proxiedDomains":["p0",")" + std::string(60, 'p') + R"("]}]})"})[0];
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

TEST(Firewall, KeepsNothingOfThePreviousReport) {
  const auto all =
      recordsOf(ZephlinkSDK_getFirewallSettings, "request_firewall_settings", "report_firewall_settings",
                {R"({"mode":"denylist","domains":["a"],"ports":[{"proto":"udp","port":1},{"proto":"udp","port":2}]})",
                 R"({"mode":"none","ports":[{"port":3}]})"});
  EXPECT_EQ(all[0].domainCount, 1);
  EXPECT_EQ(all[0].ports[0].protocol, ZephlinkSDK_PortProtocol_Udp);
  EXPECT_EQ(all[1].mode, ZephlinkSDK_FirewallMode_Off);
  EXPECT_EQ(all[1].domainCount, 0);
  EXPECT_EQ(all[1].portCount, 1);
  EXPECT_EQ(all[1].ports[0].protocol, ZephlinkSDK_PortProtocol_Tcp);
}

TEST(Privacy, KeepsNothingOfThePreviousReport) {
  const auto all = recordsOf(ZephlinkSDK_getPrivacySettings, "request_privacy_settings", "report_privacy_settings",
                             {R"({"do_not_store_credentials":true})", R"({"api_protection":true})"});
  EXPECT_TRUE(all[0].doNotStoreCredentials && !all[0].apiProtection);
  EXPECT_TRUE(all[1].apiProtection && !all[1].doNotStoreCredentials);
}

TEST(Settings, ContainTheLanguageAndTheExposedAdapters) {
  const auto settings = recordsOf(ZephlinkSDK_getSettings, "request_connection_settings", "report_connection_settings",
                                  {R"({"language":"english","perconn_dscp_expose":{"b":true,"a":false}})"})[0];
  EXPECT_STREQ(settings.language, "en");
  ASSERT_EQ(settings.perConnectionDscpExposeCount, 2);
  EXPECT_STREQ(settings.perConnectionDscpExpose[0].adapterID, "a");
  EXPECT_FALSE(settings.perConnectionDscpExpose[0].exposed);
  EXPECT_STREQ(settings.perConnectionDscpExpose[1].adapterID, "b");
  EXPECT_TRUE(settings.perConnectionDscpExpose[1].exposed);
}

TEST(Settings, KeepListsThatAReportOmits) {
  const auto records =
      recordsOf(ZephlinkSDK_getSettings, "request_connection_settings", "report_connection_settings",
                {R"({"forward_ports":[{"port":80,"proto":"udp"}],"perconn_encryption":true,"encrypted":true,
                     "perconn_encryption_settings":{"a":true},"num_target_connections":{"upload":3}})",
                 R"({"perconn_encryption":true})", R"({"forward_ports":[]})",
                 R"({"forward_ports":[{"port":81,"proto":"icmp"}]})"});
  EXPECT_EQ(records[0].targetUploadConnections, 3);
  EXPECT_EQ(records[1].targetUploadConnections, 0);
  EXPECT_FALSE(records[1].encrypted);
  EXPECT_EQ(records[1].forwardedPortCount, 1);
  EXPECT_EQ(records[1].forwardedPorts[0].protocol, ZephlinkSDK_PortProtocol_Udp);
  EXPECT_EQ(records[1].perConnectionEncryptionCount, 1);
  EXPECT_EQ(records[2].forwardedPortCount, 0);
  EXPECT_EQ(records[2].perConnectionEncryptionCount, 0);
  // An entry is read completely.
  EXPECT_EQ(records[3].forwardedPorts[0].port, 81);
  EXPECT_EQ(records[3].forwardedPorts[0].protocol, ZephlinkSDK_PortProtocol_Tcp);
}

TEST(ServerSettings, KeepNothingOfThePreviousReport) {
  const std::string place = R"({"connect_to_best_method":"exact","connect_country":"us|nyc|3"})";
  const auto records =
      recordsOf(ZephlinkSDK_getServerSettings, "request_server_settings", "report_server_settings",
                {place, R"({"connect_to_best_method":"p2p","connect_country":"us|nyc|3"})", place, "{}"});
  const auto expectPlace = [&](std::size_t i, ZephlinkSDK_ConnectMethod method, const char* country, const char* city,
                               std::int32_t num) {
    SCOPED_TRACE(i);
    EXPECT_EQ(records[i].connectMethod, method);
    EXPECT_STREQ(records[i].country, country);
    EXPECT_STREQ(records[i].city, city);
    EXPECT_EQ(records[i].num, num);
  };
  expectPlace(0, ZephlinkSDK_ConnectMethod_Exact, "us", "nyc", 3);
  expectPlace(1, ZephlinkSDK_ConnectMethod_P2P, "", "", 0);
  expectPlace(3, ZephlinkSDK_ConnectMethod_Closest, "", "", 0);
}

TEST(CaptivePortal, CheckOutlivesTheTimeOutOfOthers) {
  Collector<ZephlinkSDK_CaptivePortalCheckResult> networks;
  Host host;
  ZephlinkSDK_checkForCaptivePortals(host.sdk, networks.collect, &networks);
  EXPECT_EQ(ZephlinkSDK_getPrivacySettings(host.sdk, nullptr, nullptr).errorCode, ZephlinkSDK_Error_Timeout);
  host.daemon.send(event("report_captive_networks", R"({"networks":["wlan0"]})"));
  ASSERT_TRUE(networks.waitFor(1));
  EXPECT_FALSE(networks.all()[0].hasError);
  EXPECT_STREQ(networks.all()[0].networks[0], "wlan0");
}

}  // namespace
}  // namespace tests
