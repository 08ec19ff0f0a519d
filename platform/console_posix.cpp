#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <cerrno>
#include <csignal>

#include "platform/console.h"

namespace zephlinksdk {

namespace {

struct sigaction actionAtStart;

/// Waits after a failed write, depending on `errno`, until the descriptor accepts more. Returns false if it never will.
bool waitToWriteAgain(int descriptor) {
  if (errno == EINTR) return true;
  if (errno != EAGAIN && errno != EWOULDBLOCK) return false;
  pollfd writable{descriptor, POLLOUT, 0};
  return ::poll(&writable, 1, -1) > 0 || errno == EINTR;
}

}  // namespace

void prepareConsole(int&, char**&) {
#ifdef __GLIBC__
  // Two threads that rarely allocate do not need one arena each.
  ::mallopt(M_ARENA_MAX, 1);
  // Returns the memory of a large message to the system: by default the allocator keeps blocks of up to 32 MB after the
  // first such block.
  ::mallopt(M_MMAP_THRESHOLD, 512 * 1024);
#endif
  // If the parent has closed a standard descriptor, the next socket would get its number and receive our output.
  for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard) {
    if (::fcntl(standard, F_GETFD) < 0) ::open("/dev/null", O_RDWR);
  }
  struct sigaction ignore = {};
  ignore.sa_handler = SIG_IGN;
  ::sigaction(SIGPIPE, &ignore, &actionAtStart);
}

void endOnClosedPipe() { ::sigaction(SIGPIPE, &actionAtStart, nullptr); }

void writeText(std::FILE* stream, std::string_view text) {
  std::fflush(stream);
  const int descriptor = ::fileno(stream);
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written > 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (written == 0 || !waitToWriteAgain(descriptor)) {
      return;
    }
  }
}

}  // namespace zephlinksdk
