// Ends a wait on a socket from another thread.
#pragma once

#include "platform/socket.h"

namespace zephlinksdk {

/// A handle that becomes readable when another thread calls `wake`, and stays readable until `drain`.
///
/// If the system has no handle left, `wake` does nothing and waits end at their time limit.
class Waker {
 public:
  Waker();
  ~Waker();
  Waker(const Waker&) = delete;
  Waker& operator=(const Waker&) = delete;

  /// Wakes the waiting thread, or the next thread that waits. Thread-safe; never blocks.
  void wake();

  /// Clears all wake-ups so far. Call on the waiting thread only.
  void drain();

  /// Returns the handle to watch for reading, or `kNoSocket`.
  SocketHandle handle() const { return readEnd; }

 private:
  SocketHandle readEnd = kNoSocket;
  SocketHandle writeEnd = kNoSocket;
};

}  // namespace zephlinksdk
