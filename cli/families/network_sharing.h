// Shared by the files of network sharing.
#pragma once

#include "zephlinksdk/records.h"

namespace cli {

/// The usage of this machine's switches, also printed for errors in a peer's switch.
inline constexpr char kSharingSwitchUsage[] = "networksharing set <host|client> <on|off>";

void printShares(const ZephlinkSDK_NetworkSharingAvailableSharesResult& record);

}  // namespace cli
