// The firewall: its mode and its rule lists.
#include "cli/families/families.h"
#include "cli/families/rule_lists.h"
#include "cli/handlers.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

void printFirewall(const ZephlinkSDK_FirewallSettingsResult& record) {
  Json::Value value = toJson(record.lists);
  value["mode"] = ZephlinkSDK_firewallModeText(record.mode);
  writeJson(stdout, value);
}

template <const auto& Kind, auto& Set, const EditUsages& Usages = kNoUsages>
constexpr Handler& edit = editList<Kind, ZephlinkSDK_getFirewallSettings, Set, printFirewall, Usages>;

constexpr EditUsages kPortUsages = {
    "firewall ports set [port[-portRangeEnd]/proto] ...",
    "firewall ports add [port[-portRangeEnd]/proto] ...",
    "firewall ports rem [port[-portRangeEnd]/proto] ...",
};

constexpr Action kFirewallRows[] = {
    {"mode", "firewall mode <off|allowlist|denylist>",
     atLeast<1, setValue<ZephlinkSDK_firewallModeFromText, ZephlinkSDK_setFirewallMode, printFirewall>>},
    {"domains", "firewall domains <add|rem|set> <domain> ...", edit<kDomains, ZephlinkSDK_setFirewallDomains>},
    {"ipv4", "firewall ipv4 <add|rem|set> <ip address> ...", edit<kIPv4, ZephlinkSDK_setFirewallIPv4>},
    {"ipv6", "firewall ipv6 <add|rem|set> <ip address> ...", edit<kIPv6, ZephlinkSDK_setFirewallIPv6>},
    {"ports", "firewall ports <add|rem|set> [port[-portRangeEnd]/proto] ...",
     edit<kPorts, ZephlinkSDK_setFirewallPorts, kPortUsages>},
};

constexpr Action kRows[] = {
    {"firewall", "firewall <mode|domains|ipv4|ipv6|ports>", nullptr, &rows<kFirewallRows>},
};

constexpr Action kShowRows[] = {
    {"firewall", nullptr, exactly<0, perform<ZephlinkSDK_getFirewallSettings, printFirewall>>},
};

}  // namespace

constinit const families::Family families::firewall{kRows, kShowRows};

}  // namespace cli
