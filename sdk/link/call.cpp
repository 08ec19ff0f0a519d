#include "sdk/link/call.h"

#include <algorithm>

namespace zephlinksdk {

Json::Value toObject(Members members) {
  Json::Value object(Json::objectValue);
  for (const Member& member : members) object[member.name] = member.value;
  return object;
}

Request::Request(const char* name, Members list)
    : event(name),
      members(toObject(list)),
      valid(std::all_of(list.begin(), list.end(), [](const Member& member) { return member.valid; })) {}

namespace detail {

WebsocketImpl::EventDescription describe(const std::vector<Request>& requests, std::uint64_t timeoutMs,
                                         bool keepsTimeout) {
  WebsocketImpl::EventDescription description;
  for (const Request& request : requests) WebsocketImpl::addRequest(description, request.event, request.members);
  description.timeoutMs = timeoutMs;
  description.keepsTimeout = keepsTimeout;
  return description;
}

bool allValid(const std::vector<Request>& requests) {
  return std::all_of(requests.begin(), requests.end(), [](const Request& request) { return request.valid; });
}

}  // namespace detail

}  // namespace zephlinksdk
