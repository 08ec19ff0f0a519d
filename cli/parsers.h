// Parsers of arguments. Each returns whether it accepts the word, and leaves the value unchanged if not.
//
// Numbers are decimal text, read by the C library's conversions: leading blanks and a sign are accepted, and the number
// must have a digit and end with the word.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>

#include "zephlinksdk/records.h"

namespace cli {

/// "on" or "off".
bool parseSwitch(const char* word, bool& on);

bool parseU8(const char* word, std::uint8_t& value);
bool parseU16(const char* word, std::uint16_t& value);
bool parseI32(const char* word, std::int32_t& value);
bool parseU32(const char* word, std::uint32_t& value);

/// Refuses only what does not fit: a negative number wraps around, as the conversion has it.
bool parseU64(const char* word, std::uint64_t& value);

/// Refuses nothing for its size: a number that does not fit becomes the nearest that does.
bool parseI64(const char* word, std::int64_t& value);

/// Megabits per second, 0 to 4294967295, with an exponent if wished.
bool parseMbps(const char* word, double& value);

/// True for the empty word.
bool isAllLetters(const char* word);

/// At least 6 characters, exactly two "-" among them. Whether the pieces are any good is for parseServerTag to say.
bool isServerTag(const char* word);

bool isCountryCode(const char* word);
bool isPrivateCountryCode(const char* word);

/// A server as a tag names it.
struct ServerTag {
  char country[ZephlinkSDK_CountrySize];  ///< with the prefix "private" of a private server
  char city[ZephlinkSDK_CitySize];
  std::int32_t number;  ///< of any sign; out of range becomes the nearest number
};

/// `<country>-<city>-<number>`, without a leading "#"; what stands behind the number is ignored.
bool parseServerTag(const char* word, ServerTag& tag);

/// Reads one rule `port[-portRangeEnd][/proto]` a word into `entries`, which has room for `count`, up to the first
/// faulty word. The words are cut in place. Without `allowLowPorts` the ports 0 and 1 and a range's end of 0 are
/// refused, without `allowRange` every range. A range needs a protocol behind it.
bool parseProtocolPortList(int count, char** words, ZephlinkSDK_ProtocolPortPair* entries, bool allowLowPorts,
                           bool allowRange);

/// Reads one subnet `address/length` a word into `entries`, in the same way. Nothing looks into the address.
bool parseSubnetList(int count, char** words, ZephlinkSDK_Subnet* entries);

/// Prompts on standard output and reads a line of standard input without echo, line end not stored. The end of input is
/// an empty answer. A line of `size` bytes or more is used up and refused, and the buffer comes back empty.
/// The buffer is the caller's, to wipe too; no other copy stays in the process.
bool readHidden(const char* prompt, char* buffer, std::size_t size);

/// The type of the value that a parser writes.
template <class Parse>
struct ParsedValue;
template <class Value>
struct ParsedValue<bool(const char*, Value&)> {
  using Type = Value;
};
template <class Value>
struct ParsedValue<bool(const char*, Value*)> {
  using Type = Value;
};

/// The value of a word, by a parser of this file's kind or one of the library's `...FromText`.
template <auto& Parse>
auto valueOf(const char* word) {
  using Value = typename ParsedValue<std::remove_reference_t<decltype(Parse)>>::Type;
  Value value{};
  bool known = false;
  if constexpr (requires { Parse(word, value); }) {
    known = Parse(word, value);
  } else {
    known = Parse(word, &value);
  }
  return known ? std::optional(value) : std::nullopt;
}

}  // namespace cli
