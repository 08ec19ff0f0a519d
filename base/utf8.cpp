#include "base/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zephlinksdk {

namespace {

unsigned byteAt(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

bool isContinuation(unsigned byte) { return (byte & 0xC0) == 0x80; }

/// Returns a lower bound of the number of ASCII bytes at the start of `text`, counted in whole words of eight bytes.
std::size_t asciiWords(std::string_view text) {
  constexpr std::uint64_t highBits = 0x8080808080808080;
  std::size_t length = 0;
  for (std::uint64_t word = 0; text.size() - length >= sizeof word; length += sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & highBits) != 0) break;
  }
  return length;
}

}  // namespace

std::size_t utf8CharacterLength(std::string_view text) {
  if (text.empty()) return 0;
  const unsigned lead = byteAt(text, 0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if (!isContinuation(byteAt(text, i))) return 0;
  }
  const unsigned second = byteAt(text, 1);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool surrogate = lead == 0xED && second >= 0xA0;
  const bool tooLarge = lead == 0xF4 && second >= 0x90;
  return overlong || surrogate || tooLarge ? 0 : length;
}

char32_t utf8CodePoint(std::string_view character) {
  constexpr unsigned leadBits[] = {0x7F, 0x1F, 0x0F, 0x07};
  char32_t code = byteAt(character, 0) & leadBits[character.size() - 1];
  for (std::size_t i = 1; i < character.size(); ++i) code = code << 6 | (byteAt(character, i) & 0x3F);
  return code;
}

std::size_t utf8PrefixLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size()) {
    length += asciiWords(text.substr(length));
    const std::size_t character = utf8CharacterLength(text.substr(length));
    if (character == 0) break;
    length += character;
  }
  return length;
}

std::size_t utf8CutLength(std::string_view text, std::size_t room) {
  if (text.size() <= room) return text.size();
  for (std::size_t before = 1; before <= std::min<std::size_t>(room, 3); ++before) {
    if (utf8CharacterLength(text.substr(room - before)) > before) return room - before;
  }
  return room;
}

std::string toUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  while (true) {
    const std::size_t length = utf8PrefixLength(text);
    valid += text.substr(0, length);
    if (length == text.size()) return valid;
    valid += "\xEF\xBF\xBD";
    text.remove_prefix(length + 1);
  }
}

}  // namespace zephlinksdk
