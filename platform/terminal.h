// Reads standard input without echo. Used by the program only: the library does not link it.
#pragma once

namespace zephlinksdk {

/// While an object exists, the terminal on standard input does not echo. The mode is restored by the destructor and by
/// any signal (or console event) that ends or stops the process; after a stop, echo is disabled again. If standard
/// input is not a terminal, the object only reads. One object at a time, on one thread: the terminal's state is global
/// to the process, and signal handlers need access to it.
class HiddenInput {
 public:
  static constexpr int kEnd = -1;

  HiddenInput();
  ~HiddenInput();
  HiddenInput(const HiddenInput&) = delete;
  HiddenInput& operator=(const HiddenInput&) = delete;

  /// Returns the next byte of standard input, or kEnd at its end and on an error. Keeps no copy of returned bytes.
  int next();
};

}  // namespace zephlinksdk
