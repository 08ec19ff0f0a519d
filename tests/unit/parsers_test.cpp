#include "cli/parsers.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using namespace cli;

/// The parser's value, or none if it refused the word; a refused word must leave the place untouched.
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

TEST(Parsers, NumbersAreUsedWhole) {
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

TEST(Parsers, KindsOfServerWords) {
  const struct {
    const char* word;
    bool letters, tag, country, privateCountry;
  } cases[] = {
      {"", true, false, false, false},          {"us", true, false, true, false},
      {"US", true, false, true, false},         {"u1", false, false, false, false},
      {"USA", true, false, false, false},       {"\xc3\xa4", false, false, false, false},
      {"privateus", true, false, false, true},  {"privateu1", false, false, false, false},
      {"Privateus", true, false, false, false}, {"privateusa", true, false, false, false},
      {"us-nyc-3", false, true, false, false},  {"#us-nyc-3", false, true, false, false},
      {"a-b-1", false, false, false, false},    {"------", false, false, false, false},
      {"abcd--", false, true, false, false},    {"us-nyc-3-", false, false, false, false},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(isAllLetters(each.word), each.letters) << each.word;
    EXPECT_EQ(isServerTag(each.word), each.tag) << each.word;
    EXPECT_EQ(isCountryCode(each.word), each.country) << each.word;
    EXPECT_EQ(isPrivateCountryCode(each.word), each.privateCountry) << each.word;
  }
}

TEST(Parsers, ServerTags) {
  const std::pair<const char*, const char*> cases[] = {
      {"us-nyc-3", "us|nyc|3"},
      {"us-nyc-0", "us|nyc|0"},
      {"us-nyc--3", "us|nyc|-3"},
      {"us-nyc- 3", "us|nyc|3"},
      {"us-nyc-3x", "us|nyc|3"},
      {"us-nyc-99999999999", "us|nyc|2147483647"},
      {"privateus-nyc-3", "privateus|nyc|3"},
      {"us-abcdefghijklmnopqrs-3", "us|abcdefghijklmnopqrs|3"},
  };
  for (const auto& [word, read] : cases) {
    ServerTag tag = {};
    EXPECT_TRUE(parseServerTag(word, tag)) << word;
    EXPECT_EQ(std::string(tag.country) + "|" + tag.city + "|" + std::to_string(tag.number), read) << word;
  }
  for (const char* word : {"us-abcdefghijklmnopqrst-3", "privateusa-nyc-3", "us-ny2-3", "usa-nyc-3", "us--3", "-nyc-3",
                           "us-nyc-", "us-nyc-x", "us-nyc", "#us-nyc-3", ""}) {
    ServerTag tag = {};
    EXPECT_FALSE(parseServerTag(word, tag)) << word;
    EXPECT_STREQ(tag.country, "") << word;
  }
}

/// One rule as "protocol port end", or "refused".
std::string portRule(std::string word, bool allowLowPorts, bool allowRange) {
  char* words[] = {word.data()};
  ZephlinkSDK_ProtocolPortPair rule = {ZephlinkSDK_PortProtocol_Udp, 99, 99};
  if (!parseProtocolPortList(1, words, &rule, allowLowPorts, allowRange)) return "refused";
  return (rule.protocol == ZephlinkSDK_PortProtocol_Tcp ? "tcp " : "udp ") + std::to_string(rule.port) + " " +
         std::to_string(rule.portRangeEnd);
}

TEST(Parsers, PortRules) {
  const struct {
    const char* word;
    const char* asForwardedPort;  // neither low ports nor ranges
    const char* asRule;           // both
  } cases[] = {
      {"2", "tcp 2 0", "tcp 2 0"},
      {"8080", "tcp 8080 0", "tcp 8080 0"},
      {" +80/udp", "udp 80 0", "udp 80 0"},
      {"65535/udp", "udp 65535 0", "udp 65535 0"},
      {"80/tcpish", "tcp 80 0", "tcp 80 0"},
      {"80/udp/tcp", "udp 80 0", "udp 80 0"},
      {"0", "refused", "tcp 0 0"},
      {"1/udp", "refused", "udp 1 0"},
      {"100-200/tcp", "refused", "tcp 100 200"},
      {"200-100/udp", "refused", "udp 200 100"},
      {"80-80/tcp", "refused", "tcp 80 80"},
      {"80-0/tcp", "refused", "tcp 80 0"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(portRule(each.word, false, false), each.asForwardedPort) << each.word;
    EXPECT_EQ(portRule(each.word, true, true), each.asRule) << each.word;
  }
  for (const char* word : {"100-200", "80-/tcp", "-80/tcp", "1-2-3/tcp", "70000/tcp", "80-70000/tcp", "x/tcp", "/tcp",
                           "80/", "80/tc", "80/TCP", "80/icmp", "-80", ""}) {
    EXPECT_EQ(portRule(word, false, false), "refused") << word;
    EXPECT_EQ(portRule(word, true, true), "refused") << word;
  }
  EXPECT_EQ(portRule("100-0/tcp", false, true), "refused");
  EXPECT_EQ(portRule("100-1/tcp", false, true), "tcp 100 1");
}

TEST(Parsers, ListsStopAtTheFirstFault) {
  ZephlinkSDK_ProtocolPortPair ports[3] = {};
  EXPECT_TRUE(parseProtocolPortList(0, nullptr, ports, false, false));
  EXPECT_TRUE(parseProtocolPortList(-1, nullptr, ports, false, false));
  char texts[][3] = {"80", "x", "81"};
  char* words[] = {texts[0], texts[1], texts[2]};
  EXPECT_FALSE(parseProtocolPortList(3, words, ports, true, true));
  EXPECT_EQ(ports[0].port, 80);
  EXPECT_EQ(ports[2].port, 0);
}

/// One subnet as "address length", or "refused".
std::string subnet(std::string word) {
  char* words[] = {word.data()};
  ZephlinkSDK_Subnet read = {};
  if (!parseSubnetList(1, words, &read)) return "refused";
  return std::string(read.address) + " " + std::to_string(read.prefixLength);
}

TEST(Parsers, Subnets) {
  const std::pair<std::string, std::string> cases[] = {
      {"10.0.0.0/8", "10.0.0.0 8"},
      {"10.0.0.0/200", "10.0.0.0 200"},
      {"x/8", "x 8"},
      {"/0", " 0"},
      {std::string(60, 'a') + "/255", std::string(45, 'a') + " 255"},
  };
  for (const auto& [word, expected] : cases) EXPECT_EQ(subnet(word), expected) << word;
  for (const char* word : {"10.0.0.0", "10.0.0.0/", "10.0.0.0/999", "10.0.0.0/8/8", ""}) {
    EXPECT_EQ(subnet(word), "refused") << word;
  }
  EXPECT_TRUE(parseSubnetList(0, nullptr, nullptr));
}

}  // namespace
