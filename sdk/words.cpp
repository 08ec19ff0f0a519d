// The public word functions, implemented with the word tables.
#include "zephlinksdk/words.h"

#include <exception>
#include <string>

#include "base/text.h"
#include "sdk/location_names.h"
#include "sdk/word_tables.h"

namespace {

template <class Table, class Value>
bool fromText(const Table& table, const char* text, Value* value) {
  if (text == nullptr || value == nullptr) return false;
  const auto known = table.find(text);
  if (known) *value = static_cast<Value>(*known);
  return known.has_value();
}

const char* textOrEmpty(const char* text) { return text != nullptr ? text : ""; }

/// Copies the text that `make` returns into `buffer`. Returns its full length.
template <class Make>
size_t copyName(char* buffer, size_t size, Make make) {
  try {
    const std::string text = make();
    zephlinksdk::copyText(buffer, size, text);
    return text.size();
  } catch (const std::exception&) {
    zephlinksdk::copyText(buffer, size, {});
    return SIZE_MAX;
  }
}

}  // namespace

using namespace zephlinksdk;

// ---- State and connecting ------------------------------------------------------------------------------------------

const char* ZephlinkSDK_stateText(uint32_t state) { return kStateWords.text(state); }

bool ZephlinkSDK_stateFromText(const char* text, ZephlinkSDK_State* state) {
  return fromText(kStateWords, text, state);
}

const char* ZephlinkSDK_connectMethodText(ZephlinkSDK_ConnectMethod method) { return kConnectMethodWords.text(method); }

bool ZephlinkSDK_connectMethodFromText(const char* text, ZephlinkSDK_ConnectMethod* method) {
  return fromText(kConnectMethodWords, text, method);
}

// ---- Account -------------------------------------------------------------------------------------------------------

const char* ZephlinkSDK_paymentTypeText(ZephlinkSDK_PaymentType type) { return kPaymentTypeWords.text(type); }

bool ZephlinkSDK_paymentTypeFromText(const char* text, ZephlinkSDK_PaymentType* type) {
  return fromText(kPaymentTypeWords, text, type);
}

const char* ZephlinkSDK_accountActionText(ZephlinkSDK_AccountAction action) { return kAccountActionWords.text(action); }

bool ZephlinkSDK_accountActionFromText(const char* text, ZephlinkSDK_AccountAction* action) {
  return fromText(kAccountActionWords, text, action);
}

// ---- Connection settings -------------------------------------------------------------------------------------------

const char* ZephlinkSDK_bondingModeText(ZephlinkSDK_BondingMode mode) { return kBondingModeWords.text(mode); }

bool ZephlinkSDK_bondingModeFromText(const char* text, ZephlinkSDK_BondingMode* mode) {
  return fromText(kBondingModeWords, text, mode);
}

const char* ZephlinkSDK_transportModeText(ZephlinkSDK_TransportMode mode) { return kTransportModeWords.text(mode); }

bool ZephlinkSDK_transportModeFromText(const char* text, ZephlinkSDK_TransportMode* mode) {
  return fromText(kTransportModeWords, text, mode);
}

bool ZephlinkSDK_isTransportSetting(ZephlinkSDK_TransportMode mode) { return isTransportSetting(mode); }

const char* ZephlinkSDK_portProtocolText(ZephlinkSDK_PortProtocol protocol) {
  return kPortProtocolWords.text(protocol);
}

bool ZephlinkSDK_portProtocolFromText(const char* text, ZephlinkSDK_PortProtocol* protocol) {
  return fromText(kPortProtocolWords, text, protocol);
}

// ---- Adapters ------------------------------------------------------------------------------------------------------

const char* ZephlinkSDK_adapterStateText(ZephlinkSDK_AdapterState state) { return kAdapterStateWords.text(state); }

bool ZephlinkSDK_adapterStateFromText(const char* text, ZephlinkSDK_AdapterState* state) {
  return fromText(kAdapterStateWords, text, state);
}

const char* ZephlinkSDK_adapterTypeText(ZephlinkSDK_AdapterType type) { return kAdapterTypeWords.text(type); }

bool ZephlinkSDK_adapterTypeFromText(const char* text, ZephlinkSDK_AdapterType* type) {
  return fromText(kAdapterTypeWords, text, type);
}

const char* ZephlinkSDK_connectionPriorityText(ZephlinkSDK_ConnectionPriority priority) {
  return kConnectionPriorityWords.text(priority);
}

bool ZephlinkSDK_connectionPriorityFromText(const char* text, ZephlinkSDK_ConnectionPriority* priority) {
  return fromText(kConnectionPriorityWords, text, priority);
}

const char* ZephlinkSDK_directionalModeText(ZephlinkSDK_ConnectionDirectionalMode mode) {
  return kDirectionalModeWords.text(mode);
}

bool ZephlinkSDK_directionalModeFromText(const char* text, ZephlinkSDK_ConnectionDirectionalMode* mode) {
  return fromText(kDirectionalModeWords, text, mode);
}

// ---- Statistics ----------------------------------------------------------------------------------------------------

const char* ZephlinkSDK_streamHealthText(ZephlinkSDK_StreamHealth health) { return kStreamHealthWords.text(health); }

bool ZephlinkSDK_streamHealthFromText(const char* text, ZephlinkSDK_StreamHealth* health) {
  return fromText(kStreamHealthWords, text, health);
}

const char* ZephlinkSDK_periodText(uint32_t hours) { return kPeriodWords.text(hours); }

bool ZephlinkSDK_periodFromText(const char* text, uint32_t* hours) { return fromText(kPeriodWords, text, hours); }

