// Port rules, shared by the forwarded ports and the rule lists.
#pragma once

#include <json/json.h>

#include "zephlinksdk/records.h"

namespace cli {

/// Format for tooMany() if a list of ports is too long.
inline constexpr char kTooManyPorts[] = "only %d ports may be requested\n";

Json::Value portRuleToJson(const ZephlinkSDK_ProtocolPortPair& rule);

}  // namespace cli
