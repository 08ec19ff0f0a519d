// The daemon's state, on which login, logout, connecting and disconnecting end.
#pragma once

#include <json/json.h>

#include "sdk/families/events.h"
#include "sdk/link/call.h"
#include "zephlinksdk/records.h"

namespace zephlinksdk {

void readState(const Json::Value& data, ZephlinkSDK_StateResult& record);

/// The report of one state alone.
template <class Record, class Read>
Report<Record> stateReport(ZephlinkSDK_State state, Read reader) {
  return {kReportState, reader, {{"state", static_cast<int>(state)}}};
}

inline Report<ZephlinkSDK_StateResult> stateReport(ZephlinkSDK_State state) {
  return stateReport<ZephlinkSDK_StateResult>(state, readState);
}

}  // namespace zephlinksdk
