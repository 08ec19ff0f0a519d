#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>

#include "base/text.h"
#include "l10n/location_tables.h"
#include "l10n/translate.h"
#include "sdk/location_names.h"
#include "tests/comma_locale.h"

namespace {

using zephlinksdk::translate;

constexpr zephlinksdk::Translation kTexts[] = {
    {"both", "{a} and {b}"}, {"chain", "{a}{b}"}, {"empty", ""}, {"name", "by {zephlinkProductName}"},
    {"twice", "{a}-{a}"},
};
constexpr zephlinksdk::Translation kForeignTexts[] = {{"both", "foreign"}};
// Also a key of the locations: the table that was registered first wins.
constexpr zephlinksdk::Translation kOtherCountries[] = {{"us", "overridden"}};
constexpr zephlinksdk::TranslationGroup kGroups[] = {{"LOCATION.COUNTRY.", kOtherCountries}, {"TEST.", kTexts}};
constexpr zephlinksdk::TranslationGroup kForeignGroups[] = {{"TEST.", kForeignTexts}};
constexpr zephlinksdk::TranslationLanguage kLanguages[] = {{"de", kForeignGroups}, {"en", kGroups}};
constexpr zephlinksdk::TranslationTable kTestTable = {kLanguages};

class Translate : public testing::Test {
 protected:
  void SetUp() override {
    zephlinksdk::registerLocationTables();
    zephlinksdk::registerLocationTables();
    zephlinksdk::registerTranslationTable(kTestTable);
    zephlinksdk::setApplicationName("Zephlink");
  }
};

// Runs in its own process, in which no table was registered before.
TEST(TranslateDeathTest, ReturnsKeysBeforeAnyRegistration) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  const auto check = [] {
    const bool unchanged = zephlinksdk::countryName("us") == "{{LOCATION.COUNTRY.us}}";
    zephlinksdk::registerLocationTables();
    std::exit(unchanged && zephlinksdk::countryName("us") == "United States" ? 0 : 1);
  };
  EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");
}

/// Each value contains the next name twice: 40 arguments would expand to 2 to the 40th pieces.
TEST_F(Translate, BoundsATextThatDoublesItself) {
  std::string arguments;
  for (int i = 10; i < 50; ++i) {
    const std::string next = "{b" + std::to_string(i) + "}";
    arguments += ",\"" + (i == 10 ? std::string("b") : "b" + std::to_string(i - 1)) + "\":\"" + next + next + "\"";
  }
  const std::string text = translate("{{TEST.chain}}|{\"a\":\"{b}\"" + arguments + "}");
  EXPECT_GT(text.size(), std::size_t{1024} * 1024);
  EXPECT_LT(text.size(), std::size_t{4} * 1024 * 1024);
}

TEST_F(Translate, HasEveryKeyInEveryLanguage) {
  const std::map<std::string_view, std::size_t> expected = {
      {"ADAPTERTYPES.", 9}, {"LOCATION.CITY.", 85}, {"LOCATION.COUNTRY.", 57}};
  ASSERT_FALSE(zephlinksdk::kLocationTable.languages.empty());
  for (const auto& language : zephlinksdk::kLocationTable.languages) {
    std::map<std::string_view, std::size_t> counted;
    for (const auto& group : language.groups) {
      counted[group.prefix] += group.rows.size();
      for (const auto& row : group.rows) {
        const std::string key = "{{" + std::string(group.prefix) + std::string(row.key) + "}}";
        EXPECT_NE(translate(key), key);
      }
    }
    EXPECT_EQ(counted, expected) << language.code;
  }
}

