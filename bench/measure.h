// Measures that are taken in turn, and how they are printed.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// A measure beside its floor. The medians, and the fastest tenths: what the machine does besides changes these less.
struct Pair {
  double ours = 0;
  double floor = 0;
  double fastOurs = 0;
  double fastFloor = 0;
};

double median(std::vector<double> values);

/// Both in turn, so that a machine whose speed drifts slows both.
Pair measureInTurn(int rounds, const std::function<double()>& ours, const std::function<double()>& floor);

/// A line with both medians times `scale`, their ratio, that of the fastest tenths, and what bounds the ratio
/// (0: nothing).
void printRatio(const std::string& measure, const Pair& pair, double scale, const char* unit, double bound);

/// Wall time of one run that succeeds, in seconds.
double wall(const std::vector<std::string>& words);

/// A line for one size of something that should be linear: its cost in all and for each unit.
void printScale(const std::string& measure, double total, const char* totalUnit, double perUnit, const char* unit);

}  // namespace bench
