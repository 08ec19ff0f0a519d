#include "base/base64.h"

#include <gtest/gtest.h>

namespace {

using zephlinksdk::decodeBase64;

TEST(Base64, DecodesWholeTexts) {
  const std::pair<const char*, std::string> texts[] = {
      {"", ""},
      {"Zg==", "f"},
      {"Zm8=", "fo"},
      {"Zm9v", "foo"},
      {"Zm9vYmFy", "foobar"},
      {"AAAA", std::string(3, '\0')},
      {"+/+/", "\xFB\xFF\xBF"},
      {"////", "\xFF\xFF\xFF"},
      {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/",
       {"\x00\x10\x83\x10\x51\x87\x20\x92\x8B\x30\xD3\x8F\x41\x14\x93\x51\x55\x97\x61\x96\x9B\x71\xD7\x9F"
        "\x82\x18\xA3\x92\x59\xA7\xA2\x9A\xAB\xB2\xDB\xAF\xC3\x1C\xB3\xD3\x5D\xB7\xE3\x9E\xBB\xF3\xDF\xBF",
        48}},
  };
  for (const auto& [text, bytes] : texts) EXPECT_EQ(decodeBase64(text), bytes) << text;
}

/// Only the groups before the first invalid one are decoded.
TEST(Base64, StopsAtTheFirstInvalidGroup) {
  for (const char* text : {"Zm9", "Zg=", "Zg", "Z", "=", "====", "Z===", "Zm=v", "Z=9v", " Zm9v"}) {
    EXPECT_EQ(decodeBase64(text), "") << text;
  }
  const std::pair<std::string, const char*> texts[] = {
      {"Zm9vZg", "foo"},         {"Zm9vZ*9v", "foo"},
      {"Zm9v-_-_", "foo"},       {"Zm9v Zm9v", "foo"},
      {"Zm9v\nZm9v", "foo"},     {"Zm9vZg==\n", "foof"},
      {"Zg==Zm9v", "f"},         {"Zm8=Zm9v", "fo"},
      {"Zm9v\xC3\xA9==", "foo"}, {std::string("Zm9v\0\0\0\0Zm9v", 12), "foo"},
  };
  for (const auto& [text, bytes] : texts) EXPECT_EQ(decodeBase64(text), bytes) << text;
}

}  // namespace
