// Preloaded into a program, makes one of its system calls fail: FAULT="<call>:<kind>:<first>:<count>[:<thread>]". Uses
// of the call are counted from 1; a count of 0 fails all from the first on. FAULT_FIRED names a file that is created at
// the first failure and contains its call stack.
//
// The call "alloc" is every function that allocates memory, including operator new. The kind is the name of an error,
// or: "short" transfers at most one byte, "eof" reports the end of the peer, "none" reports that nothing is ready. With
// a thread, only the uses of this thread count, which makes a run repeatable; threads are numbered from 0, in the order
// of their first use. With a count of 0, the other threads fail too from that use on.

// Fortified headers would redefine the functions that are defined here.
#undef _FORTIFY_SOURCE

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <pthread.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Kind {
  const char* name;
  int code;
};

constexpr int kShort = -1;
constexpr int kEnd = -2;
constexpr int kNone = -3;
constexpr Kind kKinds[] = {
    {"short", kShort},
    {"eof", kEnd},
    {"none", kNone},
    {"EINTR", EINTR},
    {"EAGAIN", EAGAIN},
    {"EINPROGRESS", EINPROGRESS},
    {"ECONNREFUSED", ECONNREFUSED},
    {"ECONNRESET", ECONNRESET},
    {"ETIMEDOUT", ETIMEDOUT},
    {"EPIPE", EPIPE},
    {"EMFILE", EMFILE},
    {"ENOMEM", ENOMEM},
    {"ENOBUFS", ENOBUFS},
    {"EINVAL", EINVAL},
    {"EAI_NONAME", EAI_NONAME},
    {"EAI_AGAIN", EAI_AGAIN},
    {"EAI_MEMORY", EAI_MEMORY},
};

constexpr int kAnyThread = -1;

/// The contents of FAULT, read once before the first call is counted.
struct Plan {
  char call[20] = "";
  int code = 0;
  long first = 0;
  long count = 1;
  int thread = kAnyThread;

  Plan() {
    const char* text = std::getenv("FAULT");
    if (text == nullptr) return;
    char kind[20] = "";
    const int read = std::sscanf(text, "%19[^:]:%19[^:]:%ld:%ld:%d", call, kind, &first, &count, &thread);
    for (const Kind& known : kKinds) {
      if (std::strcmp(known.name, kind) == 0) code = known.code;
    }
    // An invalid plan must not look like a run without findings.
    if (read < 3 || code == 0 || first < 1) std::abort();
  }
};

const Plan& plan() {
  static const Plan read;
  return read;
}

/// The program's main. Nothing is counted before it starts: the loader and the C++ run-time need their memory.
int (*g_main)(int, char**, char**) = nullptr;
std::atomic<bool> g_started{false};

int startedMain(int argc, char** argv, char** environment) {
  g_started = true;
  return g_main(argc, argv, environment);
}

/// True while this thread is inside the shim, whose own calls are not counted.
thread_local bool t_inside = false;

int threadNumber() {
  static std::atomic<int> threads{0};
  thread_local const int number = threads++;
  return number;
}

/// Creates the file that FAULT_FIRED names.
void recordFailure() {
  const char* path = std::getenv("FAULT_FIRED");
  const int file = path == nullptr ? -1 : ::creat(path, 0600);
  if (file < 0) return;
  void* stack[40];
  ::backtrace_symbols_fd(stack, ::backtrace(stack, 40), file);
  ::close(file);
}

/// Returns the kind of failure for this use of a call, or 0.
int countedFailure(const char* call) {
  static std::atomic<long> uses{0};
  static std::atomic<bool> failing{false};
  const Plan& wanted = plan();
  if (wanted.code == 0 || std::strcmp(wanted.call, call) != 0) return 0;
  if (wanted.thread != kAnyThread && wanted.thread != threadNumber()) {
    return wanted.count == 0 && failing ? wanted.code : 0;
  }
  const long use = ++uses;
  if (use < wanted.first || (wanted.count != 0 && use >= wanted.first + wanted.count)) return 0;
  if (use == wanted.first) {
    recordFailure();
    failing = true;
  }
  return wanted.code;
}

