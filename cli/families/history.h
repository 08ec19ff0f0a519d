// Historic and session statistics that the stream of live statistics includes.
#pragma once

#include "cli/actions.h"
#include "zephlinksdk/records.h"

namespace cli {

/// The handler of `stats historic`. Ignores its arguments.
int printHistory(Arguments arguments, const char* usage);

void printSessionStats(const ZephlinkSDK_SessionStatsResult& record);

}  // namespace cli
