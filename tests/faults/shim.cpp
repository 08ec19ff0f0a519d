// Preloaded into a program, makes one of its calls to the system fail: FAULT="<call>:<kind>:<first>:<count>", uses
// counted from 1, a count of 0 for all from the first on. FAULT_FIRED names a file that is made when one has failed.
//
// A kind is the name of an error, or: "short" moves one byte at most, "eof" tells the end of the peer, "none" tells
// that nothing is ready.

#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <pthread.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
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

/// What FAULT says. Read once, before the first call is counted.
struct Plan {
  char call[20] = "";
  int code = 0;
  long first = 0;
  long count = 1;

  Plan() {
    const char* text = std::getenv("FAULT");
    if (text == nullptr) return;
    char kind[20] = "";
    const int read = std::sscanf(text, "%19[^:]:%19[^:]:%ld:%ld", call, kind, &first, &count);
    for (const Kind& known : kKinds) {
      if (std::strcmp(known.name, kind) == 0) code = known.code;
    }
    // A plan that is misspelt must not pass for one without findings.
    if (read < 3 || code == 0 || first < 1) std::abort();
  }
};

const Plan& plan() {
  static const Plan read;
  return read;
}

/// The kind of failure for this use of a call, 0 for none.
int failure(const char* call) {
  static std::atomic<long> uses{0};
  const Plan& wanted = plan();
  if (wanted.code == 0 || std::strcmp(wanted.call, call) != 0) return 0;
  const long use = ++uses;
  if (use < wanted.first || (wanted.count != 0 && use >= wanted.first + wanted.count)) return 0;
  if (use == wanted.first) {
    if (const char* path = std::getenv("FAULT_FIRED")) {
      const int file = ::creat(path, 0600);
      if (file >= 0) ::close(file);
    }
  }
  return wanted.code;
}

/// Whether the code is an error's, which errno then has.
bool fails(int code) {
  if (code <= 0) return false;
  errno = code;
  return true;
}

/// The system's own function.
#define REAL(name)                                                                             \
  (*[] {                                                                                       \
    static auto* const found = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name)); \
    return found;                                                                              \
  }())

/// The common course: -1 and errno where a failure is due.
#define FAIL_OR_CALL(name, ...) (fails(failure(#name)) ? -1 : REAL(name)(__VA_ARGS__))

}  // namespace

extern "C" {

int socket(int domain, int type, int protocol) noexcept { return FAIL_OR_CALL(socket, domain, type, protocol); }

int connect(int socket, const sockaddr* address, socklen_t size) {
  const int code = failure("connect");
  if (!fails(code)) return REAL(connect)(socket, address, size);
  // An interrupted one goes on by itself.
  if (code == EINTR) REAL(connect)(socket, address, size);
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

int fcntl(int descriptor, int command, ...) {
  va_list list;
  va_start(list, command);
  void* argument = va_arg(list, void*);
  va_end(list);
  return FAIL_OR_CALL(fcntl, descriptor, command, argument);
}

int setsockopt(int socket, int level, int name, const void* value, socklen_t size) noexcept {
  return FAIL_OR_CALL(setsockopt, socket, level, name, value, size);
}

int pipe2(int ends[2], int flags) noexcept { return FAIL_OR_CALL(pipe2, ends, flags); }

// The standard streams stay whole: what they say is the outcome.
ssize_t write(int descriptor, const void* data, std::size_t size) {
  if (descriptor <= STDERR_FILENO) return REAL(write)(descriptor, data, size);
  return FAIL_OR_CALL(write, descriptor, data, size);
}

ssize_t read(int descriptor, void* data, std::size_t size) {
  if (descriptor <= STDERR_FILENO) return REAL(read)(descriptor, data, size);
  return FAIL_OR_CALL(read, descriptor, data, size);
}

int getaddrinfo(const char* host, const char* service, const addrinfo* hints, addrinfo** addresses) {
  // Its errors are negative, and so are the kinds of ours.
  const int code = failure("getaddrinfo");
  return code != 0 ? code : REAL(getaddrinfo)(host, service, hints, addresses);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* data) noexcept {
  const int code = failure("pthread_create");
  return code != 0 ? code : REAL(pthread_create)(thread, attributes, start, data);
}

}  // extern "C"
