// Parsers of argument words. Each returns whether it took the word, and leaves the place for the value untouched if
// not.
//
// Numbers are decimal text, read by the C library's conversions (so blanks and a sign may lead) and used to the end of
// the word; at least one digit must be there.
#pragma once

#include <cstddef>
#include <cstdint>

#include "sdk/results.h"

namespace cli {

bool parseU8(const char* word, uint8_t& value);
bool parseU16(const char* word, uint16_t& value);
bool parseI32(const char* word, int32_t& value);
bool parseU32(const char* word, uint32_t& value);

/// Refuses only what does not fit: a negative number wraps around, as the conversion has it.
bool parseU64(const char* word, uint64_t& value);

/// Refuses nothing for its size: a number that does not fit becomes the nearest that does.
bool parseI64(const char* word, int64_t& value);

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
  int32_t number;  ///< of any sign; out of range becomes the nearest number
};

/// `<country>-<city>-<number>`, without a leading "#"; what stands behind the number is ignored.
bool parseServerTag(const char* word, ServerTag& tag);

bool parseDirectionalMode(const char* word, ZephlinkSDK_ConnectionDirectionalMode& mode);

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

}  // namespace cli
