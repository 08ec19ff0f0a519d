// Prints the adapters; shared with the stream of statistics.
#pragma once

#include "zephlinksdk/records.h"

namespace cli {

void printAdapters(const ZephlinkSDK_AdaptersResult& record);

}  // namespace cli
