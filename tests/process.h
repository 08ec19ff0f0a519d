// Runs a program for a test: its arguments, its input, both output streams byte for byte, its exit status.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/watched.h"

namespace tests {

/// How a program ended.
struct ProgramRun {
  int status = 0;  ///< exit status; 128 plus the signal's number after a signal
  std::string out;
  std::string err;
};

/// A running program and, on POSIX, its process group. The destructor kills it if it still runs. If this process ends
/// in any way, the system ends the program. REQUIRES: the thread that constructs it outlives it.
class Process {
 public:
  /// Starts `words[0]`. Its standard input is `input`.
  explicit Process(const std::vector<std::string>& words, std::string_view input = {});
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  static constexpr std::chrono::milliseconds kPatience = tests::kPatience;

  /// Waits until standard output contains `text` `times` times. Returns false if the program ends before, or after
  /// `patience`.
  bool waitForOutput(std::string_view text, int times = 1, std::chrono::milliseconds patience = kPatience);

  std::string outputSoFar() { return out.get().text; }

  void kill();

  /// Waits for the end. After `kPatience` kills the program, which the status shows.
  ProgramRun finish();

 private:
  struct Stream {
    std::string text;
    bool ended = false;
  };
  static void collect(Watched<Stream>& stream, int pipe);

  Watched<Stream> out;
  Watched<Stream> err;
  std::thread outReader;
  std::thread errReader;
  std::intptr_t native = 0;  // the system's identifier; 0 once it has ended
};

/// Returns the command that runs `zephctl` with these arguments and a daemon on this port.
std::vector<std::string> command(std::uint16_t port, const std::vector<std::string>& words);

/// Runs `zephctl` to its end with a daemon on this port.
ProgramRun zephctl(std::uint16_t port, const std::vector<std::string>& words, std::string_view input = {});

}  // namespace tests
