#include "cli/families/port_rules.h"

#include "zephlinksdk/words.h"

namespace cli {

Json::Value portRuleToJson(const ZephlinkSDK_ProtocolPortPair& rule) {
  Json::Value value(Json::objectValue);
  value["protocol"] = ZephlinkSDK_portProtocolText(rule.protocol);
  value["port"] = rule.port;
  if (rule.portRangeEnd != 0) value["portRangeEnd"] = rule.portRangeEnd;
  return value;
}

}  // namespace cli
