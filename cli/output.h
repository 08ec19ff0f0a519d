// All that the program says about a result.
#pragma once

#include <json/json.h>

#include <cstddef>
#include <cstdio>
#include <string_view>

#include "zephlinksdk/records.h"

namespace cli {

/// Makes what the following functions need, which they otherwise do at their first call. Throws std::bad_alloc.
void prepareOutput();

/// The one writer of JSON: tabs, members in the order of their names, UTF-8 as it is, U+FFFD for each byte that is not
/// UTF-8, no line feed at the end. Flushes. A write that fails is ignored. Throws std::bad_alloc.
void writeJson(std::FILE* stream, const Json::Value& value);

/// What is written between these two goes out at the end in one piece, as a record of a stream: an array of the label
/// and the record, and an empty line. A reader at the end of a pipe never sees half of it. `closeBlock` throws
/// std::bad_alloc.
void openBlock(const char* label);
void closeBlock(std::FILE* stream);

/// A key that the object does not copy, for records that print often: `value["time"_key]`.
inline Json::StaticString operator""_key(const char* name, std::size_t) { return Json::StaticString(name); }

/// An array of what `toJson` makes of the first `count` entries.
template <class Entry, class ToJson>
Json::Value toJsonArray(const Entry* entries, std::size_t count, ToJson toJson) {
  Json::Value array(Json::arrayValue);
  for (std::size_t i = 0; i < count; ++i) array.append(toJson(entries[i]));
  return array;
}

/// The error object of any record, on standard error. Throws std::bad_alloc.
void printError(const ZephlinkSDK_Result& head);
template <class Record>
void printError(const Record& record) {
  printError(record.head);
}

/// The error object of a failure for want of memory, alone and as a record of a stream. Needs no memory.
void printNoMemory();
void printNoMemoryBlock();

}  // namespace cli
