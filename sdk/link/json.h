// Reads the JSON that a daemon sends. No reader throws, whatever the text or value: missing and mistyped values read as
// the zero of their type.
#pragma once

#include <json/json.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/text.h"

namespace zephlinksdk {

/// Returns whether `object` is an object that has `key`. A member whose value is null counts.
bool has(const Json::Value& object, const char* key);

/// Returns the member `key`; null if `object` is not an object or has no such member.
const Json::Value& member(const Json::Value& object, const char* key);

/// Returns the element at `index`; null if `array` is not an array or is too short.
const Json::Value& element(const Json::Value& array, Json::ArrayIndex index);

/// The elements of an array in order, or the values of an object in the order of their keys; empty for any other value.
/// For `for` loops; `name()` of an iterator returns a member's key.
class Elements {
 public:
  explicit Elements(const Json::Value& value);
  Json::Value::const_iterator begin() const { return values.begin(); }
  Json::Value::const_iterator end() const { return values.end(); }

 private:
  const Json::Value& values;
};

/// These convert what jsoncpp can convert (a bool to a number, 3.7 to 3, a number to a text). Texts read as numbers,
/// numbers out of the type's range, and objects and arrays read as zero, false or the empty text.
bool asBool(const Json::Value& value);
std::int32_t asInt(const Json::Value& value);
std::uint32_t asUInt(const Json::Value& value);
std::int64_t asInt64(const Json::Value& value);
std::uint64_t asUInt64(const Json::Value& value);
double asDouble(const Json::Value& value);
std::string asString(const Json::Value& value);

/// Like asString, without a copy if `value` is a text, which must then outlive the result; other results are stored in
/// `held`.
std::string_view asText(const Json::Value& value, std::string& held);

/// Reads the member `key` into a field of its type. Fields of 8 or 16 bits keep the low bits of what `asInt` returns.
inline void readMember(const Json::Value& object, const char* key, bool& field) { field = asBool(member(object, key)); }
inline void readMember(const Json::Value& object, const char* key, std::uint8_t& field) {
  field = static_cast<std::uint8_t>(asInt(member(object, key)));
}
inline void readMember(const Json::Value& object, const char* key, std::uint16_t& field) {
  field = static_cast<std::uint16_t>(asInt(member(object, key)));
}
inline void readMember(const Json::Value& object, const char* key, std::int32_t& field) {
  field = asInt(member(object, key));
}
inline void readMember(const Json::Value& object, const char* key, std::uint32_t& field) {
  field = asUInt(member(object, key));
}
inline void readMember(const Json::Value& object, const char* key, std::int64_t& field) {
  field = asInt64(member(object, key));
}
inline void readMember(const Json::Value& object, const char* key, std::uint64_t& field) {
  field = asUInt64(member(object, key));
}
inline void readMember(const Json::Value& object, const char* key, double& field) {
  field = asDouble(member(object, key));
}
template <std::size_t N>
void readMember(const Json::Value& object, const char* key, char (&field)[N]) {
  std::string held;
  copyText(field, asText(member(object, key), held));
}

/// Reads the elements of `list` into the first entries with `read(element, entry)`. Drops elements that do not fit.
template <class Entry, std::size_t N, class Count, class Read>
void readEntries(const Json::Value& list, Entry (&entries)[N], Count& count, Read read) {
  count = 0;
  for (const Json::Value& value : Elements(list)) {
    if (count == N) return;
    read(value, entries[count++]);
  }
}

/// The same for a list of texts.
template <std::size_t Size, std::size_t N, class Count>
void readTexts(const Json::Value& list, char (&texts)[N][Size], Count& count) {
  readEntries(list, texts, count, [](const Json::Value& value, char(&text)[Size]) { copyText(text, asString(value)); });
}

/// Parses texts and reads their numbers independently of the locale. Reuse it: constructing one costs more than reading
/// a short report.
class JsonParser {
 public:
  JsonParser();

  /// Returns false, with the reasons in `errors`, if the text is not JSON or nested too deeply; `root` then contains
  /// what was read so far. Throws std::bad_alloc.
  bool parse(std::string_view text, Json::Value& root, std::string& errors);

 private:
  bool parseByGlobalLocale(std::string_view text, Json::Value& root, std::string& errors);

  std::unique_ptr<Json::CharReader> reader;
};

}  // namespace zephlinksdk
