// Privacy switches, the tunnel's DNS servers, and captive portals.
#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;

constexpr Json::ArrayIndex kMaxDnsServers = 3;
constexpr char kCaptiveAdapter[] = "wlan0";

/// One network has a captive portal until somebody has logged in, that is, has switched the login mode on and off
/// again.
class CaptivePortals {
 public:
  explicit CaptivePortals(Daemon& owner) : daemon(owner) {}

  void check(const Json::Value&) {
    daemon.after(1s, [this] {
      const Json::Value networks = captive ? array({kCaptiveAdapter}) : array({});
      daemon.report("report_captive_networks", object({{"networks", networks}}));
    });
  }

  void setLogin(const Json::Value& members) {
    const bool enable = requiredBool(members, "enable");
    if (!enable && network == kCaptiveAdapter) captive = false;
    network = enable ? requiredText(members, "network") : "";
    const bool enabled = enable && daemon.world.adapter(network);
    daemon.report("report_cplogin_network", object({{"enabled", enabled}, {"network", network}}));
  }

 private:
  Daemon& daemon;
  bool captive = true;
  std::string network;  ///< in login mode; empty if the mode is off
};

}  // namespace

std::vector<Request> privacyFamily(Daemon& daemon) {
  const auto privacy = std::make_shared<Record>(Record{"report_privacy_settings"});
  privacy->value = object({{"killswitch", false},
                           {"dnsleak", true},
                           {"ipleak", true},
                           {"dns_addresses", array({})},
                           {"do_not_store_credentials", false},
                           {"request_to_disable_doh", true},
                           {"api_protection", false}});
  const auto portals = std::make_shared<CaptivePortals>(daemon);
  return {
      {"request_privacy_settings", reportRecord(privacy)},
      {"set_privacy_killswitch", setMember(privacy, "killswitch", "killswitch", Kind::Bool)},
      {"set_privacy_dnsleak", setMember(privacy, "dnsleak", "dnsleak", Kind::Bool)},
      {"set_privacy_ipleak", setMember(privacy, "ipleak", "ipleak", Kind::Bool)},
      {"set_request_to_disable_doh",
       setMember(privacy, "request_to_disable_doh", "request_to_disable_doh", Kind::Bool)},
      {"set_dns_servers", setList(privacy, "dns_addresses", kMaxDnsServers)},
      {"check_captive_networks", method(portals, &CaptivePortals::check)},
      {"set_cplogin_enable", method(portals, &CaptivePortals::setLogin)},
  };
}

}  // namespace zephsim
