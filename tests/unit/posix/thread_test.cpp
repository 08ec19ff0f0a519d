// The library's threads leave the process's signals to the host.
#include "platform/thread.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <csignal>
#include <cstddef>

namespace {

struct Seen {
  sigset_t blocked;
  std::size_t stackSize = 0;
};

void look(void* argument) {
  auto* seen = static_cast<Seen*>(argument);
  pthread_sigmask(SIG_BLOCK, nullptr, &seen->blocked);
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_getattr_np(pthread_self(), &attributes), 0);
  pthread_attr_getstacksize(&attributes, &seen->stackSize);
  pthread_attr_destroy(&attributes);
}

TEST(Thread, LeavesSignalsToTheHostAndHasAFixedStackSize) {
  sigset_t before;
  pthread_sigmask(SIG_BLOCK, nullptr, &before);
  Seen seen;
  zephlinksdk::Thread thread;
  ASSERT_TRUE(thread.start(look, &seen));
  thread.join();
  EXPECT_FALSE(thread.started());
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGUSR1, SIGCHLD, SIGALRM}) {
    EXPECT_EQ(sigismember(&seen.blocked, signal), 1) << signal;
  }
  // The thread itself causes these: a closed pipe must be able to end a stream.
  for (const int signal : {SIGPIPE, SIGSEGV, SIGBUS, SIGABRT})
    EXPECT_EQ(sigismember(&seen.blocked, signal), 0) << signal;
  EXPECT_GE(seen.stackSize, zephlinksdk::Thread::kStackSize);
  sigset_t after;
  pthread_sigmask(SIG_BLOCK, nullptr, &after);
  for (const int signal : {SIGINT, SIGTERM, SIGUSR1}) {
    EXPECT_EQ(sigismember(&after, signal), sigismember(&before, signal)) << signal;
  }
}

}  // namespace
