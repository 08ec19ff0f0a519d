#include "bench/measure.h"

#include <algorithm>
#include <cstdio>

#include "bench/child.h"

namespace bench {

namespace {

/// Returns the value below which this part of all values lies.
double quantile(std::vector<double> values, double part) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(static_cast<double>(values.size()) * part)];
}

}  // namespace

double median(std::vector<double> values) { return quantile(std::move(values), 0.5); }

Pair measureInTurn(int rounds, const std::function<double()>& ours, const std::function<double()>& floor) {
  std::vector<double> oursAll;
  std::vector<double> floorAll;
  for (int round = 0; round < rounds; ++round) {
    oursAll.push_back(ours());
    floorAll.push_back(floor());
  }
  return {median(oursAll), median(floorAll), quantile(oursAll, 0.1), quantile(floorAll, 0.1)};
}

void printRatio(const std::string& measure, const Pair& pair, double scale, const char* unit, double bound) {
  std::printf("%-58s %8.2f %s over %8.2f %s: %6.2f times, fastest tenths %6.2f", measure.c_str(), pair.ours * scale,
              unit, pair.floor * scale, unit, pair.ours / pair.floor, pair.fastOurs / pair.fastFloor);
  if (bound > 0) std::printf(" (bound %.2f)", bound);
  std::puts("");
}

double wall(const std::vector<std::string>& words) { return runChild(words).wallSeconds; }

void printScale(const std::string& measure, double total, const char* totalUnit, double perUnit, const char* unit) {
  std::printf("%-58s %8.2f %s, %8.3f %s\n", measure.c_str(), total, totalUnit, perUnit, unit);
}

}  // namespace bench
