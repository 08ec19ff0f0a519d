// The microbenchmarks, then the ratios. `--benchmark_filter=-.*` leaves only the ratios.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>

#include "bench/ratios.h"

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  try {
    bench::printRatios();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zephctl_bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
