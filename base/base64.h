// Base64 with the standard alphabet.
#pragma once

#include <string>
#include <string_view>

namespace zephlinksdk {

/// The bytes that `text` stands for, up to the first group of four characters that is not whole and clean: padding is
/// required and ends the text, white space is no character.
std::string decodeBase64(std::string_view text);

}  // namespace zephlinksdk
