// What the stream of live statistics includes from the historic and session statistics.
#pragma once

#include "cli/actions.h"
#include "zephlinksdk/records.h"

namespace cli {

/// The handler of `stats historic`; ignores arguments.
int printHistory(Words words, const char* usage);

void printSessionStats(const ZephlinkSDK_SessionStatsResult& record);

}  // namespace cli
