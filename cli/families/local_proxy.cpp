// The local proxy. Its rules and services are `streamingbypass` to a user, `localproxy` is its own switch: one record,
// two printers.
#include "cli/families/handlers.h"
#include "cli/families/rule_lists.h"
#include "cli/usage.h"

namespace cli {

namespace {

Json::Value serviceToJson(const ZephlinkSDK_LocalProxyService& service) {
  Json::Value value(Json::objectValue);
  value["title"] = service.title;
  value["enabled"] = service.enabled;
  return value;
}

void printBypass(const ZephlinkSDK_LocalProxySettingsResult& record) {
  Json::Value value = toJson(record);
  value["domainWatchlistEnabled"] = record.watchlistEnabled;
  value["services"] = toJsonArray(record.services, record.serviceCount, serviceToJson);
  writeJson(stdout, value);
}

void printLocalProxy(const ZephlinkSDK_LocalProxySettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["enabled"] = record.enabled;
  writeJson(stdout, value);
}

constexpr RuleFamily<ZephlinkSDK_LocalProxySettingsResult> kBypass{ZephlinkSDK_getLocalProxySettings, printBypass};

constexpr EditUsages kPortUsages = zephlinksdk::wordTable<Edit>({{Edit::Set, usage::streamingbypassPortsSet},
                                                                 {Edit::Add, usage::streamingbypassPortsAdd},
                                                                 {Edit::Remove, usage::streamingbypassPortsRem}},
                                                                usage::streamingbypassPorts);

int editDomains(Words words) {
  return editList(words, kDomains, kBypass, ZephlinkSDK_setLocalProxyDomains, usage::streamingbypassDomains);
}

int editIPv4(Words words) {
  return editList(words, kIPv4, kBypass, ZephlinkSDK_setLocalProxyIPv4, usage::streamingbypassIpv4);
}

int editIPv6(Words words) {
  return editList(words, kIPv6, kBypass, ZephlinkSDK_setLocalProxyIPv6, usage::streamingbypassIpv6);
}

int editPorts(Words words) {
  return editList(words, kPorts, kBypass, ZephlinkSDK_setLocalProxyPorts, usage::streamingbypassPorts, kPortUsages);
}

int setWatchlist(bool enable) {
  return finish(call(ZephlinkSDK_setLocalProxyGlobalDomainWatchlistEnable, enable), printBypass);
}

/// The words of the master switch stand in front of the titles: a service of that title cannot be switched alone.
int setService(Words words) {
  if (words.empty()) return missing(usage::streamingbypassService);
  if (equal(words[0], "enable")) return setWatchlist(true);
  if (equal(words[0], "disable")) return setWatchlist(false);
  if (words.size() < 2) return missing(usage::streamingbypassService);
  const auto enable = parseOnOff(words[1]);
  if (!enable) return invalid(usage::streamingbypassService);
  return finish(call(ZephlinkSDK_setLocalProxyDomainWatchlistEnable, words[0], *enable), printBypass);
}

constexpr Action kBypassActions[] = {
    {"domains", editDomains}, {"ipv4", editIPv4}, {"ipv6", editIPv6}, {"ports", editPorts}, {"service", setService},
};

}  // namespace

int streamingBypass(Words words) { return dispatchWord(kBypassActions, words, usage::streamingbypass); }

int localProxy(Words words) {
  if (words.empty()) return missing(usage::localproxy);
  const auto enable = parseOnOff(words[0]);
  if (!enable) return invalid(usage::localproxy);
  return finish(call(ZephlinkSDK_setLocalProxyEnabled, *enable), printLocalProxy);
}

int showStreamingBypass(Words) { return finish(call(ZephlinkSDK_getLocalProxySettings), printBypass); }

int showLocalProxy(Words) { return finish(call(ZephlinkSDK_getLocalProxySettings), printLocalProxy); }

}  // namespace cli
