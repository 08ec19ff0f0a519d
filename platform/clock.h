// The clock of the library: monotonic, so that changes of the wall clock do not affect time-outs.
#pragma once

#include <chrono>
#include <cstdint>

namespace zephlinksdk {

/// Returns milliseconds on the monotonic clock. Its zero is unspecified.
inline std::uint64_t monotonicMs() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

}  // namespace zephlinksdk
