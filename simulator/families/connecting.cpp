// The tunnel: its state, its servers, connecting and disconnecting.
#include "simulator/directory.h"
#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"
#include "simulator/tunnel.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;

const Words kConnectMethods = {"user", "userpublic", "userprivate", "p2p", "proxy", "country", "exact"};

class Connecting {
 public:
  explicit Connecting(Daemon& owner) : daemon(owner), world(owner.world) {
    serverSettings->value = object({{"connect_to_best_method", "user"}, {"connect_country", ""}});
    world.lastDisconnect->value = object({{"disconnectReason", "NONE"}, {"sessionEnd", 0}, {"sessionLength", 0}});
  }

  void connect(const Json::Value& members) {
    const std::string wanted = requiredText(members, "server");
    if (!world.isLoggedIn()) return daemon.fault("report_login_error", Fault::Credentials, "Not logged in");
    if (world.state == TunnelState::Overlimit) {
      return daemon.fault("report_connect_error", Fault::Account, "The data of the account are used up");
    }
    const Json::Value server = chooseServer({resolveAuto(wanted), directory, world.lastServer});
    if (server.isNull()) return refuseServer();
    leaveTunnel(daemon, "USERINITIATED", [this, server, automatic = wanted == "auto"] { approach(server, automatic); });
  }

  void disconnect(const Json::Value&) {
    if (world.state == TunnelState::LoggedIn || !world.isLoggedIn()) return reportState(daemon);
    leaveTunnel(daemon, "USERINITIATED", [this] { moveTo(daemon, TunnelState::LoggedIn); });
  }

  void reportServer(const Json::Value&) {
    daemon.report("report_connected_server", world.server.isNull() ? Json::objectValue : world.server);
  }

  void reportDirectory(const Json::Value&) {
    Json::Value visible(Json::arrayValue);
    for (const Json::Value& server : directory) {
      if (world.isLoggedIn() || server["private"] != "yes") visible.append(server);
    }
    daemon.report("report_directory", visible);
  }

  void reportSettings(const Json::Value&) { daemon.report(*serverSettings); }

  void setConnectMethod(const Json::Value& members) {
    const std::string place = requiredText(members, "countryCode");
    serverSettings->value["connect_to_best_method"] = requiredWord(members, "connect_to_best_method", kConnectMethods);
    serverSettings->value["connect_country"] = place;
    daemon.report(*serverSettings);
  }

 private:
  /// "auto" selects the configured connect method.
  std::string resolveAuto(const std::string& wanted) const {
    if (wanted != "auto") return wanted;
    const std::string place = serverSettings->value["connect_country"].asString();
    return place.empty() ? serverSettings->value["connect_to_best_method"].asString() : place;
  }

  void refuseServer() {
    daemon.after(300ms, [this] { daemon.fault("report_connect_error", Fault::Directory, "There is no such server"); });
  }

  void approach(const Json::Value& server, bool automatic) {
    if (!automatic) return enter(server);
    moveTo(daemon, TunnelState::AutoConnecting);
    unlessMoved(daemon, 200ms, [this, server] { enter(server); });
  }

  void enter(const Json::Value& server) {
    moveTo(daemon, TunnelState::Connecting);
    unlessMoved(daemon, 700ms, [this, server] { beginSession(daemon, server); });
  }

  Daemon& daemon;
  World& world;
  const Json::Value directory = makeDirectory();
  const SharedRecord serverSettings = std::make_shared<Record>(Record{"report_server_settings"});
};

}  // namespace

std::vector<Request> connectingFamily(Daemon& daemon) {
  const auto family = std::make_shared<Connecting>(daemon);
  return {
      {"request_current_state", [](Daemon& asked, const Json::Value&) { reportState(asked); }},
      {"server_auto_connect", method(family, &Connecting::connect)},
      {"server_disconnect", method(family, &Connecting::disconnect)},
      {"request_connected_server", method(family, &Connecting::reportServer)},
      {"request_directory", method(family, &Connecting::reportDirectory)},
      {"request_server_settings", method(family, &Connecting::reportSettings)},
      {"set_server_connectbest", method(family, &Connecting::setConnectMethod)},
  };
}

}  // namespace zephsim