// ---- Rule lists ----------------------------------------------------------------------------------------------------

const char* ZephlinkSDK_firewallModeText(ZephlinkSDK_FirewallMode mode) { return kFirewallModeWords.text(mode); }

bool ZephlinkSDK_firewallModeFromText(const char* text, ZephlinkSDK_FirewallMode* mode) {
  return fromText(kFirewallModeWords, text, mode);
}

const char* ZephlinkSDK_localProxyMatchModeText(ZephlinkSDK_LocalProxyMatchMode mode) {
  return kLocalProxyMatchModeWords.text(mode);
}

bool ZephlinkSDK_localProxyMatchModeFromText(const char* text, ZephlinkSDK_LocalProxyMatchMode* mode) {
  return fromText(kLocalProxyMatchModeWords, text, mode);
}

// ---- Speed tests, disconnect reason and logs -----------------------------------------------------------------------

const char* ZephlinkSDK_speedTestTypeText(ZephlinkSDK_SpeedTestType type) { return kSpeedTestTypeWords.text(type); }

bool ZephlinkSDK_speedTestTypeFromText(const char* text, ZephlinkSDK_SpeedTestType* type) {
  return fromText(kSpeedTestTypeWords, text, type);
}

const char* ZephlinkSDK_disconnectReasonText(ZephlinkSDK_DisconnectReason reason) {
  return kDisconnectReasonWords.text(reason);
}

bool ZephlinkSDK_disconnectReasonFromText(const char* text, ZephlinkSDK_DisconnectReason* reason) {
  return fromText(kDisconnectReasonWords, text, reason);
}

const char* ZephlinkSDK_daemonLogLevelText(ZephlinkSDK_DaemonLogLevel level) {
  return kDaemonLogLevelWords.text(level);
}

bool ZephlinkSDK_daemonLogLevelFromText(const char* text, ZephlinkSDK_DaemonLogLevel* level) {
  return fromText(kDaemonLogLevelWords, text, level);
}

// ---- Safe browsing -------------------------------------------------------------------------------------------------

const char* ZephlinkSDK_safeBrowsingLogLevelText(ZephlinkSDK_SafeBrowsingLogLevel level) {
  return kSafeBrowsingLogLevelWords.text(level);
}

bool ZephlinkSDK_safeBrowsingLogLevelFromText(const char* text, ZephlinkSDK_SafeBrowsingLogLevel* level) {
  return fromText(kSafeBrowsingLogLevelWords, text, level);
}

const char* ZephlinkSDK_safeBrowsingOverrideText(ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride) {
  return kSafeBrowsingOverrideWords.text(networkOverride);
}

bool ZephlinkSDK_safeBrowsingOverrideFromText(const char* text,
                                              ZephlinkSDK_SafeBrowsingSafeNetworkOverride* networkOverride) {
  return fromText(kSafeBrowsingOverrideWords, text, networkOverride);
}

// ---- Network sharing -----------------------------------------------------------------------------------------------

const char* ZephlinkSDK_pairRequestBehaviorText(ZephlinkSDK_NetworkSharingPairRequestBehavior behavior) {
  return kPairRequestBehaviorWords.text(behavior);
}

bool ZephlinkSDK_pairRequestBehaviorFromText(const char* text,
                                             ZephlinkSDK_NetworkSharingPairRequestBehavior* behavior) {
  return fromText(kPairRequestBehaviorWords, text, behavior);
}

const char* ZephlinkSDK_autoPairBehaviorText(ZephlinkSDK_NetworkSharingAutoPairBehavior behavior) {
  return kAutoPairBehaviorWords.text(behavior);
}

bool ZephlinkSDK_autoPairBehaviorFromText(const char* text, ZephlinkSDK_NetworkSharingAutoPairBehavior* behavior) {
  return fromText(kAutoPairBehaviorWords, text, behavior);
}

const char* ZephlinkSDK_peerRoleText(ZephlinkSDK_PeerRole role) { return kPeerRoleWords.text(role); }

bool ZephlinkSDK_peerRoleFromText(const char* text, ZephlinkSDK_PeerRole* role) {
  return fromText(kPeerRoleWords, text, role);
}

const char* ZephlinkSDK_peerStatusText(ZephlinkSDK_PeerStatus status) { return kPeerStatusWords.text(status); }

bool ZephlinkSDK_peerStatusFromText(const char* text, ZephlinkSDK_PeerStatus* status) {
  return fromText(kPeerStatusWords, text, status);
}

const char* ZephlinkSDK_peerTunnelStatusText(ZephlinkSDK_PeerTunnelStatus status) {
  return kPeerTunnelStatusWords.text(status);
}

bool ZephlinkSDK_peerTunnelStatusFromText(const char* text, ZephlinkSDK_PeerTunnelStatus* status) {
  return fromText(kPeerTunnelStatusWords, text, status);
}

// ---- Names of places -----------------------------------------------------------------------------------------------

size_t ZephlinkSDK_countryName(const char* code, char* buffer, size_t size) {
  return copyName(buffer, size, [code] { return countryName(textOrEmpty(code)); });
}

size_t ZephlinkSDK_cityName(const char* city, char* buffer, size_t size) {
  return copyName(buffer, size, [city] { return cityName(textOrEmpty(city)); });
}

size_t ZephlinkSDK_serverName(const ZephlinkSDK_ServerInfo* server, char* buffer, size_t size) {
  return copyName(buffer, size, [server] { return server != nullptr ? serverName(*server) : std::string(); });
}
