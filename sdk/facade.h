// The flat face of the library: one free function for each method of ZephlinkSDK, the handle first, then the method's
// own arguments. A null handle is refused with ZephlinkSDK_Error_InvalidArgument.
#pragma once

#include "sdk/errors.h"
#include "sdk/zephlink_sdk.h"

/// The start record's defaults: no application name, 127.0.0.1, port 9330.
void ZephlinkSDK_defaultConfig(ZephlinkSDK_Config* config);

/// Begins to connect and returns at once. Owned by the caller; null only when memory has run out.
zephlinksdk::ZephlinkSDK* ZephlinkSDK_create(ZephlinkSDK_Config config);

/// Ends and frees what `ZephlinkSDK_create` returned, after a last write of what was queued. Ignores null.
void ZephlinkSDK_destroy(zephlinksdk::ZephlinkSDK* sdk);

/// Does nothing on a null handle.
void ZephlinkSDK_removeListener(zephlinksdk::ZephlinkSDK* sdk, uint64_t handle);

namespace zephlinksdk {

template <auto Method>
struct Forward;

template <class Record, class... Arguments, Record (ZephlinkSDK::*Method)(Arguments...)>
struct Forward<Method> {
  static Record call(ZephlinkSDK* sdk, Arguments... arguments) {
    if (sdk != nullptr) return (sdk->*Method)(arguments...);
    return refused<Record>(ZephlinkSDK_Error_InvalidArgument);
  }

  Record operator()(ZephlinkSDK* sdk, Arguments... arguments) const { return call(sdk, arguments...); }
};

template <auto Method>
inline constexpr auto& forward = Forward<Method>::call;

/// The forward of a method that has several forms, called like the function that it stands for.
template <auto... Methods>
struct ForwardForms : Forward<Methods>... {
  using Forward<Methods>::operator()...;
};

template <class... Numbers>
using AdapterMethod = ZephlinkSDK_AdaptersResult (ZephlinkSDK::*)(const char* adapterID, Numbers...,
                                                                  Callback<ZephlinkSDK_AdaptersResult>, void*);

}  // namespace zephlinksdk

// ---- State and version ----
inline constexpr auto& ZephlinkSDK_getState = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getState>;
inline constexpr auto& ZephlinkSDK_getVersion = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getVersion>;

// ---- Connecting ----
inline constexpr auto& ZephlinkSDK_connectCombined = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connectCombined>;
inline constexpr auto& ZephlinkSDK_connect = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connect>;
inline constexpr auto& ZephlinkSDK_connectToCountry = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connectToCountry>;
inline constexpr auto& ZephlinkSDK_connectToCity = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connectToCity>;
inline constexpr auto& ZephlinkSDK_connectToServer = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connectToServer>;
inline constexpr auto& ZephlinkSDK_connectToExactServer =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connectToExactServer>;
inline constexpr auto& ZephlinkSDK_connectToProxy = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connectToProxy>;
inline constexpr auto& ZephlinkSDK_connectIgnoreLast =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connectIgnoreLast>;
inline constexpr auto& ZephlinkSDK_disconnect = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::disconnect>;
inline constexpr auto& ZephlinkSDK_getDirectory = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getDirectory>;
inline constexpr auto& ZephlinkSDK_getConnectedServer =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getConnectedServer>;
inline constexpr auto& ZephlinkSDK_getServerSettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getServerSettings>;
inline constexpr auto& ZephlinkSDK_setConnectMethodCombined =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectMethodCombined>;
inline constexpr auto& ZephlinkSDK_setConnectMethod = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectMethod>;
inline constexpr auto& ZephlinkSDK_setConnectMethodCountry =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectMethodCountry>;
inline constexpr auto& ZephlinkSDK_setConnectMethodCity =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectMethodCity>;
inline constexpr auto& ZephlinkSDK_setConnectMethodServer =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectMethodServer>;
inline constexpr auto& ZephlinkSDK_setConnectMethodExactServer =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectMethodExactServer>;

