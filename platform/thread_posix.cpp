#include "platform/thread.h"

#include <pthread.h>

#include <csignal>
#include <new>

namespace zephlinksdk {

namespace {

// Signals that the thread itself causes: if blocked, they would be lost or end the process without a core dump.
constexpr int kOwnSignals[] = {SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGPIPE, SIGSEGV, SIGSYS, SIGTRAP};

struct Start {
  void (*entry)(void*);
  void* argument;
};

// pthread_t is an integer on some systems and a pointer on others: only a C cast converts both.
pthread_t handleOf(std::uintptr_t native) { return (pthread_t)native; }

}  // namespace

extern "C" {
static void* runThread(void* start) {
  const Start given = *static_cast<Start*>(start);
  delete static_cast<Start*>(start);
  given.entry(given.argument);
  return nullptr;
}
}

bool Thread::start(void (*entry)(void*), void* argument) {
  auto* start = new (std::nothrow) Start{entry, argument};
  if (start == nullptr) return false;
  pthread_attr_t attributes;
  if (::pthread_attr_init(&attributes) != 0) {
    delete start;
    return false;
  }
  ::pthread_attr_setstacksize(&attributes, kStackSize);
  // A new thread inherits the signal mask of its creator.
  sigset_t blocked;
  sigset_t before;
  sigfillset(&blocked);
  for (const int signal : kOwnSignals) sigdelset(&blocked, signal);
  ::pthread_sigmask(SIG_SETMASK, &blocked, &before);
  pthread_t thread{};
  running = ::pthread_create(&thread, &attributes, runThread, start) == 0;
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  ::pthread_attr_destroy(&attributes);
  if (running) {
    native = (std::uintptr_t)thread;
  } else {
    delete start;
  }
  return running;
}

void Thread::join() {
  ::pthread_join(handleOf(native), nullptr);
  running = false;
}

void Thread::detach() {
  ::pthread_detach(handleOf(native));
  running = false;
}

}  // namespace zephlinksdk
