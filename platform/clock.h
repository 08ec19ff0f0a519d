// The one clock of the library: monotonic, so that no change of the wall clock moves a time-out.
#pragma once

#include <chrono>
#include <cstdint>

namespace zephlinksdk {

/// Milliseconds on the monotonic clock. Its zero is unspecified.
inline std::uint64_t monotonicMs() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

}  // namespace zephlinksdk
