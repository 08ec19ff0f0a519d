#include "sdk/link/call.h"

#include <algorithm>

#include "sdk/link/json_writer.h"

namespace zephlinksdk {

Json::Value toObject(Members members) {
  Json::Value object(Json::objectValue);
  for (const Member& member : members) object[member.name] = member.value;
  return object;
}

namespace {

struct WipeAndDelete {
  void operator()(const Json::Value* value) const {
    wipeTexts(*value);
    delete value;
  }
};

}  // namespace

Request::Request(const char* name, Members list)
    : event(name),
      members(new Json::Value(toObject(list)), WipeAndDelete()),
      valid(std::all_of(list.begin(), list.end(), [](const Member& member) { return member.valid; })) {
  for (const Member& member : list) wipeTexts(member.value);
}

namespace detail {

std::uint32_t refusal(const Channel& channel, const std::vector<Request>& requests) {
  if (!channel) return ZephlinkSDK_Error_Sdk;
  const bool valid =
      std::all_of(requests.begin(), requests.end(), [](const Request& request) { return request.valid; });
  return valid ? ZephlinkSDK_Error_None : ZephlinkSDK_Error_InvalidArgument;
}

WebsocketImpl::EventDescription describe(const std::vector<Request>& requests, const Reports& reports,
                                         std::uint64_t timeoutMs, bool keepsTimeout) {
  WebsocketImpl::EventDescription description;
  for (const Request& request : requests) {
    const Json::Value& members = request.members ? *request.members : Json::Value::nullSingleton();
    WebsocketImpl::addRequest(description, request.event, members);
    wipeTexts(members);
  }
  for (const AnyReport& report : reports) {
    if (report.filter.isNull()) {
      WebsocketImpl::addExpectedEvent(description, report.event);
    } else {
      WebsocketImpl::addExpectedEvent(description, report.event, report.filter);
    }
  }
  description.timeoutMs = timeoutMs;
  description.keepsTimeout = keepsTimeout;
  return description;
}

Parser parserOf(Reports reports, std::shared_ptr<lockedHead> result) {
  return [reports = std::move(reports), result = std::move(result)](const std::string& event, const std::string&,
                                                                    const Json::Value& root) {
    for (const AnyReport& report : reports) {
      if (event != report.event) continue;
      result->head.hasError = false;
      return report.read(element(root, 1), result->head);
    }
    return false;
  };
}

}  // namespace detail

}  // namespace zephlinksdk
