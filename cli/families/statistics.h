// Live statistics, shared with the historic ones.
#pragma once

#include <json/json.h>

#include "zephlinksdk/records.h"

namespace cli {

inline constexpr char kConnectionStatsLabel[] = "connection_stats";

/// With `brief`, an entry contains only its identity, state, load, loss, latency and total speed.
Json::Value toJson(const ZephlinkSDK_ConnectionStatsResult& record, bool brief);

void printConnectionStats(const ZephlinkSDK_ConnectionStatsResult& record);

}  // namespace cli
