// Bounded copies of text into fixed arrays of characters.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "base/utf8.h"

namespace zephlinksdk {

/// Copies `from` up to its first NUL, cut to at most `size` - 1 bytes without splitting a UTF-8 character. Fills the
/// rest of the array with zeros, so that the result is terminated and no previous text remains. Does nothing for a null
/// array or a size of 0.
inline void copyText(char* to, std::size_t size, std::string_view from) {
  if (to == nullptr || size == 0) return;
  const std::size_t length = utf8CutLength(from.substr(0, from.find('\0')), size - 1);
  if (length > 0) std::memmove(to, from.data(), length);
  std::memset(to + length, 0, size - length);
}

template <std::size_t N>
void copyText(char (&to)[N], std::string_view from) {
  copyText(to, N, from);
}

/// Returns the text in an array up to its first NUL. The array need not be terminated.
template <std::size_t N>
std::string textOf(const char (&text)[N]) {
  return {text, std::find(text, text + N, '\0')};
}

}  // namespace zephlinksdk
