// The daemon's state and version.
#include "sdk/families/state.h"
#include "sdk/families/events.h"

#include <algorithm>

#include "sdk/link/call.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

void readVersion(const Json::Value& data, ZephlinkSDK_VersionResult& record) {
  readMember(data, "maj", record.maj);
  readMember(data, "min", record.min);
  readMember(data, "bug", record.bug);
  readMember(data, "build", record.build);
}

}  // namespace

void readState(const Json::Value& data, ZephlinkSDK_StateResult& record) {
  // Negative states wrap to values above all states.
  const auto state = static_cast<std::uint32_t>(asInt(member(data, "state")));
  record.state = std::min<std::uint32_t>(state, ZephlinkSDK_State_Unknown);
}

ZephlinkSDK_StateResult ZephlinkSDK::getState(Callback<ZephlinkSDK_StateResult> callback, void* userData) {
  return subscribe(channel, kRequestState, kReportState, readState, callback, userData);
}

ZephlinkSDK_VersionResult ZephlinkSDK::getVersion(Callback<ZephlinkSDK_VersionResult> callback, void* userData) {
  return ask(channel, {.requests = {"request_version_data"}, .reports = {{"report_version_data", readVersion}}},
             callback, userData);
}

}  // namespace zephlinksdk
