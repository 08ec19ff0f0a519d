// Runs a program to its end and measures its cost.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Cost {
  double wallSeconds = 0;
  double cpuSeconds = 0;
  std::size_t outputBytes = 0;
  std::string firstOutput;  ///< the data of the first read
};

/// Runs `words[0]`, reads and counts its output, and takes its input from `inputFile` (empty: none). Sends SIGTERM once
/// the output contains `enough` bytes (0: waits for its end).
Cost runChild(const std::vector<std::string>& words, const std::string& inputFile = {}, std::size_t enough = 0);

/// Returns the peak memory of a program that succeeds.
double peakMegabytes(std::vector<std::string> words);

/// Runs a simulator on a free port during the object's lifetime.
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
