#include "zephlinksdk/words.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <string_view>

#include "sdk/errors.h"
#include "sdk/word_tables.h"

namespace {

using namespace zephlinksdk;

/// Checks that the rows contain the whole enumeration, 0, 1, 2 ... without a gap, and every word once, in both
/// directions.
template <typename Table>
void expectWhole(const Table& table) {
  std::set<std::string_view> words;
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    const auto& row = table.rows[i];
    EXPECT_EQ(static_cast<std::size_t>(row.value), i) << row.outside;
    EXPECT_TRUE(words.insert(row.outside).second) << row.outside;
    EXPECT_STREQ(table.text(row.value), row.outside);
    EXPECT_EQ(table.find(row.outside), row.value);
  }
}

TEST(Words, TablesCoverTheirEnumerations) {
  const auto expectAllWhole = [](const auto&... tables) { (expectWhole(tables), ...); };
  expectAllWhole(kBondingModeWire, kBondingModeWords, kTransportModeWords, kPortProtocolWords, kConnectionPriorityWords,
                 kDirectionalModeWords, kAdapterTypeWords, kFirewallModeWords, kLocalProxyMatchModeWords,
                 kDisconnectReasonWords, kDaemonLogLevelWords, kSafeBrowsingLogLevelWords, kSafeBrowsingOverrideWords,
                 kPairRequestBehaviorWords, kAutoPairBehaviorWords, kPeerRoleWords, kStateWords, kConnectMethodWords,
                 kPaymentTypeWords, kAccountActionWords, kAdapterStateWords, kStreamHealthWords, kSpeedTestTypeWords,
                 kPeerStatusWords, kPeerTunnelStatusWords);
}

template <typename Value>
constexpr Value kOutside = static_cast<Value>(99);

TEST(Words, ValuesOutsideHaveAText) {
  const std::pair<const char*, const char*> cases[] = {
      {ZephlinkSDK_stateText(8), "UNKNOWN"},
      {ZephlinkSDK_adapterStateText(kOutside<ZephlinkSDK_AdapterState>), "disconnected"},
      {ZephlinkSDK_paymentTypeText(kOutside<ZephlinkSDK_PaymentType>), "Unknown payment type"},
      {ZephlinkSDK_accountActionText(kOutside<ZephlinkSDK_AccountAction>), "Unknown action"},
      {ZephlinkSDK_streamHealthText(kOutside<ZephlinkSDK_StreamHealth>), "stopped"},
      {ZephlinkSDK_speedTestTypeText(kOutside<ZephlinkSDK_SpeedTestType>), "speed"},
      {ZephlinkSDK_peerStatusText(kOutside<ZephlinkSDK_PeerStatus>), "disconnected"},
      {ZephlinkSDK_peerTunnelStatusText(static_cast<ZephlinkSDK_PeerTunnelStatus>(10)), "tunnel error"},
      {ZephlinkSDK_periodText(100), ""},
      {ZephlinkSDK_connectionPriorityText(kOutside<ZephlinkSDK_ConnectionPriority>), "always"},
      {ZephlinkSDK_bondingModeText(kOutside<ZephlinkSDK_BondingMode>), "speed"},
      {ZephlinkSDK_transportModeText(static_cast<ZephlinkSDK_TransportMode>(7)), "auto"},
      {ZephlinkSDK_portProtocolText(kOutside<ZephlinkSDK_PortProtocol>), "udp"},
      {ZephlinkSDK_firewallModeText(static_cast<ZephlinkSDK_FirewallMode>(3)), "Unknown mode"},
      {ZephlinkSDK_disconnectReasonText(static_cast<ZephlinkSDK_DisconnectReason>(18)), "UNKNOWN"},
      {ZephlinkSDK_pairRequestBehaviorText(kOutside<ZephlinkSDK_NetworkSharingPairRequestBehavior>), "ask"},
      {ZephlinkSDK_autoPairBehaviorText(kOutside<ZephlinkSDK_NetworkSharingAutoPairBehavior>), "manual"},
      {ZephlinkSDK_peerRoleText(kOutside<ZephlinkSDK_PeerRole>), "unknown"},
      {ZephlinkSDK_directionalModeText(kOutside<ZephlinkSDK_ConnectionDirectionalMode>), "on"},
  };
  for (const auto& [text, expected] : cases) EXPECT_STREQ(text, expected);
  EXPECT_EQ(kConnectionPriorityNumbers.text(kOutside<ZephlinkSDK_ConnectionPriority>), 0);
}

TEST(Words, TextsRoundTripAndOthersAreRefused) {
  ZephlinkSDK_BondingMode mode = ZephlinkSDK_BondingMode_Redundant;
  for (const char* refused : {"Streaming", "stream", "", static_cast<const char*>(nullptr)}) {
    EXPECT_FALSE(ZephlinkSDK_bondingModeFromText(refused, &mode));
    EXPECT_EQ(mode, ZephlinkSDK_BondingMode_Redundant);
  }
  EXPECT_TRUE(ZephlinkSDK_bondingModeFromText("streaming", &mode));
  EXPECT_EQ(mode, ZephlinkSDK_BondingMode_Streaming);
  EXPECT_FALSE(ZephlinkSDK_bondingModeFromText("streaming", nullptr));
  std::uint32_t hours = 1;
  EXPECT_TRUE(ZephlinkSDK_periodFromText("total", &hours));
  EXPECT_EQ(hours, 4294967295U);
}

TEST(Errors, TextsOfCodes) {
  const std::pair<uint32_t, const char*> cases[] = {
      {0, "No error"},
      {3, "Invalid credentials"},
      {9, "Unknown error"},
      {13, "An invalid argument was supplied"},
      {14, "Unknown error"},
      {3583, "Unknown error"},
      {3584, "Result is an async call SDK"},
      {3840, "An error in the SDK"},
      {3841, "Timeout waiting for result"},
      {3842, "An invalid argument was supplied"},
      {3845, "Not able to establish connection to daemon"},
      {3847, "Unknown error"},
      {4294967295, "Unknown error"},
  };
  for (const auto& [code, text] : cases) EXPECT_STREQ(ZephlinkSDK_errorText(code), text) << code;
}

TEST(Errors, FillTheHeadOfARecord) {
  ZephlinkSDK_StateResult record = {};
  record.state = 6;
  record.handle = 7;
  setError(record.head, ZephlinkSDK_Error_Timeout, std::string(300, 'x').c_str());
  EXPECT_TRUE(record.hasError);
  EXPECT_EQ(std::strlen(record.errorMessage), 199u);

  setError(record.head, ZephlinkSDK_Error_InvalidArgument);
  EXPECT_EQ(record.errorCode, 3842u);
  EXPECT_STREQ(record.errorMessage, "An invalid argument was supplied");

  setError(record.head, 0, nullptr);
  EXPECT_FALSE(record.hasError);
  EXPECT_STREQ(record.errorMessage, "");
  EXPECT_EQ(record.state, 6u);
  EXPECT_EQ(record.handle, 7u);
}

}  // namespace
