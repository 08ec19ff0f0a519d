// The wire format of the four rule lists that the firewall, streaming and the local proxy share.
#pragma once

#include <json/json.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "sdk/families/port_rules.h"
#include "sdk/link/call.h"
#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Reads the four lists of a report.
void readRuleLists(const Json::Value& data, ZephlinkSDK_RuleLists& lists);

// Each returns one entry of a request.
Json::Value ruleToWire(const char (&domain)[ZephlinkSDK_DomainSize]);
Json::Value ruleToWire(const in_addr& address);
Json::Value ruleToWire(const in6_addr& address);
Json::Value ruleToWire(const ZephlinkSDK_ProtocolPortPair& rule);

/// Returns the list as the member of a request, cut to the size of a list. Invalid if `entries` is null and `count`
/// above 0.
template <class Entry>
Member ruleListMember(const char* name, std::uint16_t count, const Entry* entries) {
  Member list(name, Json::Value(Json::arrayValue));
  list.valid = count == 0 || entries != nullptr;
  if (!list.valid) return list;
  for (const Entry& entry : std::span(entries, std::min<std::size_t>(count, ZephlinkSDK_MaxRules))) {
    list.value.append(ruleToWire(entry));
  }
  return list;
}

}  // namespace zephlinksdk
