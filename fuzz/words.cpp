// Fuzzes the dispatcher and each argument parser with any arguments, one per line.
//
// The status must be one of the five and match the output (see captured.h), every request must be one line of JSON, and
// a value that a parser accepts must equal that of an independent reading. A parser does not change the value for an
// argument that it rejects.

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>

#include "cli/parsers.h"
#include "fuzz/at_once.h"
#include "fuzz/captured.h"
#include "fuzz/check.h"

namespace {

using Words = std::vector<std::string>;

// More arguments than any list accepts.
constexpr std::size_t kMostWords = 2000;

/// Reads a number by hand: white space, a sign, digits up to the end, without a bound. Returns nothing for any other
/// text.
std::optional<__int128> numberOf(const std::string& word) {
  std::size_t at = word.find_first_not_of(" \t\n\v\f\r");
  if (at == std::string::npos) return std::nullopt;
  const bool negative = word[at] == '-';
  if (negative || word[at] == '+') ++at;
  if (at == word.size()) return std::nullopt;
  __int128 value = 0;
  constexpr __int128 kFar = __int128{1} << 100;
  for (; at < word.size(); ++at) {
    if (word[at] < '0' || word[at] > '9') return std::nullopt;
    if (value < kFar) value = value * 10 + (word[at] - '0');
  }
  return negative ? -value : value;
}

template <class Integer>
void checkBounded(const std::string& word, bool (*parse)(const char*, Integer&)) {
  constexpr Integer kBefore = 77;
  Integer value = kBefore;
  const bool taken = parse(word.c_str(), value);
  const auto number = numberOf(word);
  const bool fits =
      number && *number >= std::numeric_limits<Integer>::min() && *number <= std::numeric_limits<Integer>::max();
  fuzz::check(taken == fits, "a number is accepted if and only if it fits", word);
  fuzz::check(value == (taken ? static_cast<Integer>(*number) : kBefore), "a number equals its digits", word);
}

void checkNumbers(const std::string& word) {
  checkBounded(word, cli::parseU8);
  checkBounded(word, cli::parseU16);
  checkBounded(word, cli::parseI32);
  checkBounded(word, cli::parseU32);

  const auto number = numberOf(word);
  std::int64_t nearest = 77;
  fuzz::check(cli::parseI64(word.c_str(), nearest) == number.has_value(), "a number of any size is accepted", word);
  constexpr __int128 kLowest = std::numeric_limits<std::int64_t>::min();
  constexpr __int128 kHighest = std::numeric_limits<std::int64_t>::max();
  const __int128 clamped = number ? std::min(std::max(*number, kLowest), kHighest) : 77;
  fuzz::check(nearest == clamped, "a number out of range is clamped", word);

  std::uint64_t wrapped = 77;
  constexpr __int128 kMost = std::numeric_limits<std::uint64_t>::max();
  const bool fits = number && *number <= kMost && *number >= -kMost;
  fuzz::check(cli::parseU64(word.c_str(), wrapped) == fits, "a large number is accepted if it fits", word);
  fuzz::check(wrapped == (fits ? static_cast<std::uint64_t>(*number) : 77), "a negative number wraps", word);

  double mbps = 77;
  const bool speed = cli::parseMbps(word.c_str(), mbps);
  fuzz::check(speed ? mbps >= 0 && mbps <= 4294967295.0 : mbps == 77, "a speed is within its bounds", word);
  if (speed && number) fuzz::check(mbps == static_cast<double>(*number), "a speed equals its digits", word);
}

void checkTag(const std::string& word) {
  cli::ServerTag tag;
  std::memset(&tag, 'x', sizeof tag);
  const auto bytes = [&tag] { return std::string(reinterpret_cast<const char*>(&tag), sizeof tag); };
  const std::string before = bytes();
  if (!cli::parseServerTag(word.c_str(), tag)) {
    fuzz::check(bytes() == before, "a refused tag does not change the value", word);
    return;
  }
  fuzz::check(word.starts_with(std::string(tag.country) + "-" + tag.city + "-"), "the parts of a tag are parsed", word);
  fuzz::check(cli::isCountryCode(tag.country) || cli::isPrivateCountryCode(tag.country), "a tag has a country", word);
  fuzz::check(*tag.city != '\0' && cli::isAllLetters(tag.city), "a tag has a city", word);
}

void checkPortRule(std::string word, bool allowLowPorts, bool allowRange) {
  const std::string before = word;
  ZephlinkSDK_ProtocolPortPair rule;
  std::memset(&rule, 'x', sizeof rule);
  char* words[] = {word.data()};
  if (!cli::parseProtocolPortList(1, words, &rule, allowLowPorts, allowRange)) return;
  fuzz::check(allowLowPorts || rule.port > 1, "low ports are refused unless they are allowed", before);
  fuzz::check(allowRange || rule.portRangeEnd == 0, "ranges are refused unless they are allowed", before);
  const auto number = numberOf(before.substr(0, before.find('/')));
  if (number) fuzz::check(rule.port == *number, "a port equals its digits", before);
}

void checkSubnet(std::string word) {
  const std::string before = word;
  ZephlinkSDK_Subnet subnet;
  std::memset(&subnet, 'x', sizeof subnet);
  char* words[] = {word.data()};
  if (!cli::parseSubnetList(1, words, &subnet)) return;
  const std::size_t slash = before.find('/');
  fuzz::check(slash != std::string::npos, "a subnet has a length", before);
  const auto length = numberOf(before.substr(slash + 1));
  fuzz::check(length && subnet.prefixLength == *length, "a subnet's length equals its digits", before);
  fuzz::check(std::memchr(subnet.address, 0, sizeof subnet.address) != nullptr, "an address is terminated in its field",
              before);
  fuzz::check(before.starts_with(subnet.address), "an address equals that of the argument", before);
}

void checkParsers(const std::string& word) {
  checkNumbers(word);
  checkTag(word);
  for (const bool allowLowPorts : {false, true}) {
    for (const bool allowRange : {false, true}) checkPortRule(word, allowLowPorts, allowRange);
  }
  checkSubnet(word);
  bool on = false;
  const bool known = word == "on" || word == "off";
  fuzz::check(cli::parseSwitch(word.c_str(), on) == known && on == (word == "on"), "a switch has two values", word);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::textOf(data, size);
  // Arguments cannot contain a zero byte.
  if (input.find('\0') != std::string_view::npos) return 0;
  const Words words = fuzz::piecesOf(input);
  if (words.size() > kMostWords) return 0;
  for (const std::string& word : words) checkParsers(word);

  fuzz::answerWith({"{}"});
  const fuzz::Outcome outcome = fuzz::runAction(words);
  fuzz::checkOutcome(words, outcome);
  return 0;
}
