// The firewall: its mode and its rule lists.
#include "sdk/families/events.h"
#include "sdk/families/rule_lists.h"
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

using Record = ZephlinkSDK_FirewallSettingsResult;

constexpr const char* kReport = "report_firewall_settings";

void readFirewall(const Json::Value& data, Record& record) {
  record.mode = kFirewallModeWords.find(asString(member(data, "mode"))).value_or(ZephlinkSDK_FirewallMode_Off);
  readRuleLists(data, record.lists);
}

Record change(const Channel& channel, const char* request, const Member& setting, Callback<Record> callback,
              void* userData) {
  return changeSetting(channel, request, {setting}, kReport, readFirewall, callback, userData);
}

}  // namespace

Record ZephlinkSDK::getFirewallSettings(Callback<Record> callback, void* userData) {
  return subscribe(channel, "request_firewall_settings", kReport, readFirewall, callback, userData);
}

Record ZephlinkSDK::setFirewallMode(ZephlinkSDK_FirewallMode mode, Callback<Record> callback, void* userData) {
  return change(channel, "set_firewall_mode", {"mode", kFirewallModeWords.text(mode)}, callback, userData);
}

Record ZephlinkSDK::setFirewallDomains(std::uint16_t count, const char (*domains)[ZephlinkSDK_DomainSize],
                                       Callback<Record> callback, void* userData) {
  return change(channel, "set_firewall_domains", ruleListMember("domains", count, domains), callback, userData);
}

Record ZephlinkSDK::setFirewallIPv4(std::uint16_t count, const in_addr* addresses, Callback<Record> callback,
                                    void* userData) {
  return change(channel, "set_firewall_ipv4", ruleListMember("ipv4", count, addresses), callback, userData);
}

Record ZephlinkSDK::setFirewallIPv6(std::uint16_t count, const in6_addr* addresses, Callback<Record> callback,
                                    void* userData) {
  return change(channel, "set_firewall_ipv6", ruleListMember("ipv6", count, addresses), callback, userData);
}

Record ZephlinkSDK::setFirewallPorts(std::uint16_t count, const ZephlinkSDK_ProtocolPortPair* rules,
                                     Callback<Record> callback, void* userData) {
  return change(channel, kSetFirewallPorts, ruleListMember("ports", count, rules), callback, userData);
}

}  // namespace zephlinksdk
