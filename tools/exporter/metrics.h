// The metrics of a daemon, made of the latest records.
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

/// What the exporter knows.
struct Snapshot {
  zephlinksdk::SessionStatus link = zephlinksdk::SessionStatus::Connecting;
  /// How often the link was lost.
  std::uint64_t losses = 0;
  Records records;
};

/// Returns the metrics of a snapshot, families without a metric omitted. While the daemon does not answer these are
/// `zephlink_up 0` and those of the exporter itself: values of the past are not shown.
std::vector<prometheus::MetricFamily> metricsOf(const Snapshot& snapshot);

/// Returns metrics in Prometheus' text format.
std::string textOf(const std::vector<prometheus::MetricFamily>& families);

}  // namespace exporter
