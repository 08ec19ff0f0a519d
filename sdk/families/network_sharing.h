// Readers of network sharing that the peer functions also use.
#pragma once

#include <json/json.h>

#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Reads as many peers as fit, replacing those in the record.
void readShares(const Json::Value& data, ZephlinkSDK_NetworkSharingAvailableSharesResult& record);

}  // namespace zephlinksdk
