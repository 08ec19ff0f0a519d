// The layout of the records, which is part of the binary interface: a change breaks hosts that are already built.
// Included by a C and a C++ file, so that both languages agree. For systems that align uint64_t to 8 bytes.
#include <assert.h>
#include <stdalign.h>
#include <stddef.h>

#include "zephlinksdk/records.h"

// Checks the size of a record and the offset of its last field, which changes with any other field.
#define LAYOUT(record, size, last, offset)          \
  static_assert(sizeof(record) == (size), #record); \
  static_assert(offsetof(record, last) == (offset), #record)

// The same for records with IPv6 addresses; not all systems align these to 4 bytes.
#define LAYOUT_WITH_IPV6(record, size, last, offset)                                                               \
  static_assert(alignof(struct in6_addr) != 4 || (sizeof(record) == (size) && offsetof(record, last) == (offset)), \
                #record)

LAYOUT(ZephlinkSDK_Config, 80, port, 78);
LAYOUT(ZephlinkSDK_Result, 216, handle, 208);
LAYOUT(ZephlinkSDK_StateResult, 224, state, 216);
LAYOUT(ZephlinkSDK_VersionResult, 224, build, 222);
LAYOUT(ZephlinkSDK_ServerInfo, 756, dataCenter, 734);
LAYOUT(ZephlinkSDK_ConnectResult, 976, server, 216);
LAYOUT(ZephlinkSDK_DirectoryResult, 774368, servers, 220);
LAYOUT(ZephlinkSDK_ServerSettingsResult, 256, num, 252);
LAYOUT(ZephlinkSDK_Date, 12, day, 8);
LAYOUT(ZephlinkSDK_AccountingResult, 520, action, 516);
LAYOUT(ZephlinkSDK_DirectorySettingsResult, 424, gatewayUri, 317);
LAYOUT(ZephlinkSDK_ProtocolPortPair, 8, portRangeEnd, 6);
LAYOUT(ZephlinkSDK_Subnet, 47, prefixLength, 46);
LAYOUT(ZephlinkSDK_PerConnectionEncryption, 101, encrypted, 100);
LAYOUT(ZephlinkSDK_PerConnectionDscpExpose, 101, exposed, 100);
LAYOUT(ZephlinkSDK_PerConnectionParallelSockets, 102, sockets, 100);
LAYOUT(ZephlinkSDK_SettingsResult, 8552, targetDownloadConnections, 8544);
LAYOUT(ZephlinkSDK_Adapter, 688, directionalDownload, 684);
LAYOUT(ZephlinkSDK_AdaptersResult, 17424, adapters, 224);
LAYOUT(ZephlinkSDK_ConnectionStatsEntry, 464, congested, 456);
LAYOUT(ZephlinkSDK_ConnectionStatsResult, 11832, connections, 232);
LAYOUT(ZephlinkSDK_StreamStatsEntry, 488, domain, 232);
LAYOUT(ZephlinkSDK_StreamingStatsResult, 5112, badMemory, 5107);
LAYOUT(ZephlinkSDK_SessionStatsPeriod, 280, uniqueSaves, 272);
LAYOUT(ZephlinkSDK_SessionStatsResult, 1624, periods, 224);
LAYOUT(ZephlinkSDK_PrivacySettingsResult, 368, apiProtection, 362);
LAYOUT(ZephlinkSDK_CaptivePortalCheckResult, 2720, networks, 220);
LAYOUT(ZephlinkSDK_CaptivePortalLoginResult, 320, adapterID, 217);
LAYOUT_WITH_IPV6(ZephlinkSDK_RuleLists, 7812, ports, 7012);
LAYOUT_WITH_IPV6(ZephlinkSDK_FirewallSettingsResult, 8032, lists, 220);
LAYOUT_WITH_IPV6(ZephlinkSDK_StreamingSettingsResult, 8032, lists, 216);
LAYOUT(ZephlinkSDK_LocalProxyService, 1236, proxiedDomains, 636);
LAYOUT_WITH_IPV6(ZephlinkSDK_LocalProxySettingsResult, 131640, services, 8038);
LAYOUT(ZephlinkSDK_SpeedTestRun, 288, loss, 280);
LAYOUT(ZephlinkSDK_SpeedTestResult, 1664, runs, 224);
LAYOUT(ZephlinkSDK_DisconnectEventResult, 240, sessionLength, 232);
LAYOUT(ZephlinkSDK_DaemonLogSettings, 16, logLevel, 12);
LAYOUT(ZephlinkSDK_LogSettingsResult, 232, daemon, 216);
LAYOUT(ZephlinkSDK_LogReportResult, 248, ticketId, 216);
LAYOUT(ZephlinkSDK_SafeBrowsingResult, 440, networkOverride, 432);
LAYOUT(ZephlinkSDK_SafeBrowsingStatsResult, 272, numPacketsFiltered, 264);
LAYOUT(ZephlinkSDK_SafeBrowsingErrorResult, 680, host, 420);
LAYOUT(ZephlinkSDK_SafeBrowsingBlockResult, 472, host, 217);
LAYOUT(ZephlinkSDK_NetworkSharingSettingsResult, 392, autoPairBehavior, 388);
LAYOUT(ZephlinkSDK_NetworkSharingDiscoveryResult, 224, discoveryActive, 216);
LAYOUT(ZephlinkSDK_NetworkSharingPeerRole, 48, usageTotal, 40);
LAYOUT(ZephlinkSDK_NetworkSharingPeer, 176, peerAsHost, 128);
LAYOUT(ZephlinkSDK_NetworkSharingAvailableSharesResult, 5856, peers, 224);
LAYOUT(ZephlinkSDK_NetworkSharingConnectionResult, 272, tunnelStatus, 264);
LAYOUT(ZephlinkSDK_NetworkSharingPairResult, 288, haveAuthToken, 286);

// Each record begins with its head.
#define HEAD(record)                                                                                             \
  static_assert(offsetof(record, head) == 0 && offsetof(record, handle) == offsetof(ZephlinkSDK_Result, handle), \
                #record)

HEAD(ZephlinkSDK_StateResult);
HEAD(ZephlinkSDK_VersionResult);
HEAD(ZephlinkSDK_ConnectResult);
HEAD(ZephlinkSDK_DirectoryResult);
HEAD(ZephlinkSDK_ServerSettingsResult);
HEAD(ZephlinkSDK_AccountingResult);
HEAD(ZephlinkSDK_DirectorySettingsResult);
HEAD(ZephlinkSDK_SettingsResult);
HEAD(ZephlinkSDK_AdaptersResult);
HEAD(ZephlinkSDK_ConnectionStatsResult);
HEAD(ZephlinkSDK_StreamingStatsResult);
HEAD(ZephlinkSDK_SessionStatsResult);
HEAD(ZephlinkSDK_PrivacySettingsResult);
HEAD(ZephlinkSDK_CaptivePortalCheckResult);
HEAD(ZephlinkSDK_CaptivePortalLoginResult);
HEAD(ZephlinkSDK_FirewallSettingsResult);
HEAD(ZephlinkSDK_StreamingSettingsResult);
HEAD(ZephlinkSDK_LocalProxySettingsResult);
HEAD(ZephlinkSDK_SpeedTestResult);
HEAD(ZephlinkSDK_DisconnectEventResult);
HEAD(ZephlinkSDK_LogSettingsResult);
HEAD(ZephlinkSDK_LogReportResult);
HEAD(ZephlinkSDK_SafeBrowsingResult);
HEAD(ZephlinkSDK_SafeBrowsingStatsResult);
HEAD(ZephlinkSDK_SafeBrowsingErrorResult);
HEAD(ZephlinkSDK_SafeBrowsingBlockResult);
HEAD(ZephlinkSDK_NetworkSharingSettingsResult);
HEAD(ZephlinkSDK_NetworkSharingDiscoveryResult);
HEAD(ZephlinkSDK_NetworkSharingAvailableSharesResult);
HEAD(ZephlinkSDK_NetworkSharingConnectionResult);
HEAD(ZephlinkSDK_NetworkSharingPairResult);