// ---- Account ----
inline constexpr auto& ZephlinkSDK_login = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::login>;
inline constexpr auto& ZephlinkSDK_loginOAuth = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::loginOAuth>;
inline constexpr auto& ZephlinkSDK_refreshOAuthToken =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::refreshOAuthToken>;
inline constexpr auto& ZephlinkSDK_loginAutoAccount = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::loginAutoAccount>;
inline constexpr auto& ZephlinkSDK_logout = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::logout>;
inline constexpr auto& ZephlinkSDK_getAccountingData =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getAccountingData>;
inline constexpr auto& ZephlinkSDK_getDirectorySettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getDirectorySettings>;
inline constexpr auto& ZephlinkSDK_setDirectoryDomain =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setDirectoryDomain>;
inline constexpr auto& ZephlinkSDK_setDirectoryGatewayURI =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setDirectoryGatewayURI>;
inline constexpr auto& ZephlinkSDK_setEnableEsni = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setEnableEsni>;

// ---- Connection settings ----
inline constexpr auto& ZephlinkSDK_getSettings = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getSettings>;
inline constexpr auto& ZephlinkSDK_setTunnelEncrypted =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setTunnelEncrypted>;
inline constexpr auto& ZephlinkSDK_setConnectionEncryption =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectionEncryption>;
inline constexpr auto& ZephlinkSDK_setJumboPackets = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setJumboPackets>;
inline constexpr auto& ZephlinkSDK_setPacketAggregation =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setPacketAggregation>;
inline constexpr auto& ZephlinkSDK_setHeaderCompression =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setHeaderCompression>;
inline constexpr auto& ZephlinkSDK_setStartupConnect =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setStartupConnect>;
inline constexpr auto& ZephlinkSDK_setEnableDefaultRoute =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setEnableDefaultRoute>;
inline constexpr auto& ZephlinkSDK_setMode = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setMode>;
inline constexpr auto& ZephlinkSDK_setConnectionTransportMode =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectionTransportMode>;
inline constexpr auto& ZephlinkSDK_setMaxRedundantSends =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setMaxRedundantSends>;
inline constexpr auto& ZephlinkSDK_setOverflowThreshold =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setOverflowThreshold>;
inline constexpr auto& ZephlinkSDK_setPriorityOverflowThreshold =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setPriorityOverflowThreshold>;
inline constexpr auto& ZephlinkSDK_setTargetNumberOfConnections =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setTargetNumberOfConnections>;
inline constexpr auto& ZephlinkSDK_setMaximumConnectRetry =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setMaximumConnectRetry>;
inline constexpr auto& ZephlinkSDK_setMaximumTransportRetry =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setMaximumTransportRetry>;
inline constexpr auto& ZephlinkSDK_setForwardPorts = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setForwardPorts>;
inline constexpr auto& ZephlinkSDK_setDownstreamSubnets =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setDownstreamSubnets>;

// ---- Adapters ----
inline constexpr auto& ZephlinkSDK_getAdapters = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getAdapters>;
inline constexpr auto& ZephlinkSDK_setConnectionPriorities =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectionPriorities>;
inline constexpr auto& ZephlinkSDK_setConnectionDirectionalMode =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setConnectionDirectionalMode>;
inline constexpr zephlinksdk::ForwardForms<
    zephlinksdk::AdapterMethod<std::int64_t>{&zephlinksdk::ZephlinkSDK::setConnectionRateLimit},
    zephlinksdk::AdapterMethod<>{&zephlinksdk::ZephlinkSDK::setConnectionRateLimit}>
    ZephlinkSDK_setConnectionRateLimit;
inline constexpr zephlinksdk::ForwardForms<
    zephlinksdk::AdapterMethod<std::int64_t, std::int64_t>{&zephlinksdk::ZephlinkSDK::setAdapterMonthlyDataLimit},
    zephlinksdk::AdapterMethod<>{&zephlinksdk::ZephlinkSDK::setAdapterMonthlyDataLimit}>
    ZephlinkSDK_setAdapterMonthlyDataLimit;
inline constexpr zephlinksdk::ForwardForms<
    zephlinksdk::AdapterMethod<std::int64_t>{&zephlinksdk::ZephlinkSDK::setAdapterDailyDataLimit},
    zephlinksdk::AdapterMethod<>{&zephlinksdk::ZephlinkSDK::setAdapterDailyDataLimit}>
    ZephlinkSDK_setAdapterDailyDataLimit;
