#include "simulator/setters.h"

#include <algorithm>

namespace zephsim {

bool isOfKind(const Json::Value& value, Kind kind) {
  switch (kind) {
    case Kind::Bool:
      return value.isBool();
    case Kind::Whole:
      return value.isInt64();
    case Kind::Natural:
      return value.isUInt64();
    case Kind::Real:
      return value.isNumeric();
    case Kind::Text:
      return value.isString();
    case Kind::List:
      return value.isArray();
  }
  return false;
}

const Json::Value& required(const Json::Value& members, const char* member, Kind kind) {
  if (!members.isObject() || !isOfKind(members[member], kind)) {
    throw Refusal{Fault::InvalidArgument, std::string("The value of ") + member + " is not valid"};
  }
  return members[member];
}

std::string requiredText(const Json::Value& members, const char* member) {
  return required(members, member, Kind::Text).asString();
}

std::string requiredWord(const Json::Value& members, const char* member, const Words& words) {
  std::string word = requiredText(members, member);
  if (std::find(words.begin(), words.end(), word) == words.end()) {
    throw Refusal{Fault::InvalidArgument, "\"" + word + "\" is not known"};
  }
  return word;
}

bool requiredBool(const Json::Value& members, const char* member) {
  return required(members, member, Kind::Bool).asBool();
}

RequestHandler reportRecord(const SharedRecord& record) {
  return [record](Daemon& daemon, const Json::Value&) { daemon.report(*record); };
}

RequestHandler setMember(const SharedRecord& record, const char* member, const char* key, Kind kind) {
  return [=](Daemon& daemon, const Json::Value& members) {
    record->value[key] = required(members, member, kind);
    daemon.report(*record);
  };
}

RequestHandler setWord(const SharedRecord& record, const char* member, const char* key, Words words) {
  return [=, words = std::move(words)](Daemon& daemon, const Json::Value& members) {
    record->value[key] = requiredWord(members, member, words);
    daemon.report(*record);
  };
}

RequestHandler setList(const SharedRecord& record, const char* member, Json::ArrayIndex limit) {
  return [=](Daemon& daemon, const Json::Value& members) {
    const Json::Value& list = required(members, member, Kind::List);
    if (list.size() > limit) throw Refusal{Fault::InvalidArgument, "The list is too long"};
    record->value[member] = list;
    daemon.report(*record);
  };
}

}  // namespace zephsim
