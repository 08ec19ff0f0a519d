// Words: the texts that zephctl uses for the values of the enumerations in its arguments and output, converted both
// ways, and the names of places. C11 and C++20.
//
// `...Text` returns a constant text, never null. A value outside the enumeration has the text of the enumeration's
// default value, or a text like "unknown". `...FromText` compares whole words and is case-sensitive. It returns false
// and does not change its result if the text is null or not a word of the enumeration. All functions are thread-safe.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "zephlinksdk/records.h"

#ifdef __cplusplus
extern "C" {
#endif

// ---- State and connecting ------------------------------------------------------------------------------------------

/// Returns the word for a daemon's state (ZephlinkSDK_State), for example "LOGGED_IN".
const char* ZephlinkSDK_stateText(uint32_t state);
/// Finds the value of the word `text`.
bool ZephlinkSDK_stateFromText(const char* text, ZephlinkSDK_State* state);

/// Returns the word for a way of choosing a server.
const char* ZephlinkSDK_connectMethodText(ZephlinkSDK_ConnectMethod method);
/// Finds the value of the word `text`.
bool ZephlinkSDK_connectMethodFromText(const char* text, ZephlinkSDK_ConnectMethod* method);

// ---- Account -------------------------------------------------------------------------------------------------------

/// Returns the word for a way of paying.
const char* ZephlinkSDK_paymentTypeText(ZephlinkSDK_PaymentType type);
/// Finds the value of the word `text`.
bool ZephlinkSDK_paymentTypeFromText(const char* text, ZephlinkSDK_PaymentType* type);

/// Returns the word for the action that the account needs next.
const char* ZephlinkSDK_accountActionText(ZephlinkSDK_AccountAction action);
/// Finds the value of the word `text`.
bool ZephlinkSDK_accountActionFromText(const char* text, ZephlinkSDK_AccountAction* action);

// ---- Connection settings -------------------------------------------------------------------------------------------

/// Returns the word for a bonding mode.
const char* ZephlinkSDK_bondingModeText(ZephlinkSDK_BondingMode mode);
/// Finds the value of the word `text`.
bool ZephlinkSDK_bondingModeFromText(const char* text, ZephlinkSDK_BondingMode* mode);

/// Returns the word for a transport.
const char* ZephlinkSDK_transportModeText(ZephlinkSDK_TransportMode mode);
/// Finds the value of the word `text`.
bool ZephlinkSDK_transportModeFromText(const char* text, ZephlinkSDK_TransportMode* mode);

/// Returns whether a transport can be set: Proxy and Share occur in statistics only.
bool ZephlinkSDK_isTransportSetting(ZephlinkSDK_TransportMode mode);

/// Returns the word for the protocol of a port rule.
const char* ZephlinkSDK_portProtocolText(ZephlinkSDK_PortProtocol protocol);
/// Finds the value of the word `text`.
bool ZephlinkSDK_portProtocolFromText(const char* text, ZephlinkSDK_PortProtocol* protocol);

// ---- Adapters ------------------------------------------------------------------------------------------------------

/// Returns the word for the state of an adapter's connection.
const char* ZephlinkSDK_adapterStateText(ZephlinkSDK_AdapterState state);
/// Finds the value of the word `text`.
bool ZephlinkSDK_adapterStateFromText(const char* text, ZephlinkSDK_AdapterState* state);

/// Returns the word for the type of an adapter, for example "Wi-Fi".
const char* ZephlinkSDK_adapterTypeText(ZephlinkSDK_AdapterType type);
/// Finds the value of the word `text`.
bool ZephlinkSDK_adapterTypeFromText(const char* text, ZephlinkSDK_AdapterType* type);

/// Returns the word for the priority of an adapter.
const char* ZephlinkSDK_connectionPriorityText(ZephlinkSDK_ConnectionPriority priority);
/// Finds the value of the word `text`.
bool ZephlinkSDK_connectionPriorityFromText(const char* text, ZephlinkSDK_ConnectionPriority* priority);

/// Returns the word for whether an adapter carries one direction of the traffic.
const char* ZephlinkSDK_directionalModeText(ZephlinkSDK_ConnectionDirectionalMode mode);
/// Finds the value of the word `text`.
bool ZephlinkSDK_directionalModeFromText(const char* text, ZephlinkSDK_ConnectionDirectionalMode* mode);

// ---- Statistics ----------------------------------------------------------------------------------------------------

/// Returns the word for the health of a stream.
const char* ZephlinkSDK_streamHealthText(ZephlinkSDK_StreamHealth health);
/// Finds the value of the word `text`.
bool ZephlinkSDK_streamHealthFromText(const char* text, ZephlinkSDK_StreamHealth* health);

/// Returns the word for a period of session statistics (ZephlinkSDK_Period); empty for any other number of hours.
const char* ZephlinkSDK_periodText(uint32_t hours);
/// Finds the value of the word `text`.
bool ZephlinkSDK_periodFromText(const char* text, uint32_t* hours);

// ---- Rule lists ----------------------------------------------------------------------------------------------------

/// Returns the word for the firewall's mode.
const char* ZephlinkSDK_firewallModeText(ZephlinkSDK_FirewallMode mode);
/// Finds the value of the word `text`.
bool ZephlinkSDK_firewallModeFromText(const char* text, ZephlinkSDK_FirewallMode* mode);

/// Returns the word for the meaning of the local proxy's rules.
const char* ZephlinkSDK_localProxyMatchModeText(ZephlinkSDK_LocalProxyMatchMode mode);
/// Finds the value of the word `text`.
bool ZephlinkSDK_localProxyMatchModeFromText(const char* text, ZephlinkSDK_LocalProxyMatchMode* mode);

// ---- Speed tests, disconnect reason and logs -----------------------------------------------------------------------

/// Returns the word for the kind of a test run.
const char* ZephlinkSDK_speedTestTypeText(ZephlinkSDK_SpeedTestType type);
/// Finds the value of the word `text`.
bool ZephlinkSDK_speedTestTypeFromText(const char* text, ZephlinkSDK_SpeedTestType* type);

/// Returns the word for why a session ended.
const char* ZephlinkSDK_disconnectReasonText(ZephlinkSDK_DisconnectReason reason);
/// Finds the value of the word `text`.
bool ZephlinkSDK_disconnectReasonFromText(const char* text, ZephlinkSDK_DisconnectReason* reason);

/// Returns the word for a log level of the daemon.
const char* ZephlinkSDK_daemonLogLevelText(ZephlinkSDK_DaemonLogLevel level);
/// Finds the value of the word `text`.
bool ZephlinkSDK_daemonLogLevelFromText(const char* text, ZephlinkSDK_DaemonLogLevel* level);

// ---- Safe browsing -------------------------------------------------------------------------------------------------

/// Returns the word for a log level of the safe-browsing service.
const char* ZephlinkSDK_safeBrowsingLogLevelText(ZephlinkSDK_SafeBrowsingLogLevel level);
/// Finds the value of the word `text`.
bool ZephlinkSDK_safeBrowsingLogLevelFromText(const char* text, ZephlinkSDK_SafeBrowsingLogLevel* level);

/// Returns the word for how the current network is treated.
const char* ZephlinkSDK_safeBrowsingOverrideText(ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride);
/// Finds the value of the word `text`.
bool ZephlinkSDK_safeBrowsingOverrideFromText(const char* text,
                                              ZephlinkSDK_SafeBrowsingSafeNetworkOverride* networkOverride);

// ---- Network sharing -----------------------------------------------------------------------------------------------

/// Returns the word for the answer to a peer that asks to pair.
const char* ZephlinkSDK_pairRequestBehaviorText(ZephlinkSDK_NetworkSharingPairRequestBehavior behavior);
/// Finds the value of the word `text`.
bool ZephlinkSDK_pairRequestBehaviorFromText(const char* text, ZephlinkSDK_NetworkSharingPairRequestBehavior* behavior);

/// Returns the word for which peers are paired automatically.
const char* ZephlinkSDK_autoPairBehaviorText(ZephlinkSDK_NetworkSharingAutoPairBehavior behavior);
/// Finds the value of the word `text`.
bool ZephlinkSDK_autoPairBehaviorFromText(const char* text, ZephlinkSDK_NetworkSharingAutoPairBehavior* behavior);

/// Returns the word for the role of a peer.
const char* ZephlinkSDK_peerRoleText(ZephlinkSDK_PeerRole role);
/// Finds the value of the word `text`.
bool ZephlinkSDK_peerRoleFromText(const char* text, ZephlinkSDK_PeerRole* role);

/// Returns the word for the status of a peer.
const char* ZephlinkSDK_peerStatusText(ZephlinkSDK_PeerStatus status);
/// Finds the value of the word `text`.
bool ZephlinkSDK_peerStatusFromText(const char* text, ZephlinkSDK_PeerStatus* status);

/// Returns the word for the status of the tunnel to a peer.
const char* ZephlinkSDK_peerTunnelStatusText(ZephlinkSDK_PeerTunnelStatus status);
/// Finds the value of the word `text`.
bool ZephlinkSDK_peerTunnelStatusFromText(const char* text, ZephlinkSDK_PeerTunnelStatus* status);

// ---- Names of places -----------------------------------------------------------------------------------------------

// Each function writes an English name into `buffer`, cut to whole UTF-8 characters within `size` bytes and always
// terminated, and returns the length of the whole name in bytes. If `buffer` is null or `size` is 0, nothing is
// written. A null key counts as an empty key.

/// Writes the name of the country with a two-letter code: empty for an empty code, "proxy" for "proxy",
/// "{{LOCATION.COUNTRY.xy}}" for an unknown code.
size_t ZephlinkSDK_countryName(const char* code, char* buffer, size_t size);

/// Writes the name of the city with a key of the directory: empty for an empty key, "{{LOCATION.CITY.key}}" for an
/// unknown key.
size_t ZephlinkSDK_cityName(const char* city, char* buffer, size_t size);

/// Writes "Country - City #7"; omits the city if it is empty and the number unless it is above 0. Empty for null.
size_t ZephlinkSDK_serverName(const ZephlinkSDK_ServerInfo* server, char* buffer, size_t size);

#ifdef __cplusplus
}
#endif
