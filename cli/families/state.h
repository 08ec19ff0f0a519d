// Printer of the daemon's state, which the families that end on a state share.
#pragma once

#include "zephlinksdk/records.h"

namespace cli {

void printState(const ZephlinkSDK_StateResult& record);

}  // namespace cli
