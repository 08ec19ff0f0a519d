// Reader of the daemon's state, which login, logout, connecting and disconnecting share.
#pragma once

#include <json/json.h>

#include "sdk/results.h"

namespace zephlinksdk {

void readState(const Json::Value& data, ZephlinkSDK_StateResult& record);

}  // namespace zephlinksdk
