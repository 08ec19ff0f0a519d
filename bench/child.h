// A program run to its end, and what it cost.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Cost {
  double wallSeconds = 0;
  double cpuSeconds = 0;
  std::size_t outputBytes = 0;
  std::string firstOutput;  ///< what the first read brought
};

/// Runs `words[0]` with its output read and counted, and its input from `inputFile` (empty: none). Ends it by SIGTERM
/// once the output holds `enough` bytes (0: it ends by itself).
Cost runChild(const std::vector<std::string>& words, const std::string& inputFile = {}, std::size_t enough = 0);

/// Peak memory of a program that succeeds.
double peakMegabytes(std::vector<std::string> words);

/// A simulator on a free port, for as long as the object lives.
class Simulator {
 public:
  Simulator();
  ~Simulator();
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  std::string port() const { return portText; }

 private:
  int process = 0;
  std::string portText;
};

}  // namespace bench
