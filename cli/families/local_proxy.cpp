// The local proxy. The actions call its rules and services `streamingbypass` and its switch `localproxy`: one record,
// two printers.
#include "cli/families/families.h"
#include "cli/families/rule_lists.h"
#include "cli/handlers.h"

namespace cli {

namespace {

Json::Value serviceToJson(const ZephlinkSDK_LocalProxyService& service) {
  Json::Value value(Json::objectValue);
  value["title"] = service.title;
  value["enabled"] = service.enabled;
  return value;
}

void printBypass(const ZephlinkSDK_LocalProxySettingsResult& record) {
  Json::Value value = toJson(record.lists);
  value["domainWatchlistEnabled"] = record.watchlistEnabled;
  value["services"] = toJsonArray(record.services, record.serviceCount, serviceToJson);
  writeJson(stdout, value);
}

void printLocalProxy(const ZephlinkSDK_LocalProxySettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["enabled"] = record.enabled;
  writeJson(stdout, value);
}

template <const auto& Kind, auto& Set, const EditUsages& Usages = kNoUsages>
constexpr Handler& edit = editList<Kind, ZephlinkSDK_getLocalProxySettings, Set, printBypass, Usages>;

constexpr EditUsages kPortUsages = {
    "streamingbypass ports set <port[-portRangeEnd]/proto> ...",
    "streamingbypass ports add <port[-portRangeEnd]/proto> ...",
    "streamingbypass ports rem <port[-portRangeEnd]/proto> ...",
};

template <bool Enable>
int setWatchlist(Arguments, const char*) {
  return finish(call<ZephlinkSDK_setLocalProxyGlobalDomainWatchlistEnable>(Enable), printBypass);
}

int setService(Arguments arguments, const char* usage) {
  const auto enable = valueOf<parseSwitch>(arguments[1]);
  if (!enable) return invalid(usage);
  return finish(call<ZephlinkSDK_setLocalProxyDomainWatchlistEnable>(arguments[0], *enable), printBypass);
}

// `enable` and `disable` are matched before service titles: services with these titles cannot be switched individually.
constexpr Action kServiceRows[] = {
    {"enable", nullptr, setWatchlist<true>},
    {"disable", nullptr, setWatchlist<false>},
};

constexpr Action kBypassRows[] = {
    {"domains", "streamingbypass domains <add|rem|set> [<domain> ...]",
     edit<kDomains, ZephlinkSDK_setLocalProxyDomains>},
    {"ipv4", "streamingbypass ipv4 <add|rem|set> <ip address> ...", edit<kIPv4, ZephlinkSDK_setLocalProxyIPv4>},
    {"ipv6", "streamingbypass ipv6 <add|rem|set> <ip address> ...", edit<kIPv6, ZephlinkSDK_setLocalProxyIPv6>},
    {"ports", "streamingbypass ports <add|rem|set> <port[-portRangeEnd]/proto> ...",
     edit<kPorts, ZephlinkSDK_setLocalProxyPorts, kPortUsages>},
    {"service", "streamingbypass service <enable|disable|service name> [<on|off>]", atLeast<2, setService>,
     &rows<kServiceRows>},
};

constexpr Action kRows[] = {
    {"streamingbypass", "streamingbypass <domains|ipv4|ipv6|ports|service>", nullptr, &rows<kBypassRows>},
    {"localproxy", "localproxy <on|off>",
     atLeast<1, setValue<parseSwitch, ZephlinkSDK_setLocalProxyEnabled, printLocalProxy>>},
};

constexpr Action kShowRows[] = {
    {"localproxy", nullptr, exactly<0, perform<ZephlinkSDK_getLocalProxySettings, printLocalProxy>>},
    {"streamingbypass", nullptr, exactly<0, perform<ZephlinkSDK_getLocalProxySettings, printBypass>>},
};

}  // namespace

constinit const families::Family families::localProxy{kRows, kShowRows};

}  // namespace cli
