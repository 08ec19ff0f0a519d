#include "cli/families/rule_lists.h"

#include "cli/families/port_rules.h"
#include "cli/output.h"
#include "cli/parsers.h"

namespace cli {

Json::Value toJson(const ZephlinkSDK_RuleLists& lists) {
  Json::Value value(Json::objectValue);
  value["domains"] = toJsonArray(lists.domains, lists.domainCount, [](const Domain& domain) { return domain; });
  value["ipv4"] = toJsonArray(lists.ipv4, lists.ipv4Count, zephlinksdk::addressText<in_addr>);
  value["ipv6"] = toJsonArray(lists.ipv6, lists.ipv6Count, zephlinksdk::addressText<in6_addr>);
  value["ports"] = toJsonArray(lists.ports, lists.portCount, portRuleToJson);
  return value;
}

std::optional<int> readRules(Arguments arguments, RuleList<PortRule>& list, const char* usage) {
  if (arguments.size() > ZephlinkSDK_MaxRules) return tooMany(kTooManyPorts, ZephlinkSDK_MaxRules);
  // Rule lists accept low ports and ranges.
  if (!parseProtocolPortList(static_cast<int>(arguments.size()), arguments.data(), list.fill().data(), true, true)) {
    return invalid(usage);
  }
  return std::nullopt;
}

}  // namespace cli
