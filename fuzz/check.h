// What all fuzz targets share: how a target says that something does not hold, and how it takes its input apart.
#pragma once

#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// Ends the process with the promise that was broken, which libFuzzer records as a finding.
[[noreturn]] void broken(const char* promise, const std::string& details);

inline void check(bool holds, const char* promise, std::string_view details = {}) {
  if (!holds) broken(promise, std::string(details));
}

/// The pieces of `input` between dividers; one that ends in a divider has no empty piece behind it.
std::vector<std::string> piecesOf(std::string_view input, char divider = '\n');

/// False when the text is no JSON; `value` then holds what could be read.
bool parseJson(std::string_view text, Json::Value& value);

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace fuzz
