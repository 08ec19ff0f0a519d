// UTF-8 as RFC 3629 defines it: no surrogates, no overlong forms, nothing above U+10FFFF.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zephlinksdk {

/// Returns the length in bytes of the character at the front of `text`; 0 if no whole character is there.
std::size_t utf8CharacterLength(std::string_view text);

/// Returns the character's number. REQUIRES: `character` is one whole character.
char32_t utf8CodePoint(std::string_view character);

/// Returns the number of bytes of `text` before its first byte that belongs to no character; `text.size()` if all of it
/// is UTF-8.
std::size_t utf8PrefixLength(std::string_view text);

/// Returns the length of `text` cut to `room` bytes without dividing a character. Where the bytes at the limit are not
/// UTF-8, it is `room`.
std::size_t utf8CutLength(std::string_view text, std::size_t room);

/// Returns `text` with U+FFFD in place of each byte that belongs to no character.
std::string toUtf8(std::string_view text);

}  // namespace zephlinksdk
