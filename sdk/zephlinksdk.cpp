// The public functions. Each forwards to the method of the same name.
#include "zephlinksdk/zephlinksdk.h"

#include "base/text.h"
#include "sdk/forward.h"
#include "sdk/zephlink_sdk.h"

using zephlinksdk::forward;

void ZephlinkSDK_defaultConfig(ZephlinkSDK_Config* config) {
  if (config == nullptr) return;
  *config = {};
  zephlinksdk::copyText(config->address, "127.0.0.1");
  config->port = 9330;
}

ZephlinkSDK* ZephlinkSDK_create(ZephlinkSDK_Config config) {
  try {
    return new ZephlinkSDK(config);
  } catch (...) {
    return nullptr;
  }
}

void ZephlinkSDK_destroy(ZephlinkSDK* sdk) { delete sdk; }

void ZephlinkSDK_finish(ZephlinkSDK* sdk) {
  if (sdk != nullptr) sdk->finish();
}

void ZephlinkSDK_removeListener(ZephlinkSDK* sdk, uint64_t handle) {
  if (sdk != nullptr) sdk->removeListener(handle);
}

// ---- Callbacks ----

// ---- State and version ----

ZephlinkSDK_StateResult ZephlinkSDK_getState(ZephlinkSDK* sdk, ZephlinkSDK_StateCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::getState, callback, userData);
}

ZephlinkSDK_VersionResult ZephlinkSDK_getVersion(ZephlinkSDK* sdk, ZephlinkSDK_VersionCallback callback,
                                                 void* userData) {
  return forward(sdk, &ZephlinkSDK::getVersion, callback, userData);
}

// ---- Connecting ----

