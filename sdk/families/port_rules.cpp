#include "sdk/families/port_rules.h"

#include "sdk/link/json.h"
#include "sdk/words.h"

namespace zephlinksdk {

void readPortRule(const Json::Value& entry, ZephlinkSDK_ProtocolPortPair& rule) {
  if (const auto protocol = kPortProtocolWords.find(asString(member(entry, "proto")))) rule.protocol = *protocol;
  readMember(entry, "port", rule.port);
  readMember(entry, "portRangeEnd", rule.portRangeEnd);
}

Json::Value portRuleObject(const ZephlinkSDK_ProtocolPortPair& rule) {
  Json::Value object(Json::objectValue);
  const char* protocol = portProtocolText(rule.protocol);
  if (kPortProtocolWords.find(protocol) == rule.protocol) object["proto"] = protocol;
  object["port"] = rule.port;
  object["portRangeEnd"] = rule.portRangeEnd;
  return object;
}

}  // namespace zephlinksdk
