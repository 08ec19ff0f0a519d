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

/// The member of a request, which must be there and of that kind; else the request is refused.
const Json::Value& wanted(const Json::Value& members, const char* member, Kind kind);
std::string wantedText(const Json::Value& members, const char* member);
/// A text that must be one of `words`.
std::string wantedWord(const Json::Value& members, const char* member, const Words& words);
bool wantedBool(const Json::Value& members, const char* member);

/// Says the record.
RequestHandler sayRecord(const SharedRecord& record);
/// Copies `member` of the request to `key` of the record and says the record.
RequestHandler setMember(const SharedRecord& record, const char* member, const char* key, Kind kind);
/// The same for a text that must be one of `words`.
RequestHandler setWord(const SharedRecord& record, const char* member, const char* key, Words words);
/// The same for an array that may not be longer than `limit`.
RequestHandler setList(const SharedRecord& record, const char* member, Json::ArrayIndex limit);

}  // namespace zephsim
