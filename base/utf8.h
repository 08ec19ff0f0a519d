// UTF-8 as RFC 3629 defines it: no surrogates, no overlong forms, nothing above U+10FFFF.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zephlinksdk {

/// Returns the length in bytes of the character at the start of `text`; 0 if there is no whole character.
std::size_t utf8CharacterLength(std::string_view text);

/// Returns the character's code point. REQUIRES: `character` is one whole character.
char32_t utf8CodePoint(std::string_view character);

/// Returns the number of bytes before the first byte that is not part of a valid character; `text.size()` if all of
/// `text` is UTF-8.
std::size_t utf8PrefixLength(std::string_view text);

/// Returns the length of `text` cut to at most `room` bytes without splitting a character. Returns `room` if the bytes
/// at the limit are not UTF-8.
std::size_t utf8CutLength(std::string_view text, std::size_t room);

/// Returns `text` with each byte that is not part of a valid character replaced by U+FFFD.
std::string toUtf8(std::string_view text);

}  // namespace zephlinksdk
