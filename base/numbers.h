// Numbers that stand in texts.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace zephlinksdk {

/// Takes a decimal integer, blanks and a sign before it allowed, off the front of `text`. What is out of range becomes
/// the nearest number. Without a digit false, and nothing changes.
inline bool takeInteger(const char*& text, std::int32_t& value) {
  using Limits = std::numeric_limits<std::int32_t>;
  char* end = nullptr;
  const long long number = std::strtoll(text, &end, 10);
  if (end == text) return false;
  value = static_cast<std::int32_t>(std::clamp<long long>(number, Limits::min(), Limits::max()));
  text = end;
  return true;
}

/// The integer at the front of `text`, 0 without one.
inline std::int32_t leadingInteger(const char* text) {
  std::int32_t value = 0;
  takeInteger(text, value);
  return value;
}

}  // namespace zephlinksdk
