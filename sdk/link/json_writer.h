// Writes the JSON that is sent to a daemon.
#pragma once

#include <json/json.h>

#include "platform/wipe.h"

namespace zephlinksdk {

/// Appends `value` in ASCII, without white space, object members ordered by key. Each byte that is not UTF-8 becomes
/// U+FFFD. Independent of the locale.
void appendJson(WipedText& to, const Json::Value& value);

/// Overwrites the texts of a value with zeros. REQUIRES: none of them is a Json::StaticString.
void wipeTexts(const Json::Value& value);

}  // namespace zephlinksdk