int failure(const char* call) {
  if (t_inside || !g_started) return 0;
  t_inside = true;
  const int code = countedFailure(call);
  t_inside = false;
  return code;
}

/// Returns whether the code is an error, and sets errno to it.
bool fails(int code) {
  if (code <= 0) return false;
  errno = code;
  return true;
}

/// The original function.
#define REAL(name)                                                                             \
  (*[] {                                                                                       \
    static auto* const found = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name)); \
    return found;                                                                              \
  }())

/// Returns -1 and sets errno if a failure is due, otherwise calls the original function.
#define FAIL_OR_CALL(name, ...) (fails(failure(#name)) ? -1 : REAL(name)(__VA_ARGS__))

}  // namespace

extern "C" {

// The C library's internal names for the replaced functions: dlsym would allocate.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

int __libc_start_main(int (*main)(int, char**, char**), int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*unload)(), void* stack) {
  g_main = main;
  return REAL(__libc_start_main)(startedMain, argc, argv, init, fini, unload, stack);
}

void* malloc(std::size_t size) { return fails(failure("alloc")) ? nullptr : __libc_malloc(size); }

void* calloc(std::size_t count, std::size_t size) {
  return fails(failure("alloc")) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
  return fails(failure("alloc")) ? nullptr : __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return fails(failure("alloc")) ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  const int code = failure("alloc");
  if (code != 0) return code;
  *memory = __libc_memalign(alignment, size);
  return *memory == nullptr ? ENOMEM : 0;
}

int socket(int domain, int type, int protocol) noexcept { return FAIL_OR_CALL(socket, domain, type, protocol); }

int connect(int socket, const sockaddr* address, socklen_t size) {
  const int code = failure("connect");
  if (!fails(code)) return REAL(connect)(socket, address, size);
  // After these errors, connect continues in the background.
  if (code == EINTR || code == EINPROGRESS) REAL(connect)(socket, address, size);
  errno = code;
  return -1;
}

ssize_t send(int socket, const void* data, std::size_t size, int flags) {
  const int code = failure("send");
  if (fails(code)) return -1;
  return REAL(send)(socket, data, code == kShort ? std::min<std::size_t>(size, 1) : size, flags);
}

ssize_t recv(int socket, void* data, std::size_t size, int flags) {
  const int code = failure("recv");
  if (code == kEnd) return 0;
  if (fails(code)) return -1;
  return REAL(recv)(socket, data, code == kShort ? std::min<std::size_t>(size, 1) : size, flags);
}

int poll(pollfd* watched, nfds_t count, int timeout) {
  const int code = failure("poll");
  if (code != kNone) return fails(code) ? -1 : REAL(poll)(watched, count, timeout);
  for (nfds_t i = 0; i < count; ++i) watched[i].revents = 0;
  return 0;
}

int getsockopt(int socket, int level, int name, void* value, socklen_t* size) noexcept {
  return FAIL_OR_CALL(getsockopt, socket, level, name, value, size);
}

int setsockopt(int socket, int level, int name, const void* value, socklen_t size) noexcept {
  return FAIL_OR_CALL(setsockopt, socket, level, name, value, size);
}

int pipe2(int ends[2], int flags) noexcept { return FAIL_OR_CALL(pipe2, ends, flags); }

// The standard streams never fail: they carry the outcome.
ssize_t write(int descriptor, const void* data, std::size_t size) {
  if (descriptor <= STDERR_FILENO) return REAL(write)(descriptor, data, size);
  return FAIL_OR_CALL(write, descriptor, data, size);
}

ssize_t read(int descriptor, void* data, std::size_t size) {
  if (descriptor <= STDERR_FILENO) return REAL(read)(descriptor, data, size);
  return FAIL_OR_CALL(read, descriptor, data, size);
}

int getaddrinfo(const char* host, const char* service, const addrinfo* hints, addrinfo** addresses) {
  // getaddrinfo returns negative error codes, and so do our kinds.
  const int code = failure("getaddrinfo");
  return code != 0 ? code : REAL(getaddrinfo)(host, service, hints, addresses);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* data) noexcept {
  const int code = failure("pthread_create");
  return code != 0 ? code : REAL(pthread_create)(thread, attributes, start, data);
}

}  // extern "C"
