#include "base/base64.h"

#include <algorithm>
#include <cstdint>

namespace zephlinksdk {

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kGroup = 4;

/// Returns how many characters of a group of four are not padding, 2 to 4; 0 for an invalid group.
std::size_t length(std::string_view group) {
  const std::size_t count = std::min(group.find('='), group.size());
  const bool padded = group.find_first_not_of('=', count) == std::string_view::npos;
  const bool clean = group.substr(0, count).find_first_not_of(kAlphabet) == std::string_view::npos;
  return group.size() == kGroup && count >= 2 && padded && clean ? count : 0;
}

}  // namespace

std::string decodeBase64(std::string_view text) {
  std::string bytes;
  std::size_t count = kGroup;
  for (std::size_t at = 0; at < text.size() && count == kGroup; at += kGroup) {
    const std::string_view group = text.substr(at, kGroup);
    count = length(group);
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kGroup; ++i) {
      bits = bits << 6 | (i < count ? static_cast<std::uint32_t>(kAlphabet.find(group[i])) : 0);
    }
    for (std::size_t i = 1; i < count; ++i) bytes.push_back(static_cast<char>(bits >> (24 - 8 * i)));
  }
  return bytes;
}

}  // namespace zephlinksdk