inline constexpr auto& ZephlinkSDK_addAdapterDailyDataLimitBoost =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::addAdapterDailyDataLimitBoost>;
inline constexpr auto& ZephlinkSDK_setAdapterOverlimitRatelimit =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setAdapterOverlimitRatelimit>;
inline constexpr auto& ZephlinkSDK_resetAdapterUsage =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::resetAdapterUsage>;

// ---- Statistics ----
inline constexpr auto& ZephlinkSDK_getConnectionStats =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getConnectionStats>;
inline constexpr auto& ZephlinkSDK_getStreamingStats =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getStreamingStats>;
inline constexpr auto& ZephlinkSDK_subscribeStats = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::subscribeStats>;

// ---- Historic and session statistics ----
inline constexpr auto& ZephlinkSDK_getHistoricConnectionStats =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getHistoricConnectionStats>;
inline constexpr auto& ZephlinkSDK_getSessionStats = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getSessionStats>;

// ---- Privacy, DNS and captive portal ----
inline constexpr auto& ZephlinkSDK_getPrivacySettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getPrivacySettings>;
inline constexpr auto& ZephlinkSDK_setKillswitch = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setKillswitch>;
inline constexpr auto& ZephlinkSDK_setDNSLeakProtection =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setDNSLeakProtection>;
inline constexpr auto& ZephlinkSDK_setIPLeakProtection =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setIPLeakProtection>;
inline constexpr auto& ZephlinkSDK_setRequestToDisableDoH =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setRequestToDisableDoH>;
inline constexpr auto& ZephlinkSDK_setDNSServers = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setDNSServers>;
inline constexpr auto& ZephlinkSDK_checkForCaptivePortals =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::checkForCaptivePortals>;
inline constexpr auto& ZephlinkSDK_setCaptivePortalLoginMode =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setCaptivePortalLoginMode>;

// ---- Firewall ----
inline constexpr auto& ZephlinkSDK_getFirewallSettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getFirewallSettings>;
inline constexpr auto& ZephlinkSDK_setFirewallMode = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setFirewallMode>;
inline constexpr auto& ZephlinkSDK_setFirewallDomains =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setFirewallDomains>;
inline constexpr auto& ZephlinkSDK_setFirewallIPv4 = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setFirewallIPv4>;
inline constexpr auto& ZephlinkSDK_setFirewallIPv6 = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setFirewallIPv6>;
inline constexpr auto& ZephlinkSDK_setFirewallPorts = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setFirewallPorts>;

// ---- Streaming ----
inline constexpr auto& ZephlinkSDK_getStreamingSettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getStreamingSettings>;
inline constexpr auto& ZephlinkSDK_setStreamingDomains =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setStreamingDomains>;
inline constexpr auto& ZephlinkSDK_setStreamingIPv4 = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setStreamingIPv4>;
inline constexpr auto& ZephlinkSDK_setStreamingIPv6 = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setStreamingIPv6>;
inline constexpr auto& ZephlinkSDK_setStreamingPorts =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setStreamingPorts>;

// ---- Local proxy ----
inline constexpr auto& ZephlinkSDK_getLocalProxySettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getLocalProxySettings>;
inline constexpr auto& ZephlinkSDK_setLocalProxyEnabled =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setLocalProxyEnabled>;
inline constexpr auto& ZephlinkSDK_setLocalProxyDomains =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setLocalProxyDomains>;
inline constexpr auto& ZephlinkSDK_setLocalProxyIPv4 =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setLocalProxyIPv4>;
inline constexpr auto& ZephlinkSDK_setLocalProxyIPv6 =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setLocalProxyIPv6>;
inline constexpr auto& ZephlinkSDK_setLocalProxyPorts =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setLocalProxyPorts>;
inline constexpr auto& ZephlinkSDK_setLocalProxyGlobalDomainWatchlistEnable =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setLocalProxyGlobalDomainWatchlistEnable>;
inline constexpr auto& ZephlinkSDK_setLocalProxyDomainWatchlistEnable =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setLocalProxyDomainWatchlistEnable>;

// ---- Speed tests and disconnect reason ----
inline constexpr auto& ZephlinkSDK_getSpeedTestResults =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getSpeedTestResults>;
inline constexpr auto& ZephlinkSDK_startSpeedTest = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::startSpeedTest>;
inline constexpr auto& ZephlinkSDK_startStreamTest = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::startStreamTest>;
inline constexpr auto& ZephlinkSDK_getLastDisconnectEvent =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getLastDisconnectEvent>;

