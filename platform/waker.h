// Ends a wait on a socket from another thread.
#pragma once

#include "platform/socket.h"

namespace zephlinksdk {

/// A handle that becomes readable when another thread calls `wake`, and stays so until `drain`.
///
/// Where the system has no handle left to give, `wake` does nothing and waits run to their time limit.
class Waker {
 public:
  Waker();
  ~Waker();
  Waker(const Waker&) = delete;
  Waker& operator=(const Waker&) = delete;

  /// Wakes the waiting thread, or the next one to wait. Any thread; never blocks.
  void wake();

  /// Takes back all wake-ups so far. The waiting thread only.
  void drain();

  /// What a wait watches for reading, or `kNoSocket`.
  SocketHandle handle() const { return readEnd; }

 private:
  SocketHandle readEnd = kNoSocket;
  SocketHandle writeEnd = kNoSocket;
};

}  // namespace zephlinksdk
