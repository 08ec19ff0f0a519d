// Small helpers on JSON values for the families.
#pragma once

#include <json/value.h>

#include <initializer_list>
#include <string>
#include <utility>

namespace zephsim {

/// An object of these members.
inline Json::Value object(std::initializer_list<std::pair<const char*, Json::Value>> members) {
  Json::Value value(Json::objectValue);
  for (const auto& [key, member] : members) value[key] = member;
  return value;
}

/// An array of these elements.
inline Json::Value array(std::initializer_list<Json::Value> elements) {
  Json::Value value(Json::arrayValue);
  for (const Json::Value& element : elements) value.append(element);
  return value;
}

/// The first object of `list` whose member `key` is that text, or null.
inline Json::Value* findBy(Json::Value& list, const char* key, const std::string& text) {
  for (Json::Value& element : list) {
    if (element[key] == text) return &element;
  }
  return nullptr;
}

}  // namespace zephsim