TEST_F(Translate, TextsOfItsForms) {
  const std::string deep = R"({{TEST.both}}|{"a":)" + std::string(5000, '[');
  const std::pair<std::string, std::string> cases[] = {
      // Keys
      {"{{ADAPTERTYPES.Wi-Fi}}", "Wi-Fi"},
      {"{{ADAPTERTYPES.NetworkShare Client}}", "Paired Network"},
      {"{{LOCATION.CITY.bhs}}", "Montreal"},
      {"{{LOCATION.CITY.izmir}}", "İzmir"},
      {"{{LOCATION.COUNTRY.us}}", "United States"},
      {"{{TEST.empty}}", ""},
      // Text after a known key
      {"{{LOCATION.CITY.nyc}} and more", "New York City"},
      {"{{LOCATION.CITY.nyc}}}}", "New York City"},
      {"{{TEST.both}} |{\"a\":\"1\"}", "{a} and {b}"},
      // Arguments
      {R"({{TEST.both}}|{"a":"x","b":"y"})", "x and y"},
      {R"({{TEST.twice}}|{"a":"{a}"})", "{a}-{a}"},
      {R"({{TEST.chain}}|{"a":"{b}","b":"{a}"})", "{a}{a}"},
      {R"({{TEST.both}}|{"a":7,"b":true})", "7 and true"},
      {R"({{TEST.both}}|{"a":12.5,"b":-1234567e0})", "12.5 and -1234567.0"},
      {R"({{TEST.both}}|{"a":null,"b":[1]})", " and "},
      {R"({{TEST.both}}|{"a":"x")", "x and {b}"},
      {R"({{TEST.both}}|)", "{a} and {b}"},
      {R"({{TEST.both}}|["a"])", "{a} and {b}"},
      {R"({{TEST.both}}|no JSON)", "{a} and {b}"},
      {deep, "{a} and {b}"},
      {"{{TEST.name}}", "by Zephlink"},
      {R"({{TEST.name}}|{"zephlinkProductName":"somebody"})", "by Zephlink"},
  };
  for (const auto& [input, expected] : cases) EXPECT_EQ(translate(input), expected) << input.substr(0, 80);
  const tests::CommaLocale locale;
  for (const auto& [input, expected] : cases) EXPECT_EQ(translate(input), expected) << input.substr(0, 80);
}

TEST_F(Translate, ReturnsUnknownKeysUnchanged) {
  for (const char* text :
       {"", "Wi-Fi", "{{", "{{LOCATION.CITY.nyc", "{{LOCATION.CITY.nyc}", "{{}}", "{{LOCATION.CITY.}}",
        "{{LOCATION.CITY.NYC}}", "{{LOCATION.CITY.zz}}", "{{NO.KEY}}|{\"a\":1}", "eth {{LOCATION.CITY.nyc}}"}) {
    EXPECT_EQ(translate(text), text);
  }
}

TEST_F(Translate, InsertsTheApplicationName) {
  zephlinksdk::setApplicationName("Host");
  EXPECT_EQ(translate("{{TEST.name}}"), "by Host");
}

TEST_F(Translate, NamesOfServers) {
  const struct {
    const char* country;
    const char* city;
    int32_t num;
    const char* countryText;
    const char* cityText;
    const char* friendlyName;
  } cases[] = {
      {"us", "nyc", 3, "United States", "New York City", "United States - New York City #3"},
      {"co", "bogota", 0, "Colombia", "Bogotá", "Colombia - Bogotá"},
      {"hk", "kowloon", -1, "Hong Kong", "Hong Kong", "Hong Kong - Hong Kong"},
      {"us", "", 7, "United States", "", "United States #7"},
      {"proxy", "", 0, "proxy", "", "proxy"},
      {"", "", 0, "", "", ""},
      {"xx", "atlantis", 1, "{{LOCATION.COUNTRY.xx}}", "{{LOCATION.CITY.atlantis}}",
       "{{LOCATION.COUNTRY.xx}} - {{LOCATION.CITY.atlantis}} #1"},
  };
  for (const auto& each : cases) {
    ZephlinkSDK_ServerInfo server = {};
    zephlinksdk::copyText(server.country, each.country);
    zephlinksdk::copyText(server.city, each.city);
    server.num = each.num;
    EXPECT_STREQ(zephlinksdk::serverCountryText(server), each.countryText);
    EXPECT_STREQ(zephlinksdk::serverCityText(server), each.cityText);
    EXPECT_STREQ(zephlinksdk::serverFriendlyName(server), each.friendlyName);
  }
}

}  // namespace
