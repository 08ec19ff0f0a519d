// Erases secrets from memory.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace zephlinksdk {

/// Fills memory with zeros. The compiler does not remove the call, even if nothing reads the memory later.
void wipe(void* bytes, std::size_t size);

/// For containers that may contain a secret: wipes memory before freeing it.
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

/// A text whose memory is wiped, including when it grows. Short texts that are stored without allocation are not wiped.
using WipedText = std::basic_string<char, std::char_traits<char>, WipingAllocator<char>>;

}  // namespace zephlinksdk
