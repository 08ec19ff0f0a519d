// Runs the microbenchmarks, then the ratios and the scaling: zephctl_bench [--runs=N] [OPTION OF GOOGLE BENCHMARK...].
// `--benchmark_filter=none` skips the microbenchmarks.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "bench/ratios.h"
#include "bench/scaling.h"

namespace {

constexpr std::string_view kRunsOption = "--runs=";
constexpr int kDefaultRuns = 10000;

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  int runs = kDefaultRuns;
  benchmark::Initialize(&argc, argv);
  if (argc > 1 && std::string_view(argv[1]).starts_with(kRunsOption)) {
    runs = std::atoi(argv[1] + kRunsOption.size());
    argv[1] = argv[0];
    ++argv;
    --argc;
  }
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  try {
    bench::printRatios();
    bench::printScaling(runs);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zephctl_bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
