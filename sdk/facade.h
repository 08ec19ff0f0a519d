// Kept for hosts written before the public headers: they include this name and use these spellings.
#pragma once

#include "zephlinksdk/zephlinksdk.h"

namespace zephlinksdk {

inline const char* errorText(uint32_t code) { return ZephlinkSDK_errorText(code); }

}  // namespace zephlinksdk
