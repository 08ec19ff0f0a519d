#include "base/text.h"

#include <gtest/gtest.h>

#include "base/utf8.h"
#include "sdk/link/json_writer.h"

namespace {

using namespace zephlinksdk;

TEST(Text, CopiesAreCutAndTerminated) {
  using namespace std::string_view_literals;
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", ""}, {{}, ""}, {"abc", "abc"}, {"abcd", "abcd"}, {"abcde", "abcd"}, {"ab\0cd"sv, "ab"}, {"\0"sv, ""}};
  for (const auto& [from, expected] : cases) {
    char to[5] = {'#', '#', '#', '#', '#'};
    copyText(to, from);
    EXPECT_EQ(std::string_view(to, sizeof to), std::string(expected).append(sizeof to - expected.size(), '\0'));
  }
}

TEST(Text, IsCutAfterTheLastWholeCharacterThatFits) {
  const std::pair<std::string, std::string> texts[] = {
      {"abcdef", "abcdef"},
      {"abcdefg", "abcdef"},
      {"abcd\xC3\xA9", "abcd\xC3\xA9"},
      {"abcde\xC3\xA9", "abcde"},
      {"abcd\xE2\x82\xAC", "abcd"},
      {"abc\xF0\x9F\x98\x80", "abc"},
      {"ab\xF0\x9F\x98\x80x", "ab\xF0\x9F\x98\x80"},
      {"\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC", "\xE2\x82\xAC\xE2\x82\xAC"},
      // The text ends at its NUL, within the size.
      {std::string("abcde\0\xC3\xA9", 8), "abcde"},
      // Not UTF-8: cut as bytes.
      {std::string(7, '\x80'), std::string(6, '\x80')},
      {std::string(7, '\xC3'), std::string(6, '\xC3')},
      {"abcde\xE2\x82x", "abcde\xE2"},
      {"abcd\xC0\x80\xC0\x80", "abcd\xC0\x80"},
  };
  for (const auto& [text, cut] : texts) {
    char field[7];
    copyText(field, text);
    EXPECT_EQ(std::string(field), cut) << text;
  }
  char small[2];
  copyText(small, "\xF0\x9F\x98\x80");
  EXPECT_STREQ(small, "");
}

TEST(Utf8, EachInvalidByteIsReplacedSeparately) {
  const struct {
    std::string text, valid, escaped;
  } rows[] = {
      {"plain ASCII \x7F", "plain ASCII \x7F", "plain ASCII \x7F"},
      {"\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80", "\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80",
       "\\u0080\\u07ff\\u0800\\ud7ff\\ue000"},
      {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", "\\ud800\\udc00\\udbff\\udfff"},
      // Adjacent characters are unchanged.
      {"\xFF'a\xC3'", "\xEF\xBF\xBD'a\xEF\xBF\xBD'", "\\ufffd'a\\ufffd'"},
      {"12345678\xE2\x82z", "12345678\xEF\xBF\xBD\xEF\xBF\xBDz", "12345678\\ufffd\\ufffdz"},
      // Overlong forms, a surrogate, a number that is too large, a single continuation byte, an incomplete character.
      {"\xC1\xBF", "\xEF\xBF\xBD\xEF\xBF\xBD", "\\ufffd\\ufffd"},
      {"\xE0\x9F\xBF", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", "\\ufffd\\ufffd\\ufffd"},
      {"\xF0\x8F\xBF\xBF", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", "\\ufffd\\ufffd\\ufffd\\ufffd"},
      {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", "\\ufffd\\ufffd\\ufffd"},
      {"\xF4\x90\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", "\\ufffd\\ufffd\\ufffd\\ufffd"},
      {"\x80"
       "a\xF0\x9F\x98",
       "\xEF\xBF\xBD"
       "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD",
       "\\ufffda\\ufffd\\ufffd\\ufffd"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(toUtf8(row.text), row.valid) << row.escaped;
    WipedText json;
    appendJson(json, Json::Value(row.text));
    EXPECT_EQ(json.c_str(), "\"" + row.escaped + "\"");
    EXPECT_EQ(utf8PrefixLength(row.text) == row.text.size(), row.text == row.valid) << row.escaped;
  }
}

}  // namespace
