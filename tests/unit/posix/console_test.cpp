#include "platform/console.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <initializer_list>
#include <string>
#include <thread>

namespace {

TEST(Console, WaitsUntilANonBlockingPipeAcceptsMore) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
  std::FILE* stream = fdopen(ends[1], "w");
  const std::string text(1000000, 'x');
  std::thread writer([&] {
    zephlinksdk::writeText(stream, text);
    std::fclose(stream);
  });
  // Start the reader when the pipe is full.
  pollfd writable{ends[1], POLLOUT, 0};
  while (poll(&writable, 1, 0) == 1 && (writable.revents & POLLNVAL) == 0) std::this_thread::yield();
  std::string read;
  char bytes[4096];
  pollfd readable{ends[0], POLLIN, 0};
  while (poll(&readable, 1, 20000) == 1) {
    const ssize_t count = ::read(ends[0], bytes, sizeof bytes);
    if (count <= 0) break;
    read.append(bytes, static_cast<std::size_t>(count));
  }
  writer.join();
  close(ends[0]);
  EXPECT_EQ(read.size(), text.size());
}

/// Runs prepareConsole() in a child process with these standard descriptors closed, and checks that it opens only
/// these.
void checkClosedStreams(std::initializer_list<int> closed) {
  const pid_t child = fork();
  if (child == 0) {
    const int unused = dup(STDERR_FILENO);
    close(unused);
    for (const int descriptor : closed) close(descriptor);
    int none = 0;
    char** arguments = nullptr;
    zephlinksdk::prepareConsole(none, arguments);
    bool right = true;
    for (int standard = 0; standard <= 2; ++standard) right = right && fcntl(standard, F_GETFD) >= 0;
    right = right && open("/dev/null", O_RDONLY) == unused;
    _exit(right ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST(Console, OpensClosedStandardStreamsAndNothingElse) {
  for (const auto closed : {std::initializer_list<int>{}, {0}, {1}, {2}, {0, 1, 2}}) checkClosedStreams(closed);
}

}  // namespace
