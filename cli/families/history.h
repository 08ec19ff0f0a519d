// Printer of the session statistics, which only the stream of live statistics shows.
#pragma once

#include "sdk/results.h"

namespace cli {

void printSessionStats(const ZephlinkSDK_SessionStatsResult& record);

}  // namespace cli
