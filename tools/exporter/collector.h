// Keeps the latest records of a daemon, for scrapes.
#pragma once

#include <prometheus/collectable.h>
#include <prometheus/metric_family.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

#include "tools/exporter/metrics.h"
#include "zephlinksdk/session.hpp"

namespace exporter {

class Collector : public prometheus::Collectable {
 public:
  /// Connects to the daemon and subscribes. `onStatus` (may be empty) gets every change of the link, on a thread of the
  /// session.
  explicit Collector(const ZephlinkSDK_Config& daemon, zephlinksdk::Session::StatusHandler onStatus = {},
                     zephlinksdk::SessionOptions options = {});

  /// The metrics of now. Thread-safe.
  std::vector<prometheus::MetricFamily> Collect() const override;

  /// Waits for the first record of every kind: until the link has failed, or `patience` after it is live, because a
  /// daemon need not answer everything. Returns whether the link is live.
  bool waitForRecords(std::chrono::milliseconds patience) const;

 private:
  template <class Record>
  void put(const Record& record);
  void setLink(zephlinksdk::SessionStatus status);

  const zephlinksdk::Session::StatusHandler statusHandler;
  mutable std::mutex mutex;
  mutable std::condition_variable changed;
  Snapshot snapshot;
  zephlinksdk::Session session;  // last: its threads use all of the above
};

}  // namespace exporter
