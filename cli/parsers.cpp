#include "cli/parsers.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "platform/console.h"
#include "platform/terminal.h"
#include "zephlinksdk/words.h"

namespace cli {
namespace {

constexpr std::string_view kPrivatePrefix = "private";

/// The rule that all numbers share: at least one character was converted and none remains.
bool isWholeNumber(const char* argument, const char* end) { return end != argument && *end == '\0'; }

template <typename Integer>
bool parseInteger(const char* argument, Integer& value) {
  using Wide = std::conditional_t<std::is_same_v<Integer, std::uint64_t>, unsigned long long, long long>;
  char* end = nullptr;
  Wide wide = 0;
  errno = 0;
  if constexpr (std::is_unsigned_v<Wide>) {
    wide = std::strtoull(argument, &end, 10);
  } else {
    wide = std::strtoll(argument, &end, 10);
  }
  if (!isWholeNumber(argument, end) || errno == ERANGE || !std::in_range<Integer>(wide)) return false;
  value = static_cast<Integer>(wide);
  return true;
}

/// Cuts `text` at the first `separator`. Returns the text after it, or null if there is no separator.
char* cutAt(char* text, char separator) {
  char* found = std::strchr(text, separator);
  if (found == nullptr) return nullptr;
  *found = '\0';
  return found + 1;
}

bool parsePortRule(char* argument, ZephlinkSDK_ProtocolPortPair& rule, bool allowLowPorts, bool allowRange) {
  rule = {};
  if (const char* protocol = cutAt(argument, '/')) {
    // Only the first three characters count: "tcpish" is tcp.
    char name[4];
    zephlinksdk::copyText(name, protocol);
    if (!ZephlinkSDK_portProtocolFromText(name, &rule.protocol)) return false;
    if (const char* rangeEnd = cutAt(argument, '-')) {
      if (!allowRange || !parseU16(rangeEnd, rule.portRangeEnd)) return false;
      if (rule.portRangeEnd == 0 && !allowLowPorts) return false;
    }
  }
  return parseU16(argument, rule.port) && (allowLowPorts || rule.port > 1);
}

bool parseSubnet(char* argument, ZephlinkSDK_Subnet& subnet) {
  subnet = {};
  const char* length = cutAt(argument, '/');
  if (length == nullptr) return false;
  zephlinksdk::copyText(subnet.address, argument);
  return parseU8(length, subnet.prefixLength);
}

/// Removes 1 to N - 1 characters and the "-" that must follow them from the start of `text`.
template <std::size_t N>
bool takePiece(const char*& text, char (&piece)[N]) {
  const std::size_t length = std::strcspn(text, "-");
  if (length == 0 || length > N - 1 || text[length] == '\0') return false;
  zephlinksdk::copyText(piece, {text, length});
  text += length + 1;
  return true;
}

}  // namespace

bool parseSwitch(const char* argument, bool& on) {
  const std::string_view text = argument;
  if (text != "on" && text != "off") return false;
  on = text == "on";
  return true;
}

bool parseU8(const char* argument, std::uint8_t& value) { return parseInteger(argument, value); }
bool parseU16(const char* argument, std::uint16_t& value) { return parseInteger(argument, value); }
bool parseI32(const char* argument, std::int32_t& value) { return parseInteger(argument, value); }
bool parseU32(const char* argument, std::uint32_t& value) { return parseInteger(argument, value); }
bool parseU64(const char* argument, std::uint64_t& value) { return parseInteger(argument, value); }

bool parseI64(const char* argument, std::int64_t& value) {
  char* end = nullptr;
  const long long number = std::strtoll(argument, &end, 10);
  if (!isWholeNumber(argument, end)) return false;
  value = number;
  return true;
}

bool parseMbps(const char* argument, double& value) {
  // strtod accepts hexadecimal numbers too; these are invalid here.
  if (std::strpbrk(argument, "xX") != nullptr) return false;
  char* end = nullptr;
  const double number = std::strtod(argument, &end);
  // NaN fails both comparisons.
  if (!isWholeNumber(argument, end) || !(number >= 0.0 && number <= 4294967295.0)) return false;
  value = number;
  return true;
}

bool isAllLetters(const char* argument) {
  const std::string_view letters = argument;
  return std::all_of(letters.begin(), letters.end(),
                     [](char letter) { return std::isalpha(static_cast<unsigned char>(letter)) != 0; });
}

bool isServerTag(const char* argument) {
  const std::string_view tag = argument;
  return tag.size() >= 6 && std::count(tag.begin(), tag.end(), '-') == 2;
}

bool isCountryCode(const char* argument) { return std::strlen(argument) == 2 && isAllLetters(argument); }

bool isPrivateCountryCode(const char* argument) {
  const std::string_view code = argument;
  return code.size() == kPrivatePrefix.size() + 2 && code.starts_with(kPrivatePrefix) && isAllLetters(argument);
}

bool parseServerTag(const char* argument, ServerTag& tag) {
  ServerTag read = {};
  if (!takePiece(argument, read.country) || !takePiece(argument, read.city)) return false;
  if (!isCountryCode(read.country) && !isPrivateCountryCode(read.country)) return false;
  if (!isAllLetters(read.city)) return false;
  if (!zephlinksdk::takeInteger(argument, read.number)) return false;
  tag = read;
  return true;
}

bool parseProtocolPortList(int count, char** arguments, ZephlinkSDK_ProtocolPortPair* entries, bool allowLowPorts,
                           bool allowRange) {
  for (int i = 0; i < count; ++i) {
    if (!parsePortRule(arguments[i], entries[i], allowLowPorts, allowRange)) return false;
  }
  return true;
}

bool parseSubnetList(int count, char** arguments, ZephlinkSDK_Subnet* entries) {
  for (int i = 0; i < count; ++i) {
    if (!parseSubnet(arguments[i], entries[i])) return false;
  }
  return true;
}

bool readHidden(const char* prompt, char* buffer, std::size_t size) {
  std::fill_n(buffer, size, '\0');
  // Disables echo before the prompt appears, so that nothing typed is shown.
  zephlinksdk::HiddenInput input;
  zephlinksdk::writeText(stdout, std::string(prompt) + " : ");

  std::size_t length = 0;
  for (int byte = input.next(); byte != '\n' && byte != zephlinksdk::HiddenInput::kEnd; byte = input.next()) {
    if (length < size) buffer[length++] = static_cast<char>(byte);
  }
  if (length < size) return true;
  std::fill_n(buffer, size, '\0');
  return false;
}

}  // namespace cli
