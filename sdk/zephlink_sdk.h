// The implementation of the library: class ZephlinkSDK has a method for each public function, which forwards to it. The
// contracts are in zephlinksdk/zephlinksdk.h.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>

#include "platform/thread.h"
#include "zephlinksdk/zephlinksdk.h"

namespace zephlinksdk {

class WebsocketImpl;

class ZephlinkSDK {
 public:
  explicit ZephlinkSDK(const ZephlinkSDK_Config& config);
  ~ZephlinkSDK();
  ZephlinkSDK(const ZephlinkSDK&) = delete;
  ZephlinkSDK& operator=(const ZephlinkSDK&) = delete;

  void finish();
  void removeListener(std::uint64_t handle);

  // sdk/families/state.cpp
  ZephlinkSDK_StateResult getState(Callback<ZephlinkSDK_StateResult> callback, void* userData);
  ZephlinkSDK_VersionResult getVersion(Callback<ZephlinkSDK_VersionResult> callback, void* userData);

  // sdk/families/connecting.cpp
  ZephlinkSDK_ConnectResult connectCombined(const char* server, Callback<ZephlinkSDK_ConnectResult> callback,
                                            void* userData);
  ZephlinkSDK_ConnectResult connect(ZephlinkSDK_ConnectMethod method, Callback<ZephlinkSDK_ConnectResult> callback,
                                    void* userData);
  ZephlinkSDK_ConnectResult connectToCountry(const char* country, Callback<ZephlinkSDK_ConnectResult> callback,
                                             void* userData);
  ZephlinkSDK_ConnectResult connectToCity(const char* country, const char* city,
                                          Callback<ZephlinkSDK_ConnectResult> callback, void* userData);
  ZephlinkSDK_ConnectResult connectToServer(const char* country, const char* city, std::int32_t number,
                                            Callback<ZephlinkSDK_ConnectResult> callback, void* userData);
  ZephlinkSDK_ConnectResult connectToExactServer(const char* country, const char* city, std::int32_t number,
                                                 Callback<ZephlinkSDK_ConnectResult> callback, void* userData);
  ZephlinkSDK_ConnectResult connectToProxy(Callback<ZephlinkSDK_ConnectResult> callback, void* userData);
  ZephlinkSDK_ConnectResult connectIgnoreLast(Callback<ZephlinkSDK_ConnectResult> callback, void* userData);
  ZephlinkSDK_StateResult disconnect(Callback<ZephlinkSDK_StateResult> callback, void* userData);
  ZephlinkSDK_DirectoryResult getDirectory(Callback<ZephlinkSDK_DirectoryResult> callback, void* userData);
  ZephlinkSDK_ConnectResult getConnectedServer(Callback<ZephlinkSDK_ConnectResult> callback, void* userData);
  ZephlinkSDK_ServerSettingsResult getServerSettings(Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                     void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethodCombined(const char* mode, const char* country,
                                                            Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                            void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethod(ZephlinkSDK_ConnectMethod method,
                                                    Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                    void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethodCountry(const char* country,
                                                           Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                           void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethodCity(const char* country, const char* city,
                                                        Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                        void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethodServer(const char* country, const char* city, std::int32_t number,
                                                          Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                          void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethodExactServer(const char* country, const char* city,
                                                               std::int32_t number,
                                                               Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                               void* userData);

  // sdk/families/account.cpp
  ZephlinkSDK_StateResult login(const char* username, const char* password, Callback<ZephlinkSDK_StateResult> callback,
                                void* userData);
  ZephlinkSDK_StateResult loginOAuth(const char* token, Callback<ZephlinkSDK_StateResult> callback, void* userData);
  ZephlinkSDK_StateResult refreshOAuthToken(const char* token, Callback<ZephlinkSDK_StateResult> callback,
                                            void* userData);
  ZephlinkSDK_StateResult loginAutoAccount(Callback<ZephlinkSDK_StateResult> callback, void* userData);
  ZephlinkSDK_StateResult logout(Callback<ZephlinkSDK_StateResult> callback, void* userData);
  ZephlinkSDK_AccountingResult getAccountingData(Callback<ZephlinkSDK_AccountingResult> callback, void* userData);
  ZephlinkSDK_DirectorySettingsResult getDirectorySettings(Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                           void* userData);
  ZephlinkSDK_DirectorySettingsResult setDirectoryDomain(const char* domain,
                                                         Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                         void* userData);
  ZephlinkSDK_DirectorySettingsResult setDirectoryGatewayURI(const char* uri,
                                                             Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                             void* userData);
  ZephlinkSDK_DirectorySettingsResult setEnableEsni(bool enabled,
                                                    Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                    void* userData);

  // sdk/families/settings.cpp
  using SettingsCallback = Callback<ZephlinkSDK_SettingsResult>;
  ZephlinkSDK_SettingsResult getSettings(SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setTunnelEncrypted(bool enable, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setConnectionEncryption(const char* adapterID, bool enable, SettingsCallback callback,
                                                     void* userData);
  ZephlinkSDK_SettingsResult setJumboPackets(bool enable, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setPacketAggregation(bool enable, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setHeaderCompression(bool enable, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setStartupConnect(bool enable, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setEnableDefaultRoute(bool enable, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setMode(ZephlinkSDK_BondingMode mode, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setConnectionTransportMode(ZephlinkSDK_TransportMode mode, SettingsCallback callback,
                                                        void* userData);
  ZephlinkSDK_SettingsResult setMaxRedundantSends(std::uint32_t connections, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setOverflowThreshold(double mbps, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setPriorityOverflowThreshold(double mbps, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setTargetNumberOfConnections(std::int32_t upload, std::int32_t download,
                                                          SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setMaximumConnectRetry(std::uint32_t seconds, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setMaximumTransportRetry(std::uint32_t seconds, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setForwardPorts(std::uint16_t count, const ZephlinkSDK_ProtocolPortPair* rules,
                                             SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setDownstreamSubnets(std::uint16_t count, const ZephlinkSDK_Subnet* subnets,
                                                  SettingsCallback callback, void* userData);

  // sdk/families/adapters.cpp
  using AdaptersCallback = Callback<ZephlinkSDK_AdaptersResult>;
  ZephlinkSDK_AdaptersResult getAdapters(AdaptersCallback callback, void* userData);
  ZephlinkSDK_AdaptersResult setConnectionPriorities(const char* adapterID, ZephlinkSDK_ConnectionPriority priority,
                                                     AdaptersCallback callback, void* userData);
  ZephlinkSDK_AdaptersResult setConnectionDirectionalMode(const char* adapterID,
                                                          ZephlinkSDK_ConnectionDirectionalMode upload,
                                                          ZephlinkSDK_ConnectionDirectionalMode download,
                                                          AdaptersCallback callback, void* userData);
  ZephlinkSDK_AdaptersResult setConnectionRateLimit(const char* adapterID, std::int64_t bps, AdaptersCallback callback,
                                                    void* userData);
  ZephlinkSDK_AdaptersResult clearConnectionRateLimit(const char* adapterID, AdaptersCallback callback, void* userData);
  ZephlinkSDK_AdaptersResult setAdapterMonthlyDataLimit(const char* adapterID, std::int64_t bytes,
                                                        std::int64_t resetDay, AdaptersCallback callback,
                                                        void* userData);
  ZephlinkSDK_AdaptersResult clearAdapterMonthlyDataLimit(const char* adapterID, AdaptersCallback callback,
                                                          void* userData);
  ZephlinkSDK_AdaptersResult setAdapterDailyDataLimit(const char* adapterID, std::int64_t bytes,
                                                      AdaptersCallback callback, void* userData);
  ZephlinkSDK_AdaptersResult clearAdapterDailyDataLimit(const char* adapterID, AdaptersCallback callback,
                                                        void* userData);
  ZephlinkSDK_AdaptersResult addAdapterDailyDataLimitBoost(const char* adapterID, std::int64_t bytes,
                                                           AdaptersCallback callback, void* userData);
  ZephlinkSDK_AdaptersResult setAdapterOverlimitRatelimit(const char* adapterID, std::int64_t bps,
                                                          AdaptersCallback callback, void* userData);
  ZephlinkSDK_AdaptersResult resetAdapterUsage(const char* adapterID, AdaptersCallback callback, void* userData);

  // sdk/families/statistics.cpp
  ZephlinkSDK_ConnectionStatsResult getConnectionStats(Callback<ZephlinkSDK_ConnectionStatsResult> callback,
                                                       void* userData);
  ZephlinkSDK_StreamingStatsResult getStreamingStats(Callback<ZephlinkSDK_StreamingStatsResult> callback,
                                                     void* userData);
  ZephlinkSDK_Result subscribeStats(bool enable, std::uint8_t periodCount, const std::uint32_t* periods);

  // sdk/families/history.cpp
  ZephlinkSDK_ConnectionStatsResult getHistoricConnectionStats(Callback<ZephlinkSDK_ConnectionStatsResult> callback,
                                                               void* userData);
  ZephlinkSDK_SessionStatsResult getSessionStats(Callback<ZephlinkSDK_SessionStatsResult> callback, void* userData);

  // sdk/families/privacy.cpp
  using PrivacyCallback = Callback<ZephlinkSDK_PrivacySettingsResult>;
  ZephlinkSDK_PrivacySettingsResult getPrivacySettings(PrivacyCallback callback, void* userData);
  ZephlinkSDK_PrivacySettingsResult setKillswitch(bool enable, PrivacyCallback callback, void* userData);
  ZephlinkSDK_PrivacySettingsResult setDNSLeakProtection(bool enable, PrivacyCallback callback, void* userData);
  ZephlinkSDK_PrivacySettingsResult setIPLeakProtection(bool enable, PrivacyCallback callback, void* userData);
  ZephlinkSDK_PrivacySettingsResult setRequestToDisableDoH(bool enable, PrivacyCallback callback, void* userData);
  ZephlinkSDK_PrivacySettingsResult setDNSServers(std::uint16_t count, const char (*addresses)[ZephlinkSDK_AddressSize],
                                                  PrivacyCallback callback, void* userData);
  ZephlinkSDK_CaptivePortalCheckResult checkForCaptivePortals(Callback<ZephlinkSDK_CaptivePortalCheckResult> callback,
                                                              void* userData);
  ZephlinkSDK_CaptivePortalLoginResult setCaptivePortalLoginMode(
      bool enable, const char* adapterID, Callback<ZephlinkSDK_CaptivePortalLoginResult> callback, void* userData);

  // sdk/families/firewall.cpp
  ZephlinkSDK_FirewallSettingsResult getFirewallSettings(Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                         void* userData);
  ZephlinkSDK_FirewallSettingsResult setFirewallMode(ZephlinkSDK_FirewallMode mode,
                                                     Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                     void* userData);
  ZephlinkSDK_FirewallSettingsResult setFirewallDomains(std::uint16_t count,
                                                        const char (*domains)[ZephlinkSDK_DomainSize],
                                                        Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                        void* userData);
  ZephlinkSDK_FirewallSettingsResult setFirewallIPv4(std::uint16_t count, const in_addr* addresses,
                                                     Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                     void* userData);
  ZephlinkSDK_FirewallSettingsResult setFirewallIPv6(std::uint16_t count, const in6_addr* addresses,
                                                     Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                     void* userData);
  ZephlinkSDK_FirewallSettingsResult setFirewallPorts(std::uint16_t count, const ZephlinkSDK_ProtocolPortPair* rules,
                                                      Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                      void* userData);

  // sdk/families/streaming.cpp
  ZephlinkSDK_StreamingSettingsResult getStreamingSettings(Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                           void* userData);
  ZephlinkSDK_StreamingSettingsResult setStreamingDomains(std::uint16_t count,
                                                          const char (*domains)[ZephlinkSDK_DomainSize],
                                                          Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                          void* userData);
  ZephlinkSDK_StreamingSettingsResult setStreamingIPv4(std::uint16_t count, const in_addr* addresses,
                                                       Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                       void* userData);
  ZephlinkSDK_StreamingSettingsResult setStreamingIPv6(std::uint16_t count, const in6_addr* addresses,
                                                       Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                       void* userData);
  ZephlinkSDK_StreamingSettingsResult setStreamingPorts(std::uint16_t count, const ZephlinkSDK_ProtocolPortPair* rules,
                                                        Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                        void* userData);

  // sdk/families/local_proxy.cpp
  ZephlinkSDK_LocalProxySettingsResult getLocalProxySettings(Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                             void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyEnabled(bool enable,
                                                            Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                            void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyDomains(std::uint16_t count,
                                                            const char (*domains)[ZephlinkSDK_DomainSize],
                                                            Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                            void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyIPv4(std::uint16_t count, const in_addr* addresses,
                                                         Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                         void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyIPv6(std::uint16_t count, const in6_addr* addresses,
                                                         Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                         void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyPorts(std::uint16_t count,
                                                          const ZephlinkSDK_ProtocolPortPair* rules,
                                                          Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                          void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyGlobalDomainWatchlistEnable(
      bool enable, Callback<ZephlinkSDK_LocalProxySettingsResult> callback, void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyDomainWatchlistEnable(
      const char* title, bool enable, Callback<ZephlinkSDK_LocalProxySettingsResult> callback, void* userData);

  // sdk/families/speed_tests.cpp
  ZephlinkSDK_SpeedTestResult getSpeedTestResults(Callback<ZephlinkSDK_SpeedTestResult> callback, void* userData);
  ZephlinkSDK_SpeedTestResult startSpeedTest(Callback<ZephlinkSDK_SpeedTestResult> callback, void* userData);
  ZephlinkSDK_SpeedTestResult startStreamTest(Callback<ZephlinkSDK_SpeedTestResult> callback, void* userData);
  ZephlinkSDK_DisconnectEventResult getLastDisconnectEvent(Callback<ZephlinkSDK_DisconnectEventResult> callback,
                                                           void* userData);

  // sdk/families/logs.cpp
  ZephlinkSDK_LogSettingsResult getLogSettings(Callback<ZephlinkSDK_LogSettingsResult> callback, void* userData);
  ZephlinkSDK_LogSettingsResult setDaemonLogSettings(ZephlinkSDK_DaemonLogSettings settings,
                                                     Callback<ZephlinkSDK_LogSettingsResult> callback, void* userData);
  ZephlinkSDK_LogReportResult sendLogReport(const char* email, const char* message, const char* filepath,
                                            Callback<ZephlinkSDK_LogReportResult> callback, void* userData);
  ZephlinkSDK_Result eraseLogs();
  ZephlinkSDK_Result exitDaemon();

  // sdk/families/safe_browsing.cpp
  ZephlinkSDK_SafeBrowsingResult initSafeBrowsing(const char* config, Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                  void* userData);
  ZephlinkSDK_SafeBrowsingResult setSafeBrowsingConfig(const char* config,
                                                       Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                       void* userData);
  ZephlinkSDK_SafeBrowsingResult setSafeBrowsingEnabled(bool enabled, Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                        void* userData);
  ZephlinkSDK_SafeBrowsingResult setSafeBrowsingLogLevel(ZephlinkSDK_SafeBrowsingLogLevel level,
                                                         Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                         void* userData);
  ZephlinkSDK_SafeBrowsingResult setSafeBrowsingSafeNetworkOverride(
      ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride, Callback<ZephlinkSDK_SafeBrowsingResult> callback,
      void* userData);
  ZephlinkSDK_SafeBrowsingResult refreshSafeBrowsingToken(const char* token,
                                                          Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                          void* userData);
  ZephlinkSDK_SafeBrowsingResult reportSafeBrowsingHomeNetwork(Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                               void* userData, std::uint32_t retries,
                                                               std::uint64_t delay, std::uint64_t timeout);
  ZephlinkSDK_SafeBrowsingResult getSafeBrowsing(Callback<ZephlinkSDK_SafeBrowsingResult> callback, void* userData);
  ZephlinkSDK_SafeBrowsingStatsResult getSafeBrowsingStats(Callback<ZephlinkSDK_SafeBrowsingStatsResult> callback,
                                                           void* userData);
  ZephlinkSDK_SafeBrowsingErrorResult listenForSafeBrowsingError(Callback<ZephlinkSDK_SafeBrowsingErrorResult> callback,
                                                                 void* userData);
  ZephlinkSDK_SafeBrowsingBlockResult listenForSafeBrowsingBlock(Callback<ZephlinkSDK_SafeBrowsingBlockResult> callback,
                                                                 void* userData);

  // sdk/families/network_sharing.cpp
  ZephlinkSDK_NetworkSharingSettingsResult getNetworkSharingSettings(
      Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingClientEnabled(
      bool enabled, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingHostEnabled(
      bool enabled, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingDisplayName(
      const char* name, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingPairRequestBehavior(
      ZephlinkSDK_NetworkSharingPairRequestBehavior behavior,
      Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingAutoPairBehavior(
      ZephlinkSDK_NetworkSharingAutoPairBehavior behavior, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback,
      void* userData);
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingAlwaysOnDiscovery(
      bool enabled, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingDiscoveryResult getNetworkSharingDiscovery(
      Callback<ZephlinkSDK_NetworkSharingDiscoveryResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingDiscoveryResult startNetworkSharingDiscovery(
      Callback<ZephlinkSDK_NetworkSharingDiscoveryResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingAvailableSharesResult getNetworkSharesAvailable(
      Callback<ZephlinkSDK_NetworkSharingAvailableSharesResult> callback, void* userData);

  // sdk/families/peers.cpp
  ZephlinkSDK_NetworkSharingConnectionResult connectToNetworkShareViaConnectCode(
      const char* code, Callback<ZephlinkSDK_NetworkSharingConnectionResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingConnectionResult reconnectToNetworkShare(
      const char* uuid, Callback<ZephlinkSDK_NetworkSharingConnectionResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingPairResult requestNetworkSharingPair(
      const char* uuid, Callback<ZephlinkSDK_NetworkSharingPairResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingPairResult allowNetworkSharingPair(const char* uuid, bool allow,
                                                               Callback<ZephlinkSDK_NetworkSharingPairResult> callback,
                                                               void* userData);
  ZephlinkSDK_NetworkSharingPairResult unpairNetworkSharingPeer(const char* uuid,
                                                                Callback<ZephlinkSDK_NetworkSharingPairResult> callback,
                                                                void* userData);
  ZephlinkSDK_NetworkSharingAvailableSharesResult setNetworkSharingPeerAutoReconnect(
      const char* uuid, bool enabled, Callback<ZephlinkSDK_NetworkSharingAvailableSharesResult> callback,
      void* userData);
  ZephlinkSDK_NetworkSharingAvailableSharesResult setNetworkSharingPeerAllowAsHost(
      const char* uuid, bool allow, Callback<ZephlinkSDK_NetworkSharingAvailableSharesResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingAvailableSharesResult setNetworkSharingPeerAllowAsClient(
      const char* uuid, bool allow, Callback<ZephlinkSDK_NetworkSharingAvailableSharesResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingConnectionResult listenForNetworkSharePeerStatusChange(
      Callback<ZephlinkSDK_NetworkSharingConnectionResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingPairResult listenForNetworkSharePairRequest(
      Callback<ZephlinkSDK_NetworkSharingPairResult> callback, void* userData);
  ZephlinkSDK_NetworkSharingPairResult listenForNetworkShareNewPeerAvailable(
      Callback<ZephlinkSDK_NetworkSharingPairResult> callback, void* userData);

 private:
  void keepAlive();
  bool startKeepAlive();
  void stopKeepAlive();

  char appName[ZephlinkSDK_AppNameSize] = "";
  bool statsEnabled = false;
  bool running = false;
  Thread keepAliveThread;
  // Guards statsEnabled and running.
  std::recursive_mutex mutex;
  std::condition_variable_any stopping;
  // Last member, destroyed first: its callbacks may use all of the above.
  std::unique_ptr<WebsocketImpl> channel;
};

}  // namespace zephlinksdk
