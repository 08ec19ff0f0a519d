// Reads and writes JSON under locales with other number formats.
#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>

#include "sdk/link/json.h"
#include "sdk/link/json_writer.h"
#include "tests/comma_locale.h"

namespace {

using namespace zephlinksdk;

Json::Value parse(const std::string& text) {
  Json::Value root;
  std::string errors;
  EXPECT_TRUE(JsonParser().parse(text, root, errors)) << text << errors;
  return root;
}

TEST(Json, ReadsNumbersUnderEveryLocale) {
  const std::string tiny = "0." + std::string(400, '0') + "1";
  const std::pair<const char*, double> numbers[] = {
      {"12.5", 12.5},     {"-12.5", -12.5},
      {"+12.5", 12.5},    {"1234567.5", 1234567.5},
      {"1e3", 1000},      {"1.5E+3", 1500},
      {"-25.0e-1", -2.5}, {"0.0", 0},
      {"007.5", 7.5},     {"12345678901234567890123", 12345678901234567890123.0},
      {"1.5e-999", 0},    {"17", 17},
      {tiny.c_str(), 0},
  };
  for (const bool comma : {false, true}) {
    std::optional<tests::CommaLocale> locale;
    if (comma) locale.emplace();
    for (const auto& [text, value] : numbers) {
      const Json::Value root = parse(std::string("[0,") + text + R"(,{"a":")" + text + R"(","b":[)" + text + "]}]");
      EXPECT_EQ(asDouble(root[1]), value) << text;
      EXPECT_EQ(root[1].type(), root[2]["b"][0].type()) << text;
      EXPECT_EQ(asDouble(root[2]["b"][0]), value) << text;
      EXPECT_EQ(asString(root[2]["a"]), text);
    }
    // Texts that look like numbers, and comments that look like texts.
    const Json::Value odd = parse("[\"\\\"1.5\",/* \" 2.5 */ 3.5,// \" 4.5\n5.5]");
    EXPECT_EQ(asString(odd[0]), "\"1.5");
    EXPECT_EQ(asDouble(odd[1]), 3.5);
    EXPECT_EQ(asDouble(odd[2]), 5.5);
    EXPECT_EQ(asString(odd[1]), "3.5");
    Json::Value root;
    std::string errors;
    EXPECT_FALSE(JsonParser().parse("[1.25,1.5.5]", root, errors));
    EXPECT_EQ(asDouble(root[0]), 1.25);
    EXPECT_FALSE(JsonParser().parse("[1e999]", root, errors));
    EXPECT_EQ(errors, "* Line 1, Column 2\n  '1e999' is not a number.\n");
  }
}

/// The expected text is jsoncpp's output in the C locale.
TEST(Json, WritesAllKindsOfValues) {
  Json::Value value(Json::objectValue);
  value["kinds"] = parse(R"([null,true,false,0,-7,18446744073709551615,[],{},[[1]],{"b":1,"a":{"c":[2,3]}}])");
  value["texts"] = parse(R"(["","plain","\" \\ \/ \b\f\n\r\t \u0000\u001f","\u00e4\u20ac\ud83d\ude00"])");
  value["\xC3\xA4 \"key\""] = 1;
  for (const double number : {0.0, -0.0, 12.5, 1e3, 1234567.5, 0.1, -1e-7, 1e21, 1.7976931348623157e308, 5e-324}) {
    value["numbers"].append(number);
  }
  for (const double number : {HUGE_VAL, -HUGE_VAL, std::nan("")}) value["numbers"].append(number);
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  const std::string expected = Json::writeString(builder, value);
  const tests::CommaLocale locale;
  WipedText written;
  appendJson(written, value);
  EXPECT_EQ(written.c_str(), expected);
}

}  // namespace
