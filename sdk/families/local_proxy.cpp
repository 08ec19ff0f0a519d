// The local proxy: its switches, its rule lists and the services of its watch list.
#include "sdk/families/events.h"
#include "sdk/families/rule_lists.h"
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

using Record = ZephlinkSDK_LocalProxySettingsResult;

constexpr const char* kReport = "report_localproxy_settings";

void readService(const Json::Value& data, ZephlinkSDK_LocalProxyService& service) {
  readMember(data, "title", service.title);
  readMember(data, "enabled", service.enabled);
  readTexts(member(data, "watchedDomains"), service.watchedDomains, service.watchedDomainCount);
  readTexts(member(data, "proxiedDomains"), service.proxiedDomains, service.proxiedDomainCount);
}

void readLocalProxy(const Json::Value& data, Record& record) {
  readMember(data, "enabled", record.enabled);
  readMember(data, "watchlist_enabled", record.watchlistEnabled);
  record.matchMode = kLocalProxyMatchModeWords.find(asString(member(data, "matchMode")))
                         .value_or(ZephlinkSDK_LocalProxyMatchMode_AllowList);
  readRuleLists(data, record.lists);
  readEntries(member(data, "domain_watchlist"), record.services, record.serviceCount, readService);
}

Record change(const Channel& channel, const char* request, const Member& setting, Callback<Record> callback,
              void* userData) {
  return changeSetting(channel, request, {setting}, kReport, readLocalProxy, callback, userData);
}

}  // namespace

Record ZephlinkSDK::getLocalProxySettings(Callback<Record> callback, void* userData) {
  return subscribe(channel, "request_localproxy_settings", kReport, readLocalProxy, callback, userData);
}

Record ZephlinkSDK::setLocalProxyEnabled(bool enable, Callback<Record> callback, void* userData) {
  return change(channel, "set_localproxy_enabled", {"enabled", enable}, callback, userData);
}

Record ZephlinkSDK::setLocalProxyDomains(std::uint16_t count, const char (*domains)[ZephlinkSDK_DomainSize],
                                         Callback<Record> callback, void* userData) {
  return change(channel, "set_localproxy_domains", ruleListMember("domains", count, domains), callback, userData);
}

Record ZephlinkSDK::setLocalProxyIPv4(std::uint16_t count, const in_addr* addresses, Callback<Record> callback,
                                      void* userData) {
  return change(channel, "set_localproxy_ipv4", ruleListMember("ipv4", count, addresses), callback, userData);
}

Record ZephlinkSDK::setLocalProxyIPv6(std::uint16_t count, const in6_addr* addresses, Callback<Record> callback,
                                      void* userData) {
  return change(channel, "set_localproxy_ipv6", ruleListMember("ipv6", count, addresses), callback, userData);
}

Record ZephlinkSDK::setLocalProxyPorts(std::uint16_t count, const ZephlinkSDK_ProtocolPortPair* rules,
                                       Callback<Record> callback, void* userData) {
  // The daemon refuses this setting under the firewall's name. A refusal under another name does not end the call.
  return ask(channel,
             {.requests = {{"set_localproxy_ports", {ruleListMember("ports", count, rules)}}},
              .reports = {{kReport, readLocalProxy}},
              .settingName = kSetFirewallPorts,
              .keepsTimeout = true},
             callback, userData);
}

Record ZephlinkSDK::setLocalProxyGlobalDomainWatchlistEnable(bool enable, Callback<Record> callback, void* userData) {
  // The report names the same member watchlist_enabled.
  return change(channel, "set_localproxy_bypass", {"watchlistEnabled", enable}, callback, userData);
}

Record ZephlinkSDK::setLocalProxyDomainWatchlistEnable(const char* title, bool enable, Callback<Record> callback,
                                                       void* userData) {
  // The daemon reports no refusal of this request.
  return ask(channel,
             {.requests = {{"set_localproxy_domainwatchlist_enable", {{"title", title}, {"enabled", enable}}}},
              .reports = {{kReport, readLocalProxy}}},
             callback, userData);
}

}  // namespace zephlinksdk
