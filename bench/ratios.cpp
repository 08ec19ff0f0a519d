#include "bench/ratios.h"

#include <unistd.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/child.h"
#include "bench/measure.h"
#include "bench/servers.h"

namespace bench {

namespace {

using Words = std::vector<std::string>;

constexpr int kRounds = 200;
constexpr int kScriptRounds = 10;
constexpr int kBurstRounds = 5;
constexpr std::size_t kMegabyte = 1000000;

/// Copies of the program and its floor, each written at once as by an installation. The linker's output occupies
/// smaller pieces of the page cache, which slows each start by several percent.
class Installed {
 public:
  Installed() : directory(std::filesystem::temp_directory_path() / ("zephctl_bench." + std::to_string(getpid()))) {
    std::filesystem::create_directory(directory);
    std::filesystem::copy_file(ZEPHCTL_PATH, program());
    std::filesystem::copy_file(FLOOR_PATH, floor());
  }
  ~Installed() {
    std::error_code ignored;
    std::filesystem::remove_all(directory, ignored);
  }
  Installed(const Installed&) = delete;
  Installed& operator=(const Installed&) = delete;

  std::string program() const { return directory / "zephctl"; }
  std::string floor() const { return directory / "floor"; }
  std::string file(const char* name) const { return directory / name; }

 private:
  std::filesystem::path directory;
};

void printWall(const char* measure, const Words& ours, const Words& floor, double bound, int rounds = kRounds) {
  const Pair pair = measureInTurn(
      rounds, [&] { return wall(ours); }, [&] { return wall(floor); });
  printRatio(measure, pair, 1000, "ms", bound);
}

/// Compares an equivalent script with the floor. Has no bound, and is skipped if the script does not run.
void printScript(const char* measure, const Words& script, const Words& floor) {
  try {
    wall(script);
  } catch (const std::exception&) {
    std::printf("%-58s skipped: it does not run here\n", measure);
    return;
  }
  printWall(measure, script, floor, 0, kScriptRounds);
}

void printStarts(const Installed& installed) {
  const Simulator simulator;
  const auto zephctl = [&](Words words) {
    words.insert(words.begin(), {installed.program(), "-p", simulator.port()});
    return words;
  };
  const Words floor{installed.floor(), simulator.port()};
  printWall("state (wall) / floor", zephctl({"state"}), floor, 1.1);
  printWall("firewall domains add, two requests (wall) / state, one",
            zephctl({"firewall", "domains", "add", "a.example"}), zephctl({"state"}), 1.2);
  const std::string scripts = SCRIPTS_PATH;
  printScript("state by Python's websockets (wall) / floor",
              {"/usr/bin/python3", scripts + "/state.py", simulator.port()}, floor);
  printScript("state by Node's ws (wall) / floor",
              {"/usr/bin/env", "node", scripts + "/state.js", simulator.port(), PEERS_PATH}, floor);
  std::printf("%-58s %8.2f MB, a program that only links %.2f MB (bound 2)\n", "state, peak memory",
              peakMegabytes(zephctl({"state"})), peakMegabytes({LINKED_PATH}));
}

void printDirectory(const Installed& installed) {
  const RequestServer server(stateAndDirectory(1));
  printWall("show servers with one server (wall) / state",
            {installed.program(), "-p", server.portText(), "show", "servers"},
            {installed.program(), "-p", server.portText(), "state"}, 1.3);
}

std::size_t outputOf(const Installed& installed, const std::string& report, std::size_t count) {
  const RequestServer server(burst(report, count));
  return runChild({installed.program(), "-p", server.portText(), "stats", "1"}).outputBytes;
}

/// Sends a burst of about `bytes` bytes; SIGTERM ends the stream once it has printed everything. Then processes the
/// same lines with jsoncpp alone: with Debian's package, as another program would, and with the copy in zephctl.
void printBurst(const Installed& installed, std::size_t bytes) {
  const std::string report = connectionReport();
  const std::size_t count = bytes / report.size();
  const std::size_t first = outputOf(installed, report, 1);
  const std::size_t expected = first + (count - 1) * (outputOf(installed, report, 2) - first);
  const std::string input = installed.file("lines");
  {
    std::ofstream lines(input, std::ios::binary);
    for (std::size_t i = 0; i < count; ++i) lines << report << '\n';
  }
  const auto ours = [&] {
    const RequestServer server(burst(report, count));
    return runChild({installed.program(), "-p", server.portText(), "stats"}, {}, expected).cpuSeconds;
  };
  const std::string measure = "stats, a burst of " + std::to_string(bytes / kMegabyte) + " MB (CPU) / ";
  const auto printOver = [&](const char* name, const char* floor, double bound) {
    const Pair pair = measureInTurn(kBurstRounds, ours, [&] { return runChild({floor}, input).cpuSeconds; });
    printRatio(measure + name, pair, 1000, "ms", bound);
  };
#ifdef JSON_PACKAGED_PATH
  printOver("jsoncpp as packaged", JSON_PACKAGED_PATH, 1);
#endif
  printOver("jsoncpp as linked", JSON_ALONE_PATH, 0);
}

}  // namespace

void printRatios() {
  const Installed installed;
  printStarts(installed);
  printDirectory(installed);
  for (const std::size_t megabytes : {10U, 20U, 40U, 80U}) printBurst(installed, megabytes * kMegabyte);
}

}  // namespace bench
