#include "sdk/families/rule_lists.h"

#include "platform/address_text.h"
#include "sdk/link/json.h"

namespace zephlinksdk {

namespace {

template <class Address>
void readAddress(const Json::Value& text, Address& address) {
  address = addressFromText<Address>(asString(text).c_str());
}

}  // namespace

void readRuleLists(const Json::Value& data, ZephlinkSDK_RuleLists& lists) {
  lists = {};
  readTexts(member(data, "domains"), lists.domains, lists.domainCount);
  readEntries(member(data, "ipv4"), lists.ipv4, lists.ipv4Count, readAddress<in_addr>);
  readEntries(member(data, "ipv6"), lists.ipv6, lists.ipv6Count, readAddress<in6_addr>);
  readEntries(member(data, "ports"), lists.ports, lists.portCount, readPortRule);
}

Json::Value ruleToWire(const char (&domain)[ZephlinkSDK_DomainSize]) {
  return {std::begin(domain), std::find(std::begin(domain), std::end(domain), '\0')};
}
Json::Value ruleToWire(const in_addr& address) { return addressText(address); }
Json::Value ruleToWire(const in6_addr& address) { return addressText(address); }
Json::Value ruleToWire(const ZephlinkSDK_ProtocolPortPair& rule) { return portRuleObject(rule); }

}  // namespace zephlinksdk
