// Printer of the adapters, which the stream of statistics shares.
#pragma once

#include "zephlinksdk/records.h"

namespace cli {

void printAdapters(const ZephlinkSDK_AdaptersResult& record);

}  // namespace cli
