// Forgetting secrets.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

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

/// A text whose memory is wiped, also where it grows; texts of a few bytes, which have no memory, are not.
using WipedText = std::basic_string<char, std::char_traits<char>, WipingAllocator<char>>;

}  // namespace zephlinksdk
