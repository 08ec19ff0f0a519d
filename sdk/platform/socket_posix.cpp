#include "sdk/platform/socket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <cerrno>

#include <array>
#include <string>

#include "sdk/platform/waker.h"

namespace zephlinksdk {

namespace {

#ifdef MSG_MORE
constexpr int kMoreFollowsFlag = MSG_MORE;
#else
constexpr int kMoreFollowsFlag = 0;
#endif

int descriptor(SocketHandle socket) { return static_cast<int>(socket); }

/// A signal may interrupt `connect`, which then goes on by itself and may not be called again.
bool finishInterruptedConnect(int socket) {
  pollfd wait{socket, POLLOUT, 0};
  while (::poll(&wait, 1, -1) < 0) {
    if (errno != EINTR) return false;
  }
  int error = 0;
  socklen_t size = sizeof error;
  return ::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

bool connectTo(int socket, const addrinfo& address) {
  if (::connect(socket, address.ai_addr, address.ai_addrlen) == 0) return true;
  return errno == EINTR && finishInterruptedConnect(socket);
}

std::ptrdiff_t receive(SocketHandle socket, void* data, std::size_t size, int flags) {
  std::ptrdiff_t received = 0;
  do {
    received = ::recv(descriptor(socket), data, size, flags);
  } while (received < 0 && errno == EINTR);
  return received;
}

}  // namespace

bool startSockets() { return true; }

void stopSockets() {}

bool connectSocket(const char* host, int port, SocketHandle& socket) {
  addrinfo hints{};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* addresses = nullptr;
  if (::getaddrinfo(host, std::to_string(port).c_str(), &hints, &addresses) != 0) {
    socket = kNoSocket;
    return true;
  }
  bool connected = false;
  for (const addrinfo* address = addresses; address != nullptr && !connected; address = address->ai_next) {
    const int candidate = ::socket(address->ai_family, address->ai_socktype | SOCK_CLOEXEC, address->ai_protocol);
    if (candidate < 0) continue;
    connected = connectTo(candidate, *address);
    if (connected) {
      socket = candidate;
    } else {
      ::close(candidate);
    }
  }
  ::freeaddrinfo(addresses);
  return connected;
}

std::ptrdiff_t sendBytes(SocketHandle socket, const void* data, std::size_t size, SendMode mode) {
  const int flags = MSG_NOSIGNAL | (mode == SendMode::kMoreFollows ? kMoreFollowsFlag : 0);
  std::ptrdiff_t sent = 0;
  do {
    sent = ::send(descriptor(socket), data, size, flags);
  } while (sent < 0 && errno == EINTR);
  return sent;
}

std::ptrdiff_t receiveBytes(SocketHandle socket, void* data, std::size_t size) {
  return receive(socket, data, size, 0);
}

std::ptrdiff_t peekBytes(SocketHandle socket, void* data, std::size_t size) {
  return receive(socket, data, size, MSG_PEEK);
}

bool wouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINPROGRESS; }

bool makeInteractive(SocketHandle socket) {
  const int enable = 1;
  ::setsockopt(descriptor(socket), IPPROTO_TCP, TCP_NODELAY, &enable, sizeof enable);
  const int flags = ::fcntl(descriptor(socket), F_GETFL);
  return flags >= 0 && ::fcntl(descriptor(socket), F_SETFL, flags | O_NONBLOCK) == 0;
}

void closeSocket(SocketHandle socket) {
  if (socket != kNoSocket) ::close(descriptor(socket));
}

void waitForSocket(SocketHandle socket, bool forWriting, Waker* waker, int timeoutMs) {
  const auto events = static_cast<short>(forWriting ? POLLIN | POLLOUT : POLLIN);
  // poll(2) passes over negative descriptors.
  std::array<pollfd, 2> watched{{{descriptor(socket), events, 0}, {-1, POLLIN, 0}}};
  if (waker != nullptr) watched[1].fd = descriptor(waker->handle());
  if (::poll(watched.data(), watched.size(), timeoutMs) > 0 && watched[1].revents != 0) waker->drain();
}

}  // namespace zephlinksdk
