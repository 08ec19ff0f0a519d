// Bounded copies of text into the fixed character arrays of the records.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace zephlinksdk {

/// Copies `from` up to its first NUL, cut to N - 1 bytes. A cut counts bytes and may divide a UTF-8 sequence.
/// The rest of the array is filled with zeros: it is always terminated, and keeps nothing of a longer earlier text.
template <std::size_t N>
void copyText(char (&to)[N], std::string_view from) {
  const std::size_t length = std::min({from.size(), from.find('\0'), N - 1});
  if (length > 0) std::memmove(to, from.data(), length);
  std::memset(to + length, 0, N - length);
}

/// What a caller's array holds up to its first NUL; it need not be terminated.
template <std::size_t N>
std::string textOf(const char (&text)[N]) {
  return {text, std::find(text, text + N, '\0')};
}

}  // namespace zephlinksdk
