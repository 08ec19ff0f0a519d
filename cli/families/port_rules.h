// Printed form of one port rule, which the forwarded ports and the rule lists share.
#pragma once

#include <json/json.h>

#include "sdk/results.h"

namespace cli {

Json::Value portRuleToJson(const ZephlinkSDK_ProtocolPortPair& rule);

}  // namespace cli
