// Network sharing: this machine's settings, discovery, and peers that appear, pair, authenticate and disconnect.
#include <json/reader.h>

#include <array>

#include "simulator/base64.h"
#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;

constexpr char kOwnUuid[] = "5a9e0c4d-7b1f-4c62-8e35-d0a41f6b9c00";
constexpr char kSharedAdapter[] = "share0";
constexpr std::size_t kLongestName = 32;
constexpr double kDropChance = 1.0 / 60;  ///< for each second that a peer is connected
constexpr int kBytesASecond = 400'000;

enum PeerStatus { kDisconnected, kUnauthenticated, kAuthenticated };
enum TunnelStatus { kInactive, kActive, kDisabledOnClient, kDisabledOnHost };

/// How a peer answers a request to pair, or that it requests to pair itself.
enum class Manner { Accepts, Rejects, Asks };

struct Peer {
  const char* uuid;
  const char* name;
  Manner manner;
  bool known = false;  ///< the daemon has discovered it
  bool paired = false;
  bool autoReconnect = false;
  bool allowedAsHost = true;
  bool allowedAsClient = false;
  bool asking = false;  ///< its request to pair is not answered yet
  int status = kDisconnected;
  std::int64_t usage = 0;     ///< bytes today
  std::uint64_t attempt = 0;  ///< lets a delayed step detect that it is obsolete
};

std::array<Peer, 4> makePeers() {
  return {{
      {.uuid = "c1d7b3a0-0f6e-4b59-a2c8-31e5f7094d01",
       .name = "Ann's phone",
       .manner = Manner::Accepts,
       .known = true,
       .paired = true,
       .usage = 48'200'000},
      {.uuid = "c1d7b3a0-0f6e-4b59-a2c8-31e5f7094d02", .name = "Bob's laptop", .manner = Manner::Accepts},
      {.uuid = "c1d7b3a0-0f6e-4b59-a2c8-31e5f7094d03", .name = "Carol's tablet", .manner = Manner::Rejects},
      {.uuid = "c1d7b3a0-0f6e-4b59-a2c8-31e5f7094d04", .name = "Dave's phone", .manner = Manner::Asks},
  }};
}

std::string connectCode(const char* uuid) { return encodeBase64(std::string("{\"u\":\"") + uuid + "\"}"); }

/// Returns the uuid in a connect code; empty if the code is invalid.
std::string uuidOf(const std::string& code) {
  const auto decoded = decodeBase64(code);
  Json::Value content;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  if (!decoded || !reader->parse(decoded->data(), decoded->data() + decoded->size(), &content, nullptr)) return {};
  return content.isObject() && content["u"].isString() ? content["u"].asString() : std::string();
}

TunnelStatus tunnelOf(const Peer& peer) {
  if (peer.status != kAuthenticated) return kInactive;
  return peer.allowedAsHost ? kActive : kDisabledOnClient;
}

Json::Value describeRole(int status, int tunnel, bool allowed, std::int64_t usage) {
  const Json::Value counters =
      object({{"today", usage}, {"week", usage * 3}, {"month", usage * 8}, {"total", usage * 20}});
  return object({{"peerStatus", status}, {"tunnelStatus", tunnel}, {"allow", allowed}, {"usage", counters}});
}

class NetworkSharing {
 public:
  explicit NetworkSharing(Daemon& owner) : daemon(owner) {
    settings->value = object({{"client_enabled", true},
                              {"host_enabled", false},
                              {"host_connect_code", connectCode(kOwnUuid)},
                              {"display_name", "Zephyr"},
                              {"pair_request_behavior", "ask"},
                              {"auto_pair_behavior", "manual"},
                              {"always_on_discovery", false}});
  }

  std::vector<Request> plainRequests() const {
    return {
        {"request_networksharing_settings", reportRecord(settings)},
        {"set_networksharing_client_enabled", setMember(settings, "client_enabled", "client_enabled", Kind::Bool)},
        {"set_networksharing_pair_request_behavior",
         setWord(settings, "pair_request_behavior", "pair_request_behavior", {"ask", "accept", "reject"})},
        {"set_networksharing_auto_pair_behavior",
         setWord(settings, "auto_pair_behavior", "auto_pair_behavior", {"manual", "auto_user", "auto_user_team"})},
    };
  }

  void setDisplayName(const Json::Value& members) {
    const std::string name = requiredText(members, "display_name");
    if (name.empty() || name.size() > kLongestName) {
      throw Refusal{Fault::InvalidArgument, "A display name has 1 to 32 characters"};
    }
    settings->value["display_name"] = name;
    daemon.report(*settings);
  }

  void setAlwaysOnDiscovery(const Json::Value& members) {
    settings->value["always_on_discovery"] = requiredBool(members, "always_on_discovery");
    daemon.report(*settings);
    if (isAlwaysOn() && !discovering) discover();
    if (!isAlwaysOn()) endDiscovery();
  }

  void reportDiscovery(const Json::Value&) {
    daemon.report("report_networksharing_discovery", object({{"discovering", discovering}}));
  }

