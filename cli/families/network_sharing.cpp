// Network sharing: this machine's settings, discovery, and the peers that the daemon knows.
#include "cli/families/network_sharing.h"

#include "cli/families/handlers.h"
#include "cli/families/peers.h"
#include "cli/usage.h"
#include "cli/words.h"
#include "sdk/words.h"

namespace cli {

namespace {

void printSettings(const ZephlinkSDK_NetworkSharingSettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["clientEnabled"] = record.clientEnabled;
  value["hostEnabled"] = record.hostEnabled;
  value["hostConnectCode"] = record.hostConnectCode;
  value["displayName"] = record.displayName;
  value["pairRequestBehavior"] = zephlinksdk::pairRequestBehaviorText(record.pairRequestBehavior);
  value["sameUserAutoPair"] = record.sameUserAutoPair;
  value["alwaysOnDiscovery"] = record.alwaysOnDiscovery;
  value["autoPairBehavior"] = zephlinksdk::autoPairBehaviorText(record.autoPairBehavior);
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
  value["peerStatus"] = peerStatusText(role.peerStatus);
  value["tunnelStatus"] = peerTunnelStatusText(role.tunnelStatus);
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

// Words behind a value are ignored throughout this family, and so are those behind the words that read.

int readSettings(Words) { return finish(call(ZephlinkSDK_getNetworkSharingSettings), printSettings); }

int readShares(Words) { return finish(call(ZephlinkSDK_getNetworkSharesAvailable), printShares); }

int readDiscovery(Words) { return finish(call(ZephlinkSDK_getNetworkSharingDiscovery), printDiscovery); }

int startDiscovery(Words words) {
  if (!words.empty()) return invalid(usage::networksharing);
  return finish(call(ZephlinkSDK_startNetworkSharingDiscovery), printDiscovery);
}

/// A setting that is on or off.
template <auto& Method>
int setSwitch(Words words, const char* usage) {
  if (words.empty()) return missing(usage);
  const auto enabled = parseOnOff(words[0]);
  if (!enabled) return invalid(usage);
  return finish(call(Method, *enabled), printSettings);
}

int setClient(Words words) {
  return setSwitch<ZephlinkSDK_setNetworkSharingClientEnabled>(words, usage::networksharingSetSwitch);
}

int setHost(Words words) {
  return setSwitch<ZephlinkSDK_setNetworkSharingHostEnabled>(words, usage::networksharingSetSwitch);
}

int setAlwaysOnDiscovery(Words words) {
  return setSwitch<ZephlinkSDK_setNetworkSharingAlwaysOnDiscovery>(words, usage::networksharingSetAlwaysOnDiscovery);
}

int setDisplayName(Words words) {
  if (words.empty()) return missing(usage::networksharingSetDisplayname);
  return finish(call(ZephlinkSDK_setNetworkSharingDisplayName, words[0]), printSettings);
}

/// A setting that is one of some words.
template <auto& Method, class Table>
int setChoice(Words words, const Table& table, const char* usage) {
  if (words.empty()) return missing(usage);
  const auto choice = table.find(words[0]);
  if (!choice) return invalid(usage);
  return finish(call(Method, *choice), printSettings);
}

int setPairRequestBehavior(Words words) {
  return setChoice<ZephlinkSDK_setNetworkSharingPairRequestBehavior>(words, zephlinksdk::kPairRequestBehaviorWords,
                                                                     usage::networksharingSetPairRequestBehavior);
}

int setAutoPairBehavior(Words words) {
  return setChoice<ZephlinkSDK_setNetworkSharingAutoPairBehavior>(words, zephlinksdk::kAutoPairBehaviorWords,
                                                                  usage::networksharingSetAutoPairBehavior);
}

// The older form of the word above, which no usage text names.
constexpr auto kSameUserWords = zephlinksdk::wordTable<ZephlinkSDK_NetworkSharingAutoPairBehavior>(
    {
        {ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUserTeam, "on"},
        {ZephlinkSDK_NetworkSharingAutoPairBehavior_Manual, "off"},
    },
    "off");

int setSameUserAutoPair(Words words) {
  return setChoice<ZephlinkSDK_setNetworkSharingAutoPairBehavior>(words, kSameUserWords,
                                                                  usage::networksharingSetAutoPairBehavior);
}

constexpr Action kSettings[] = {
    {"client", setClient},
    {"host", setHost},
    {"displayname", setDisplayName},
    {"pairRequestBehavior", setPairRequestBehavior},
    {"peer", setPeer},
    {"sameUserAutoPair", setSameUserAutoPair},
    {"autoPairBehavior", setAutoPairBehavior},
    {"alwaysOnDiscovery", setAlwaysOnDiscovery},
};

int set(Words words) { return dispatchWord(kSettings, words, usage::networksharingSet); }

constexpr Action kWords[] = {
    {"settings", readSettings},
    {"availableshares", readShares},
    {"discovery", readDiscovery},
    {"set", set},
    {"peer", peer},
    {"startdiscovery", startDiscovery},
    {"connect", connectShare},
    {"reconnect", reconnectShare},
};

}  // namespace

void printShares(const ZephlinkSDK_NetworkSharingAvailableSharesResult& record) {
  writeJson(stdout, toJsonArray(record.peers, record.peerCount, peerToJson));
}

int networkSharing(Words words) { return dispatchWord(kWords, words, usage::networksharing); }

}  // namespace cli
