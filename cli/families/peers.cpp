// Network sharing with one peer: connecting, pairing, its switches, and the streams about peers.
#include "cli/families/peers.h"

#include <cstring>

#include "cli/families/network_sharing.h"
#include "cli/stream.h"
#include "cli/usage.h"
#include "cli/words.h"
#include "sdk/words.h"

namespace cli {

namespace {

using Connection = ZephlinkSDK_NetworkSharingConnectionResult;
using Pair = ZephlinkSDK_NetworkSharingPairResult;

constexpr std::size_t kConnectCodeSize = sizeof(ZephlinkSDK_NetworkSharingSettingsResult::hostConnectCode);

/// Whether the word fits into a field of that size.
bool fits(const char* word, std::size_t size) { return std::strlen(word) < size; }

// Only a stream has the record of a failure printed: other words end in the error printer.
void printConnection(const Connection& record) {
  Json::Value value(Json::objectValue);
  value["role"] = zephlinksdk::peerRoleText(record.role);
  value["uuid"] = record.uuid;
  value["peerStatus"] = peerStatusText(record.peerStatus);
  if (record.errorCode != ZephlinkSDK_Error_None) {
    value["errorCode"] = record.errorCode;
    value["errorType"] = zephlinksdk::errorText(record.errorCode);
    value["errorMessage"] = record.errorMessage;
  }
  writeJson(stdout, value);
}

void printPair(const Pair& record) {
  Json::Value value(Json::objectValue);
  value["uuid"] = record.uuid;
  value["displayName"] = record.displayName;
  value["haveAuthToken"] = record.haveAuthToken;
  writeJson(stdout, value);
}

/// A single word that must fit.
template <auto& Method>
int connectBy(Words words, std::size_t size, const char* usage) {
  if (words.empty()) return missing(usage);
  if (words.size() > 1 || !fits(words[0], size)) return invalid(usage);
  return finish(call(Method, words[0]), printConnection);
}

int allowPair(Words words) { return finish(call(ZephlinkSDK_allowNetworkSharingPair, words[0], true), printPair); }
int rejectPair(Words words) { return finish(call(ZephlinkSDK_allowNetworkSharingPair, words[0], false), printPair); }
int requestPair(Words words) { return finish(call(ZephlinkSDK_requestNetworkSharingPair, words[0]), printPair); }
int unpair(Words words) { return finish(call(ZephlinkSDK_unpairNetworkSharingPeer, words[0]), printPair); }

constexpr Action kPairings[] = {
    {"allow", allowPair},
    {"reject", rejectPair},
    {"request", requestPair},
    {"unpair", unpair},
};

/// Behind words that have been checked: a uuid, "on" or "off".
template <auto& Method>
int setSwitch(Words words) {
  return finish(call(Method, words[0], *parseOnOff(words[1])), printShares);
}

constexpr Action kSwitches[] = {
    {"autoreconnect", setSwitch<ZephlinkSDK_setNetworkSharingPeerAutoReconnect>},
    {"allowhost", setSwitch<ZephlinkSDK_setNetworkSharingPeerAllowAsHost>},
    {"allowclient", setSwitch<ZephlinkSDK_setNetworkSharingPeerAllowAsClient>},
};

constexpr char kStatusLabel[] = "networksharing_peer_status_change";
constexpr char kPairRequestLabel[] = "networksharing_pairrequest";
constexpr char kNewPeerLabel[] = "networksharing_newpeer";

}  // namespace

int connectShare(Words words) {
  return connectBy<ZephlinkSDK_connectToNetworkShareViaConnectCode>(words, kConnectCodeSize,
                                                                    usage::networksharingConnect);
}

int reconnectShare(Words words) {
  return connectBy<ZephlinkSDK_reconnectToNetworkShare>(words, ZephlinkSDK_UuidSize, usage::networksharingReconnect);
}

int peer(Words words) {
  if (words.size() < 2) return missing(usage::networksharingPeer);
  if (!fits(words[1], ZephlinkSDK_UuidSize)) return invalid(usage::networksharingPeer);
  return dispatchWord(kPairings, words, usage::networksharingPeer);
}

int setPeer(Words words) {
  if (words.size() < 3) return missing(usage::networksharingSetPeer);
  if (!fits(words[1], ZephlinkSDK_UuidSize) || !parseOnOff(words[2])) return invalid(usage::networksharingSetPeer);
  // A switch that is none is told with the usage of this machine's own switches.
  return dispatchWord(kSwitches, words, usage::networksharingSetSwitch);
}

std::vector<std::uint64_t> listenForPeers(StreamClock& clock) {
  return {
      openStream<kStatusLabel, printConnection>(ZephlinkSDK_listenForNetworkSharePeerStatusChange, clock),
      openStream<kPairRequestLabel, printPair>(ZephlinkSDK_listenForNetworkSharePairRequest, clock),
      openStream<kNewPeerLabel, printPair>(ZephlinkSDK_listenForNetworkShareNewPeerAvailable, clock),
  };
}

}  // namespace cli
