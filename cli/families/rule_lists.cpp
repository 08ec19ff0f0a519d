#include "cli/families/rule_lists.h"

#include "cli/families/port_rules.h"
#include "cli/output.h"
#include "cli/parsers.h"
#include "cli/usage.h"

namespace cli {

Json::Value toJson(const ZephlinkSDK_RuleLists& lists) {
  Json::Value value(Json::objectValue);
  value["domains"] = toJsonArray(lists.domains, lists.domainCount, [](const Domain& domain) { return domain; });
  value["ipv4"] = toJsonArray(lists.ipv4, lists.ipv4Count, zephlinksdk::addressText<in_addr>);
  value["ipv6"] = toJsonArray(lists.ipv6, lists.ipv6Count, zephlinksdk::addressText<in6_addr>);
  value["ports"] = toJsonArray(lists.ports, lists.portCount, portRuleToJson);
  return value;
}

std::optional<int> readRules(Words words, RuleList<PortRule>& list, const char* usage) {
  if (words.size() > ZephlinkSDK_MaxRules) return tooMany(usage::tooManyPortsFormat, ZephlinkSDK_MaxRules);
  list.count = static_cast<std::uint16_t>(words.size());
  // Low ports and ranges are welcome here.
  if (!parseProtocolPortList(list.count, words.data(), list.rules, true, true)) return invalid(usage);
  return std::nullopt;
}

}  // namespace cli
