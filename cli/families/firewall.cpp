// The firewall: its mode and its rule lists.
#include "cli/families/handlers.h"
#include "cli/families/rule_lists.h"
#include "cli/usage.h"
#include "sdk/words.h"

namespace cli {

namespace {

void printFirewall(const ZephlinkSDK_FirewallSettingsResult& record) {
  Json::Value value = toJson(record);
  value["mode"] = zephlinksdk::firewallModeText(record.mode);
  writeJson(stdout, value);
}

constexpr RuleFamily<ZephlinkSDK_FirewallSettingsResult> kFirewall{ZephlinkSDK_getFirewallSettings, printFirewall};

constexpr EditUsages kPortUsages = zephlinksdk::wordTable<Edit>({{Edit::Set, usage::firewallPortsSet},
                                                                 {Edit::Add, usage::firewallPortsAdd},
                                                                 {Edit::Remove, usage::firewallPortsRem}},
                                                                usage::firewallPorts);

int setMode(Words words) {
  if (words.empty()) return missing(usage::firewallMode);
  const auto wanted = zephlinksdk::kFirewallModeWords.find(words[0]);
  if (!wanted) return invalid(usage::firewallMode);
  return finish(call(ZephlinkSDK_setFirewallMode, *wanted), printFirewall);
}

int editDomains(Words words) {
  return editList(words, kDomains, kFirewall, ZephlinkSDK_setFirewallDomains, usage::firewallDomains);
}

int editIPv4(Words words) {
  return editList(words, kIPv4, kFirewall, ZephlinkSDK_setFirewallIPv4, usage::firewallIpv4);
}

int editIPv6(Words words) {
  return editList(words, kIPv6, kFirewall, ZephlinkSDK_setFirewallIPv6, usage::firewallIpv6);
}

int editPorts(Words words) {
  return editList(words, kPorts, kFirewall, ZephlinkSDK_setFirewallPorts, usage::firewallPorts, kPortUsages);
}

constexpr Action kFirewallActions[] = {
    {"mode", setMode}, {"domains", editDomains}, {"ipv4", editIPv4}, {"ipv6", editIPv6}, {"ports", editPorts},
};

}  // namespace

int firewall(Words words) { return dispatchWord(kFirewallActions, words, usage::firewall); }

int showFirewall(Words) { return finish(call(ZephlinkSDK_getFirewallSettings), printFirewall); }

}  // namespace cli
