// The library as used by a host: an object connected to a scripted daemon, and a collector of records.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "base/text.h"
#include "tests/scripted_daemon.h"
#include "zephlinksdk/zephlinksdk.h"

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

/// A daemon and an object connected to it.
struct Host {
  ScriptedDaemon daemon;
  Sdk owner = connectTo(daemon.port());
  zephlinksdk::ZephlinkSDK* sdk = owner.get();

  explicit Host(Answers answers = {}) : daemon(std::move(answers)) {}
};

inline std::string stateReport(int state) {
  return event("report_current_state", "{\"state\":" + std::to_string(state) + "}");
}

inline const std::string kVersionReport = event("report_version_data", R"({"maj":1,"min":2,"bug":3,"build":4})");

/// Answers a state request with these states, a version request with one version.
inline Answers statesAndVersion(const std::vector<int>& states) {
  Answers answers{{"request_version_data", {kVersionReport}}};
  for (const int state : states) answers["request_current_state"].push_back(stateReport(state));
  return answers;
}

/// Runs `work` with its number on that many threads at once, and waits for all.
template <class Work>
void onThreads(int count, const Work& work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) threads.emplace_back(work, i);
  for (std::thread& thread : threads) thread.join();
}

/// Collects the records of a callback: `collect` is the callback, the object its user data.
template <class Record>
class Collector {
 public:
  /// The callback's return value for each record; default: true. Runs on the channel thread.
  std::function<bool(const Record&)> answer = [](const Record&) { return true; };

  static bool collect(Record record, void* userData) {
    auto* self = static_cast<Collector*>(userData);
    const bool more = self->answer(record);
    self->records.change([&](auto& received) { received.push_back(record); });
    return more;
  }

  /// Waits for that many records; returns false after 30 seconds.
  bool waitFor(std::size_t count) {
    return records.waitUntil([&](const auto& received) { return received.size() >= count; });
  }

  std::vector<Record> all() { return records.get(); }

 private:
  Watched<std::vector<Record>> records;
};

}  // namespace tests
