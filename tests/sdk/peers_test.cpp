// Network sharing as a host of the library uses it: the events about peers, and arguments that are refused.
#include <gtest/gtest.h>

#include "tests/sdk/host.h"

namespace tests {
namespace {

using Connection = ZephlinkSDK_NetworkSharingConnectionResult;
using Pair = ZephlinkSDK_NetworkSharingPairResult;

TEST(Peers, StatusListenerTellsOfFailuresWithoutAnError) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  Collector<Connection> changes;
  ZephlinkSDK_listenForNetworkSharePeerStatusChange(sdk.get(), Collector<Connection>::collect, &changes);
  ASSERT_TRUE(daemon.waitForConnections(1));
  const char* name = "report_networksharing_peer_status_change";
  daemon.send(event(name, R"({"uuid":"a","peer_role":"host","peerStatus":1,"tunnelStatus":9,"type":3,"msg":"no"})"));
  daemon.send(event(name, R"({"uuid":"b","peer_role":"guest","peerStatus":2,"tunnelStatus":10})"));
  ASSERT_TRUE(changes.waitFor(2));

  const Connection failed = changes.all()[0];
  EXPECT_FALSE(failed.hasError);
  EXPECT_EQ(failed.errorCode, ZephlinkSDK_Error_InvalidCredentials);
  EXPECT_STREQ(failed.errorMessage, "no");
  EXPECT_STREQ(failed.uuid, "a");
  EXPECT_EQ(failed.role, ZephlinkSDK_PeerRole_Host);
  EXPECT_EQ(failed.peerStatus, ZephlinkSDK_PeerStatus_Unauthenticated);
  EXPECT_EQ(failed.tunnelStatus, ZephlinkSDK_PeerTunnelStatus_Paused);

  const Connection good = changes.all()[1];
  EXPECT_FALSE(good.hasError);
  EXPECT_EQ(good.errorCode, ZephlinkSDK_Error_None);
  EXPECT_STREQ(good.errorMessage, "");
  EXPECT_STREQ(good.uuid, "b");
  // A role that is none leaves the one before.
  EXPECT_EQ(good.role, ZephlinkSDK_PeerRole_Host);
  EXPECT_EQ(good.peerStatus, ZephlinkSDK_PeerStatus_Authenticated);
  EXPECT_EQ(good.tunnelStatus, ZephlinkSDK_PeerTunnelStatus_Inactive);
}

TEST(Peers, FailedPairingKeepsThePeersName) {
  ScriptedDaemon daemon({{"request_networksharing_pair",
                          {event("report_networksharing_peer_status_change",
                                 R"({"uuid":"p","display_name":"P","have_auth_token":true,"type":1,"msg":"gone"})")}}});
  const Sdk sdk = connectTo(daemon.port());
  const Pair record = ZephlinkSDK_requestNetworkSharingPair(sdk.get(), "p", nullptr, nullptr);
  EXPECT_TRUE(record.hasError);
  EXPECT_EQ(record.errorCode, ZephlinkSDK_Error_Network);
  EXPECT_STREQ(record.errorMessage, "gone");
  EXPECT_STREQ(record.uuid, "p");
  EXPECT_STREQ(record.displayName, "P");
  EXPECT_FALSE(record.haveAuthToken);
}

TEST(Peers, LaterListsForgetEarlierPeers) {
  const char* name = "report_networksharing_sharesavailable";
  ScriptedDaemon daemon({{"request_networksharing_sharesavailable",
                          {event(name, R"([{"uuid":"a","display_name":"A","supports_host":true,"peer_as_host":)"
                                       R"({"allow":true,"peerStatus":2,"tunnelStatus":1,"usage":{"week":7}}},{}])"),
                           event(name, R"([{"uuid":"b"}])")}}});
  const Sdk sdk = connectTo(daemon.port());
  using Shares = ZephlinkSDK_NetworkSharingAvailableSharesResult;
  Collector<Shares> lists;
  ZephlinkSDK_getNetworkSharesAvailable(sdk.get(), Collector<Shares>::collect, &lists);
  ASSERT_TRUE(lists.waitFor(2));
  EXPECT_EQ(lists.all()[0].peerCount, 2);
  EXPECT_EQ(lists.all()[0].peers[0].peerAsHost.usageWeek, 7U);
  const Shares last = lists.all()[1];
  EXPECT_EQ(last.peerCount, 1);
  EXPECT_STREQ(last.peers[0].uuid, "b");
  EXPECT_STREQ(last.peers[0].displayName, "");
  EXPECT_FALSE(last.peers[0].supportsHost);
  EXPECT_FALSE(last.peers[0].peerAsHost.allowed);
  EXPECT_EQ(last.peers[0].peerAsHost.peerStatus, ZephlinkSDK_PeerStatus_Disconnected);
  EXPECT_EQ(last.peers[0].peerAsHost.tunnelStatus, ZephlinkSDK_PeerTunnelStatus_Inactive);
  EXPECT_EQ(last.peers[0].peerAsHost.usageWeek, 0U);
}

TEST(Peers, BadArgumentsAreRefused) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  auto* handle = sdk.get();
  const std::uint32_t codes[] = {
      ZephlinkSDK_connectToNetworkShareViaConnectCode(handle, nullptr, nullptr, nullptr).errorCode,
      ZephlinkSDK_reconnectToNetworkShare(handle, nullptr, nullptr, nullptr).errorCode,
      ZephlinkSDK_requestNetworkSharingPair(handle, nullptr, nullptr, nullptr).errorCode,
      ZephlinkSDK_allowNetworkSharingPair(handle, nullptr, true, nullptr, nullptr).errorCode,
      ZephlinkSDK_unpairNetworkSharingPeer(handle, nullptr, nullptr, nullptr).errorCode,
      ZephlinkSDK_setNetworkSharingPeerAutoReconnect(handle, nullptr, true, nullptr, nullptr).errorCode,
      ZephlinkSDK_setNetworkSharingDisplayName(handle, nullptr, nullptr, nullptr).errorCode,
      ZephlinkSDK_setNetworkSharingPairRequestBehavior(
          handle, static_cast<ZephlinkSDK_NetworkSharingPairRequestBehavior>(3), nullptr, nullptr)
          .errorCode,
      ZephlinkSDK_setNetworkSharingAutoPairBehavior(handle, static_cast<ZephlinkSDK_NetworkSharingAutoPairBehavior>(3),
                                                    nullptr, nullptr)
          .errorCode,
  };
  for (const std::uint32_t code : codes) EXPECT_EQ(code, ZephlinkSDK_Error_InvalidArgument);
  const std::uint32_t listeners[] = {
      ZephlinkSDK_listenForNetworkSharePeerStatusChange(handle, nullptr, nullptr).errorCode,
      ZephlinkSDK_listenForNetworkSharePairRequest(handle, nullptr, nullptr).errorCode,
      ZephlinkSDK_listenForNetworkShareNewPeerAvailable(handle, nullptr, nullptr).errorCode,
  };
  for (const std::uint32_t code : listeners) EXPECT_EQ(code, ZephlinkSDK_Error_CallbackRequired);
  ASSERT_TRUE(daemon.waitForConnections(1));
  EXPECT_EQ(daemon.heard().size(), 0U);
}

}  // namespace
}  // namespace tests
