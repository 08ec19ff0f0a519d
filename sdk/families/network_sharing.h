// Readers of network sharing that the words on peers use too.
#pragma once

#include <json/json.h>

#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Takes the list of peers as far as it fits, and forgets the peers that the record held before.
void readShares(const Json::Value& data, ZephlinkSDK_NetworkSharingAvailableSharesResult& record);

}  // namespace zephlinksdk
