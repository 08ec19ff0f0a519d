// A thread of the library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zephlinksdk {

/// A thread with a stack of a known size, whatever the system's default: room for every record by value, several times
/// over, and for the deepest JSON that the parser reads. The signals of the process stay with the host's threads; only
/// those that a thread causes itself (such as SIGPIPE and SIGSEGV) reach it.
///
/// Join or detach a thread that was started before its object ends.
class Thread {
 public:
  static constexpr std::size_t kStackSize = std::size_t{8} * 1024 * 1024;

  Thread() = default;
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;

  /// Runs `entry(argument)` on a new thread. `entry` must not throw. Returns false if the system gives no thread.
  /// REQUIRES: !started().
  bool start(void (*entry)(void* argument), void* argument);

  bool started() const { return running; }

  /// Waits for the end of the thread. REQUIRES: started().
  void join();

  /// Lets the thread run on by itself. REQUIRES: started().
  void detach();

 private:
  // A pthread_t, or a HANDLE.
  std::uintptr_t native = 0;
  bool running = false;
};

}  // namespace zephlinksdk
