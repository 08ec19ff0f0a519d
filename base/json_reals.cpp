#include "base/json_reals.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <system_error>

namespace zephlinksdk {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Each returns the offset after the token that starts at `at`, or the end of the text if the token is incomplete.

std::size_t digitsEnd(std::string_view json, std::size_t at) {
  while (at < json.size() && isDigit(json[at])) ++at;
  return at;
}

std::size_t stringEnd(std::string_view json, std::size_t at) {
  for (++at; at < json.size(); ++at) {
    if (json[at] == '"') return at + 1;
    if (json[at] == '\\') ++at;
  }
  return json.size();
}

std::size_t commentEnd(std::string_view json, std::size_t at) {
  const bool toLineEnd = json.substr(at).starts_with("//");
  if (!toLineEnd && !json.substr(at).starts_with("/*")) return at + 1;
  const std::size_t end = toLineEnd ? json.find_first_of("\r\n", at + 2) : json.find("*/", at + 2);
  return end == std::string_view::npos ? json.size() : end + (toLineEnd ? 1 : 2);
}

std::size_t fractionEnd(std::string_view json, std::size_t at) {
  return at < json.size() && json[at] == '.' ? digitsEnd(json, at + 1) : at;
}

std::size_t exponentEnd(std::string_view json, std::size_t at) {
  if (at == json.size() || (json[at] != 'e' && json[at] != 'E')) return at;
  ++at;
  if (at < json.size() && (json[at] == '+' || json[at] == '-')) ++at;
  return digitsEnd(json, at);
}

/// Reads a number that from_chars reports as out of range: rounds a number that is too small, returns false for one
/// that is too large.
bool readRounded(const std::string& text, double& value) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  return static_cast<bool>(stream >> value);
}

}  // namespace

JsonReals::JsonReals(std::string_view json) : original(json) {
  for (std::size_t at = 0; at < json.size();) {
    const char c = json[at];
    if (c == '"') {
      at = stringEnd(json, at);
    } else if (c == '/') {
      at = commentEnd(json, at);
    } else if (c == '-' || c == '+' || isDigit(c)) {
      const std::size_t integerEnd = digitsEnd(json, at + 1);
      const std::size_t end = exponentEnd(json, fractionEnd(json, integerEnd));
      if (end != integerEnd) addReal(at, end);
      at = end;
    } else {
      ++at;
    }
  }
}

/// Skips text that is not a number, numbers that are too large, and numbers followed by characters that would extend
/// the integer 0 to a longer number: the parser rejects all of these.
void JsonReals::addReal(std::size_t begin, std::size_t end) {
  const std::size_t digits = original[begin] == '-' || original[begin] == '+' ? begin + 1 : begin;
  const char* first = original.data() + (original[begin] == '+' ? digits : begin);
  const char* last = original.data() + end;
  double value = 0;
  const auto [stop, error] = std::from_chars(first, last, value);
  if (stop != last) return;
  if (error != std::errc() && !readRounded({first, last}, value)) return;
  if (end < original.size() && std::string_view(".eE").find(original[end]) != std::string_view::npos) return;
  if (empty()) zeroed = original;
  reals.push_back({begin, value});
  zeroed.replace(digits, end - digits, end - digits, '0');
}

const double* JsonReals::at(std::ptrdiff_t offset) const {
  const auto found = std::lower_bound(reals.begin(), reals.end(), static_cast<std::size_t>(offset),
                                      [](const Real& real, std::size_t wanted) { return real.offset < wanted; });
  return found != reals.end() && found->offset == static_cast<std::size_t>(offset) ? &found->value : nullptr;
}

std::string realText(double real) {
  if (std::isnan(real)) return "null";
  if (std::isinf(real)) return real < 0 ? "-1e+9999" : "1e+9999";
  char digits[32];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), real, std::chars_format::general, 17).ptr;
  std::string text(digits, end);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

}  // namespace zephlinksdk
