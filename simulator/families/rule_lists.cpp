// The firewall, streaming and the local proxy: three families with the same four rule lists.
#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"

namespace zephsim {
namespace {

constexpr Json::ArrayIndex kMaxEntries = 100;
constexpr int kMaxPort = 65535;

void checkRule(const Json::Value& rule) {
  static const Words kProtocols = {"tcp", "udp"};
  requiredWord(rule, "proto", kProtocols);
  const std::int64_t first = required(rule, "port", Kind::Whole).asInt64();
  const std::int64_t last = required(rule, "portRangeEnd", Kind::Whole).asInt64();
  if (first < 0 || first > kMaxPort || last < 0 || last > kMaxPort || (last != 0 && last < first)) {
    throw Refusal{Fault::InvalidArgument, "The port range is not valid"};
  }
}

RequestHandler setPorts(const SharedRecord& record) {
  return [set = setList(record, "ports", kMaxEntries)](Daemon& daemon, const Json::Value& members) {
    for (const Json::Value& rule : required(members, "ports", Kind::List)) checkRule(rule);
    set(daemon, members);
  };
}

/// Returns the requests to read and set the lists of the family `name`.
std::vector<Request> listRequests(const std::string& name, const SharedRecord& record) {
  std::vector<Request> requests = {
      {"request_" + name + "_settings", reportRecord(record)},
      {"set_" + name + "_ports", setPorts(record)},
  };
  record->value["ports"] = array({});
  for (const char* list : {"domains", "ipv4", "ipv6"}) {
    record->value[list] = array({});
    requests.push_back({"set_" + name + "_" + list, setList(record, list, kMaxEntries)});
  }
  return requests;
}

Json::Value rule(const char* protocol, int port, int last = 0) {
  return object({{"proto", protocol}, {"port", port}, {"portRangeEnd", last}});
}

Json::Value service(const char* title, bool enabled, const Json::Value& watched, const Json::Value& proxied) {
  return object({{"title", title}, {"enabled", enabled}, {"watchedDomains", watched}, {"proxiedDomains", proxied}});
}

std::vector<Request> firewallRequests() {
  const auto firewall = std::make_shared<Record>(Record{"report_firewall_settings"});
  std::vector<Request> requests = listRequests("firewall", firewall);
  firewall->value["mode"] = "off";
  requests.push_back({"set_firewall_mode", setWord(firewall, "mode", "mode", {"off", "allowlist", "denylist"})});
  return requests;
}

std::vector<Request> streamingRequests() {
  const auto streaming = std::make_shared<Record>(Record{"report_streaming_settings"});
  std::vector<Request> requests = listRequests("streaming", streaming);
  streaming->value["domains"] = array({"video.example.com", "meet.example.org"});
  streaming->value["ports"] = array({rule("udp", 3478, 3481), rule("tcp", 1935)});
  return requests;
}

/// An unknown title changes nothing.
RequestHandler setService(const SharedRecord& proxy) {
  return [proxy](Daemon& daemon, const Json::Value& members) {
    const bool enabled = requiredBool(members, "enabled");
    Json::Value* found = findBy(proxy->value["domain_watchlist"], "title", requiredText(members, "title"));
    if (found) (*found)["enabled"] = enabled;
    daemon.report(*proxy);
  };
}

std::vector<Request> localProxyRequests() {
  const auto proxy = std::make_shared<Record>(Record{"report_localproxy_settings"});
  std::vector<Request> requests = listRequests("localproxy", proxy);
  proxy->value["enabled"] = true;
  proxy->value["watchlist_enabled"] = false;
  proxy->value["matchMode"] = "denylist";
  proxy->value["domain_watchlist"] =
      array({service("Films", true, array({"films.example.com"}), array({"cdn.films.example.com"})),
             service("Music", false, array({"music.example.com"}), array({"cdn.music.example.com"})),
             service("Bank", true, array({"bank.example.org"}), array({"bank.example.org"}))});
  requests.push_back({"set_localproxy_enabled", setMember(proxy, "enabled", "enabled", Kind::Bool)});
  requests.push_back({"set_localproxy_bypass", setMember(proxy, "watchlistEnabled", "watchlist_enabled", Kind::Bool)});
  requests.push_back({"set_localproxy_domainwatchlist_enable", setService(proxy)});
  return requests;
}

}  // namespace

std::vector<Request> ruleListsFamily(Daemon&) {
  std::vector<Request> all;
  for (auto& requests : {firewallRequests(), streamingRequests(), localProxyRequests()}) {
    all.insert(all.end(), requests.begin(), requests.end());
  }
  return all;
}

}  // namespace zephsim
