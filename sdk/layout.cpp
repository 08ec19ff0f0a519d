#include "sdk/layout.h"

#include <type_traits>

namespace {

/// Whether a host may copy the records byte by byte and pass them to C.
template <class... Records>
constexpr bool kPlain = (... && (std::is_trivial_v<Records> && std::is_standard_layout_v<Records> &&
                                 std::is_aggregate_v<Records>));

static_assert(
    kPlain<ZephlinkSDK_Config, ZephlinkSDK_Result, ZephlinkSDK_StateResult, ZephlinkSDK_VersionResult,
           ZephlinkSDK_ServerInfo, ZephlinkSDK_ConnectResult, ZephlinkSDK_DirectoryResult,
           ZephlinkSDK_ServerSettingsResult, ZephlinkSDK_Date, ZephlinkSDK_AccountingResult,
           ZephlinkSDK_DirectorySettingsResult, ZephlinkSDK_ProtocolPortPair, ZephlinkSDK_Subnet,
           ZephlinkSDK_PerConnectionEncryption, ZephlinkSDK_PerConnectionDscpExpose,
           ZephlinkSDK_PerConnectionParallelSockets, ZephlinkSDK_SettingsResult, ZephlinkSDK_Adapter,
           ZephlinkSDK_AdaptersResult, ZephlinkSDK_ConnectionStatsEntry, ZephlinkSDK_ConnectionStatsResult,
           ZephlinkSDK_StreamStatsEntry, ZephlinkSDK_StreamingStatsResult, ZephlinkSDK_SessionStatsPeriod,
           ZephlinkSDK_SessionStatsResult, ZephlinkSDK_PrivacySettingsResult, ZephlinkSDK_CaptivePortalCheckResult,
           ZephlinkSDK_CaptivePortalLoginResult, ZephlinkSDK_RuleLists, ZephlinkSDK_FirewallSettingsResult,
           ZephlinkSDK_StreamingSettingsResult, ZephlinkSDK_LocalProxyService, ZephlinkSDK_LocalProxySettingsResult,
           ZephlinkSDK_SpeedTestRun, ZephlinkSDK_SpeedTestResult, ZephlinkSDK_DisconnectEventResult,
           ZephlinkSDK_DaemonLogSettings, ZephlinkSDK_LogSettingsResult, ZephlinkSDK_LogReportResult,
           ZephlinkSDK_SafeBrowsingResult, ZephlinkSDK_SafeBrowsingStatsResult, ZephlinkSDK_SafeBrowsingErrorResult,
           ZephlinkSDK_SafeBrowsingBlockResult, ZephlinkSDK_NetworkSharingSettingsResult,
           ZephlinkSDK_NetworkSharingDiscoveryResult, ZephlinkSDK_NetworkSharingPeerRole,
           ZephlinkSDK_NetworkSharingPeer, ZephlinkSDK_NetworkSharingAvailableSharesResult,
           ZephlinkSDK_NetworkSharingConnectionResult, ZephlinkSDK_NetworkSharingPairResult>);

}  // namespace
