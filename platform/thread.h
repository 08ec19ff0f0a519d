// A thread of the library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zephlinksdk {

/// A thread with a fixed stack size, independent of the system's default: enough for several copies of every record and
/// for the most deeply nested JSON that the parser reads. Signals to the process are handled by the host's threads;
/// this thread receives only the signals that it causes itself (such as SIGPIPE and SIGSEGV).
///
/// REQUIRES: a started thread is joined or detached before its object is destroyed.
class Thread {
 public:
  static constexpr std::size_t kStackSize = std::size_t{8} * 1024 * 1024;

  Thread() = default;
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;

  /// Runs `entry(argument)` on a new thread. `entry` must not throw. Returns false if the system cannot start a thread.
  /// REQUIRES: !started().
  bool start(void (*entry)(void* argument), void* argument);

  bool started() const { return running; }

  /// Waits for the end of the thread. REQUIRES: started().
  void join();

  /// Detaches the thread, which continues to run. REQUIRES: started().
  void detach();

 private:
  // A pthread_t, or a HANDLE.
  std::uintptr_t native = 0;
  bool running = false;
};

}  // namespace zephlinksdk
