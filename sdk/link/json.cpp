#include "sdk/link/json.h"

#include <cmath>
#include <limits>
#include <locale>
#include <new>
#include <utility>

#include "base/json_reals.h"

namespace zephlinksdk {

namespace {

template <class Integer>
Integer fromReal(double real) {
  // For 64 bits, the largest value converted to double exceeds the type's range by one.
  constexpr auto smallest = static_cast<double>(std::numeric_limits<Integer>::min());
  constexpr auto largest = static_cast<double>(std::numeric_limits<Integer>::max());
  const bool inRange =
      real >= smallest && real <= largest && real < std::ldexp(1.0, std::numeric_limits<Integer>::digits);
  return inRange ? static_cast<Integer>(real) : 0;
}

template <class Integer>
Integer asInteger(const Json::Value& value) {
  switch (value.type()) {
    case Json::booleanValue:
      return value.asBool() ? 1 : 0;
    case Json::intValue: {
      const Json::Int64 number = value.asInt64();
      return std::in_range<Integer>(number) ? static_cast<Integer>(number) : 0;
    }
    case Json::uintValue: {
      const Json::UInt64 number = value.asUInt64();
      return std::in_range<Integer>(number) ? static_cast<Integer>(number) : 0;
    }
    case Json::realValue:
      return fromReal<Integer>(value.asDouble());
    default:
      return 0;
  }
}

/// Replaces the zeros of a parsed text by the reals of the original text.
void restoreReals(const JsonReals& reals, Json::Value& value) {
  if (value.isArray() || value.isObject()) {
    for (Json::Value& inner : value) restoreReals(reals, inner);
  } else if (value.isNumeric() && value.asDouble() == 0) {
    if (const double* real = reals.at(value.getOffsetStart())) value = *real;
  }
}

const Json::Value& walkable(const Json::Value& value) {
  return value.isArray() || value.isObject() ? value : Json::Value::nullSingleton();
}

}  // namespace

bool has(const Json::Value& object, const char* key) { return object.isObject() && object.isMember(key); }

const Json::Value& member(const Json::Value& object, const char* key) {
  if (!object.isObject()) return Json::Value::nullSingleton();
  const Json::Value* found = object.find(key, key + std::char_traits<char>::length(key));
  return found != nullptr ? *found : Json::Value::nullSingleton();
}

const Json::Value& element(const Json::Value& array, Json::ArrayIndex index) {
  return array.isArray() && array.isValidIndex(index) ? array[index] : Json::Value::nullSingleton();
}

Elements::Elements(const Json::Value& value) : values(walkable(value)) {}

bool asBool(const Json::Value& value) { return value.isBool() || value.isNumeric() ? value.asBool() : false; }

std::int32_t asInt(const Json::Value& value) { return asInteger<std::int32_t>(value); }
std::uint32_t asUInt(const Json::Value& value) { return asInteger<std::uint32_t>(value); }
std::int64_t asInt64(const Json::Value& value) { return asInteger<std::int64_t>(value); }
std::uint64_t asUInt64(const Json::Value& value) { return asInteger<std::uint64_t>(value); }

double asDouble(const Json::Value& value) { return value.isBool() || value.isNumeric() ? value.asDouble() : 0.0; }

std::string asString(const Json::Value& value) {
  if (value.type() == Json::realValue) return realText(value.asDouble());
  return value.isArray() || value.isObject() ? std::string() : value.asString();
}

std::string_view asText(const Json::Value& value, std::string& held) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (value.getString(&begin, &end)) return {begin, static_cast<std::size_t>(end - begin)};
  held = asString(value);
  return held;
}

JsonParser::JsonParser() {
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  reader.reset(builder.newCharReader());
}

bool JsonParser::parse(std::string_view text, Json::Value& root, std::string& errors) {
  // Finding the reals costs a fifth of the parsing time.
  if (std::locale() == std::locale::classic()) return parseByGlobalLocale(text, root, errors);
  const JsonReals reals(text);
  const bool whole = parseByGlobalLocale(reals.text(), root, errors);
  if (!reals.empty()) restoreReals(reals, root);
  return whole;
}

bool JsonParser::parseByGlobalLocale(std::string_view text, Json::Value& root, std::string& errors) {
  try {
    return reader->parse(text.data(), text.data() + text.size(), &root, &errors);
  } catch (const Json::RuntimeError& error) {
    // jsoncpp throws for deep nesting; anything else is a failed allocation.
    if (std::string_view(error.what()).find("stackLimit") == std::string_view::npos) throw std::bad_alloc();
    errors = error.what();
    return false;
  }
}

}  // namespace zephlinksdk
