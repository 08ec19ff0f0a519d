// Network sharing with one peer: connecting, pairing, its switches, and the streams about peers.
#include "cli/families/peers.h"

#include <cstring>

#include "cli/families/network_sharing.h"
#include "cli/handlers.h"
#include "cli/stream.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

using Connection = ZephlinkSDK_NetworkSharingConnectionResult;
using Pair = ZephlinkSDK_NetworkSharingPairResult;

constexpr std::size_t kConnectCodeSize = sizeof(ZephlinkSDK_NetworkSharingSettingsResult::hostConnectCode);

/// Returns whether the argument fits into a field of `size` bytes, including its terminator.
bool fits(const char* argument, std::size_t size) { return std::strlen(argument) < size; }

// A stream prints failed connections as records too; an action prints the error object.
void printConnection(const Connection& record) {
  Json::Value value(Json::objectValue);
  value["role"] = ZephlinkSDK_peerRoleText(record.role);
  value["uuid"] = record.uuid;
  value["peerStatus"] = ZephlinkSDK_peerStatusText(record.peerStatus);
  if (record.errorCode != ZephlinkSDK_Error_None) {
    value["errorCode"] = record.errorCode;
    value["errorType"] = ZephlinkSDK_errorText(record.errorCode);
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

bool isUuid(const char* argument) { return fits(argument, ZephlinkSDK_UuidSize); }

/// Connects with one argument of fewer than `Size` bytes. REQUIRES: an argument.
template <auto& Method, std::size_t Size>
int connectBy(Arguments arguments, const char* usage) {
  return fits(arguments[0], Size) ? finish(call<Method>(arguments[0]), printConnection) : invalid(usage);
}

/// Performs an action on the peer with a UUID. Ignores further arguments.
template <auto& Method, auto... Values>
int pair(Arguments arguments, const char* usage) {
  if (arguments.empty()) return missing(usage);
  return isUuid(arguments[0]) ? finish(call<Method>(arguments[0], Values...), printPair) : invalid(usage);
}

/// An unknown subcommand without a UUID is Missing.
int refusePairing(Arguments arguments, const char* usage) {
  return arguments.size() < 2 ? missing(usage) : invalid(usage);
}

constexpr Action kPairRows[] = {
    {"allow", nullptr, pair<ZephlinkSDK_allowNetworkSharingPair, true>},
    {"reject", nullptr, pair<ZephlinkSDK_allowNetworkSharingPair, false>},
    {"request", nullptr, pair<ZephlinkSDK_requestNetworkSharingPair>},
    {"unpair", nullptr, pair<ZephlinkSDK_unpairNetworkSharingPeer>},
};

/// REQUIRES: two arguments.
bool isUuidAndSwitch(Arguments arguments) { return isUuid(arguments[0]) && valueOf<parseSwitch>(arguments[1]); }

/// Sets a switch of the peer with a UUID. Ignores further arguments. REQUIRES: two arguments.
template <auto& Method>
int changeSwitch(Arguments arguments, const char* usage) {
  if (!isUuidAndSwitch(arguments)) return invalid(usage);
  return finish(call<Method>(arguments[0], *valueOf<parseSwitch>(arguments[1])), printShares);
}

/// An unknown switch with valid arguments prints the usage of `networksharing set <host|client>`.
int refuseSwitch(Arguments arguments, const char* usage) {
  if (arguments.size() < 3) return missing(usage);
  return invalid(isUuidAndSwitch(arguments.subspan(1)) ? kSharingSwitchUsage : usage);
}

constexpr Action kSwitchRows[] = {
    {"autoreconnect", nullptr, atLeast<2, changeSwitch<ZephlinkSDK_setNetworkSharingPeerAutoReconnect>>},
    {"allowhost", nullptr, atLeast<2, changeSwitch<ZephlinkSDK_setNetworkSharingPeerAllowAsHost>>},
    {"allowclient", nullptr, atLeast<2, changeSwitch<ZephlinkSDK_setNetworkSharingPeerAllowAsClient>>},
};

constexpr Action kRows[] = {
    {"peer", "networksharing peer <allow|reject|request|unpair> <peer uuid>", refusePairing, &rows<kPairRows>},
    {"connect", "networksharing connect <peer connect code>",
     exactly<1, connectBy<ZephlinkSDK_connectToNetworkShareViaConnectCode, kConnectCodeSize>>},
    {"reconnect", "networksharing reconnect <peer uuid>",
     exactly<1, connectBy<ZephlinkSDK_reconnectToNetworkShare, ZephlinkSDK_UuidSize>>},
};

constexpr Action kSetRows[] = {
    {"peer", "networksharing set peer <autoreconnect|allowhost|allowclient> <peer uuid> <on|off>", refuseSwitch,
     &rows<kSwitchRows>},
};

constexpr char kStatusLabel[] = "networksharing_peer_status_change";
constexpr char kPairRequestLabel[] = "networksharing_pairrequest";
constexpr char kNewPeerLabel[] = "networksharing_newpeer";

}  // namespace

constinit const Actions kPeerRows = kRows;
constinit const Actions kPeerSetRows = kSetRows;

void listenForPeers(Stream& stream) {
  stream.open<kStatusLabel, printConnection, ZephlinkSDK_listenForNetworkSharePeerStatusChange>();
  stream.open<kPairRequestLabel, printPair, ZephlinkSDK_listenForNetworkSharePairRequest>();
  stream.open<kNewPeerLabel, printPair, ZephlinkSDK_listenForNetworkShareNewPeerAvailable>();
}

}  // namespace cli
