// The report of the daemon's state, which ends login, logout, connecting and disconnecting.
#pragma once

#include <json/json.h>

#include "sdk/families/events.h"
#include "sdk/link/call.h"
#include "zephlinksdk/records.h"

namespace zephlinksdk {

void readState(const Json::Value& data, ZephlinkSDK_StateResult& record);

/// Matches reports of one state only.
template <class Record, class Read>
Report<Record> stateReport(ZephlinkSDK_State state, Read reader) {
  return {kReportState, reader, {{"state", static_cast<int>(state)}}};
}

inline Report<ZephlinkSDK_StateResult> stateReport(ZephlinkSDK_State state) {
  return stateReport<ZephlinkSDK_StateResult>(state, readState);
}

}  // namespace zephlinksdk
