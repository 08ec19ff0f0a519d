// Forgetting secrets.
#pragma once

#include <cstddef>
#include <memory>

namespace zephlinksdk {

/// Fills memory with zeros, also where nothing reads it any more and a compiler would leave that out.
void wipe(void* bytes, std::size_t size);

/// For containers that may hold a secret: memory is wiped before it is given back.
template <class T>
struct WipingAllocator {
  using value_type = T;

  WipingAllocator() = default;
  template <class Other>
  WipingAllocator(const WipingAllocator<Other>&) {}

  T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
  void deallocate(T* memory, std::size_t count) {
    wipe(memory, count * sizeof(T));
    std::allocator<T>().deallocate(memory, count);
  }
  bool operator==(const WipingAllocator&) const = default;
};

}  // namespace zephlinksdk
