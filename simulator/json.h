// JSON helpers for the families.
#pragma once

#include <json/value.h>

#include <initializer_list>
#include <string>
#include <utility>

namespace zephsim {

/// Makes an object of these members.
inline Json::Value object(std::initializer_list<std::pair<const char*, Json::Value>> members) {
  Json::Value value(Json::objectValue);
  for (const auto& [key, member] : members) value[key] = member;
  return value;
}

/// Makes an array of these elements.
inline Json::Value array(std::initializer_list<Json::Value> elements) {
  Json::Value value(Json::arrayValue);
  for (const Json::Value& element : elements) value.append(element);
  return value;
}

/// Returns the first object in `list` whose member `key` equals the text, or null.
inline Json::Value* findBy(Json::Value& list, const char* key, const std::string& text) {
  for (Json::Value& element : list) {
    if (element[key] == text) return &element;
  }
  return nullptr;
}

}  // namespace zephsim
