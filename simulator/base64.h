// Base64 with the standard alphabet and padding, for connect codes.
#pragma once

#include <optional>
#include <string>

namespace zephsim {

std::string encodeBase64(const std::string& bytes);
/// Returns nothing unless the whole text is strict Base64.
std::optional<std::string> decodeBase64(const std::string& text);

}  // namespace zephsim
