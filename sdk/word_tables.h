// All tables of words and numbers: for the wire, for arguments and for output. If the wire and the output differ for a
// value, their tables are next to each other; otherwise one table serves both.
//
// Values that are not in a table, which only casts by a caller can produce, have a text too.
#pragma once

#include <cstdint>

#include "base/word_table.h"
#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Reads a number whose wire values equal those of `Value`. Numbers other than 1 to `last` read as 0.
template <typename Value>
constexpr Value valueOfNumber(int64_t number, Value last) {
  return number >= 1 && number <= static_cast<int64_t>(last) ? static_cast<Value>(number) : static_cast<Value>(0);
}

// ---- State ---------------------------------------------------------------------------------------------------------

// Numbers on the wire.
inline constexpr auto kStateWords = wordTable<uint32_t>(
    {
        {ZephlinkSDK_State_LoggedOut, "LOGGED_OUT"},
        {ZephlinkSDK_State_LoggingIn, "LOGGING_IN"},
        {ZephlinkSDK_State_LoggedIn, "LOGGED_IN"},
        {ZephlinkSDK_State_AutoConnecting, "AUTO_CONNECTING"},
        {ZephlinkSDK_State_Connecting, "CONNECTING"},
        {ZephlinkSDK_State_Disconnecting, "DISCONNECTING"},
        {ZephlinkSDK_State_Connected, "CONNECTED"},
        {ZephlinkSDK_State_OverLimit, "OVERLIMIT"},
    },
    "UNKNOWN");

// ---- Connecting ----------------------------------------------------------------------------------------------------

// Two tables: the daemon uses different words for connecting now and for the stored default.

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

// For output and arguments.
inline constexpr auto kConnectMethodWords = wordTable<ZephlinkSDK_ConnectMethod>(
    {
        {ZephlinkSDK_ConnectMethod_Closest, "closest"},
        {ZephlinkSDK_ConnectMethod_Private, "private"},
        {ZephlinkSDK_ConnectMethod_Public, "public"},
        {ZephlinkSDK_ConnectMethod_Last, "last"},
        {ZephlinkSDK_ConnectMethod_P2P, "p2p"},
        {ZephlinkSDK_ConnectMethod_Auto, "auto"},
        {ZephlinkSDK_ConnectMethod_Country, "country"},
        {ZephlinkSDK_ConnectMethod_Exact, "exact"},
        {ZephlinkSDK_ConnectMethod_Proxy, "proxy"},
        {ZephlinkSDK_ConnectMethod_IgnoreLast, "ignorelast"},
    },
    "unknown");

// ---- Account -------------------------------------------------------------------------------------------------------

inline constexpr auto kPaymentTiers = numberTable<ZephlinkSDK_PaymentType>(
    {
        {ZephlinkSDK_PaymentType_Free, 0},
        {ZephlinkSDK_PaymentType_Monthly, 1},
        {ZephlinkSDK_PaymentType_Yearly, 3},
    },
    0);

inline constexpr auto kPaymentTypeWords = wordTable<ZephlinkSDK_PaymentType>(
    {
        {ZephlinkSDK_PaymentType_Free, "free"},
        {ZephlinkSDK_PaymentType_Monthly, "monthly"},
        {ZephlinkSDK_PaymentType_Yearly, "yearly"},
    },
    "Unknown payment type");

inline constexpr auto kAccountActionWire = wordTable<ZephlinkSDK_AccountAction>(
    {
        {ZephlinkSDK_AccountAction_RetryLogin, "retry"},
        {ZephlinkSDK_AccountAction_ConnectInternet, "connect_internet"},
    },
    "");

inline constexpr auto kAccountActionWords = wordTable<ZephlinkSDK_AccountAction>(
    {
        {ZephlinkSDK_AccountAction_None, "none"},
        {ZephlinkSDK_AccountAction_RetryLogin, "retry login"},
        {ZephlinkSDK_AccountAction_ConnectInternet, "connect to internet and retry login"},
    },
    "Unknown action");

// ---- Connection settings -------------------------------------------------------------------------------------------

inline constexpr auto kBondingModeWire = wordTable<ZephlinkSDK_BondingMode>(
    {
        {ZephlinkSDK_BondingMode_Speed, "SP"},
        {ZephlinkSDK_BondingMode_Redundant, "RD"},
        {ZephlinkSDK_BondingMode_Streaming, "STR"},
    },
    "SP");

inline constexpr auto kBondingModeWords = wordTable<ZephlinkSDK_BondingMode>(
    {
        {ZephlinkSDK_BondingMode_Speed, "speed"},
        {ZephlinkSDK_BondingMode_Redundant, "redundant"},
        {ZephlinkSDK_BondingMode_Streaming, "streaming"},
    },
    "speed");

