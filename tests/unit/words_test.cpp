#include "sdk/words.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <string_view>

#include "cli/words.h"
#include "sdk/errors.h"
#include "sdk/text.h"

namespace {

using namespace zephlinksdk;

/// A table whose rows are the whole enumeration: 0, 1, 2 ... without a gap, every word once, both ways.
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
                 kPairRequestBehaviorWords, kAutoPairBehaviorWords, kPeerRoleWords, cli::kStateWords,
                 cli::kConnectMethodWords, cli::kPaymentTypeWords, cli::kAccountActionWords, cli::kAdapterStateWords,
                 cli::kStreamHealthWords, cli::kSpeedTestTypeWords, cli::kPeerStatusWords, cli::kPeerTunnelStatusWords);
}

template <typename Value>
constexpr Value kOutside = static_cast<Value>(99);

TEST(Words, AValueOutsideHasATextOfItsOwn) {
  const std::pair<const char*, const char*> cases[] = {
      {cli::stateText(8), "UNKNOWN"},
      {cli::adapterStateText(kOutside<ZephlinkSDK_AdapterState>), "disconnected"},
      {cli::paymentTypeText(kOutside<ZephlinkSDK_PaymentType>), "Unknown payment type"},
      {cli::accountActionText(kOutside<ZephlinkSDK_AccountAction>), "Unknown action"},
      {cli::streamHealthText(kOutside<ZephlinkSDK_StreamHealth>), "stopped"},
      {cli::speedTestTypeText(kOutside<ZephlinkSDK_SpeedTestType>), "speed"},
      {cli::peerStatusText(kOutside<ZephlinkSDK_PeerStatus>), "disconnected"},
      {cli::peerTunnelStatusText(static_cast<ZephlinkSDK_PeerTunnelStatus>(10)), "tunnel error"},
      {cli::periodText(100), ""},
      {connectionPriorityText(kOutside<ZephlinkSDK_ConnectionPriority>), "always"},
      {bondingModeText(kOutside<ZephlinkSDK_BondingMode>), "speed"},
      {transportModeText(static_cast<ZephlinkSDK_TransportMode>(7)), "auto"},
      {portProtocolText(kOutside<ZephlinkSDK_PortProtocol>), "udp"},
      {firewallModeText(static_cast<ZephlinkSDK_FirewallMode>(3)), "Unknown mode"},
      {disconnectReasonText(static_cast<ZephlinkSDK_DisconnectReason>(18)), "UNKNOWN"},
      {pairRequestBehaviorText(kOutside<ZephlinkSDK_NetworkSharingPairRequestBehavior>), "ask"},
      {autoPairBehaviorText(kOutside<ZephlinkSDK_NetworkSharingAutoPairBehavior>), "manual"},
      {peerRoleText(kOutside<ZephlinkSDK_PeerRole>), "unknown"},
      {directionalModeText(kOutside<ZephlinkSDK_ConnectionDirectionalMode>), "on"},
  };
  for (const auto& [text, expected] : cases) EXPECT_STREQ(text, expected);
  EXPECT_EQ(connectionPriorityNumber(kOutside<ZephlinkSDK_ConnectionPriority>), 0);
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
  for (const auto& [code, text] : cases) EXPECT_STREQ(errorText(code), text) << code;
}

TEST(Errors, FillTheHeadOfARecord) {
  ZephlinkSDK_StateResult record = {};
  record.state = 6;
  record.handle = 7;
  setError(record, ZephlinkSDK_Error_Timeout, std::string(300, 'x').c_str());
  EXPECT_TRUE(record.hasError);
  EXPECT_EQ(std::strlen(record.errorMessage), 199u);

  setError(record, ZephlinkSDK_Error_InvalidArgument);
  EXPECT_EQ(record.errorCode, 3842u);
  EXPECT_STREQ(record.errorMessage, "An invalid argument was supplied");

  setError(record, 0, nullptr);
  EXPECT_FALSE(record.hasError);
  EXPECT_STREQ(record.errorMessage, "");
  EXPECT_EQ(record.state, 6u);
  EXPECT_EQ(record.handle, 7u);
}

TEST(Text, CopiesAreCutAndTerminated) {
  using namespace std::string_view_literals;
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", ""}, {{}, ""}, {"abc", "abc"}, {"abcd", "abcd"}, {"abcde", "abcd"}, {"ab\0cd"sv, "ab"}, {"\0"sv, ""}};
  for (const auto& [from, expected] : cases) {
    char to[5] = {'#', '#', '#', '#', '#'};
    copyText(to, from);
    EXPECT_EQ(std::string_view(to, sizeof to), std::string(expected).append(sizeof to - expected.size(), '\0'));
  }
}

}  // namespace