  void startDiscovery(const Json::Value&) {
    if (discovering) return reportDiscovery(Json::nullValue);
    discover();
  }

  void reportShares(const Json::Value&) {
    Json::Value shares(Json::arrayValue);
    for (const Peer& peer : peers) {
      if (peer.known) shares.append(describe(peer));
    }
    daemon.report("report_networksharing_sharesavailable", shares);
  }

  void connectByCode(const Json::Value& members) {
    const std::string uuid = uuidOf(requiredText(members, "connect_code"));
    if (uuid.empty()) return reportFailure("", Fault::InvalidArgument, "The connect code is not valid");
    Peer* peer = find(uuid);
    if (!peer) return failLater(uuid, "The peer can't be reached");
    see(*peer);
    setPaired(*peer, true);
    authenticate(*peer);
  }

  void reconnect(const Json::Value& members) {
    const std::string uuid = requiredText(members, "uuid");
    Peer* peer = find(uuid);
    if (!peer || !peer->known) return failLater(uuid, "The peer can't be reached");
    if (!peer->paired) return reportFailure(uuid, Fault::Credentials, "The peer is not paired");
    authenticate(*peer);
  }

  void requestPair(const Json::Value& members) {
    const std::string uuid = requiredText(members, "uuid");
    Peer* peer = find(uuid);
    if (!peer || !peer->known) return failLater(uuid, "The peer can't be reached");
    daemon.after(1500ms, [this, peer] {
      if (peer->manner == Manner::Rejects) {
        return reportFailure(peer->uuid, Fault::Credentials, "The peer has refused to pair");
      }
      setPaired(*peer, true);
    });
  }

  void allowPair(const Json::Value& members) {
    const std::string uuid = requiredText(members, "uuid");
    const bool allow = requiredBool(members, "allow");
    Peer* peer = find(uuid);
    if (!peer || !peer->asking) {
      return reportFailure(uuid, Fault::InvalidArgument, "The peer has not asked to pair");
    }
    peer->asking = false;
    setPaired(*peer, allow);
    if (allow) authenticate(*peer);
  }

  void unpair(const Json::Value& members) {
    const std::string uuid = requiredText(members, "uuid");
    Peer* peer = find(uuid);
    if (!peer) {
      const Json::Value stranger = object({{"uuid", uuid}, {"display_name", ""}, {"have_auth_token", false}});
      return daemon.report("report_networksharing_peer_pair_change", stranger);
    }
    disconnect(*peer);
    setPaired(*peer, false);
  }

  /// Sets one switch of a peer and reports the shares.
  template <bool Peer::*Switch>
  void setSwitch(const Json::Value& members) {
    const bool value = requiredBool(members, "allow");
    if (Peer* peer = find(requiredText(members, "uuid"))) peer->*Switch = value;
    reportShares(Json::nullValue);
    updateSharedAdapter();
  }

  /// Simulates one second of the connected peers.
  void tick() {
    for (Peer& peer : peers) {
      if (peer.status != kAuthenticated) continue;
      peer.usage += kBytesASecond;
      if (daemon.chance(kDropChance)) drop(peer);
    }
  }

 private:
  Peer* find(const std::string& uuid) {
    for (Peer& peer : peers) {
      if (peer.uuid == uuid) return &peer;
    }
    return nullptr;
  }

  bool isAlwaysOn() const { return settings->value["always_on_discovery"].asBool(); }

  Json::Value describe(const Peer& peer) const {
    Json::Value entry =
        object({{"uuid", peer.uuid},
                {"display_name", peer.name},
                {"auto_reconnect", peer.autoReconnect},
                {"have_auth_token", peer.paired},
                {"supports_host", peer.manner != Manner::Asks},
                {"peer_as_host", describeRole(peer.status, tunnelOf(peer), peer.allowedAsHost, peer.usage)}});
    entry["peer_as_client"] = describeRole(kDisconnected, kDisabledOnHost, peer.allowedAsClient, 0);
    return entry;
  }

  void reportPeer(const char* event, const Peer& peer) {
    daemon.report(event, object({{"uuid", peer.uuid}, {"display_name", peer.name}, {"have_auth_token", peer.paired}}));
  }

  void reportFailure(const std::string& uuid, Fault fault, const char* text) {
    Peer* peer = find(uuid);
    daemon.fault("report_networksharing_peer_status_change", fault, text,
                 object({{"uuid", uuid},
                         {"display_name", peer ? peer->name : ""},
                         {"peer_role", "host"},
                         {"peerStatus", kDisconnected},
                         {"tunnelStatus", kInactive}}));
  }

  void failLater(const std::string& uuid, const char* text) {
    daemon.after(1s, [this, uuid, text] { reportFailure(uuid, Fault::Network, text); });
  }

  void discover() {
    setDiscovering(true);
    const std::uint64_t mine = discovery;
    auto delay = 0ms;
    for (Peer& peer : peers) {
      delay += 700ms;
      daemon.after(delay, [this, mine, &peer] {
        if (discovery == mine) see(peer);
      });
    }
    daemon.after(10s, [this, mine] {
      if (discovery == mine && !isAlwaysOn()) setDiscovering(false);
    });
  }

