// What firewall, streaming and local proxy share: their four rule lists on the wire.
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

/// Reads all four lists of a report.
void readRuleLists(const Json::Value& data, ZephlinkSDK_RuleLists& lists);

// One entry in a request.
Json::Value ruleToWire(const char (&domain)[ZephlinkSDK_DomainSize]);
Json::Value ruleToWire(const in_addr& address);
Json::Value ruleToWire(const in6_addr& address);
Json::Value ruleToWire(const ZephlinkSDK_ProtocolPortPair& rule);

/// The whole list as the member of a request, as much of it as a list may hold; not valid when entries are counted but
/// none are given.
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
