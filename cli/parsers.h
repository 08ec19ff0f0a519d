// Parsers of arguments. Each returns whether the argument is valid, and leaves the value unchanged if not.
//
// Numbers are decimal text, converted by the C library: leading white space and a sign are accepted, and the number
// must have a digit and extend to the end of the argument.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>

#include "zephlinksdk/records.h"

namespace cli {

/// "on" or "off".
bool parseSwitch(const char* argument, bool& on);

bool parseU8(const char* argument, std::uint8_t& value);
bool parseU16(const char* argument, std::uint16_t& value);
bool parseI32(const char* argument, std::int32_t& value);
bool parseU32(const char* argument, std::uint32_t& value);

/// Rejects only numbers that do not fit: a negative number wraps, as in the conversion.
bool parseU64(const char* argument, std::uint64_t& value);

/// Clamps numbers out of range.
bool parseI64(const char* argument, std::int64_t& value);

/// Megabits per second, 0 to 4294967295; an exponent is accepted.
bool parseMbps(const char* argument, double& value);

/// True for the empty text.
bool isAllLetters(const char* argument);

/// Returns whether the argument has at least 6 characters and exactly two "-". parseServerTag checks the parts.
bool isServerTag(const char* argument);

bool isCountryCode(const char* argument);
bool isPrivateCountryCode(const char* argument);

/// The server that a tag names.
struct ServerTag {
  char country[ZephlinkSDK_CountrySize];  ///< with the prefix "private" for a private server
  char city[ZephlinkSDK_CitySize];
  std::int32_t number;  ///< may be negative; clamped to the range
};

/// Parses `<country>-<city>-<number>`, without a leading "#". Ignores text after the number.
bool parseServerTag(const char* argument, ServerTag& tag);

/// Reads one rule `port[-portRangeEnd][/proto]` from each argument into `entries`, which has room for `count` rules, up
/// to the first invalid argument. Cuts the arguments in place. Without `allowLowPorts`, rejects the ports 0 and 1 and a
/// range that ends at 0; without `allowRange`, rejects ranges. A range requires a protocol.
bool parseProtocolPortList(int count, char** arguments, ZephlinkSDK_ProtocolPortPair* entries, bool allowLowPorts,
                           bool allowRange);

/// Reads one subnet `address/length` from each argument into `entries`, in the same way. Does not check the address.
bool parseSubnetList(int count, char** arguments, ZephlinkSDK_Subnet* entries);

/// Prompts on stdout and reads a line of stdin without echo, without the line end. At the end of input the answer is
/// empty. A line of `size` bytes or more is consumed and rejected, and the buffer is then empty. The caller owns and
/// wipes the buffer; no other copy remains in the process.
bool readHidden(const char* prompt, char* buffer, std::size_t size);

/// The type of the value that a parser sets.
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

/// Returns the value of an argument, using a parser of this file or one of the library's `...FromText`.
template <auto& Parse>
auto valueOf(const char* argument) {
  using Value = typename ParsedValue<std::remove_reference_t<decltype(Parse)>>::Type;
  Value value{};
  bool known = false;
  if constexpr (requires { Parse(argument, value); }) {
    known = Parse(argument, value);
  } else {
    known = Parse(argument, &value);
  }
  return known ? std::optional(value) : std::nullopt;
}

}  // namespace cli
