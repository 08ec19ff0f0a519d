// Speed tests, their past runs, and the reason of the last disconnect.
#include <algorithm>
#include <ctime>

#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;

constexpr Json::ArrayIndex kKeptRuns = 10;
constexpr std::time_t kDay = 86400;

enum class TestType { Speed = 1, Stream = 2 };

/// Formats a time as local time, as in runs.
std::string dated(std::time_t time) {
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", std::localtime(&time));
  return text;
}

class SpeedTests {
 public:
  explicit SpeedTests(Daemon& owner) : daemon(owner), world(owner.world) {
    const Json::Value place = object({{"country", "de"}, {"city", "frankfurt"}});
    const std::time_t now = std::time(nullptr);
    add(measured(TestType::Speed, now - 3 * kDay, place));
    add(measured(TestType::Stream, now - 2 * kDay, place));
  }

  void startSpeedTest(const Json::Value&) { start(TestType::Speed); }
  void startStreamTest(const Json::Value&) { start(TestType::Stream); }
  void report(const Json::Value&) { daemon.report("report_speedtest_results", runs); }

 private:
  /// A running test also answers requests for another test.
  void start(TestType type) {
    if (running) return;
    running = true;
    daemon.after(2s, [this, type, session = world.sessions] {
      running = false;
      const bool lasted = world.isConnected() && world.sessions == session;
      // Runs have distinct times: a client finds the newest run by its time.
      const std::time_t now = std::max(std::time(nullptr), newest + 1);
      newest = now;
      add(lasted ? measured(type, now, world.server) : failed(type, now));
      report(Json::nullValue);
    });
  }

  /// The newest run is the first.
  void add(const Json::Value& run) {
    runs.insert(0, run);
    if (runs.size() > kKeptRuns) runs.resize(kKeptRuns);
  }

  Json::Value measured(TestType type, std::time_t time, const Json::Value& server) {
    Json::Value run = object({{"time", dated(time)},
                              {"country", server["country"]},
                              {"city", server["city"]},
                              {"num_connections", 3},
                              {"download", daemon.random(150, 260)},
                              {"upload", daemon.random(30, 60)},
                              {"latency", static_cast<unsigned>(daemon.random(12, 40))},
                              {"type", static_cast<int>(type)},
                              {"error", false},
                              {"msg", ""}});
    if (type == TestType::Stream) {
      run["resolution"] = "1080p";
      run["fps"] = 60;
      run["jitter"] = static_cast<unsigned>(daemon.random(1, 6));
      run["loss"] = daemon.random(0, 0.01);
    }
    return run;
  }

  static Json::Value failed(TestType type, std::time_t time) {
    return object({{"time", dated(time)},
                   {"country", ""},
                   {"city", ""},
                   {"num_connections", 0},
                   {"latency", 0},
                   {"type", static_cast<int>(type)},
                   {"error", true},
                   {"msg", "The tunnel is not connected"}});
  }

  Daemon& daemon;
  World& world;
  Json::Value runs = Json::arrayValue;
  std::time_t newest = 0;
  bool running = false;
};

}  // namespace

std::vector<Request> speedTestsFamily(Daemon& daemon) {
  const auto family = std::make_shared<SpeedTests>(daemon);
  return {
      {"speedtest", method(family, &SpeedTests::startSpeedTest)},
      {"streamtest", method(family, &SpeedTests::startStreamTest)},
      {"request_speedtest_results", method(family, &SpeedTests::report)},
      {"request_disconnect_reason", reportRecord(daemon.world.lastDisconnect)},
  };
}

}  // namespace zephsim