// Proxy and Share are read in statistics only: settings neither report nor accept them.
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

// A request omits the protocol of a value without a row.
inline constexpr auto kPortProtocolWords = wordTable<ZephlinkSDK_PortProtocol>(
    {
        {ZephlinkSDK_PortProtocol_Tcp, "tcp"},
        {ZephlinkSDK_PortProtocol_Udp, "udp"},
    },
    "udp");

// ---- Adapters ------------------------------------------------------------------------------------------------------

// Numbers on the wire.
inline constexpr auto kAdapterStateWords = wordTable<ZephlinkSDK_AdapterState>(
    {
        {ZephlinkSDK_AdapterState_Disconnected, "disconnected"},
        {ZephlinkSDK_AdapterState_Connecting, "connecting"},
        {ZephlinkSDK_AdapterState_Connected, "connected"},
    },
    "disconnected");

inline constexpr auto kConnectionPriorityNumbers = numberTable<ZephlinkSDK_ConnectionPriority>(
    {
        {ZephlinkSDK_ConnectionPriority_Always, 0},
        {ZephlinkSDK_ConnectionPriority_Secondary, 1},
        {ZephlinkSDK_ConnectionPriority_Backup, 2},
        {ZephlinkSDK_ConnectionPriority_Never, 100},
        {ZephlinkSDK_ConnectionPriority_Automatic, 200},
    },
    0);

inline constexpr auto kConnectionPriorityWords = wordTable<ZephlinkSDK_ConnectionPriority>(
    {
        {ZephlinkSDK_ConnectionPriority_Always, "always"},
        {ZephlinkSDK_ConnectionPriority_Secondary, "secondary"},
        {ZephlinkSDK_ConnectionPriority_Backup, "backup"},
        {ZephlinkSDK_ConnectionPriority_Never, "never"},
        {ZephlinkSDK_ConnectionPriority_Automatic, "automatic"},
    },
    "always");

// The daemon may send these in upper case: convert a text to lower case before the lookup.
inline constexpr auto kDirectionalModeWords = wordTable<ZephlinkSDK_ConnectionDirectionalMode>(
    {
        {ZephlinkSDK_ConnectionDirectionalMode_On, "on"},
        {ZephlinkSDK_ConnectionDirectionalMode_StrictOff, "strict_off"},
        {ZephlinkSDK_ConnectionDirectionalMode_BackupOff, "backup_off"},
    },
    "on");

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

// ---- Statistics ----------------------------------------------------------------------------------------------------

// Numbers on the wire.
inline constexpr auto kStreamHealthWords = wordTable<ZephlinkSDK_StreamHealth>(
    {
        {ZephlinkSDK_StreamHealth_Stopped, "stopped"},
        {ZephlinkSDK_StreamHealth_Poor, "poor"},
        {ZephlinkSDK_StreamHealth_Good, "good"},
    },
    "stopped");

// A period without a name has an empty text: the output then shows its number of hours.
inline constexpr auto kPeriodWords = wordTable<uint32_t>(
    {
        {ZephlinkSDK_Period_Current, "current"},
        {ZephlinkSDK_Period_Day, "day"},
        {ZephlinkSDK_Period_Week, "week"},
        {ZephlinkSDK_Period_Month, "month"},
        {ZephlinkSDK_Period_Total, "total"},
    },
    "");

// ---- Rule lists ----------------------------------------------------------------------------------------------------

inline constexpr auto kFirewallModeWords = wordTable<ZephlinkSDK_FirewallMode>(
    {
        {ZephlinkSDK_FirewallMode_Off, "off"},
        {ZephlinkSDK_FirewallMode_AllowList, "allowlist"},
        {ZephlinkSDK_FirewallMode_DenyList, "denylist"},
    },
    "Unknown mode");

// The firewall's words, with different values.
inline constexpr auto kLocalProxyMatchModeWords = wordTable<ZephlinkSDK_LocalProxyMatchMode>(
    {
        {ZephlinkSDK_LocalProxyMatchMode_AllowList, "allowlist"},
        {ZephlinkSDK_LocalProxyMatchMode_DenyList, "denylist"},
    },
    "allowlist");

// ---- Speed tests and disconnect reason -----------------------------------------------------------------------------

inline constexpr auto kSpeedTestTypeNumbers = numberTable<ZephlinkSDK_SpeedTestType>(
    {
        {ZephlinkSDK_SpeedTestType_Speed, 1},
        {ZephlinkSDK_SpeedTestType_Streaming, 2},
    },
    1);

