// Prints the settings of the tunnel; shared with `adapter encryption`.
#pragma once

#include "zephlinksdk/records.h"

namespace cli {

void printSettings(const ZephlinkSDK_SettingsResult& record);

}  // namespace cli
