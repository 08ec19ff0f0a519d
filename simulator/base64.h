// Base64 with the standard alphabet and padding, as connect codes use it.
#pragma once

#include <optional>
#include <string>

namespace zephsim {

std::string encodeBase64(const std::string& bytes);
/// Nothing if the text is not strict base64 as a whole.
std::optional<std::string> decodeBase64(const std::string& text);

}  // namespace zephsim