// ---- Logs, reports and daemon control ----
inline constexpr auto& ZephlinkSDK_getLogSettings = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getLogSettings>;
inline constexpr auto& ZephlinkSDK_setDaemonLogSettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setDaemonLogSettings>;
inline constexpr auto& ZephlinkSDK_sendLogReport = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::sendLogReport>;
inline constexpr auto& ZephlinkSDK_eraseLogs = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::eraseLogs>;
inline constexpr auto& ZephlinkSDK_exitDaemon = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::exitDaemon>;

// ---- Safe browsing ----
inline constexpr auto& ZephlinkSDK_initSafeBrowsing = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::initSafeBrowsing>;
inline constexpr auto& ZephlinkSDK_setSafeBrowsingConfig =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setSafeBrowsingConfig>;
inline constexpr auto& ZephlinkSDK_setSafeBrowsingEnabled =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setSafeBrowsingEnabled>;
inline constexpr auto& ZephlinkSDK_setSafeBrowsingLogLevel =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setSafeBrowsingLogLevel>;
inline constexpr auto& ZephlinkSDK_setSafeBrowsingSafeNetworkOverride =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setSafeBrowsingSafeNetworkOverride>;
inline constexpr auto& ZephlinkSDK_refreshSafeBrowsingToken =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::refreshSafeBrowsingToken>;
inline constexpr auto& ZephlinkSDK_reportSafeBrowsingHomeNetwork =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::reportSafeBrowsingHomeNetwork>;
inline constexpr auto& ZephlinkSDK_getSafeBrowsing = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getSafeBrowsing>;
inline constexpr auto& ZephlinkSDK_getSafeBrowsingStats =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getSafeBrowsingStats>;
inline constexpr auto& ZephlinkSDK_listenForSafeBrowsingError =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::listenForSafeBrowsingError>;
inline constexpr auto& ZephlinkSDK_listenForSafeBrowsingBlock =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::listenForSafeBrowsingBlock>;

// ---- Network sharing ----
inline constexpr auto& ZephlinkSDK_getNetworkSharingSettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getNetworkSharingSettings>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingClientEnabled =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingClientEnabled>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingHostEnabled =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingHostEnabled>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingDisplayName =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingDisplayName>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingPairRequestBehavior =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingPairRequestBehavior>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingAutoPairBehavior =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingAutoPairBehavior>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingAlwaysOnDiscovery =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingAlwaysOnDiscovery>;
inline constexpr auto& ZephlinkSDK_getNetworkSharingDiscovery =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getNetworkSharingDiscovery>;
inline constexpr auto& ZephlinkSDK_startNetworkSharingDiscovery =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::startNetworkSharingDiscovery>;
inline constexpr auto& ZephlinkSDK_getNetworkSharesAvailable =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getNetworkSharesAvailable>;

// ---- Network sharing peers ----
inline constexpr auto& ZephlinkSDK_connectToNetworkShareViaConnectCode =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::connectToNetworkShareViaConnectCode>;
inline constexpr auto& ZephlinkSDK_reconnectToNetworkShare =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::reconnectToNetworkShare>;
inline constexpr auto& ZephlinkSDK_requestNetworkSharingPair =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::requestNetworkSharingPair>;
inline constexpr auto& ZephlinkSDK_allowNetworkSharingPair =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::allowNetworkSharingPair>;
inline constexpr auto& ZephlinkSDK_unpairNetworkSharingPeer =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::unpairNetworkSharingPeer>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingPeerAutoReconnect =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingPeerAutoReconnect>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingPeerAllowAsHost =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingPeerAllowAsHost>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingPeerAllowAsClient =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingPeerAllowAsClient>;
inline constexpr auto& ZephlinkSDK_listenForNetworkSharePeerStatusChange =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::listenForNetworkSharePeerStatusChange>;
inline constexpr auto& ZephlinkSDK_listenForNetworkSharePairRequest =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::listenForNetworkSharePairRequest>;
inline constexpr auto& ZephlinkSDK_listenForNetworkShareNewPeerAvailable =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::listenForNetworkShareNewPeerAvailable>;
