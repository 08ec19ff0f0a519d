#include "bench/ratios.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "bench/child.h"
#include "simulator/ws_server.h"

namespace bench {

namespace {

constexpr int kRounds = 200;
constexpr int kBurstRounds = 3;
constexpr std::size_t kMegabyte = 1000000;

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// The medians of two measures taken in turn, so that a machine whose speed drifts slows both.
struct Pair {
  double ours = 0;
  double floor = 0;

  double ratio() const { return ours / floor; }
};

Pair measureInTurn(int rounds, const std::function<double()>& ours, const std::function<double()>& floor) {
  std::vector<double> oursAll;
  std::vector<double> floorAll;
  for (int round = 0; round < rounds; ++round) {
    oursAll.push_back(ours());
    floorAll.push_back(floor());
  }
  return {median(oursAll), median(floorAll)};
}

void print(const char* measure, const Pair& pair, double scale, const char* unit, double bound) {
  std::printf("%-58s %8.2f %s over %8.2f %s: %5.2f times (bound %.1f)\n", measure, pair.ours * scale, unit,
              pair.floor * scale, unit, pair.ratio(), bound);
}

double wall(const std::vector<std::string>& words) { return runChild(words).wallSeconds; }

/// One report as the daemon's statistics look, about 2.5 KB.
std::string connectionReport() {
  std::string connections;
  for (int i = 0; i < 5; ++i) {
    if (i > 0) connections += ",";
    connections += R"({"bInF":18234,"bInFL":65536,"cnnct":true,"zzz":0,"guid":"{0F2A3C44-77AB-4D11-9A58-00000000000)" +
                   std::to_string(i) + R"(}","key":"connection-)" + std::to_string(i) +
                   R"(","localIp":"192.168.1.20","lsR":0.25,"lsS":0.5,"ltMs":23,"privateIp":"10.8.0.2",)"
                   R"("protocol":"udp","numConns":4,"remoteIp":"198.51.100.7","totBps":8123456,"sndBps":1123456,)"
                   R"("rcvBps":7000000,"sndEstMbps":12.5,"rcvEstMbps":87.25,"jtMs":3,"mos":4.2,)"
                   R"("sndBytes":123456789,"rcvBytes":987654321,"congested":false})";
  }
  return R"(["report_connection_stats",{"time":1700000000000,"connections":[)" + connections + R"(]},"daemon"])";
}

/// A server that sends `count` reports in one burst once the stream has asked for them.
class BurstServer {
 public:
  BurstServer(const std::string& report, std::size_t count)
      : server(0, {.onText = [this, report, count](zephsim::Connection to, const std::string& text) {
                 if (text.find("\"request_connection_stats\"") == std::string::npos) return;
                 std::string frames;
                 for (std::size_t i = 0; i < count; ++i) frames += frame(report);
                 server.sendRaw(to, std::move(frames));
               }}) {
    server.start();
  }

  std::string port() const { return std::to_string(server.port()); }

 private:
  static std::string frame(const std::string& text) {
    const auto size = static_cast<unsigned>(text.size());
    return std::string{static_cast<char>(0x81), 126, static_cast<char>(size >> 8U), static_cast<char>(size)} + text;
  }

  zephsim::WsServer server;
};

/// What one report prints as; the stream ends by SIGTERM once it has printed them all.
std::size_t blockSize(const std::string& report) {
  BurstServer server(report, 1);
  return runChild({ZEPHCTL_PATH, "-p", server.port(), "stats", "1"}).outputBytes;
}

void printBurst(std::size_t bytes) {
  const std::string report = connectionReport();
  const std::size_t count = bytes / report.size();
  const std::size_t expected = count * blockSize(report);
  const auto input = std::filesystem::temp_directory_path() / ("zephctl_bench." + std::to_string(getpid()));
  {
    std::ofstream lines(input, std::ios::binary);
    for (std::size_t i = 0; i < count; ++i) lines << report << '\n';
  }
  const auto ours = [&] {
    BurstServer server(report, count);
    return runChild({ZEPHCTL_PATH, "-p", server.port(), "stats"}, {}, expected).cpuSeconds;
  };
  const auto alone = [&] { return runChild({JSON_ALONE_PATH}, input.string()).cpuSeconds; };
  const std::string measure = "stats, a burst of " + std::to_string(bytes / kMegabyte) + " MB (CPU) / jsoncpp alone";
  print(measure.c_str(), measureInTurn(kBurstRounds, ours, alone), 1000, "ms", 2.0);
  std::filesystem::remove(input);
}

}  // namespace

void printRatios() {
  {
    const Simulator simulator;
    const std::vector<std::string> state{ZEPHCTL_PATH, "-p", simulator.port(), "state"};
    const std::vector<std::string> add{ZEPHCTL_PATH, "-p", simulator.port(), "firewall", "domains", "add", "a.example"};
    const std::vector<std::string> floor{FLOOR_PATH, simulator.port()};
    print("state (wall) / floor",
          measureInTurn(
              kRounds, [&] { return wall(state); }, [&] { return wall(floor); }),
          1000, "ms", 2.0);
    print("firewall domains add, two requests (wall) / state, one",
          measureInTurn(
              kRounds, [&] { return wall(add); }, [&] { return wall(state); }),
          1000, "ms", 1.3);
    const Pair memory{peakMegabytes(state), peakMegabytes({LINKED_PATH})};
    std::printf("%-58s %8.2f MB above %6.2f MB: %5.2f MB (bound 8)\n", "state, peak memory / a program that only links",
                memory.ours, memory.floor, memory.ours - memory.floor);
  }
  for (const std::size_t megabytes : {10, 20, 40}) printBurst(megabytes * kMegabyte);
}

}  // namespace bench
