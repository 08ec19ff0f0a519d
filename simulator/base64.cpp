#include "simulator/base64.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace zephsim {
namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string encodeBase64(const std::string& bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = group << 8 | (k < count ? static_cast<std::uint8_t>(bytes[i + k]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) text += k <= count ? kAlphabet[group >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

std::optional<std::string> decodeBase64(const std::string& text) {
  std::string bytes;
  std::string_view digits = text;
  for (int padding = 0; padding < 2 && digits.ends_with('='); ++padding) digits.remove_suffix(1);
  if (text.size() % 4 != 0) return std::nullopt;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char digit : digits) {
    const std::size_t value = kAlphabet.find(digit);
    if (value == std::string_view::npos) return std::nullopt;
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      bytes += static_cast<char>(bits >> count & 0xFF);
    }
  }
  return bytes;
}

}  // namespace zephsim
