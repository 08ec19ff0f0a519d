// Reads numbers at the start of texts.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace zephlinksdk {

/// Reads a decimal integer at the start of `text`, after optional blanks and a sign, and advances `text` past it.
/// Clamps numbers out of range. Returns false and changes nothing if there is no digit.
inline bool takeInteger(const char*& text, std::int32_t& value) {
  using Limits = std::numeric_limits<std::int32_t>;
  char* end = nullptr;
  const long long number = std::strtoll(text, &end, 10);
  if (end == text) return false;
  value = static_cast<std::int32_t>(std::clamp<long long>(number, Limits::min(), Limits::max()));
  text = end;
  return true;
}

/// Returns the integer at the start of `text`, or 0.
inline std::int32_t leadingInteger(const char* text) {
  std::int32_t value = 0;
  takeInteger(text, value);
  return value;
}

}  // namespace zephlinksdk
