#include "sdk/zephlink_sdk.h"

#include <chrono>
#include <exception>
#include <string>
#include <system_error>

#include "base/text.h"
#include "l10n/location_tables.h"
#include "l10n/translate.h"
#include "platform/clock.h"
#include "sdk/link/call.h"

namespace zephlinksdk {

namespace {

constexpr std::chrono::milliseconds kKeepAliveTick{250};
constexpr std::uint64_t kKeepAlivePeriodMs = 45001;

}  // namespace

ZephlinkSDK::ZephlinkSDK(const ZephlinkSDK_Config& config) {
  registerLocationTables();
  copyText(appName, textOf(config.appName));
  try {
    channel = std::make_unique<WebsocketImpl>(textOf(config.address).c_str(), config.port);
    if (appName[0] != '\0') {
      setApplicationName(appName);
      channel->announce("set_app_name", toObject({{"name", appName}}));
    }
    running = true;
  } catch (const std::system_error&) {
    // The system cannot start a thread: without a channel every call fails.
    channel.reset();
  }
}

ZephlinkSDK::~ZephlinkSDK() { stopKeepAlive(); }

void ZephlinkSDK::finish() {
  stopKeepAlive();
  if (channel) channel->finish();
}

void ZephlinkSDK::stopKeepAlive() {
  {
    const std::lock_guard lock(mutex);
    running = false;
  }
  stopping.notify_all();
  if (keepAliveThread.started()) keepAliveThread.join();
}

void ZephlinkSDK::removeListener(std::uint64_t handle) {
  if (channel) channel->removeEventDescription(handle);
}

/// REQUIRES: `mutex` is locked. The thread starts with the first subscription to statistics, so one-shot commands do
/// not pay for it. Returns false if the system cannot start a thread.
bool ZephlinkSDK::startKeepAlive() {
  if (!running || keepAliveThread.started()) return true;
  return keepAliveThread.start([](void* self) { static_cast<ZephlinkSDK*>(self)->keepAlive(); }, this);
}

/// The keep-alive thread: a daemon stops sending statistics unless the request is repeated.
void ZephlinkSDK::keepAlive() {
  std::unique_lock lock(mutex);
  std::uint64_t last = 0;
  while (running) {
    stopping.wait_for(lock, kKeepAliveTick, [this] { return !running; });
    if (!running || !statsEnabled) continue;
    const std::uint64_t now = monotonicMs();
    // The first repetition waits until the host has finished its initial requests.
    const bool quiet = now - channel->lastQueuedMs() >= static_cast<std::uint64_t>(kKeepAliveTick.count());
    if (last == 0 ? !quiet : now - last < kKeepAlivePeriodMs) continue;
    try {
      subscribeStats(true, 0, nullptr);
      last = now;
    } catch (const std::exception&) {
      // Out of memory: retry at the next tick.
    }
  }
}

}  // namespace zephlinksdk