  void endDiscovery() {
    if (discovering) setDiscovering(false);
  }

  void setDiscovering(bool on) {
    discovering = on;
    ++discovery;
    reportDiscovery(Json::nullValue);
  }

  void see(Peer& peer) {
    if (peer.known) return;
    peer.known = true;
    reportPeer("report_networksharing_new_peer_available", peer);
    reportShares(Json::nullValue);
    if (peer.manner == Manner::Asks) daemon.after(1500ms, [this, &peer] { askToPair(peer); });
  }

  void askToPair(Peer& peer) {
    if (peer.paired) return;
    const std::string behavior = settings->value["pair_request_behavior"].asString();
    if (behavior == "reject") return;
    if (behavior == "accept") return setPaired(peer, true);
    peer.asking = true;
    reportPeer("report_networkshare_auth_request", peer);
  }

  void setPaired(Peer& peer, bool paired) {
    peer.paired = paired;
    reportPeer("report_networksharing_peer_pair_change", peer);
    reportShares(Json::nullValue);
  }

  void authenticate(Peer& peer) {
    if (!settings->value["client_enabled"].asBool()) {
      return reportFailure(peer.uuid, Fault::Locked, "Network sharing is switched off on this machine");
    }
    const std::uint64_t mine = ++peer.attempt;
    daemon.after(300ms, [this, mine, &peer] {
      if (peer.attempt == mine) setStatus(peer, kUnauthenticated);
    });
    daemon.after(900ms, [this, mine, &peer] {
      if (peer.attempt == mine) setStatus(peer, kAuthenticated);
    });
  }

  void disconnect(Peer& peer) {
    ++peer.attempt;
    if (peer.status != kDisconnected) setStatus(peer, kDisconnected);
  }

  void drop(Peer& peer) {
    disconnect(peer);
    if (peer.autoReconnect) daemon.after(2s, [this, &peer] { authenticate(peer); });
  }

  void setStatus(Peer& peer, int status) {
    peer.status = status;
    daemon.report("report_networksharing_peer_status_change", object({{"uuid", peer.uuid},
                                                                      {"display_name", peer.name},
                                                                      {"peer_role", "host"},
                                                                      {"peerStatus", status},
                                                                      {"tunnelStatus", tunnelOf(peer)},
                                                                      {"type", 0},
                                                                      {"msg", ""}}));
    reportShares(Json::nullValue);
    updateSharedAdapter();
  }

  /// The shared adapter is connected while any peer is.
  void updateSharedAdapter() {
    bool connected = false;
    for (const Peer& peer : peers) connected |= tunnelOf(peer) == kActive;
    Json::Value& state = (*daemon.world.adapter(kSharedAdapter))["connectionState"];
    const Json::Value wanted = connected ? 2 : 0;
    if (state == wanted) return;
    state = wanted;
    daemon.report(*daemon.world.adapters);
  }

  Daemon& daemon;
  const SharedRecord settings = std::make_shared<Record>(Record{"report_networksharing_settings"});
  std::array<Peer, 4> peers = makePeers();
  bool discovering = false;
  std::uint64_t discovery = 0;  ///< incremented at each start and end, so that delayed steps of a discovery can detect
                                ///< its end
};

}  // namespace

std::vector<Request> networkSharingFamily(Daemon& daemon) {
  const auto family = std::make_shared<NetworkSharing>(daemon);
  daemon.every(1s, [family] { family->tick(); });
  std::vector<Request> requests = family->plainRequests();
  const std::vector<Request> others = {
      {"set_networksharing_display_name", method(family, &NetworkSharing::setDisplayName)},
      {"set_networksharing_always_on_discovery", method(family, &NetworkSharing::setAlwaysOnDiscovery)},
      {"get_networksharing_discovery", method(family, &NetworkSharing::reportDiscovery)},
      {"start_networksharing_discovery", method(family, &NetworkSharing::startDiscovery)},
      {"request_networksharing_sharesavailable", method(family, &NetworkSharing::reportShares)},
      {"connect_to_networkshare_connectcode", method(family, &NetworkSharing::connectByCode)},
      {"reconnect_to_networkshare", method(family, &NetworkSharing::reconnect)},
      {"request_networksharing_pair", method(family, &NetworkSharing::requestPair)},
      {"allow_networksharing_pair", method(family, &NetworkSharing::allowPair)},
      {"unpair_networksharing_peer", method(family, &NetworkSharing::unpair)},
      {"set_networksharing_peer_auto_reconnect", method(family, &NetworkSharing::setSwitch<&Peer::autoReconnect>)},
      {"set_networksharing_peer_allow_as_host", method(family, &NetworkSharing::setSwitch<&Peer::allowedAsHost>)},
      {"set_networksharing_peer_allow_as_client", method(family, &NetworkSharing::setSwitch<&Peer::allowedAsClient>)},
  };
  requests.insert(requests.end(), others.begin(), others.end());
  return requests;
}

}  // namespace zephsim
