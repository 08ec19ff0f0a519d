// What the files of network sharing share.
#pragma once

#include "zephlinksdk/records.h"

namespace cli {

/// The usage of the switches of this machine. A fault of a peer's switch names it too.
inline constexpr char kSharingSwitchUsage[] = "networksharing set <host|client> <on|off>";

void printShares(const ZephlinkSDK_NetworkSharingAvailableSharesResult& record);

}  // namespace cli
