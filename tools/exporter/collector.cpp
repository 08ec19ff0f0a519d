#include "tools/exporter/collector.h"

#include <optional>
#include <tuple>
#include <utility>

namespace exporter {

namespace {

using zephlinksdk::SessionStatus;

bool isComplete(const Records& records) {
  return std::apply([](const auto&... record) { return (record.has_value() && ...); }, records);
}

bool hasFailed(SessionStatus link) { return link == SessionStatus::Unreachable || link == SessionStatus::Mute; }

}  // namespace

Collector::Collector(const ZephlinkSDK_Config& daemon, zephlinksdk::Session::StatusHandler onStatus,
                     zephlinksdk::SessionOptions options)
    : statusHandler(std::move(onStatus)),
      session(
          daemon, [this](SessionStatus status) { setLink(status); }, std::move(options)) {
  const auto keep = [this](const auto& record) { put(record); };
  session.subscribeStats({ZephlinkSDK_Period_Current, ZephlinkSDK_Period_Day, ZephlinkSDK_Period_Week,
                          ZephlinkSDK_Period_Month, ZephlinkSDK_Period_Total});
  session.poll(&ZephlinkSDK_getVersion, keep);
  session.subscribe(&ZephlinkSDK_getState, keep);
  session.subscribe(&ZephlinkSDK_getConnectedServer, keep);
  session.subscribe(&ZephlinkSDK_getAdapters, keep);
  session.subscribe(&ZephlinkSDK_getConnectionStats, keep);
  session.subscribe(&ZephlinkSDK_getSessionStats, keep);
  session.subscribe(&ZephlinkSDK_getStreamingStats, keep);
  session.subscribe(&ZephlinkSDK_getSafeBrowsing, keep);
  session.subscribe(&ZephlinkSDK_getSafeBrowsingStats, keep);
  session.subscribe(&ZephlinkSDK_getLastDisconnectEvent, keep);
  session.subscribe(&ZephlinkSDK_getNetworkSharesAvailable, keep);
}

std::vector<prometheus::MetricFamily> Collector::Collect() const {
  const std::lock_guard lock(mutex);
  return metricsOf(snapshot);
}

bool Collector::waitForRecords(std::chrono::milliseconds patience) const {
  std::unique_lock lock(mutex);
  changed.wait(lock, [this] { return snapshot.link == SessionStatus::Live || hasFailed(snapshot.link); });
  changed.wait_for(lock, patience, [this] { return isComplete(snapshot.records) || hasFailed(snapshot.link); });
  return snapshot.link == SessionStatus::Live;
}

template <class Record>
void Collector::put(const Record& record) {
  if (record.hasError) return;
  const std::lock_guard lock(mutex);
  std::get<std::optional<Record>>(snapshot.records) = record;
  changed.notify_all();
}

void Collector::setLink(SessionStatus status) {
  {
    const std::lock_guard lock(mutex);
    if (snapshot.link == SessionStatus::Live) ++snapshot.losses;
    snapshot.link = status;
    // Later records may come from another daemon, or from the same one after a restart.
    if (status != SessionStatus::Live) snapshot.records = {};
    changed.notify_all();
  }
  if (statusHandler) statusHandler(status);
}

}  // namespace exporter
