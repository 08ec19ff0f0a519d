// The wire format of a port rule, shared by the forwarded ports and the rule lists.
#pragma once

#include <json/json.h>

#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Reads one rule. An unknown protocol reads as tcp; a rule without an end of its range is a single port.
void readPortRule(const Json::Value& entry, ZephlinkSDK_ProtocolPortPair& rule);

/// Returns a rule as the object in a request. Omits `proto` for a protocol that is not in the table.
Json::Value portRuleObject(const ZephlinkSDK_ProtocolPortPair& rule);

}  // namespace zephlinksdk
