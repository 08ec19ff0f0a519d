// One port rule on the wire, which the forwarded ports and the rule lists share.
#pragma once

#include <json/json.h>

#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Reads one rule. An unknown protocol is tcp; without an end of the range the rule is a single port.
void readPortRule(const Json::Value& entry, ZephlinkSDK_ProtocolPortPair& rule);

/// The object of a rule in a request. It has no `proto` for a protocol that the table lacks.
Json::Value portRuleObject(const ZephlinkSDK_ProtocolPortPair& rule);

}  // namespace zephlinksdk