ZephlinkSDK_ConnectResult ZephlinkSDK_connectCombined(ZephlinkSDK* sdk, const char* server,
                                                      ZephlinkSDK_ConnectCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::connectCombined, server, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK_connect(ZephlinkSDK* sdk, ZephlinkSDK_ConnectMethod method,
                                              ZephlinkSDK_ConnectCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::connect, method, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK_connectToCountry(ZephlinkSDK* sdk, const char* country,
                                                       ZephlinkSDK_ConnectCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::connectToCountry, country, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK_connectToCity(ZephlinkSDK* sdk, const char* country, const char* city,
                                                    ZephlinkSDK_ConnectCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::connectToCity, country, city, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK_connectToServer(ZephlinkSDK* sdk, const char* country, const char* city,
                                                      int32_t number, ZephlinkSDK_ConnectCallback callback,
                                                      void* userData) {
  return forward(sdk, &ZephlinkSDK::connectToServer, country, city, number, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK_connectToExactServer(ZephlinkSDK* sdk, const char* country, const char* city,
                                                           int32_t number, ZephlinkSDK_ConnectCallback callback,
                                                           void* userData) {
  return forward(sdk, &ZephlinkSDK::connectToExactServer, country, city, number, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK_connectToProxy(ZephlinkSDK* sdk, ZephlinkSDK_ConnectCallback callback,
                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::connectToProxy, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK_connectIgnoreLast(ZephlinkSDK* sdk, ZephlinkSDK_ConnectCallback callback,
                                                        void* userData) {
  return forward(sdk, &ZephlinkSDK::connectIgnoreLast, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK_disconnect(ZephlinkSDK* sdk, ZephlinkSDK_StateCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::disconnect, callback, userData);
}

ZephlinkSDK_DirectoryResult ZephlinkSDK_getDirectory(ZephlinkSDK* sdk, ZephlinkSDK_DirectoryCallback callback,
                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::getDirectory, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK_getConnectedServer(ZephlinkSDK* sdk, ZephlinkSDK_ConnectCallback callback,
                                                         void* userData) {
  return forward(sdk, &ZephlinkSDK::getConnectedServer, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK_getServerSettings(ZephlinkSDK* sdk,
                                                               ZephlinkSDK_ServerSettingsCallback callback,
                                                               void* userData) {
  return forward(sdk, &ZephlinkSDK::getServerSettings, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodCombined(ZephlinkSDK* sdk, const char* mode,
                                                                      const char* country,
                                                                      ZephlinkSDK_ServerSettingsCallback callback,
                                                                      void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectMethodCombined, mode, country, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethod(ZephlinkSDK* sdk, ZephlinkSDK_ConnectMethod method,
                                                              ZephlinkSDK_ServerSettingsCallback callback,
                                                              void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectMethod, method, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodCountry(ZephlinkSDK* sdk, const char* country,
                                                                     ZephlinkSDK_ServerSettingsCallback callback,
                                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectMethodCountry, country, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodCity(ZephlinkSDK* sdk, const char* country,
                                                                  const char* city,
                                                                  ZephlinkSDK_ServerSettingsCallback callback,
                                                                  void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectMethodCity, country, city, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodServer(ZephlinkSDK* sdk, const char* country,
                                                                    const char* city, int32_t number,
                                                                    ZephlinkSDK_ServerSettingsCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectMethodServer, country, city, number, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodExactServer(ZephlinkSDK* sdk, const char* country,
                                                                         const char* city, int32_t number,
                                                                         ZephlinkSDK_ServerSettingsCallback callback,
                                                                         void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectMethodExactServer, country, city, number, callback, userData);
}

// ---- Account ----

ZephlinkSDK_StateResult ZephlinkSDK_login(ZephlinkSDK* sdk, const char* username, const char* password,
                                          ZephlinkSDK_StateCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::login, username, password, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK_loginOAuth(ZephlinkSDK* sdk, const char* token, ZephlinkSDK_StateCallback callback,
                                               void* userData) {
  return forward(sdk, &ZephlinkSDK::loginOAuth, token, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK_refreshOAuthToken(ZephlinkSDK* sdk, const char* token,
                                                      ZephlinkSDK_StateCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::refreshOAuthToken, token, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK_loginAutoAccount(ZephlinkSDK* sdk, ZephlinkSDK_StateCallback callback,
                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::loginAutoAccount, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK_logout(ZephlinkSDK* sdk, ZephlinkSDK_StateCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::logout, callback, userData);
}

ZephlinkSDK_AccountingResult ZephlinkSDK_getAccountingData(ZephlinkSDK* sdk, ZephlinkSDK_AccountingCallback callback,
                                                           void* userData) {
  return forward(sdk, &ZephlinkSDK::getAccountingData, callback, userData);
}

ZephlinkSDK_DirectorySettingsResult ZephlinkSDK_getDirectorySettings(ZephlinkSDK* sdk,
                                                                     ZephlinkSDK_DirectorySettingsCallback callback,
                                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::getDirectorySettings, callback, userData);
}

ZephlinkSDK_DirectorySettingsResult ZephlinkSDK_setDirectoryDomain(ZephlinkSDK* sdk, const char* domain,
                                                                   ZephlinkSDK_DirectorySettingsCallback callback,
                                                                   void* userData) {
  return forward(sdk, &ZephlinkSDK::setDirectoryDomain, domain, callback, userData);
}

ZephlinkSDK_DirectorySettingsResult ZephlinkSDK_setDirectoryGatewayURI(ZephlinkSDK* sdk, const char* uri,
                                                                       ZephlinkSDK_DirectorySettingsCallback callback,
                                                                       void* userData) {
  return forward(sdk, &ZephlinkSDK::setDirectoryGatewayURI, uri, callback, userData);
}

ZephlinkSDK_DirectorySettingsResult ZephlinkSDK_setEnableEsni(ZephlinkSDK* sdk, bool enabled,
                                                              ZephlinkSDK_DirectorySettingsCallback callback,
                                                              void* userData) {
  return forward(sdk, &ZephlinkSDK::setEnableEsni, enabled, callback, userData);
}

// ---- Connection settings ----

ZephlinkSDK_SettingsResult ZephlinkSDK_getSettings(ZephlinkSDK* sdk, ZephlinkSDK_SettingsCallback callback,
                                                   void* userData) {
  return forward(sdk, &ZephlinkSDK::getSettings, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setTunnelEncrypted(ZephlinkSDK* sdk, bool enable,
                                                          ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setTunnelEncrypted, enable, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setConnectionEncryption(ZephlinkSDK* sdk, const char* adapterID, bool enable,
                                                               ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectionEncryption, adapterID, enable, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setJumboPackets(ZephlinkSDK* sdk, bool enable,
                                                       ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setJumboPackets, enable, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setPacketAggregation(ZephlinkSDK* sdk, bool enable,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setPacketAggregation, enable, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setHeaderCompression(ZephlinkSDK* sdk, bool enable,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setHeaderCompression, enable, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setStartupConnect(ZephlinkSDK* sdk, bool enable,
                                                         ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setStartupConnect, enable, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setEnableDefaultRoute(ZephlinkSDK* sdk, bool enable,
                                                             ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setEnableDefaultRoute, enable, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setMode(ZephlinkSDK* sdk, ZephlinkSDK_BondingMode mode,
                                               ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setMode, mode, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setConnectionTransportMode(ZephlinkSDK* sdk, ZephlinkSDK_TransportMode mode,
                                                                  ZephlinkSDK_SettingsCallback callback,
                                                                  void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectionTransportMode, mode, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setMaxRedundantSends(ZephlinkSDK* sdk, uint32_t connections,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setMaxRedundantSends, connections, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setOverflowThreshold(ZephlinkSDK* sdk, double mbps,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setOverflowThreshold, mbps, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setPriorityOverflowThreshold(ZephlinkSDK* sdk, double mbps,
                                                                    ZephlinkSDK_SettingsCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::setPriorityOverflowThreshold, mbps, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setTargetNumberOfConnections(ZephlinkSDK* sdk, int32_t upload, int32_t download,
                                                                    ZephlinkSDK_SettingsCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::setTargetNumberOfConnections, upload, download, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setMaximumConnectRetry(ZephlinkSDK* sdk, uint32_t seconds,
                                                              ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setMaximumConnectRetry, seconds, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setMaximumTransportRetry(ZephlinkSDK* sdk, uint32_t seconds,
                                                                ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setMaximumTransportRetry, seconds, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setForwardPorts(ZephlinkSDK* sdk, uint16_t count,
                                                       const ZephlinkSDK_ProtocolPortPair* rules,
                                                       ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setForwardPorts, count, rules, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK_setDownstreamSubnets(ZephlinkSDK* sdk, uint16_t count,
                                                            const ZephlinkSDK_Subnet* subnets,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setDownstreamSubnets, count, subnets, callback, userData);
}

// ---- Adapters ----

ZephlinkSDK_AdaptersResult ZephlinkSDK_getAdapters(ZephlinkSDK* sdk, ZephlinkSDK_AdaptersCallback callback,
                                                   void* userData) {
  return forward(sdk, &ZephlinkSDK::getAdapters, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_setConnectionPriorities(ZephlinkSDK* sdk, const char* adapterID,
                                                               ZephlinkSDK_ConnectionPriority priority,
                                                               ZephlinkSDK_AdaptersCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectionPriorities, adapterID, priority, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_setConnectionDirectionalMode(ZephlinkSDK* sdk, const char* adapterID,
                                                                    ZephlinkSDK_ConnectionDirectionalMode upload,
                                                                    ZephlinkSDK_ConnectionDirectionalMode download,
                                                                    ZephlinkSDK_AdaptersCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectionDirectionalMode, adapterID, upload, download, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_setConnectionRateLimit(ZephlinkSDK* sdk, const char* adapterID, int64_t bps,
                                                              ZephlinkSDK_AdaptersCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setConnectionRateLimit, adapterID, bps, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_clearConnectionRateLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                ZephlinkSDK_AdaptersCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::clearConnectionRateLimit, adapterID, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_setAdapterMonthlyDataLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                  int64_t bytes, int64_t resetDay,
                                                                  ZephlinkSDK_AdaptersCallback callback,
                                                                  void* userData) {
  return forward(sdk, &ZephlinkSDK::setAdapterMonthlyDataLimit, adapterID, bytes, resetDay, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_clearAdapterMonthlyDataLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                    ZephlinkSDK_AdaptersCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::clearAdapterMonthlyDataLimit, adapterID, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_setAdapterDailyDataLimit(ZephlinkSDK* sdk, const char* adapterID, int64_t bytes,
                                                                ZephlinkSDK_AdaptersCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setAdapterDailyDataLimit, adapterID, bytes, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_clearAdapterDailyDataLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                  ZephlinkSDK_AdaptersCallback callback,
                                                                  void* userData) {
  return forward(sdk, &ZephlinkSDK::clearAdapterDailyDataLimit, adapterID, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_addAdapterDailyDataLimitBoost(ZephlinkSDK* sdk, const char* adapterID,
                                                                     int64_t bytes,
                                                                     ZephlinkSDK_AdaptersCallback callback,
                                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::addAdapterDailyDataLimitBoost, adapterID, bytes, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_setAdapterOverlimitRatelimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                    int64_t bps, ZephlinkSDK_AdaptersCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::setAdapterOverlimitRatelimit, adapterID, bps, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK_resetAdapterUsage(ZephlinkSDK* sdk, const char* adapterID,
                                                         ZephlinkSDK_AdaptersCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::resetAdapterUsage, adapterID, callback, userData);
}

// ---- Statistics ----

ZephlinkSDK_ConnectionStatsResult ZephlinkSDK_getConnectionStats(ZephlinkSDK* sdk,
                                                                 ZephlinkSDK_ConnectionStatsCallback callback,
                                                                 void* userData) {
  return forward(sdk, &ZephlinkSDK::getConnectionStats, callback, userData);
}

ZephlinkSDK_StreamingStatsResult ZephlinkSDK_getStreamingStats(ZephlinkSDK* sdk,
                                                               ZephlinkSDK_StreamingStatsCallback callback,
                                                               void* userData) {
  return forward(sdk, &ZephlinkSDK::getStreamingStats, callback, userData);
}

ZephlinkSDK_Result ZephlinkSDK_subscribeStats(ZephlinkSDK* sdk, bool enable, uint8_t periodCount,
                                              const uint32_t* periods) {
  return forward(sdk, &ZephlinkSDK::subscribeStats, enable, periodCount, periods);
}

// ---- Historic and session statistics ----

ZephlinkSDK_ConnectionStatsResult ZephlinkSDK_getHistoricConnectionStats(ZephlinkSDK* sdk,
                                                                         ZephlinkSDK_ConnectionStatsCallback callback,
                                                                         void* userData) {
  return forward(sdk, &ZephlinkSDK::getHistoricConnectionStats, callback, userData);
}

ZephlinkSDK_SessionStatsResult ZephlinkSDK_getSessionStats(ZephlinkSDK* sdk, ZephlinkSDK_SessionStatsCallback callback,
                                                           void* userData) {
  return forward(sdk, &ZephlinkSDK::getSessionStats, callback, userData);
}

// ---- Privacy, DNS and captive portal ----

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_getPrivacySettings(ZephlinkSDK* sdk,
                                                                 ZephlinkSDK_PrivacySettingsCallback callback,
                                                                 void* userData) {
  return forward(sdk, &ZephlinkSDK::getPrivacySettings, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setKillswitch(ZephlinkSDK* sdk, bool enable,
                                                            ZephlinkSDK_PrivacySettingsCallback callback,
                                                            void* userData) {
  return forward(sdk, &ZephlinkSDK::setKillswitch, enable, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setDNSLeakProtection(ZephlinkSDK* sdk, bool enable,
                                                                   ZephlinkSDK_PrivacySettingsCallback callback,
                                                                   void* userData) {
  return forward(sdk, &ZephlinkSDK::setDNSLeakProtection, enable, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setIPLeakProtection(ZephlinkSDK* sdk, bool enable,
                                                                  ZephlinkSDK_PrivacySettingsCallback callback,
                                                                  void* userData) {
  return forward(sdk, &ZephlinkSDK::setIPLeakProtection, enable, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setRequestToDisableDoH(ZephlinkSDK* sdk, bool enable,
                                                                     ZephlinkSDK_PrivacySettingsCallback callback,
                                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::setRequestToDisableDoH, enable, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setDNSServers(ZephlinkSDK* sdk, uint16_t count,
                                                            const char (*addresses)[ZephlinkSDK_AddressSize],
                                                            ZephlinkSDK_PrivacySettingsCallback callback,
                                                            void* userData) {
  return forward(sdk, &ZephlinkSDK::setDNSServers, count, addresses, callback, userData);
}

ZephlinkSDK_CaptivePortalCheckResult ZephlinkSDK_checkForCaptivePortals(ZephlinkSDK* sdk,
                                                                        ZephlinkSDK_CaptivePortalCheckCallback callback,
                                                                        void* userData) {
  return forward(sdk, &ZephlinkSDK::checkForCaptivePortals, callback, userData);
}

ZephlinkSDK_CaptivePortalLoginResult ZephlinkSDK_setCaptivePortalLoginMode(
    ZephlinkSDK* sdk, bool enable, const char* adapterID, ZephlinkSDK_CaptivePortalLoginCallback callback,
    void* userData) {
  return forward(sdk, &ZephlinkSDK::setCaptivePortalLoginMode, enable, adapterID, callback, userData);
}

// ---- Firewall ----

ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_getFirewallSettings(ZephlinkSDK* sdk,
                                                                   ZephlinkSDK_FirewallSettingsCallback callback,
                                                                   void* userData) {
  return forward(sdk, &ZephlinkSDK::getFirewallSettings, callback, userData);
}

ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallMode(ZephlinkSDK* sdk, ZephlinkSDK_FirewallMode mode,
                                                               ZephlinkSDK_FirewallSettingsCallback callback,
                                                               void* userData) {
  return forward(sdk, &ZephlinkSDK::setFirewallMode, mode, callback, userData);
}

ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallDomains(ZephlinkSDK* sdk, uint16_t count,
                                                                  const char (*domains)[ZephlinkSDK_DomainSize],
                                                                  ZephlinkSDK_FirewallSettingsCallback callback,
                                                                  void* userData) {
  return forward(sdk, &ZephlinkSDK::setFirewallDomains, count, domains, callback, userData);
}

ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallIPv4(ZephlinkSDK* sdk, uint16_t count,
                                                               const struct in_addr* addresses,
                                                               ZephlinkSDK_FirewallSettingsCallback callback,
                                                               void* userData) {
  return forward(sdk, &ZephlinkSDK::setFirewallIPv4, count, addresses, callback, userData);
}

ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallIPv6(ZephlinkSDK* sdk, uint16_t count,
                                                               const struct in6_addr* addresses,
                                                               ZephlinkSDK_FirewallSettingsCallback callback,
                                                               void* userData) {
  return forward(sdk, &ZephlinkSDK::setFirewallIPv6, count, addresses, callback, userData);
}

ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallPorts(ZephlinkSDK* sdk, uint16_t count,
                                                                const ZephlinkSDK_ProtocolPortPair* rules,
                                                                ZephlinkSDK_FirewallSettingsCallback callback,
                                                                void* userData) {
  return forward(sdk, &ZephlinkSDK::setFirewallPorts, count, rules, callback, userData);
}

// ---- Streaming ----

ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_getStreamingSettings(ZephlinkSDK* sdk,
                                                                     ZephlinkSDK_StreamingSettingsCallback callback,
                                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::getStreamingSettings, callback, userData);
}

ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_setStreamingDomains(ZephlinkSDK* sdk, uint16_t count,
                                                                    const char (*domains)[ZephlinkSDK_DomainSize],
                                                                    ZephlinkSDK_StreamingSettingsCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::setStreamingDomains, count, domains, callback, userData);
}

ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_setStreamingIPv4(ZephlinkSDK* sdk, uint16_t count,
                                                                 const struct in_addr* addresses,
                                                                 ZephlinkSDK_StreamingSettingsCallback callback,
                                                                 void* userData) {
  return forward(sdk, &ZephlinkSDK::setStreamingIPv4, count, addresses, callback, userData);
}

ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_setStreamingIPv6(ZephlinkSDK* sdk, uint16_t count,
                                                                 const struct in6_addr* addresses,
                                                                 ZephlinkSDK_StreamingSettingsCallback callback,
                                                                 void* userData) {
  return forward(sdk, &ZephlinkSDK::setStreamingIPv6, count, addresses, callback, userData);
}

ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_setStreamingPorts(ZephlinkSDK* sdk, uint16_t count,
                                                                  const ZephlinkSDK_ProtocolPortPair* rules,
                                                                  ZephlinkSDK_StreamingSettingsCallback callback,
                                                                  void* userData) {
  return forward(sdk, &ZephlinkSDK::setStreamingPorts, count, rules, callback, userData);
}

// ---- Local proxy ----

ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_getLocalProxySettings(ZephlinkSDK* sdk,
                                                                       ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                       void* userData) {
  return forward(sdk, &ZephlinkSDK::getLocalProxySettings, callback, userData);
}

ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyEnabled(ZephlinkSDK* sdk, bool enable,
                                                                      ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                      void* userData) {
  return forward(sdk, &ZephlinkSDK::setLocalProxyEnabled, enable, callback, userData);
}

ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyDomains(ZephlinkSDK* sdk, uint16_t count,
                                                                      const char (*domains)[ZephlinkSDK_DomainSize],
                                                                      ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                      void* userData) {
  return forward(sdk, &ZephlinkSDK::setLocalProxyDomains, count, domains, callback, userData);
}

ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyIPv4(ZephlinkSDK* sdk, uint16_t count,
                                                                   const struct in_addr* addresses,
                                                                   ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                   void* userData) {
  return forward(sdk, &ZephlinkSDK::setLocalProxyIPv4, count, addresses, callback, userData);
}

ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyIPv6(ZephlinkSDK* sdk, uint16_t count,
                                                                   const struct in6_addr* addresses,
                                                                   ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                   void* userData) {
  return forward(sdk, &ZephlinkSDK::setLocalProxyIPv6, count, addresses, callback, userData);
}

ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyPorts(ZephlinkSDK* sdk, uint16_t count,
                                                                    const ZephlinkSDK_ProtocolPortPair* rules,
                                                                    ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::setLocalProxyPorts, count, rules, callback, userData);
}

ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyGlobalDomainWatchlistEnable(
    ZephlinkSDK* sdk, bool enable, ZephlinkSDK_LocalProxySettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setLocalProxyGlobalDomainWatchlistEnable, enable, callback, userData);
}

ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyDomainWatchlistEnable(
    ZephlinkSDK* sdk, const char* title, bool enable, ZephlinkSDK_LocalProxySettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setLocalProxyDomainWatchlistEnable, title, enable, callback, userData);
}

// ---- Speed tests and disconnect reason ----

ZephlinkSDK_SpeedTestResult ZephlinkSDK_getSpeedTestResults(ZephlinkSDK* sdk, ZephlinkSDK_SpeedTestCallback callback,
                                                            void* userData) {
  return forward(sdk, &ZephlinkSDK::getSpeedTestResults, callback, userData);
}

ZephlinkSDK_SpeedTestResult ZephlinkSDK_startSpeedTest(ZephlinkSDK* sdk, ZephlinkSDK_SpeedTestCallback callback,
                                                       void* userData) {
  return forward(sdk, &ZephlinkSDK::startSpeedTest, callback, userData);
}

ZephlinkSDK_SpeedTestResult ZephlinkSDK_startStreamTest(ZephlinkSDK* sdk, ZephlinkSDK_SpeedTestCallback callback,
                                                        void* userData) {
  return forward(sdk, &ZephlinkSDK::startStreamTest, callback, userData);
}

ZephlinkSDK_DisconnectEventResult ZephlinkSDK_getLastDisconnectEvent(ZephlinkSDK* sdk,
                                                                     ZephlinkSDK_DisconnectEventCallback callback,
                                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::getLastDisconnectEvent, callback, userData);
}

// ---- Logs, reports and daemon control ----

ZephlinkSDK_LogSettingsResult ZephlinkSDK_getLogSettings(ZephlinkSDK* sdk, ZephlinkSDK_LogSettingsCallback callback,
                                                         void* userData) {
  return forward(sdk, &ZephlinkSDK::getLogSettings, callback, userData);
}

ZephlinkSDK_LogSettingsResult ZephlinkSDK_setDaemonLogSettings(ZephlinkSDK* sdk, ZephlinkSDK_DaemonLogSettings settings,
                                                               ZephlinkSDK_LogSettingsCallback callback,
                                                               void* userData) {
  return forward(sdk, &ZephlinkSDK::setDaemonLogSettings, settings, callback, userData);
}

ZephlinkSDK_LogReportResult ZephlinkSDK_sendLogReport(ZephlinkSDK* sdk, const char* email, const char* message,
                                                      const char* filepath, ZephlinkSDK_LogReportCallback callback,
                                                      void* userData) {
  return forward(sdk, &ZephlinkSDK::sendLogReport, email, message, filepath, callback, userData);
}

ZephlinkSDK_Result ZephlinkSDK_eraseLogs(ZephlinkSDK* sdk) { return forward(sdk, &ZephlinkSDK::eraseLogs); }

ZephlinkSDK_Result ZephlinkSDK_exitDaemon(ZephlinkSDK* sdk) { return forward(sdk, &ZephlinkSDK::exitDaemon); }

// ---- Safe browsing ----

ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_initSafeBrowsing(ZephlinkSDK* sdk, const char* config,
                                                            ZephlinkSDK_SafeBrowsingCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::initSafeBrowsing, config, callback, userData);
}

ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_setSafeBrowsingConfig(ZephlinkSDK* sdk, const char* config,
                                                                 ZephlinkSDK_SafeBrowsingCallback callback,
                                                                 void* userData) {
  return forward(sdk, &ZephlinkSDK::setSafeBrowsingConfig, config, callback, userData);
}

ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_setSafeBrowsingEnabled(ZephlinkSDK* sdk, bool enabled,
                                                                  ZephlinkSDK_SafeBrowsingCallback callback,
                                                                  void* userData) {
  return forward(sdk, &ZephlinkSDK::setSafeBrowsingEnabled, enabled, callback, userData);
}

ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_setSafeBrowsingLogLevel(ZephlinkSDK* sdk,
                                                                   ZephlinkSDK_SafeBrowsingLogLevel level,
                                                                   ZephlinkSDK_SafeBrowsingCallback callback,
                                                                   void* userData) {
  return forward(sdk, &ZephlinkSDK::setSafeBrowsingLogLevel, level, callback, userData);
}

ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_setSafeBrowsingSafeNetworkOverride(
    ZephlinkSDK* sdk, ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride,
    ZephlinkSDK_SafeBrowsingCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setSafeBrowsingSafeNetworkOverride, networkOverride, callback, userData);
}

ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_refreshSafeBrowsingToken(ZephlinkSDK* sdk, const char* token,
                                                                    ZephlinkSDK_SafeBrowsingCallback callback,
                                                                    void* userData) {
  return forward(sdk, &ZephlinkSDK::refreshSafeBrowsingToken, token, callback, userData);
}

ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_reportSafeBrowsingHomeNetwork(ZephlinkSDK* sdk,
                                                                         ZephlinkSDK_SafeBrowsingCallback callback,
                                                                         void* userData, uint32_t retries,
                                                                         uint64_t delay, uint64_t timeout) {
  return forward(sdk, &ZephlinkSDK::reportSafeBrowsingHomeNetwork, callback, userData, retries, delay, timeout);
}

ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_getSafeBrowsing(ZephlinkSDK* sdk, ZephlinkSDK_SafeBrowsingCallback callback,
                                                           void* userData) {
  return forward(sdk, &ZephlinkSDK::getSafeBrowsing, callback, userData);
}

ZephlinkSDK_SafeBrowsingStatsResult ZephlinkSDK_getSafeBrowsingStats(ZephlinkSDK* sdk,
                                                                     ZephlinkSDK_SafeBrowsingStatsCallback callback,
                                                                     void* userData) {
  return forward(sdk, &ZephlinkSDK::getSafeBrowsingStats, callback, userData);
}

ZephlinkSDK_SafeBrowsingErrorResult ZephlinkSDK_listenForSafeBrowsingError(
    ZephlinkSDK* sdk, ZephlinkSDK_SafeBrowsingErrorCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::listenForSafeBrowsingError, callback, userData);
}

ZephlinkSDK_SafeBrowsingBlockResult ZephlinkSDK_listenForSafeBrowsingBlock(
    ZephlinkSDK* sdk, ZephlinkSDK_SafeBrowsingBlockCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::listenForSafeBrowsingBlock, callback, userData);
}

// ---- Network sharing ----

ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_getNetworkSharingSettings(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::getNetworkSharingSettings, callback, userData);
}

ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingClientEnabled(
    ZephlinkSDK* sdk, bool enabled, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingClientEnabled, enabled, callback, userData);
}

ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingHostEnabled(
    ZephlinkSDK* sdk, bool enabled, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingHostEnabled, enabled, callback, userData);
}

ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingDisplayName(
    ZephlinkSDK* sdk, const char* name, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingDisplayName, name, callback, userData);
}

ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingPairRequestBehavior(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingPairRequestBehavior behavior,
    ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingPairRequestBehavior, behavior, callback, userData);
}

ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingAutoPairBehavior(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingAutoPairBehavior behavior,
    ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingAutoPairBehavior, behavior, callback, userData);
}

ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingAlwaysOnDiscovery(
    ZephlinkSDK* sdk, bool enabled, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingAlwaysOnDiscovery, enabled, callback, userData);
}

ZephlinkSDK_NetworkSharingDiscoveryResult ZephlinkSDK_getNetworkSharingDiscovery(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingDiscoveryCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::getNetworkSharingDiscovery, callback, userData);
}

ZephlinkSDK_NetworkSharingDiscoveryResult ZephlinkSDK_startNetworkSharingDiscovery(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingDiscoveryCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::startNetworkSharingDiscovery, callback, userData);
}

ZephlinkSDK_NetworkSharingAvailableSharesResult ZephlinkSDK_getNetworkSharesAvailable(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingAvailableSharesCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::getNetworkSharesAvailable, callback, userData);
}

// ---- Network sharing peers ----

ZephlinkSDK_NetworkSharingConnectionResult ZephlinkSDK_connectToNetworkShareViaConnectCode(
    ZephlinkSDK* sdk, const char* code, ZephlinkSDK_NetworkSharingConnectionCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::connectToNetworkShareViaConnectCode, code, callback, userData);
}

ZephlinkSDK_NetworkSharingConnectionResult ZephlinkSDK_reconnectToNetworkShare(
    ZephlinkSDK* sdk, const char* uuid, ZephlinkSDK_NetworkSharingConnectionCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::reconnectToNetworkShare, uuid, callback, userData);
}

ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_requestNetworkSharingPair(
    ZephlinkSDK* sdk, const char* uuid, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::requestNetworkSharingPair, uuid, callback, userData);
}

ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_allowNetworkSharingPair(
    ZephlinkSDK* sdk, const char* uuid, bool allow, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::allowNetworkSharingPair, uuid, allow, callback, userData);
}

ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_unpairNetworkSharingPeer(
    ZephlinkSDK* sdk, const char* uuid, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::unpairNetworkSharingPeer, uuid, callback, userData);
}

ZephlinkSDK_NetworkSharingAvailableSharesResult ZephlinkSDK_setNetworkSharingPeerAutoReconnect(
    ZephlinkSDK* sdk, const char* uuid, bool enabled, ZephlinkSDK_NetworkSharingAvailableSharesCallback callback,
    void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingPeerAutoReconnect, uuid, enabled, callback, userData);
}

ZephlinkSDK_NetworkSharingAvailableSharesResult ZephlinkSDK_setNetworkSharingPeerAllowAsHost(
    ZephlinkSDK* sdk, const char* uuid, bool allow, ZephlinkSDK_NetworkSharingAvailableSharesCallback callback,
    void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingPeerAllowAsHost, uuid, allow, callback, userData);
}

ZephlinkSDK_NetworkSharingAvailableSharesResult ZephlinkSDK_setNetworkSharingPeerAllowAsClient(
    ZephlinkSDK* sdk, const char* uuid, bool allow, ZephlinkSDK_NetworkSharingAvailableSharesCallback callback,
    void* userData) {
  return forward(sdk, &ZephlinkSDK::setNetworkSharingPeerAllowAsClient, uuid, allow, callback, userData);
}

ZephlinkSDK_NetworkSharingConnectionResult ZephlinkSDK_listenForNetworkSharePeerStatusChange(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingConnectionCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::listenForNetworkSharePeerStatusChange, callback, userData);
}

ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_listenForNetworkSharePairRequest(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::listenForNetworkSharePairRequest, callback, userData);
}

ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_listenForNetworkShareNewPeerAvailable(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData) {
  return forward(sdk, &ZephlinkSDK::listenForNetworkShareNewPeerAvailable, callback, userData);
}
