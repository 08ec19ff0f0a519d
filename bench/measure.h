// Takes measurements in turn and prints them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// A measurement and its floor: the medians and the fastest tenths. Other load of the machine affects the latter less.
struct Pair {
  double ours = 0;
  double floor = 0;
  double fastOurs = 0;
  double fastFloor = 0;
};

double median(std::vector<double> values);

/// Measures both in turn, so that changes of the machine's speed affect both.
Pair measureInTurn(int rounds, const std::function<double()>& ours, const std::function<double()>& floor);

/// Prints a line with both medians times `scale`, their ratio, the ratio of the fastest tenths, and the bound of the
/// ratio (0: none).
void printRatio(const std::string& measure, const Pair& pair, double scale, const char* unit, double bound);

/// Returns the wall time of one successful run, in seconds.
double wall(const std::vector<std::string>& words);

/// Prints a line for one size of a linear cost: the total cost and the cost per unit.
void printScale(const std::string& measure, double total, const char* totalUnit, double perUnit, const char* unit);

}  // namespace bench
