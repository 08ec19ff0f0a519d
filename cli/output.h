// All that the program says about a result.
#pragma once

#include <json/json.h>

#include <cstddef>
#include <cstdio>
#include <string_view>

#include "sdk/results.h"

namespace cli {

/// The one writer of JSON: tabs, members in the order of their names, UTF-8 as it is, no line feed at the end. Flushes.
/// A write that fails is ignored.
void writeJson(std::FILE* stream, const Json::Value& value);

/// What is written to `stream` while a block stands goes out at its end, `head` before and `tail` behind it, in one
/// piece: a reader at the end of a pipe never sees half of it. One block at a time.
class OutputBlock {
 public:
  OutputBlock(std::FILE* stream, std::string_view head, std::string_view tail);
  ~OutputBlock();
  OutputBlock(const OutputBlock&) = delete;
  OutputBlock& operator=(const OutputBlock&) = delete;

 private:
  std::FILE* output;
  std::string_view ending;
};

/// A key that the object does not copy, for records that print often: `value["time"_key]`.
inline Json::StaticString operator""_key(const char* name, std::size_t) { return Json::StaticString(name); }

/// An array of what `toJson` makes of the first `count` entries.
template <class Entry, class ToJson>
Json::Value toJsonArray(const Entry* entries, std::size_t count, ToJson toJson) {
  Json::Value array(Json::arrayValue);
  for (std::size_t i = 0; i < count; ++i) array.append(toJson(entries[i]));
  return array;
}

/// The error object of any record, on standard error.
void printError(const ZephlinkSDK_Result& record);

}  // namespace cli
