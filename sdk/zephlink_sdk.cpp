#include "sdk/zephlink_sdk.h"

#include <chrono>
#include <string>
#include <system_error>

#include "l10n/location_tables.h"
#include "l10n/translate.h"
#include "sdk/link/call.h"
#include "sdk/platform/clock.h"
#include "sdk/text.h"

namespace zephlinksdk {

namespace {

constexpr std::chrono::milliseconds kKeepAliveTick{250};
constexpr std::uint64_t kKeepAlivePeriodMs = 45001;

}  // namespace

ZephlinkSDK::ZephlinkSDK(const ZephlinkSDK_Config& config) {
  registerLocationTables();
  copyText(appName, config.appName);
  try {
    channel = std::make_unique<WebsocketImpl>(config.address, config.port);
    if (appName[0] != '\0') {
      setApplicationName(appName);
      channel->send("set_app_name", toObject({{"name", appName}}));
    }
    running = true;
  } catch (const std::system_error&) {
    // A system without a thread to give: every call says that there is no channel.
    channel.reset();
  }
}

ZephlinkSDK::~ZephlinkSDK() {
  {
    const std::lock_guard lock(mutex);
    running = false;
  }
  stopping.notify_all();
  if (keepAliveThread.joinable()) keepAliveThread.join();
}

void ZephlinkSDK::removeListener(std::uint64_t handle) {
  if (channel) channel->removeEventDescription(handle);
}

/// With `mutex` held. One-shot commands never pay for the thread: it begins with the first subscription to statistics.
/// False when the system has no thread to give.
bool ZephlinkSDK::startKeepAlive() {
  if (!running || keepAliveThread.joinable()) return true;
  try {
    keepAliveThread = std::thread(&ZephlinkSDK::keepAlive, this);
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

/// The keep-alive thread: a daemon stops its statistics unless it is asked again.
void ZephlinkSDK::keepAlive() {
  std::unique_lock lock(mutex);
  std::uint64_t last = 0;
  while (running) {
    const std::uint64_t now = monotonicMs();
    if (statsEnabled && now - last >= kKeepAlivePeriodMs) {
      subscribeStats(true, 0, nullptr);
      last = now;
    }
    stopping.wait_for(lock, kKeepAliveTick, [this] { return !running; });
  }
}

}  // namespace zephlinksdk
