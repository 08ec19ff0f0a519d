// Words: what stands for the values of the enumerations in zephctl's arguments and output, both ways, and the names of
// places. C11 and C++20.
//
// `...Text` returns a constant text and never null; a value outside of the enumeration has the text of its default
// value, or one like "unknown". `...FromText` compares whole words, with upper and lower case distinct. It returns
// false and leaves its result unchanged if the text is null or is the word of no value. All are thread-safe.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "zephlinksdk/records.h"

#ifdef __cplusplus
extern "C" {
#endif

// ---- State and connecting ------------------------------------------------------------------------------------------

/// The word for a daemon's state (ZephlinkSDK_State), as in "LOGGED_IN".
const char* ZephlinkSDK_stateText(uint32_t state);
/// The value of such a word.
bool ZephlinkSDK_stateFromText(const char* text, ZephlinkSDK_State* state);

/// The word for a way of choosing a server.
const char* ZephlinkSDK_connectMethodText(ZephlinkSDK_ConnectMethod method);
/// The value of such a word.
bool ZephlinkSDK_connectMethodFromText(const char* text, ZephlinkSDK_ConnectMethod* method);

// ---- Account -------------------------------------------------------------------------------------------------------

/// The word for a way of paying.
const char* ZephlinkSDK_paymentTypeText(ZephlinkSDK_PaymentType type);
/// The value of such a word.
bool ZephlinkSDK_paymentTypeFromText(const char* text, ZephlinkSDK_PaymentType* type);

/// The word for what the account needs next.
const char* ZephlinkSDK_accountActionText(ZephlinkSDK_AccountAction action);
/// The value of such a word.
bool ZephlinkSDK_accountActionFromText(const char* text, ZephlinkSDK_AccountAction* action);

// ---- Connection settings -------------------------------------------------------------------------------------------

/// The word for a bonding mode.
const char* ZephlinkSDK_bondingModeText(ZephlinkSDK_BondingMode mode);
/// The value of such a word.
bool ZephlinkSDK_bondingModeFromText(const char* text, ZephlinkSDK_BondingMode* mode);

/// The word for a transport.
const char* ZephlinkSDK_transportModeText(ZephlinkSDK_TransportMode mode);
/// The value of such a word.
bool ZephlinkSDK_transportModeFromText(const char* text, ZephlinkSDK_TransportMode* mode);

/// Whether a transport can be set: Proxy and Share occur in statistics only.
bool ZephlinkSDK_isTransportSetting(ZephlinkSDK_TransportMode mode);

/// The word for the protocol of a port rule.
const char* ZephlinkSDK_portProtocolText(ZephlinkSDK_PortProtocol protocol);
/// The value of such a word.
bool ZephlinkSDK_portProtocolFromText(const char* text, ZephlinkSDK_PortProtocol* protocol);

// ---- Adapters ------------------------------------------------------------------------------------------------------

/// The word for the state of an adapter's connection.
const char* ZephlinkSDK_adapterStateText(ZephlinkSDK_AdapterState state);
/// The value of such a word.
bool ZephlinkSDK_adapterStateFromText(const char* text, ZephlinkSDK_AdapterState* state);

/// The word for the kind of an adapter, as in "Wi-Fi".
const char* ZephlinkSDK_adapterTypeText(ZephlinkSDK_AdapterType type);
/// The value of such a word.
bool ZephlinkSDK_adapterTypeFromText(const char* text, ZephlinkSDK_AdapterType* type);

/// The word for the priority of an adapter.
const char* ZephlinkSDK_connectionPriorityText(ZephlinkSDK_ConnectionPriority priority);
/// The value of such a word.
bool ZephlinkSDK_connectionPriorityFromText(const char* text, ZephlinkSDK_ConnectionPriority* priority);

/// The word for whether an adapter carries one direction of the traffic.
const char* ZephlinkSDK_directionalModeText(ZephlinkSDK_ConnectionDirectionalMode mode);
/// The value of such a word.
bool ZephlinkSDK_directionalModeFromText(const char* text, ZephlinkSDK_ConnectionDirectionalMode* mode);

// ---- Statistics ----------------------------------------------------------------------------------------------------

/// The word for the health of a stream.
const char* ZephlinkSDK_streamHealthText(ZephlinkSDK_StreamHealth health);
/// The value of such a word.
bool ZephlinkSDK_streamHealthFromText(const char* text, ZephlinkSDK_StreamHealth* health);

/// The word for a period of session statistics (ZephlinkSDK_Period); empty for any other number of hours.
const char* ZephlinkSDK_periodText(uint32_t hours);
/// The value of such a word.
bool ZephlinkSDK_periodFromText(const char* text, uint32_t* hours);

// ---- Rule lists ----------------------------------------------------------------------------------------------------

/// The word for the firewall's mode.
const char* ZephlinkSDK_firewallModeText(ZephlinkSDK_FirewallMode mode);
/// The value of such a word.
bool ZephlinkSDK_firewallModeFromText(const char* text, ZephlinkSDK_FirewallMode* mode);

/// The word for the meaning of the local proxy's rules.
const char* ZephlinkSDK_localProxyMatchModeText(ZephlinkSDK_LocalProxyMatchMode mode);
/// The value of such a word.
bool ZephlinkSDK_localProxyMatchModeFromText(const char* text, ZephlinkSDK_LocalProxyMatchMode* mode);

// ---- Speed tests, disconnect reason and logs -----------------------------------------------------------------------

/// The word for the kind of a test run.
const char* ZephlinkSDK_speedTestTypeText(ZephlinkSDK_SpeedTestType type);
/// The value of such a word.
bool ZephlinkSDK_speedTestTypeFromText(const char* text, ZephlinkSDK_SpeedTestType* type);

/// The word for why a session ended.
const char* ZephlinkSDK_disconnectReasonText(ZephlinkSDK_DisconnectReason reason);
/// The value of such a word.
bool ZephlinkSDK_disconnectReasonFromText(const char* text, ZephlinkSDK_DisconnectReason* reason);

/// The word for a log level of the daemon.
const char* ZephlinkSDK_daemonLogLevelText(ZephlinkSDK_DaemonLogLevel level);
/// The value of such a word.
bool ZephlinkSDK_daemonLogLevelFromText(const char* text, ZephlinkSDK_DaemonLogLevel* level);

// ---- Safe browsing -------------------------------------------------------------------------------------------------

/// The word for a log level of the safe-browsing service.
const char* ZephlinkSDK_safeBrowsingLogLevelText(ZephlinkSDK_SafeBrowsingLogLevel level);
/// The value of such a word.
bool ZephlinkSDK_safeBrowsingLogLevelFromText(const char* text, ZephlinkSDK_SafeBrowsingLogLevel* level);

/// The word for how the current network is treated.
const char* ZephlinkSDK_safeBrowsingOverrideText(ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride);
/// The value of such a word.
bool ZephlinkSDK_safeBrowsingOverrideFromText(const char* text,
                                              ZephlinkSDK_SafeBrowsingSafeNetworkOverride* networkOverride);

// ---- Network sharing -----------------------------------------------------------------------------------------------

/// The word for the answer to a peer that asks to pair.
const char* ZephlinkSDK_pairRequestBehaviorText(ZephlinkSDK_NetworkSharingPairRequestBehavior behavior);
/// The value of such a word.
bool ZephlinkSDK_pairRequestBehaviorFromText(const char* text, ZephlinkSDK_NetworkSharingPairRequestBehavior* behavior);

/// The word for which peers are paired automatically.
const char* ZephlinkSDK_autoPairBehaviorText(ZephlinkSDK_NetworkSharingAutoPairBehavior behavior);
/// The value of such a word.
bool ZephlinkSDK_autoPairBehaviorFromText(const char* text, ZephlinkSDK_NetworkSharingAutoPairBehavior* behavior);

/// The word for the role of a peer.
const char* ZephlinkSDK_peerRoleText(ZephlinkSDK_PeerRole role);
/// The value of such a word.
bool ZephlinkSDK_peerRoleFromText(const char* text, ZephlinkSDK_PeerRole* role);

/// The word for the status of a peer.
const char* ZephlinkSDK_peerStatusText(ZephlinkSDK_PeerStatus status);
/// The value of such a word.
bool ZephlinkSDK_peerStatusFromText(const char* text, ZephlinkSDK_PeerStatus* status);

/// The word for the status of the tunnel to a peer.
const char* ZephlinkSDK_peerTunnelStatusText(ZephlinkSDK_PeerTunnelStatus status);
/// The value of such a word.
bool ZephlinkSDK_peerTunnelStatusFromText(const char* text, ZephlinkSDK_PeerTunnelStatus* status);

// ---- Names of places -----------------------------------------------------------------------------------------------

// Each writes a name in English into `buffer`, cut to whole UTF-8 characters within `size` bytes and always terminated,
// and returns the length of the whole name in bytes. A null buffer or a size of 0 writes nothing. Null is an empty key.

/// The country of a two-letter code; empty for an empty code, "proxy" for "proxy", "{{LOCATION.COUNTRY.xy}}" for an
/// unknown code.
size_t ZephlinkSDK_countryName(const char* code, char* buffer, size_t size);

/// The city of a key of the directory; empty for an empty key, "{{LOCATION.CITY.key}}" for an unknown key.
size_t ZephlinkSDK_cityName(const char* city, char* buffer, size_t size);

/// "Country - City #7": without a city or a number above 0 their parts are omitted. Empty for null.
size_t ZephlinkSDK_serverName(const ZephlinkSDK_ServerInfo* server, char* buffer, size_t size);

#ifdef __cplusplus
}
#endif
