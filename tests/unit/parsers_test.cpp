// Parsers of numbers. The cases of the actions test the other parsers.
#include "cli/parsers.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using namespace cli;

/// Returns the parsed value, or nothing if the argument is invalid; in this case the value must be unchanged.
template <typename Value>
std::optional<Value> parsed(bool (*parser)(const char*, Value&), const std::string& word) {
  constexpr Value kUntouched = static_cast<Value>(77);
  Value value = kUntouched;
  if (parser(word.c_str(), value)) return value;
  EXPECT_EQ(value, kUntouched) << word;
  return std::nullopt;
}

constexpr auto kRefused = std::nullopt;

TEST(Parsers, IntegersKeepTheirRanges) {
  EXPECT_EQ(parsed(parseU8, "0"), 0);
  EXPECT_EQ(parsed(parseU8, "255"), 255);
  EXPECT_EQ(parsed(parseU8, "256"), kRefused);
  EXPECT_EQ(parsed(parseU8, "-1"), kRefused);
  EXPECT_EQ(parsed(parseU16, "65535"), 65535);
  EXPECT_EQ(parsed(parseU16, "65536"), kRefused);
  EXPECT_EQ(parsed(parseI32, "-2147483648"), INT32_MIN);
  EXPECT_EQ(parsed(parseI32, "-2147483649"), kRefused);
  EXPECT_EQ(parsed(parseI32, "2147483647"), INT32_MAX);
  EXPECT_EQ(parsed(parseI32, "2147483648"), kRefused);
  EXPECT_EQ(parsed(parseU32, "4294967295"), 4294967295u);
  EXPECT_EQ(parsed(parseU32, "4294967296"), kRefused);
  EXPECT_EQ(parsed(parseU32, "-1"), kRefused);
  EXPECT_EQ(parsed(parseU32, "99999999999999999999999"), kRefused);
  EXPECT_EQ(parsed(parseU64, "18446744073709551615"), UINT64_MAX);
  EXPECT_EQ(parsed(parseU64, "18446744073709551616"), kRefused);
  EXPECT_EQ(parsed(parseU64, "-1"), UINT64_MAX);
  EXPECT_EQ(parsed(parseI64, "-5"), -5);
  EXPECT_EQ(parsed(parseI64, "99999999999999999999999"), INT64_MAX);
  EXPECT_EQ(parsed(parseI64, "-99999999999999999999999"), INT64_MIN);
}

TEST(Parsers, NumbersExtendToTheEnd) {
  const std::pair<const char*, std::optional<uint32_t>> cases[] = {
      {"007", 7},        {"+7", 7},         {" 7", 7},         {"\t7", 7},       {"-0", 0},
      {"", kRefused},    {" ", kRefused},   {"-", {}},         {"7 ", kRefused}, {"7x", kRefused},
      {"0x7", kRefused}, {"7.0", kRefused}, {"1e3", kRefused},
  };
  for (const auto& [word, expected] : cases) {
    EXPECT_EQ(parsed(parseU32, word), expected) << word;
    EXPECT_EQ(parsed(parseU64, word), expected) << word;
    EXPECT_EQ(parsed(parseI64, word), expected) << word;
  }
}

TEST(Parsers, Mbps) {
  const std::pair<const char*, std::optional<double>> cases[] = {
      {"0", 0.0},        {"1e3", 1000.0},    {" +2.5", 2.5},       {".5", 0.5},        {"4294967295", 4294967295.0},
      {"", kRefused},    {"-1", kRefused},   {"4294967295.5", {}}, {"4294967296", {}}, {"nan", kRefused},
      {"inf", kRefused}, {"1.5x", kRefused}, {"1,5", kRefused},    {"0x10", kRefused}, {"1e999", kRefused},
  };
  for (const auto& [word, expected] : cases) EXPECT_EQ(parsed(parseMbps, word), expected) << word;
}

TEST(Parsers, ListsStopAtTheFirstError) {
  ZephlinkSDK_ProtocolPortPair ports[3] = {};
  EXPECT_TRUE(parseProtocolPortList(0, nullptr, ports, false, false));
  EXPECT_TRUE(parseProtocolPortList(-1, nullptr, ports, false, false));
  EXPECT_TRUE(parseSubnetList(0, nullptr, nullptr));
  char texts[][3] = {"80", "x", "81"};
  char* words[] = {texts[0], texts[1], texts[2]};
  EXPECT_FALSE(parseProtocolPortList(3, words, ports, true, true));
  EXPECT_EQ(ports[0].port, 80);
  EXPECT_EQ(ports[2].port, 0);
}

}  // namespace
