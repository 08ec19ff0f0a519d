// Prints results and errors.
#pragma once

#include <json/json.h>

#include <cstddef>
#include <cstdio>
#include <string_view>

#include "zephlinksdk/records.h"

namespace cli {

/// Allocates what the following functions need; otherwise their first call does. Throws std::bad_alloc.
void prepareOutput();

/// Writes JSON: tabs, members ordered by key, UTF-8 unescaped, U+FFFD for each byte that is not UTF-8, no line feed at
/// the end. Flushes. Ignores write errors. Throws std::bad_alloc.
void writeJson(std::FILE* stream, const Json::Value& value);

/// Output between these two calls is collected and written in one piece, as a record of a stream: an array of the label
/// and the record, and an empty line. A reader of a pipe never sees a partial record. `closeBlock` throws
/// std::bad_alloc.
void openBlock(const char* label);
void closeBlock(std::FILE* stream);

/// A key that the object does not copy, for frequently printed records: `value["time"_key]`.
inline Json::StaticString operator""_key(const char* name, std::size_t) { return Json::StaticString(name); }

/// Returns an array of `toJson(entry)` for the first `count` entries.
template <class Entry, class ToJson>
Json::Value toJsonArray(const Entry* entries, std::size_t count, ToJson toJson) {
  Json::Value array(Json::arrayValue);
  for (std::size_t i = 0; i < count; ++i) array.append(toJson(entries[i]));
  return array;
}

/// Prints the error object of a record to stderr. Throws std::bad_alloc.
void printError(const ZephlinkSDK_Result& head);
template <class Record>
void printError(const Record& record) {
  printError(record.head);
}

/// Prints the error object for out of memory, alone or as a record of a stream. Allocates no memory.
void printNoMemory();
void printNoMemoryBlock();

}  // namespace cli
