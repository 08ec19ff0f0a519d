// The words and numbers of the wire. Where output uses the same words it uses these tables; where it has words of its
// own for a value that the wire names too, both tables stand here, next to each other.
//
// A value outside a table can only come from a caller who made it up; it has a text all the same.
#pragma once

#include <cstdint>

#include "sdk/results.h"
#include "sdk/word_table.h"

namespace zephlinksdk {

/// Reads a number of the wire whose values are those of `Value`: 1 to `last` stand for themselves, all else for 0.
template <typename Value>
constexpr Value valueOfNumber(int64_t number, Value last) {
  return number >= 1 && number <= static_cast<int64_t>(last) ? static_cast<Value>(number) : static_cast<Value>(0);
}

// ---- Connecting ---------------------------------------------------------------------------------------------------

// The choice of a server has two vocabularies: what is asked for now, and what is kept as the default.

inline constexpr auto kConnectTargets = wordTable<ZephlinkSDK_ConnectMethod>(
    {
        {ZephlinkSDK_ConnectMethod_Closest, "user"},
        {ZephlinkSDK_ConnectMethod_Private, "userprivate"},
        {ZephlinkSDK_ConnectMethod_Public, "userpublic"},
        {ZephlinkSDK_ConnectMethod_Last, "last"},
        {ZephlinkSDK_ConnectMethod_P2P, "p2p"},
        {ZephlinkSDK_ConnectMethod_IgnoreLast, "ignorelast"},
    },
    "auto");
constexpr const char* connectTargetText(ZephlinkSDK_ConnectMethod value) { return kConnectTargets.text(value); }

inline constexpr auto kStoredConnectMethods = wordTable<ZephlinkSDK_ConnectMethod>(
    {
        {ZephlinkSDK_ConnectMethod_Closest, "user"},
        {ZephlinkSDK_ConnectMethod_Private, "userprivate"},
        {ZephlinkSDK_ConnectMethod_Public, "userpublic"},
        {ZephlinkSDK_ConnectMethod_P2P, "p2p"},
        {ZephlinkSDK_ConnectMethod_Country, "country"},
        {ZephlinkSDK_ConnectMethod_Exact, "exact"},
        {ZephlinkSDK_ConnectMethod_Proxy, "proxy"},
    },
    "user");
constexpr const char* storedConnectMethodText(ZephlinkSDK_ConnectMethod value) {
  return kStoredConnectMethods.text(value);
}

// ---- Account ------------------------------------------------------------------------------------------------------

inline constexpr auto kPaymentTiers = numberTable<ZephlinkSDK_PaymentType>(
    {
        {ZephlinkSDK_PaymentType_Free, 0},
        {ZephlinkSDK_PaymentType_Monthly, 1},
        {ZephlinkSDK_PaymentType_Yearly, 3},
    },
    0);

inline constexpr auto kAccountActionWire = wordTable<ZephlinkSDK_AccountAction>(
    {
        {ZephlinkSDK_AccountAction_RetryLogin, "retry"},
        {ZephlinkSDK_AccountAction_ConnectInternet, "connect_internet"},
    },
    "");

// ---- Connection settings ------------------------------------------------------------------------------------------

inline constexpr auto kBondingModeWire = wordTable<ZephlinkSDK_BondingMode>(
    {
        {ZephlinkSDK_BondingMode_Speed, "SP"},
        {ZephlinkSDK_BondingMode_Redundant, "RD"},
        {ZephlinkSDK_BondingMode_Streaming, "STR"},
    },
    "SP");
constexpr const char* bondingModeWire(ZephlinkSDK_BondingMode value) { return kBondingModeWire.text(value); }

inline constexpr auto kBondingModeWords = wordTable<ZephlinkSDK_BondingMode>(
    {
        {ZephlinkSDK_BondingMode_Speed, "speed"},
        {ZephlinkSDK_BondingMode_Redundant, "redundant"},
        {ZephlinkSDK_BondingMode_Streaming, "streaming"},
    },
    "speed");
constexpr const char* bondingModeText(ZephlinkSDK_BondingMode value) { return kBondingModeWords.text(value); }

// Proxy and Share are read in statistics only: settings neither hold nor take them.
inline constexpr auto kTransportModeWords = wordTable<ZephlinkSDK_TransportMode>(
    {
        {ZephlinkSDK_TransportMode_Tcp, "tcp"},
        {ZephlinkSDK_TransportMode_Udp, "udp"},
        {ZephlinkSDK_TransportMode_Auto, "auto"},
        {ZephlinkSDK_TransportMode_Https, "https"},
        {ZephlinkSDK_TransportMode_TcpMulti, "tcp-multi"},
        {ZephlinkSDK_TransportMode_Proxy, "proxy"},
        {ZephlinkSDK_TransportMode_Share, "share"},
    },
    "auto");
constexpr bool isTransportSetting(ZephlinkSDK_TransportMode value) {
  return value != ZephlinkSDK_TransportMode_Proxy && value != ZephlinkSDK_TransportMode_Share;
}
constexpr const char* transportModeText(ZephlinkSDK_TransportMode value) { return kTransportModeWords.text(value); }

// A request leaves the protocol out where it has no row.
inline constexpr auto kPortProtocolWords = wordTable<ZephlinkSDK_PortProtocol>(
    {
        {ZephlinkSDK_PortProtocol_Tcp, "tcp"},
        {ZephlinkSDK_PortProtocol_Udp, "udp"},
    },
    "udp");
constexpr const char* portProtocolText(ZephlinkSDK_PortProtocol value) { return kPortProtocolWords.text(value); }

// ---- Adapters -----------------------------------------------------------------------------------------------------

inline constexpr auto kConnectionPriorityNumbers = numberTable<ZephlinkSDK_ConnectionPriority>(
    {
        {ZephlinkSDK_ConnectionPriority_Always, 0},
        {ZephlinkSDK_ConnectionPriority_Secondary, 1},
        {ZephlinkSDK_ConnectionPriority_Backup, 2},
        {ZephlinkSDK_ConnectionPriority_Never, 100},
        {ZephlinkSDK_ConnectionPriority_Automatic, 200},
    },
    0);
constexpr int connectionPriorityNumber(ZephlinkSDK_ConnectionPriority value) {
  return kConnectionPriorityNumbers.text(value);
}

inline constexpr auto kConnectionPriorityWords = wordTable<ZephlinkSDK_ConnectionPriority>(
    {
        {ZephlinkSDK_ConnectionPriority_Always, "always"},
        {ZephlinkSDK_ConnectionPriority_Secondary, "secondary"},
        {ZephlinkSDK_ConnectionPriority_Backup, "backup"},
        {ZephlinkSDK_ConnectionPriority_Never, "never"},
        {ZephlinkSDK_ConnectionPriority_Automatic, "automatic"},
    },
    "always");
constexpr const char* connectionPriorityText(ZephlinkSDK_ConnectionPriority value) {
  return kConnectionPriorityWords.text(value);
}

// The wire may write these in capitals: lower a text before looking it up.
inline constexpr auto kDirectionalModeWords = wordTable<ZephlinkSDK_ConnectionDirectionalMode>(
    {
        {ZephlinkSDK_ConnectionDirectionalMode_On, "on"},
        {ZephlinkSDK_ConnectionDirectionalMode_StrictOff, "strict_off"},
        {ZephlinkSDK_ConnectionDirectionalMode_BackupOff, "backup_off"},
    },
    "on");
constexpr const char* directionalModeText(ZephlinkSDK_ConnectionDirectionalMode value) {
  return kDirectionalModeWords.text(value);
}

inline constexpr auto kAdapterTypeWords = wordTable<ZephlinkSDK_AdapterType>(
    {
        {ZephlinkSDK_AdapterType_WiFi, "Wi-Fi"},
        {ZephlinkSDK_AdapterType_Ethernet, "Ethernet"},
        {ZephlinkSDK_AdapterType_Cellular, "Cellular"},
        {ZephlinkSDK_AdapterType_Vpn, "VPN"},
        {ZephlinkSDK_AdapterType_Loopback, "Loopback"},
        {ZephlinkSDK_AdapterType_Bluetooth, "Bluetooth"},
        {ZephlinkSDK_AdapterType_NetworkShareClient, "NetworkShare Client"},
        {ZephlinkSDK_AdapterType_NetworkShareHost, "NetworkShare Host"},
        {ZephlinkSDK_AdapterType_Unknown, "Unknown"},
    },
    "Unknown");
constexpr const char* adapterTypeText(ZephlinkSDK_AdapterType value) { return kAdapterTypeWords.text(value); }

// ---- Rule lists ---------------------------------------------------------------------------------------------------

inline constexpr auto kFirewallModeWords = wordTable<ZephlinkSDK_FirewallMode>(
    {
        {ZephlinkSDK_FirewallMode_Off, "off"},
        {ZephlinkSDK_FirewallMode_AllowList, "allowlist"},
        {ZephlinkSDK_FirewallMode_DenyList, "denylist"},
    },
    "Unknown mode");
constexpr const char* firewallModeText(ZephlinkSDK_FirewallMode value) { return kFirewallModeWords.text(value); }

// The same words as the firewall's for other values.
inline constexpr auto kLocalProxyMatchModeWords = wordTable<ZephlinkSDK_LocalProxyMatchMode>(
    {
        {ZephlinkSDK_LocalProxyMatchMode_AllowList, "allowlist"},
        {ZephlinkSDK_LocalProxyMatchMode_DenyList, "denylist"},
    },
    "allowlist");

// ---- Speed tests and disconnect reason ----------------------------------------------------------------------------

inline constexpr auto kSpeedTestTypeNumbers = numberTable<ZephlinkSDK_SpeedTestType>(
    {
        {ZephlinkSDK_SpeedTestType_Speed, 1},
        {ZephlinkSDK_SpeedTestType_Streaming, 2},
    },
    1);

inline constexpr auto kDisconnectReasonWords = wordTable<ZephlinkSDK_DisconnectReason>(
    {
        {ZephlinkSDK_DisconnectReason_Unknown, "UNKNOWN"},
        {ZephlinkSDK_DisconnectReason_Connectivity, "CONNECTIVITY"},
        {ZephlinkSDK_DisconnectReason_Airplane, "AIRPLANE"},
        {ZephlinkSDK_DisconnectReason_Reboot, "REBOOT"},
        {ZephlinkSDK_DisconnectReason_Update, "UPDATE"},
        {ZephlinkSDK_DisconnectReason_Crash, "CRASH"},
        {ZephlinkSDK_DisconnectReason_Sleep, "SLEEP"},
        {ZephlinkSDK_DisconnectReason_UserInitiated, "USERINITIATED"},
        {ZephlinkSDK_DisconnectReason_Torrent, "TORRENT"},
        {ZephlinkSDK_DisconnectReason_ServiceStop, "SERVICESTOP"},
        {ZephlinkSDK_DisconnectReason_StartTimeout, "STARTTIMEOUT"},
        {ZephlinkSDK_DisconnectReason_InactiveTimeout, "INACTIVETIMEOUT"},
        {ZephlinkSDK_DisconnectReason_SettingChangeReconnect, "SETTINGCHANGERECONNECT"},
        {ZephlinkSDK_DisconnectReason_DnsTimeout, "DNSTIMEOUT"},
        {ZephlinkSDK_DisconnectReason_TunnelTimeout, "TUNNELTIMEOUT"},
        {ZephlinkSDK_DisconnectReason_OverQuota, "OVERQUOTA"},
        {ZephlinkSDK_DisconnectReason_SafeNetwork, "SAFENETWORK"},
        {ZephlinkSDK_DisconnectReason_None, "NONE"},
    },
    "UNKNOWN");
constexpr const char* disconnectReasonText(ZephlinkSDK_DisconnectReason value) {
  return kDisconnectReasonWords.text(value);
}

// ---- Daemon logs --------------------------------------------------------------------------------------------------

inline constexpr auto kDaemonLogLevelWords = wordTable<ZephlinkSDK_DaemonLogLevel>(
    {
        {ZephlinkSDK_DaemonLogLevel_Verbose, "verbose"},
        {ZephlinkSDK_DaemonLogLevel_Info, "info"},
        {ZephlinkSDK_DaemonLogLevel_Warn, "warn"},
        {ZephlinkSDK_DaemonLogLevel_Error, "error"},
    },
    "unknown");
constexpr const char* daemonLogLevelText(ZephlinkSDK_DaemonLogLevel value) { return kDaemonLogLevelWords.text(value); }

// ---- Safe browsing ------------------------------------------------------------------------------------------------

inline constexpr auto kSafeBrowsingLogLevelWords = wordTable<ZephlinkSDK_SafeBrowsingLogLevel>(
    {
        {ZephlinkSDK_SafeBrowsingLogLevel_Debug, "debug"},
        {ZephlinkSDK_SafeBrowsingLogLevel_Info, "info"},
        {ZephlinkSDK_SafeBrowsingLogLevel_Error, "error"},
        {ZephlinkSDK_SafeBrowsingLogLevel_Trace, "trace"},
        {ZephlinkSDK_SafeBrowsingLogLevel_Warning, "warning"},
    },
    "unknown");
constexpr const char* safeBrowsingLogLevelText(ZephlinkSDK_SafeBrowsingLogLevel value) {
  return kSafeBrowsingLogLevelWords.text(value);
}

inline constexpr auto kSafeBrowsingOverrideWords = wordTable<ZephlinkSDK_SafeBrowsingSafeNetworkOverride>(
    {
        {ZephlinkSDK_SafeBrowsingSafeNetworkOverride_None, "none"},
        {ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Unsafe, "unsafe"},
        {ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Safe, "safe"},
    },
    "unknown");
constexpr const char* safeBrowsingOverrideText(ZephlinkSDK_SafeBrowsingSafeNetworkOverride value) {
  return kSafeBrowsingOverrideWords.text(value);
}

// ---- Network sharing ----------------------------------------------------------------------------------------------

inline constexpr auto kPairRequestBehaviorWords = wordTable<ZephlinkSDK_NetworkSharingPairRequestBehavior>(
    {
        {ZephlinkSDK_NetworkSharingPairRequestBehavior_Ask, "ask"},
        {ZephlinkSDK_NetworkSharingPairRequestBehavior_Accept, "accept"},
        {ZephlinkSDK_NetworkSharingPairRequestBehavior_Reject, "reject"},
    },
    "ask");
constexpr const char* pairRequestBehaviorText(ZephlinkSDK_NetworkSharingPairRequestBehavior value) {
  return kPairRequestBehaviorWords.text(value);
}

inline constexpr auto kAutoPairBehaviorWords = wordTable<ZephlinkSDK_NetworkSharingAutoPairBehavior>(
    {
        {ZephlinkSDK_NetworkSharingAutoPairBehavior_Manual, "manual"},
        {ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUser, "auto_user"},
        {ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUserTeam, "auto_user_team"},
    },
    "manual");
constexpr const char* autoPairBehaviorText(ZephlinkSDK_NetworkSharingAutoPairBehavior value) {
  return kAutoPairBehaviorWords.text(value);
}

inline constexpr auto kPeerRoleWords = wordTable<ZephlinkSDK_PeerRole>(
    {
        {ZephlinkSDK_PeerRole_Client, "client"},
        {ZephlinkSDK_PeerRole_Host, "host"},
    },
    "unknown");
constexpr const char* peerRoleText(ZephlinkSDK_PeerRole value) { return kPeerRoleWords.text(value); }

}  // namespace zephlinksdk
