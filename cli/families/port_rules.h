// What the forwarded ports and the rule lists share about port rules.
#pragma once

#include <json/json.h>

#include "zephlinksdk/records.h"

namespace cli {

/// For tooMany(), when a list of ports is too long.
inline constexpr char kTooManyPorts[] = "only %d ports may be requested\n";

Json::Value portRuleToJson(const ZephlinkSDK_ProtocolPortPair& rule);

}  // namespace cli
