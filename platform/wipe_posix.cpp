#include <strings.h>

#include <cstring>

#include "platform/wipe.h"

namespace zephlinksdk {

void wipe(void* bytes, std::size_t size) { ::explicit_bzero(bytes, size); }

}  // namespace zephlinksdk
