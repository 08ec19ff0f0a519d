#include "sdk/link/json_writer.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "base/utf8.h"
#include "sdk/link/json.h"

namespace zephlinksdk {

namespace {

void appendEscape(WipedText& to, std::uint32_t unit) {
  constexpr char digits[] = "0123456789abcdef";
  to += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) to += digits[unit >> shift & 0xF];
}

void appendAscii(WipedText& to, char c) {
  constexpr std::string_view characters = "\"\\\b\f\n\r\t";
  constexpr std::string_view letters = "\"\\bfnrt";
  const std::size_t known = characters.find(c);
  if (known != std::string_view::npos) {
    to += '\\';
    to += letters[known];
  } else if (c < ' ') {
    appendEscape(to, static_cast<unsigned char>(c));
  } else {
    to += c;
  }
}

void appendCodePoint(WipedText& to, std::uint32_t code) {
  if (code <= 0xFFFF) {
    appendEscape(to, code);
    return;
  }
  const std::uint32_t above = code - 0x10000;
  appendEscape(to, 0xD800 + (above >> 10));
  appendEscape(to, 0xDC00 + (above & 0x3FF));
}

void appendQuoted(WipedText& to, std::string_view text) {
  constexpr std::uint32_t replacement = 0xFFFD;
  to += '"';
  while (!text.empty()) {
    const std::size_t length = utf8CharacterLength(text);
    if (length == 1) {
      appendAscii(to, text[0]);
    } else {
      appendCodePoint(to, length == 0 ? replacement : utf8CodePoint(text.substr(0, length)));
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  to += '"';
}

void appendArray(WipedText& to, const Json::Value& array) {
  char separator = '[';
  for (const Json::Value& value : array) {
    to += std::exchange(separator, ',');
    appendJson(to, value);
  }
  to += array.empty() ? "[]" : "]";
}

void appendObject(WipedText& to, const Json::Value& object) {
  char separator = '{';
  for (auto member = object.begin(); member != object.end(); ++member) {
    to += std::exchange(separator, ',');
    appendQuoted(to, member.name());
    to += ':';
    appendJson(to, *member);
  }
  to += object.empty() ? "{}" : "}";
}

}  // namespace

void appendJson(WipedText& to, const Json::Value& value) {
  std::string held;
  switch (value.type()) {
    case Json::stringValue:
      appendQuoted(to, asText(value, held));
      break;
    case Json::arrayValue:
      appendArray(to, value);
      break;
    case Json::objectValue:
      appendObject(to, value);
      break;
    case Json::nullValue:
      to += "null";
      break;
    default:
      to += asText(value, held);
  }
}

void wipeTexts(const Json::Value& value) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (value.getString(&begin, &end)) {
    // Points to the value's own copy.
    wipe(const_cast<char*>(begin), static_cast<std::size_t>(end - begin));
    return;
  }
  for (const Json::Value& inner : Elements(value)) wipeTexts(inner);
}

}  // namespace zephlinksdk
