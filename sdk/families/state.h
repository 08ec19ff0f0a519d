// The daemon's state, on which login, logout, connecting and disconnecting end.
#pragma once

#include <json/json.h>

#include <utility>

#include "sdk/link/call.h"
#include "sdk/results.h"

namespace zephlinksdk {

void readState(const Json::Value& data, ZephlinkSDK_StateResult& record);

/// The report of one state alone.
template <class Record>
Report<Record> stateReport(ZephlinkSDK_State state, Reader<Record> reader) {
  return {"report_current_state", std::move(reader), {{"state", static_cast<int>(state)}}};
}

inline Report<ZephlinkSDK_StateResult> stateReport(ZephlinkSDK_State state) {
  return stateReport<ZephlinkSDK_StateResult>(state, readState);
}

}  // namespace zephlinksdk
