// Prints the daemon's state; shared by the families whose actions end on a state.
#pragma once

#include "zephlinksdk/records.h"

namespace cli {

void printState(const ZephlinkSDK_StateResult& record);

}  // namespace cli
