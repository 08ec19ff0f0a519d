// Network sharing: this machine's settings, discovery, and the peers that the daemon knows.
#include "cli/families/network_sharing.h"

#include "cli/families/families.h"
#include "cli/families/peers.h"
#include "cli/handlers.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

void printSettings(const ZephlinkSDK_NetworkSharingSettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["clientEnabled"] = record.clientEnabled;
  value["hostEnabled"] = record.hostEnabled;
  value["hostConnectCode"] = record.hostConnectCode;
  value["displayName"] = record.displayName;
  value["pairRequestBehavior"] = ZephlinkSDK_pairRequestBehaviorText(record.pairRequestBehavior);
  value["sameUserAutoPair"] = record.sameUserAutoPair;
  value["alwaysOnDiscovery"] = record.alwaysOnDiscovery;
  value["autoPairBehavior"] = ZephlinkSDK_autoPairBehaviorText(record.autoPairBehavior);
  writeJson(stdout, value);
}

void printDiscovery(const ZephlinkSDK_NetworkSharingDiscoveryResult& record) {
  Json::Value value(Json::objectValue);
  value["discoveryActive"] = record.discoveryActive;
  writeJson(stdout, value);
}

Json::Value roleToJson(const ZephlinkSDK_NetworkSharingPeerRole& role) {
  Json::Value value(Json::objectValue);
  value["allowed"] = role.allowed;
  value["peerStatus"] = ZephlinkSDK_peerStatusText(role.peerStatus);
  value["tunnelStatus"] = ZephlinkSDK_peerTunnelStatusText(role.tunnelStatus);
  Json::Value& usage = value["usage"];
  usage["today"] = role.usageToday;
  usage["week"] = role.usageWeek;
  usage["month"] = role.usageMonth;
  usage["total"] = role.usageTotal;
  return value;
}

Json::Value peerToJson(const ZephlinkSDK_NetworkSharingPeer& peer) {
  Json::Value value(Json::objectValue);
  value["uuid"] = peer.uuid;
  value["autoReconnect"] = peer.autoReconnect;
  value["haveAuthToken"] = peer.haveAuthToken;
  value["supportsHost"] = peer.supportsHost;
  value["displayName"] = peer.displayName;
  value["peerAsClient"] = roleToJson(peer.peerAsClient);
  value["peerAsHost"] = roleToJson(peer.peerAsHost);
  return value;
}

// The older form of `autoPairBehavior`, which no usage text mentions.
bool parseSameUserAutoPair(const char* argument, ZephlinkSDK_NetworkSharingAutoPairBehavior& behavior) {
  const auto enabled = valueOf<parseSwitch>(argument);
  if (!enabled) return false;
  behavior = *enabled ? ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUserTeam
                      : ZephlinkSDK_NetworkSharingAutoPairBehavior_Manual;
  return true;
}

int setDisplayName(Arguments arguments, const char*) {
  return finish(call<ZephlinkSDK_setNetworkSharingDisplayName>(arguments[0]), printSettings);
}

/// Sets a value from the first argument. In this family arguments after the value are ignored.
template <auto& Parse, auto& Method>
constexpr Handler& change = atLeast<1, setValue<Parse, Method, printSettings>>;

constexpr char kAutoPairUsage[] = "networksharing set autoPairBehavior <manual|auto_user|auto_user_team>";

constexpr Action kSetRows[] = {
    {"client", kSharingSwitchUsage, change<parseSwitch, ZephlinkSDK_setNetworkSharingClientEnabled>},
    {"host", kSharingSwitchUsage, change<parseSwitch, ZephlinkSDK_setNetworkSharingHostEnabled>},
    {"displayname", "networksharing set displayname <new name>", atLeast<1, setDisplayName>},
    {"pairRequestBehavior", "networksharing set pairRequestBehavior <ask|accept|reject>",
     change<ZephlinkSDK_pairRequestBehaviorFromText, ZephlinkSDK_setNetworkSharingPairRequestBehavior>},
    {"sameUserAutoPair", kAutoPairUsage, change<parseSameUserAutoPair, ZephlinkSDK_setNetworkSharingAutoPairBehavior>},
    {"autoPairBehavior", kAutoPairUsage,
     change<ZephlinkSDK_autoPairBehaviorFromText, ZephlinkSDK_setNetworkSharingAutoPairBehavior>},
    {"alwaysOnDiscovery", "networksharing set alwaysOnDiscovery <on|off>",
     change<parseSwitch, ZephlinkSDK_setNetworkSharingAlwaysOnDiscovery>},
    include(kPeerSetRows),
};

constexpr char kUsage[] = "networksharing <availableshares|connect|discovery|peer|set|settings|startdiscovery>";

/// Unlike the reading actions, this one rejects arguments, with the usage of the whole family.
int startDiscovery(Arguments arguments, const char*) {
  return arguments.empty() ? finish(call<ZephlinkSDK_startNetworkSharingDiscovery>(), printDiscovery) : invalid(kUsage);
}

constexpr Action kSharingRows[] = {
    {"settings", "networksharing settings", perform<ZephlinkSDK_getNetworkSharingSettings, printSettings>},
    {"availableshares", "networksharing availableshares", perform<ZephlinkSDK_getNetworkSharesAvailable, printShares>},
    {"discovery", "networksharing discovery", perform<ZephlinkSDK_getNetworkSharingDiscovery, printDiscovery>},
    {"set", "networksharing set <alwaysOnDiscovery|autoPairBehavior|client|displayname|host|pairRequestBehavior|peer>",
     nullptr, &rows<kSetRows>},
    {"startdiscovery", "networksharing startdiscovery", startDiscovery},
    include(kPeerRows),
};

constexpr Action kRows[] = {
    {"networksharing", kUsage, nullptr, &rows<kSharingRows>},
};

}  // namespace

constinit const families::Family families::networkSharing{kRows};

void printShares(const ZephlinkSDK_NetworkSharingAvailableSharesResult& record) {
  writeJson(stdout, toJsonArray(record.peers, record.peerCount, peerToJson));
}

}  // namespace cli