inline constexpr auto kSpeedTestTypeWords = wordTable<ZephlinkSDK_SpeedTestType>(
    {
        {ZephlinkSDK_SpeedTestType_Speed, "speed"},
        {ZephlinkSDK_SpeedTestType_Streaming, "streaming"},
    },
    "speed");

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

// ---- Daemon logs ---------------------------------------------------------------------------------------------------

inline constexpr auto kDaemonLogLevelWords = wordTable<ZephlinkSDK_DaemonLogLevel>(
    {
        {ZephlinkSDK_DaemonLogLevel_Verbose, "verbose"},
        {ZephlinkSDK_DaemonLogLevel_Info, "info"},
        {ZephlinkSDK_DaemonLogLevel_Warn, "warn"},
        {ZephlinkSDK_DaemonLogLevel_Error, "error"},
    },
    "unknown");

// ---- Safe browsing -------------------------------------------------------------------------------------------------

inline constexpr auto kSafeBrowsingLogLevelWords = wordTable<ZephlinkSDK_SafeBrowsingLogLevel>(
    {
        {ZephlinkSDK_SafeBrowsingLogLevel_Debug, "debug"},
        {ZephlinkSDK_SafeBrowsingLogLevel_Info, "info"},
        {ZephlinkSDK_SafeBrowsingLogLevel_Error, "error"},
        {ZephlinkSDK_SafeBrowsingLogLevel_Trace, "trace"},
        {ZephlinkSDK_SafeBrowsingLogLevel_Warning, "warning"},
    },
    "unknown");

inline constexpr auto kSafeBrowsingOverrideWords = wordTable<ZephlinkSDK_SafeBrowsingSafeNetworkOverride>(
    {
        {ZephlinkSDK_SafeBrowsingSafeNetworkOverride_None, "none"},
        {ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Unsafe, "unsafe"},
        {ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Safe, "safe"},
    },
    "unknown");

// ---- Network sharing -----------------------------------------------------------------------------------------------

inline constexpr auto kPairRequestBehaviorWords = wordTable<ZephlinkSDK_NetworkSharingPairRequestBehavior>(
    {
        {ZephlinkSDK_NetworkSharingPairRequestBehavior_Ask, "ask"},
        {ZephlinkSDK_NetworkSharingPairRequestBehavior_Accept, "accept"},
        {ZephlinkSDK_NetworkSharingPairRequestBehavior_Reject, "reject"},
    },
    "ask");

inline constexpr auto kAutoPairBehaviorWords = wordTable<ZephlinkSDK_NetworkSharingAutoPairBehavior>(
    {
        {ZephlinkSDK_NetworkSharingAutoPairBehavior_Manual, "manual"},
        {ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUser, "auto_user"},
        {ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUserTeam, "auto_user_team"},
    },
    "manual");

inline constexpr auto kPeerRoleWords = wordTable<ZephlinkSDK_PeerRole>(
    {
        {ZephlinkSDK_PeerRole_Client, "client"},
        {ZephlinkSDK_PeerRole_Host, "host"},
    },
    "unknown");

// The next two are numbers on the wire.
inline constexpr auto kPeerStatusWords = wordTable<ZephlinkSDK_PeerStatus>(
    {
        {ZephlinkSDK_PeerStatus_Disconnected, "disconnected"},
        {ZephlinkSDK_PeerStatus_Unauthenticated, "unauthenticated"},
        {ZephlinkSDK_PeerStatus_Authenticated, "authenticated"},
    },
    "disconnected");

inline constexpr auto kPeerTunnelStatusWords = wordTable<ZephlinkSDK_PeerTunnelStatus>(
    {
        {ZephlinkSDK_PeerTunnelStatus_Inactive, "inactive"},
        {ZephlinkSDK_PeerTunnelStatus_Active, "active"},
        {ZephlinkSDK_PeerTunnelStatus_DisabledOnClient, "disabled on client"},
        {ZephlinkSDK_PeerTunnelStatus_DisabledOnHost, "disabled on host"},
        {ZephlinkSDK_PeerTunnelStatus_NoNetworks, "no networks available"},
        {ZephlinkSDK_PeerTunnelStatus_Error, "tunnel error"},
        {ZephlinkSDK_PeerTunnelStatus_NotAuthenticated, "not authenticated"},
        {ZephlinkSDK_PeerTunnelStatus_NetworksOverLimit, "networks over limit"},
        {ZephlinkSDK_PeerTunnelStatus_HostNotConnected, "host's VPN not connected"},
        {ZephlinkSDK_PeerTunnelStatus_Paused, "paused"},
    },
    "tunnel error");

}  // namespace zephlinksdk
