// Printer of the settings of the tunnel, which `adapter encryption` shares.
#pragma once

#include "zephlinksdk/records.h"

namespace cli {

void printSettings(const ZephlinkSDK_SettingsResult& record);

}  // namespace cli
