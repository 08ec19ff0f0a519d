// All writing of what is sent to a daemon.
#pragma once

#include <json/json.h>

#include "platform/wipe.h"

namespace zephlinksdk {

/// Appends `value` in ASCII, without blanks and line ends, object members in the order of their names. Each byte that
/// is not UTF-8 becomes U+FFFD. The same under every locale.
void appendJson(WipedText& to, const Json::Value& value);

/// Fills the texts of a value with zeros. REQUIRES: none of them is a Json::StaticString.
void wipeTexts(const Json::Value& value);

}  // namespace zephlinksdk
