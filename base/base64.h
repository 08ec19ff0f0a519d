// Base64 with the standard alphabet.
#pragma once

#include <string>
#include <string_view>

namespace zephlinksdk {

/// Decodes `text` up to the first incomplete or invalid group of four characters. Padding is required and ends the
/// text; white space is invalid.
std::string decodeBase64(std::string_view text);

}  // namespace zephlinksdk
