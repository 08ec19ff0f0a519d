// Runs a program as a test sees it: its words, its input, both output streams byte for byte, its exit status.
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
  int status = 0;  ///< exit status; 128 and the signal's number where a signal ended it
  std::string out;
  std::string err;
};

/// A running program and, on POSIX, its process group. Its destructor kills what still runs; if this process ends
/// without it, however that is, the system ends the program. REQUIRES: the thread that constructs it outlives it.
class Process {
 public:
  /// Starts `words[0]`; all of `input` is its standard input, which then ends.
  explicit Process(const std::vector<std::string>& words, std::string_view input = {});
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  static constexpr std::chrono::milliseconds kPatience = tests::kPatience;

  /// Waits until standard output holds `text` `times` times. False when the program ends before, or after `patience`.
  bool waitForOutput(std::string_view text, int times = 1, std::chrono::milliseconds patience = kPatience);

  std::string outputSoFar() { return out.get().text; }

  void kill();

  /// Waits for the end. What still runs after `kPatience` is killed, which its status tells.
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
  std::intptr_t native = 0;  // what the system knows it by; 0 once it has ended
};

/// The words that start `zephctl` with these against a daemon on this port.
std::vector<std::string> command(std::uint16_t port, const std::vector<std::string>& words);

/// Runs `zephctl` to its end against a daemon on this port.
ProgramRun zephctl(std::uint16_t port, const std::vector<std::string>& words, std::string_view input = {});

}  // namespace tests
