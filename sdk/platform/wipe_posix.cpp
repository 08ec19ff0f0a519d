#include <strings.h>

#include <cstring>

#include "sdk/platform/wipe.h"

namespace zephlinksdk {

void wipe(void* bytes, std::size_t size) { ::explicit_bzero(bytes, size); }

}  // namespace zephlinksdk
