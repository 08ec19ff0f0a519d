// The library as a host uses it: a configuration towards a scripted daemon, and a place that collects records.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "sdk/facade.h"
#include "sdk/text.h"
#include "tests/scripted_daemon.h"

namespace tests {

struct DestroySdk {
  void operator()(zephlinksdk::ZephlinkSDK* sdk) const { ZephlinkSDK_destroy(sdk); }
};
using Sdk = std::unique_ptr<zephlinksdk::ZephlinkSDK, DestroySdk>;

inline ZephlinkSDK_Config configFor(std::uint16_t port, std::string_view appName = "Zephlink") {
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  zephlinksdk::copyText(config.appName, appName);
  config.port = port;
  return config;
}

inline Sdk connectTo(std::uint16_t port) { return Sdk(ZephlinkSDK_create(configFor(port))); }

/// Collects what a callback gets; `collect` is the callback, the object its user data.
template <class Record>
class Collector {
 public:
  /// What the callback answers to each record; true unless told otherwise. Runs on the channel thread.
  std::function<bool(const Record&)> answer = [](const Record&) { return true; };

  static bool collect(Record record, void* userData) {
    auto* self = static_cast<Collector*>(userData);
    const bool more = self->answer(record);
    const std::lock_guard lock(self->mutex);
    self->records.push_back(record);
    self->changed.notify_all();
    return more;
  }

  /// Waits for that many records; false after 30 seconds.
  bool waitFor(std::size_t count) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::seconds(30), [&] { return records.size() >= count; });
  }

  std::vector<Record> all() {
    const std::lock_guard lock(mutex);
    return records;
  }

 private:
  std::mutex mutex;
  std::condition_variable changed;
  std::vector<Record> records;
};

}  // namespace tests
