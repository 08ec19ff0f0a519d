#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
// Requires windows.h first.
#include <process.h>

#include <new>

#include "platform/thread.h"

namespace zephlinksdk {

namespace {

struct Start {
  void (*entry)(void*);
  void* argument;
};

unsigned __stdcall runThread(void* start) {
  const Start given = *static_cast<Start*>(start);
  delete static_cast<Start*>(start);
  given.entry(given.argument);
  return 0;
}

HANDLE handleOf(std::uintptr_t native) { return reinterpret_cast<HANDLE>(native); }

}  // namespace

bool Thread::start(void (*entry)(void*), void* argument) {
  auto* start = new (std::nothrow) Start{entry, argument};
  if (start == nullptr) return false;
  native = ::_beginthreadex(nullptr, static_cast<unsigned>(kStackSize), runThread, start,
                            STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  running = native != 0;
  if (!running) delete start;
  return running;
}

void Thread::join() {
  ::WaitForSingleObject(handleOf(native), INFINITE);
  detach();
}

void Thread::detach() {
  ::CloseHandle(handleOf(native));
  running = false;
}

}  // namespace zephlinksdk
