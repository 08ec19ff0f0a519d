// Printer of the peers, which the words that act on one peer end on too.
#pragma once

#include "sdk/results.h"

namespace cli {

void printShares(const ZephlinkSDK_NetworkSharingAvailableSharesResult& record);

}  // namespace cli
