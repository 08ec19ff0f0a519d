// Live statistics.
#include <algorithm>

#include "sdk/link/call.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

ZephlinkSDK_Result ZephlinkSDK::subscribeStats(bool enable, std::uint8_t periodCount, const unsigned int* periods) {
  if (!channel) return refused<ZephlinkSDK_Result>(ZephlinkSDK_Error_Sdk);
  if (periodCount > 0 && periods == nullptr) return refused<ZephlinkSDK_Result>(ZephlinkSDK_Error_InvalidArgument);
  const std::lock_guard lock(mutex);
  statsEnabled = enable;
  Json::Value members = toObject({{"enable", enable}});
  if (enable && periodCount > 0) {
    const std::size_t count = std::min<std::size_t>(periodCount, ZephlinkSDK_MaxSessionPeriods);
    for (std::size_t i = 0; i < count; ++i) members["periods"].append(periods[i]);
  }
  channel->send("stat_subscribe", members);
  return !enable || startKeepAlive() ? ZephlinkSDK_Result{} : refused<ZephlinkSDK_Result>(ZephlinkSDK_Error_Sdk);
}

}  // namespace zephlinksdk
