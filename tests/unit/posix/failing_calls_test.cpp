// Failures of single system calls that only the caller can detect: this program replaces the C library's recv() and
// tcsetattr().

// With it, the C library defines recv() inline, and clang refuses a second definition.
#undef _FORTIFY_SOURCE

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/terminal.h"
#include "sdk/link/websocket_client.h"
#include "tests/scripted_daemon.h"

namespace {

/// Whether this thread's next recv() that consumes bytes is replaced, and its result; -1 sets `errno` to EIO.
thread_local bool replacesReceive = false;
thread_local ssize_t nextReceived = 0;

/// The number of tcsetattr() calls that fail with EINTR.
int interruptions = 0;

template <class Function>
Function* realFunction(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {
ssize_t recv(int descriptor, void* data, std::size_t size, int flags) {
  static auto* const real = realFunction<ssize_t(int, void*, std::size_t, int)>("recv");
  if ((flags & MSG_PEEK) != 0 || !replacesReceive) return real(descriptor, data, size, flags);
  replacesReceive = false;
  errno = EIO;
  return nextReceived;
}

int tcsetattr(int descriptor, int actions, const termios* mode) noexcept {
  static auto* const real = realFunction<int(int, int, const termios*)>("tcsetattr");
  if (interruptions == 0) return real(descriptor, actions, mode);
  --interruptions;
  errno = EINTR;
  return -1;
}
}

namespace tests {
namespace {

bool echoes(int terminal) {
  termios mode = {};
  tcgetattr(terminal, &mode);
  return (mode.c_lflag & ECHO) != 0;
}

TEST(FailingCalls, EndAHandshakeWhoseBytesCannotBeRead) {
  for (const ssize_t result : {ssize_t{-1}, ssize_t{0}}) {
    ScriptedDaemon daemon;
    replacesReceive = true;
    nextReceived = result;
    const std::string url = "ws://127.0.0.1:" + std::to_string(daemon.port()) + "/";
    EXPECT_EQ(zephlinksdk::WebSocketClient::fromUrl(url, ""), nullptr) << result;
    EXPECT_FALSE(replacesReceive) << "recv() was not called";
  }
}

TEST(FailingCalls, AreRepeatedIfASignalInterruptsTheTerminal) {
  int master = -1;
  const pid_t child = forkpty(&master, nullptr, nullptr, nullptr);
  if (child == 0) {
    bool right = echoes(STDIN_FILENO);
    {
      interruptions = 2;
      const zephlinksdk::HiddenInput input;
      right = right && interruptions == 0 && !echoes(STDIN_FILENO);
      interruptions = 2;
    }
    right = right && interruptions == 0 && echoes(STDIN_FILENO);
    _exit(right ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  close(master);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace tests
