// Reading standard input without echo. Only the program uses it: the library links no terminal.
#pragma once

namespace zephlinksdk {

/// While an object exists, the terminal on standard input does not echo. Its mode comes back whatever ends this: the
/// destructor, or a signal (or console event) that ends or stops the process; after a stop the echo is off again.
/// On a standard input that is no terminal it only reads. One object at a time, on one thread:
/// the terminal's state is the process's, and signal handlers must reach it.
class HiddenInput {
 public:
  static constexpr int kEnd = -1;

  HiddenInput();
  ~HiddenInput();
  HiddenInput(const HiddenInput&) = delete;
  HiddenInput& operator=(const HiddenInput&) = delete;

  /// The next byte of standard input, or kEnd at its end and on an error. No byte is kept once it was returned.
  int next();
};

}  // namespace zephlinksdk
