#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "platform/wipe.h"

namespace zephlinksdk {

void wipe(void* bytes, std::size_t size) { SecureZeroMemory(bytes, size); }

}  // namespace zephlinksdk
