// Runs a program as a test sees it: its words, its input, both output streams byte for byte, its exit status.
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tests {

/// How a program ended.
struct ProgramRun {
  int status = 0;  ///< exit status; 128 and the signal's number where a signal ended it
  std::string out;
  std::string err;
};

/// A running program. Its destructor kills what still runs.
class Process {
 public:
  /// Starts `words[0]`; all of `input` is its standard input, which then ends.
  explicit Process(const std::vector<std::string>& words, std::string_view input = {});
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  static constexpr std::chrono::milliseconds kPatience{30000};

  /// Waits until standard output holds `text` `times` times. False when the program ends before, or after `patience`.
  bool waitForOutput(std::string_view text, int times = 1, std::chrono::milliseconds patience = kPatience);
  bool waitForError(std::string_view text);

  std::string outputSoFar();

  void kill();

  /// Waits for the end.
  ProgramRun finish();

 private:
  struct Native;
  struct Stream {
    std::string text;
    bool ended = false;
    std::thread reader;
  };

  void collect(Stream& stream, std::intptr_t pipe);
  bool waitFor(Stream& stream, std::string_view text, int times, std::chrono::milliseconds patience);

  std::mutex mutex;
  std::condition_variable changed;
  Stream out;
  Stream err;
  std::unique_ptr<Native> native;
};

/// Runs `zephctl` to its end against a daemon on this port.
ProgramRun zephctl(std::uint16_t port, const std::vector<std::string>& words, std::string_view input = {});

}  // namespace tests
