#include "platform/waker.h"

#include <fcntl.h>
#include <unistd.h>

namespace zephlinksdk {

Waker::Waker() {
  int ends[2];
  if (::pipe2(ends, O_NONBLOCK | O_CLOEXEC) != 0) return;
  readEnd = ends[0];
  writeEnd = ends[1];
}

Waker::~Waker() {
  closeSocket(readEnd);
  closeSocket(writeEnd);
}

void Waker::wake() {
  const char byte = 0;
  // If the pipe is full, the wake-up is already pending; if it is missing, there is nothing to wake.
  [[maybe_unused]] const auto written = ::write(static_cast<int>(writeEnd), &byte, 1);
}

void Waker::drain() {
  char bytes[64];
  while (::read(static_cast<int>(readEnd), bytes, sizeof bytes) == sizeof bytes) {
  }
}

}  // namespace zephlinksdk
