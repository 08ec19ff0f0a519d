// Requests that set one member of a record and are answered by the whole record.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "simulator/daemon.h"

namespace zephsim {

using Words = std::vector<std::string>;

enum class Kind { Bool, Whole, Natural, Real, Text, List };

bool isOfKind(const Json::Value& value, Kind kind);

/// Returns a member of the request. Refuses the request if the member is missing or of another kind.
const Json::Value& required(const Json::Value& members, const char* member, Kind kind);
std::string requiredText(const Json::Value& members, const char* member);
/// Returns a text that must be one of `words`.
std::string requiredWord(const Json::Value& members, const char* member, const Words& words);
bool requiredBool(const Json::Value& members, const char* member);

/// Makes a handler that reports the record.
RequestHandler reportRecord(const SharedRecord& record);
/// Makes a handler that copies `member` of the request to `key` of the record and reports the record.
RequestHandler setMember(const SharedRecord& record, const char* member, const char* key, Kind kind);
/// Like setMember, for a text that must be one of `words`.
RequestHandler setWord(const SharedRecord& record, const char* member, const char* key, Words words);
/// Like setMember, for an array of at most `limit` elements.
RequestHandler setList(const SharedRecord& record, const char* member, Json::ArrayIndex limit);

}  // namespace zephsim
