// Converts the latest records of a daemon to metrics.
#pragma once

#include <prometheus/metric_family.h>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "zephlinksdk/session.hpp"

namespace exporter {

/// The latest record of each kind; empty before the first.
using Records =
    std::tuple<std::optional<ZephlinkSDK_VersionResult>, std::optional<ZephlinkSDK_StateResult>,
               std::optional<ZephlinkSDK_ConnectResult>, std::optional<ZephlinkSDK_AdaptersResult>,
               std::optional<ZephlinkSDK_ConnectionStatsResult>, std::optional<ZephlinkSDK_SessionStatsResult>,
               std::optional<ZephlinkSDK_StreamingStatsResult>, std::optional<ZephlinkSDK_SafeBrowsingResult>,
               std::optional<ZephlinkSDK_SafeBrowsingStatsResult>, std::optional<ZephlinkSDK_DisconnectEventResult>,
               std::optional<ZephlinkSDK_NetworkSharingAvailableSharesResult>>;

/// The state of the exporter at one moment.
struct Snapshot {
  zephlinksdk::SessionStatus link = zephlinksdk::SessionStatus::Connecting;
  /// How often the connection was lost.
  std::uint64_t losses = 0;
  Records records;
};

/// Returns the metrics of a snapshot; omits empty families. If the daemon does not answer, these are `zephlink_up 0`
/// and the exporter's own metrics: outdated values are not exported.
std::vector<prometheus::MetricFamily> metricsOf(const Snapshot& snapshot);

/// Returns metrics in the Prometheus text format.
std::string textOf(const std::vector<prometheus::MetricFamily>& families);

}  // namespace exporter
