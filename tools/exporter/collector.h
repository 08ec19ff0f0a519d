// Stores the latest records of a daemon for scrapes.
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
  /// Connects to the daemon and subscribes. `onStatus` (may be empty) receives every change of the session's status, on
  /// a thread of the session.
  explicit Collector(const ZephlinkSDK_Config& daemon, zephlinksdk::Session::StatusHandler onStatus = {},
                     zephlinksdk::SessionOptions options = {});

  /// Returns the current metrics. Thread-safe.
  std::vector<prometheus::MetricFamily> Collect() const override;

  /// Waits for the first record of every kind, until the connection has failed or `patience` after it became live: a
  /// daemon need not report everything. Returns whether the connection is live.
  bool waitForRecords(std::chrono::milliseconds patience) const;

 private:
  template <class Record>
  void put(const Record& record);
  void setLink(zephlinksdk::SessionStatus status);

  const zephlinksdk::Session::StatusHandler statusHandler;
  mutable std::mutex mutex;
  mutable std::condition_variable changed;
  Snapshot snapshot;
  zephlinksdk::Session session;  // last member: its threads use all of the above
};

}  // namespace exporter
