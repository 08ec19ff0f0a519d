// Network sharing with one peer: connecting, pairing, its switches, and the events about peers.
#include <optional>

#include "base/base64.h"
#include "sdk/families/events.h"
#include "sdk/families/network_sharing.h"
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

using Connection = ZephlinkSDK_NetworkSharingConnectionResult;
using Pair = ZephlinkSDK_NetworkSharingPairResult;
using Shares = ZephlinkSDK_NetworkSharingAvailableSharesResult;

constexpr const char* kStatusChange = "report_networksharing_peer_status_change";
constexpr const char* kPairChange = "report_networksharing_peer_pair_change";

void readConnection(const Json::Value& data, Connection& record) {
  record.role = kPeerRoleWords.find(asString(member(data, "peer_role"))).value_or(record.role);
  readMember(data, "uuid", record.uuid);
  record.peerStatus = valueOfNumber(asInt(member(data, "peerStatus")), ZephlinkSDK_PeerStatus_Authenticated);
  record.tunnelStatus = valueOfNumber(asInt(member(data, "tunnelStatus")), ZephlinkSDK_PeerTunnelStatus_Paused);
  readDaemonError(data, record.head);
}

/// Connecting ends when the peer is authenticated or on a failure. Other changes are skipped.
bool readConnectionEnd(const Json::Value& data, Connection& record) {
  const bool authenticated = asInt(member(data, "peerStatus")) == ZephlinkSDK_PeerStatus_Authenticated;
  if (!authenticated && !reportsFailure(data)) return false;
  readConnection(data, record);
  return true;
}

/// A listener receives failures like any other change: the code is stored, but `hasError` stays false.
void readStatusChange(const Json::Value& data, Connection& record) {
  readConnection(data, record);
  record.hasError = false;
}

void readPair(const Json::Value& data, Pair& record) {
  readMember(data, "uuid", record.uuid);
  readMember(data, "display_name", record.displayName);
  readMember(data, "have_auth_token", record.haveAuthToken);
}

/// While waiting for a pairing, skips status changes that report no failure.
bool readPairFailure(const Json::Value& data, Pair& record) {
  if (!reportsFailure(data)) return false;
  readPair(data, record);
  record.haveAuthToken = false;
  readDaemonError(data, record.head);
  return true;
}

/// Returns the host in a connect code; nothing if the code is invalid.
std::optional<std::string> hostOf(const char* code) {
  Json::Value content;
  std::string errors;
  if (!JsonParser().parse(decodeBase64(code), content, errors) || !has(content, "u")) return std::nullopt;
  return asString(member(content, "u"));
}

/// Requests or answers a pairing. Events about the peer that do not end the wait do not cancel the time-out.
Pair requestPairing(const Channel& channel, Request request, const char* uuid, std::uint64_t timeoutMs,
                    Callback<Pair> callback, void* userData) {
  return ask(
      channel,
      {.requests = {std::move(request)},
       .reports = {{kPairChange, readPair, {{"uuid", uuid}}}, {kStatusChange, readPairFailure, {{"uuid", uuid}}}},
       .timeoutMs = timeoutMs,
       .keepsTimeout = true},
      callback, userData);
}

/// Changes one switch of a peer; all requests use the same member.
Shares setSwitch(const Channel& channel, const char* request, const char* uuid, bool allow, Callback<Shares> callback,
                 void* userData) {
  return ask(channel,
             {.requests = {{request, {{"uuid", uuid}, {"allow", allow}}}}, .reports = {{kReportShares, readShares}}},
             callback, userData);
}

}  // namespace

// The request contains the code itself. The daemon's events contain the host in the code, or no uuid if the daemon
// cannot read it.
Connection ZephlinkSDK::connectToNetworkShareViaConnectCode(const char* code, Callback<Connection> callback,
                                                            void* userData) {
  const auto host = code != nullptr ? hostOf(code) : std::nullopt;
  if (!host) return refused<Connection>(ZephlinkSDK_Error_InvalidArgument);
  return ask(channel,
             {.requests = {{"connect_to_networkshare_connectcode", {{"connect_code", code}}}},
              .reports = {{kStatusChange, readConnectionEnd, {{"uuid", *host}}},
                          {kStatusChange, readConnectionEnd, {{"uuid", ""}}}},
              .keepsTimeout = true},
             callback, userData);
}

Connection ZephlinkSDK::reconnectToNetworkShare(const char* uuid, Callback<Connection> callback, void* userData) {
  return ask(channel,
             {.requests = {{"reconnect_to_networkshare", {{"uuid", uuid}}}},
              .reports = {{kStatusChange, readConnectionEnd, {{"uuid", uuid}}}},
              .timeoutMs = 60000,
              .keepsTimeout = true},
             callback, userData);
}

// The longer time-out lets the peer's user answer.
Pair ZephlinkSDK::requestNetworkSharingPair(const char* uuid, Callback<Pair> callback, void* userData) {
  return requestPairing(channel, {"request_networksharing_pair", {{"uuid", uuid}}}, uuid, 70000, callback, userData);
}

Pair ZephlinkSDK::allowNetworkSharingPair(const char* uuid, bool allow, Callback<Pair> callback, void* userData) {
  return requestPairing(channel, {"allow_networksharing_pair", {{"uuid", uuid}, {"allow", allow}}}, uuid,
                        WebsocketImpl::kDefaultTimeoutMs, callback, userData);
}

// A change of any peer's pairing ends the call.
Pair ZephlinkSDK::unpairNetworkSharingPeer(const char* uuid, Callback<Pair> callback, void* userData) {
  return ask(channel,
             {.requests = {{"unpair_networksharing_peer", {{"uuid", uuid}}}}, .reports = {{kPairChange, readPair}}},
             callback, userData);
}

Shares ZephlinkSDK::setNetworkSharingPeerAutoReconnect(const char* uuid, bool enabled, Callback<Shares> callback,
                                                       void* userData) {
  return setSwitch(channel, "set_networksharing_peer_auto_reconnect", uuid, enabled, callback, userData);
}

Shares ZephlinkSDK::setNetworkSharingPeerAllowAsHost(const char* uuid, bool allow, Callback<Shares> callback,
                                                     void* userData) {
  return setSwitch(channel, "set_networksharing_peer_allow_as_host", uuid, allow, callback, userData);
}

Shares ZephlinkSDK::setNetworkSharingPeerAllowAsClient(const char* uuid, bool allow, Callback<Shares> callback,
                                                       void* userData) {
  return setSwitch(channel, "set_networksharing_peer_allow_as_client", uuid, allow, callback, userData);
}

Connection ZephlinkSDK::listenForNetworkSharePeerStatusChange(Callback<Connection> callback, void* userData) {
  return listenFor(channel, kStatusChange, readStatusChange, callback, userData);
}

Pair ZephlinkSDK::listenForNetworkSharePairRequest(Callback<Pair> callback, void* userData) {
  return listenFor(channel, "report_networkshare_auth_request", readPair, callback, userData);
}

Pair ZephlinkSDK::listenForNetworkShareNewPeerAvailable(Callback<Pair> callback, void* userData) {
  return listenFor(channel, "report_networksharing_new_peer_available", readPair, callback, userData);
}

}  // namespace zephlinksdk
