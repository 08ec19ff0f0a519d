// Helpers of all fuzz targets: report failed checks and split the input.
#pragma once

#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// Prints the failed check and aborts, which libFuzzer records as a finding.
[[noreturn]] void fail(const char* promise, const std::string& details);

inline void check(bool condition, const char* promise, std::string_view details = {}) {
  if (!condition) fail(promise, std::string(details));
}

/// Returns the pieces of `input` between dividers. A divider at the end starts no further piece.
std::vector<std::string> piecesOf(std::string_view input, char divider = '\n');

/// Returns false if the text is not JSON; `value` then contains the part that could be read.
bool parseJson(std::string_view text, Json::Value& value);

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace fuzz
