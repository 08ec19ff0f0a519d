#include "sdk/families/port_rules.h"

#include "sdk/link/json.h"
#include "sdk/word_tables.h"

namespace zephlinksdk {

void readPortRule(const Json::Value& entry, ZephlinkSDK_ProtocolPortPair& rule) {
  const auto protocol = kPortProtocolWords.find(asString(member(entry, "proto")));
  rule.protocol = protocol.value_or(ZephlinkSDK_PortProtocol_Tcp);
  readMember(entry, "port", rule.port);
  readMember(entry, "portRangeEnd", rule.portRangeEnd);
}

Json::Value portRuleObject(const ZephlinkSDK_ProtocolPortPair& rule) {
  Json::Value object(Json::objectValue);
  const char* protocol = kPortProtocolWords.text(rule.protocol);
  if (kPortProtocolWords.find(protocol) == rule.protocol) object["proto"] = protocol;
  object["port"] = rule.port;
  object["portRangeEnd"] = rule.portRangeEnd;
  return object;
}

}  // namespace zephlinksdk
