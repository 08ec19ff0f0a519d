// Forgetting secrets.
#pragma once

#include <cstddef>

namespace zephlinksdk {

/// Fills memory with zeros, also where nothing reads it any more and a compiler would leave that out.
void wipe(void* bytes, std::size_t size);

}  // namespace zephlinksdk
