// For hosts written before the public headers: they include this file and use these names.
#pragma once

#include "zephlinksdk/zephlinksdk.h"

namespace zephlinksdk {

inline const char* errorText(uint32_t code) { return ZephlinkSDK_errorText(code); }

}  // namespace zephlinksdk
