// Network sharing: this machine's settings, discovery, and the peers that the daemon knows.
#include "sdk/families/network_sharing.h"
#include "sdk/families/events.h"

#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

using Settings = ZephlinkSDK_NetworkSharingSettingsResult;
using Discovery = ZephlinkSDK_NetworkSharingDiscoveryResult;
using Shares = ZephlinkSDK_NetworkSharingAvailableSharesResult;

constexpr const char* kSettingsReport = "report_networksharing_settings";
constexpr const char* kDiscoveryReport = "report_networksharing_discovery";

void readSettings(const Json::Value& data, Settings& record) {
  readMember(data, "client_enabled", record.clientEnabled);
  readMember(data, "host_enabled", record.hostEnabled);
  readMember(data, "host_connect_code", record.hostConnectCode);
  readMember(data, "display_name", record.displayName);
  readMember(data, "always_on_discovery", record.alwaysOnDiscovery);
  record.pairRequestBehavior = kPairRequestBehaviorWords.find(asString(member(data, "pair_request_behavior")))
                                   .value_or(ZephlinkSDK_NetworkSharingPairRequestBehavior_Ask);
  record.autoPairBehavior = kAutoPairBehaviorWords.find(asString(member(data, "auto_pair_behavior")))
                                .value_or(ZephlinkSDK_NetworkSharingAutoPairBehavior_Manual);
  record.sameUserAutoPair = record.autoPairBehavior != ZephlinkSDK_NetworkSharingAutoPairBehavior_Manual;
}

void readDiscovery(const Json::Value& data, Discovery& record) {
  readMember(data, "discovering", record.discoveryActive);
}

/// Reads a counter as a signed 32-bit number: keeps the low 32 bits of the daemon's number and sign-extends them. In
/// other fields, a number out of range reads as zero.
std::uint64_t asCounter(const Json::Value& value) {
  const std::int64_t number = asInt64(value);
  const std::uint64_t bits = number < 0 ? static_cast<std::uint64_t>(number) : asUInt64(value);
  return static_cast<std::uint64_t>(std::int64_t{static_cast<std::int32_t>(bits)});
}

void readRole(const Json::Value& data, ZephlinkSDK_NetworkSharingPeerRole& role) {
  readMember(data, "allow", role.allowed);
  role.peerStatus = valueOfNumber(asInt(member(data, "peerStatus")), ZephlinkSDK_PeerStatus_Authenticated);
  role.tunnelStatus = valueOfNumber(asInt(member(data, "tunnelStatus")), ZephlinkSDK_PeerTunnelStatus_Paused);
  const Json::Value& usage = member(data, "usage");
  role.usageToday = asCounter(member(usage, "today"));
  role.usageWeek = asCounter(member(usage, "week"));
  role.usageMonth = asCounter(member(usage, "month"));
  role.usageTotal = asCounter(member(usage, "total"));
}

void readPeer(const Json::Value& data, ZephlinkSDK_NetworkSharingPeer& peer) {
  readMember(data, "uuid", peer.uuid);
  readMember(data, "auto_reconnect", peer.autoReconnect);
  readMember(data, "have_auth_token", peer.haveAuthToken);
  readMember(data, "supports_host", peer.supportsHost);
  readMember(data, "display_name", peer.displayName);
  readRole(member(data, "peer_as_client"), peer.peerAsClient);
  readRole(member(data, "peer_as_host"), peer.peerAsHost);
}

Settings changeSharing(const Channel& channel, const char* request, const Member& setting, Callback<Settings> callback,
                       void* userData) {
  return changeSetting(channel, request, {setting}, kSettingsReport, readSettings, callback, userData);
}

}  // namespace

void readShares(const Json::Value& data, Shares& record) {
  record.peerCount = 0;
  for (const Json::Value& peer : Elements(data)) {
    if (record.peerCount == ZephlinkSDK_MaxPeers) break;
    readPeer(peer, record.peers[record.peerCount++]);
  }
}

Settings ZephlinkSDK::getNetworkSharingSettings(Callback<Settings> callback, void* userData) {
  return subscribe(channel, "request_networksharing_settings", kSettingsReport, readSettings, callback, userData);
}

Settings ZephlinkSDK::setNetworkSharingClientEnabled(bool enabled, Callback<Settings> callback, void* userData) {
  return changeSharing(channel, "set_networksharing_client_enabled", {"client_enabled", enabled}, callback, userData);
}

// Not supported on any platform.
Settings ZephlinkSDK::setNetworkSharingHostEnabled(bool, Callback<Settings>, void*) {
  return refused<Settings>(ZephlinkSDK_Error_NotSupported);
}

Settings ZephlinkSDK::setNetworkSharingDisplayName(const char* name, Callback<Settings> callback, void* userData) {
  return changeSharing(channel, "set_networksharing_display_name", {"display_name", name}, callback, userData);
}

Settings ZephlinkSDK::setNetworkSharingPairRequestBehavior(ZephlinkSDK_NetworkSharingPairRequestBehavior behavior,
                                                           Callback<Settings> callback, void* userData) {
  if (behavior > ZephlinkSDK_NetworkSharingPairRequestBehavior_Reject) {
    return refused<Settings>(ZephlinkSDK_Error_InvalidArgument);
  }
  return changeSharing(channel, "set_networksharing_pair_request_behavior",
                       {"pair_request_behavior", kPairRequestBehaviorWords.text(behavior)}, callback, userData);
}

Settings ZephlinkSDK::setNetworkSharingAutoPairBehavior(ZephlinkSDK_NetworkSharingAutoPairBehavior behavior,
                                                        Callback<Settings> callback, void* userData) {
  if (behavior > ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUserTeam) {
    return refused<Settings>(ZephlinkSDK_Error_InvalidArgument);
  }
  return changeSharing(channel, "set_networksharing_auto_pair_behavior",
                       {"auto_pair_behavior", kAutoPairBehaviorWords.text(behavior)}, callback, userData);
}

Settings ZephlinkSDK::setNetworkSharingAlwaysOnDiscovery(bool enabled, Callback<Settings> callback, void* userData) {
  return changeSharing(channel, "set_networksharing_always_on_discovery", {"always_on_discovery", enabled}, callback,
                       userData);
}

Discovery ZephlinkSDK::getNetworkSharingDiscovery(Callback<Discovery> callback, void* userData) {
  return subscribe(channel, "get_networksharing_discovery", kDiscoveryReport, readDiscovery, callback, userData);
}

Discovery ZephlinkSDK::startNetworkSharingDiscovery(Callback<Discovery> callback, void* userData) {
  return ask(channel, {.requests = {"start_networksharing_discovery"}, .reports = {{kDiscoveryReport, readDiscovery}}},
             callback, userData);
}

Shares ZephlinkSDK::getNetworkSharesAvailable(Callback<Shares> callback, void* userData) {
  return subscribe(channel, "request_networksharing_sharesavailable", kReportShares, readShares, callback, userData);
}

}  // namespace zephlinksdk
