#include "bench/scaling.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "bench/child.h"
#include "bench/measure.h"
#include "bench/servers.h"
#include "zephlinksdk/zephlinksdk.h"

namespace bench {

namespace {

constexpr int kBatches = 10;
constexpr int kUnwantedEvents = 20000;
constexpr int kWantedCalls = 200000;
constexpr int kCalls = 10000;
constexpr int kDirectoryRounds = 20;

const std::string kVersion = R"(["report_version_data",{"maj":1,"min":2,"bug":3,"build":4},"daemon"])";
const std::string kState = R"(["report_current_state",{"state":6},"daemon"])";

double secondsOf(const auto& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

struct DestroySdk {
  void operator()(ZephlinkSDK* sdk) const { ZephlinkSDK_destroy(sdk); }
};
using Sdk = std::unique_ptr<ZephlinkSDK, DestroySdk>;

Sdk connectTo(std::uint16_t port) {
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  config.port = port;
  return Sdk(ZephlinkSDK_create(config));
}

void askVersion(ZephlinkSDK* sdk) {
  if (ZephlinkSDK_getVersion(sdk, nullptr, nullptr).head.hasError) throw std::runtime_error("a call failed");
}

/// Runs the program repeatedly, in batches whose costs should be equal.
void printRuns(int runs) {
  const Simulator simulator;
  const std::vector<std::string> state{ZEPHCTL_PATH, "-p", simulator.port(), "state"};
  const int batch = std::max(1, runs / kBatches);
  for (int done = 0; done + batch <= runs; done += batch) {
    const double seconds = secondsOf([&] {
      for (int i = 0; i < batch; ++i) wall(state);
    });
    printScale("state, runs " + std::to_string(done + 1) + " to " + std::to_string(done + batch), seconds, "s",
               seconds / batch * 1e3, "ms a run");
  }
}

/// A daemon that sends `before` before the version. It answers the requests of all `listeners` at once, when the last
/// one has arrived.
RequestServer::OnRequest eventsBeforeVersion(int listeners, std::string before) {
  auto requests = std::make_shared<int>(0);
  return [listeners, requests, before = std::move(before)](auto& server, auto to, std::string_view name) {
    if (name == "request_current_state" && ++*requests == listeners) server.send(to, kState);
    if (name != "request_version_data") return;
    server.sendRaw(to, before);
    server.send(to, kVersion);
  };
}

/// Returns the seconds until the version arrives after `events`, which are for the listeners or for no one.
double secondsOfEvents(int listeners, const std::string& events) {
  std::atomic<int> calls = 0;
  const RequestServer server(eventsBeforeVersion(listeners, events));
  const Sdk sdk = connectTo(server.port());
  for (int i = 0; i < listeners; ++i) {
    const auto count = [](ZephlinkSDK_StateResult, void* data) { return ++*static_cast<std::atomic<int>*>(data) > 0; };
    ZephlinkSDK_getState(sdk.get(), count, &calls);
  }
  while (calls < listeners) std::this_thread::yield();
  return secondsOf([&] { askVersion(sdk.get()); });
}

std::string repeated(const std::string& text, int count) {
  std::string all;
  all.reserve(text.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

void printListeners() {
  // No call waits for connection statistics.
  const std::string unwanted = repeated(frameOf(connectionReport()), kUnwantedEvents);
  const std::string padded = kState.substr(0, kState.size() - 1) + std::string(100, ' ') + "]";
  for (const int listeners : {10, 100, 1000, 4000}) {
    const std::string who = std::to_string(listeners) + " listeners, ";
    const double nobody = secondsOfEvents(listeners, unwanted);
    printScale(who + "an event that nobody wants", nobody * 1e3, "ms", nobody / kUnwantedEvents * 1e6, "us an event");
    const double all = secondsOfEvents(listeners, repeated(frameOf(padded), kWantedCalls / listeners));
    printScale(who + "an event that all want", all * 1e3, "ms", all / kWantedCalls * 1e6, "us a call");
  }
}

void printThreads() {
  const RequestServer server([](auto& daemon, auto to, std::string_view name) {
    if (name == "request_version_data") daemon.send(to, kVersion);
  });
  for (const int count : {1, 10, 100}) {
    const Sdk sdk = connectTo(server.port());
    askVersion(sdk.get());
    const double seconds = secondsOf([&] {
      std::vector<std::jthread> threads;
      for (int i = 0; i < count; ++i) {
        threads.emplace_back([&sdk, count] {
          for (int call = 0; call < kCalls / count; ++call) askVersion(sdk.get());
        });
      }
    });
    printScale("synchronous calls from " + std::to_string(count) + " threads", seconds * 1e3, "ms",
               seconds / kCalls * 1e6, "us a call");
  }
}

void printDirectories() {
  double one = 0;
  for (const int servers : {1, 16, 256, 1024, 4096}) {
    const RequestServer server(stateAndDirectory(servers));
    std::vector<double> times;
    for (int i = 0; i < kDirectoryRounds; ++i) {
      times.push_back(wall({ZEPHCTL_PATH, "-p", server.portText(), "show", "servers"}));
    }
    if (servers == 1) one = median(times);
    const double more = servers == 1 ? 0 : (median(times) - one) / (servers - 1);
    printScale("show servers, a directory of " + std::to_string(servers), median(times) * 1e3, "ms", more * 1e6,
               "us a further server");
  }
}

}  // namespace

void printScaling(int runs) {
  printRuns(runs);
  printListeners();
  printThreads();
  printDirectories();
}

}  // namespace bench
