#include "platform/socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <cerrno>

#include <array>

#include "platform/waker.h"

namespace zephlinksdk {

namespace {

int descriptor(SocketHandle socket) { return static_cast<int>(socket); }

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

std::optional<Ipv4> addressOfText(const char* text) {
  in_addr address{};
  if (::inet_pton(AF_INET, text, &address) != 1) return std::nullopt;
  return address.s_addr;
}

Connecting startConnecting(Ipv4 address, std::uint16_t port, SocketHandle& socket) {
  socket = kNoSocket;
  const int candidate = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, IPPROTO_TCP);
  if (candidate < 0) return Connecting::kFailed;
  sockaddr_in peer{};
  peer.sin_family = AF_INET;
  peer.sin_port = htons(port);
  peer.sin_addr.s_addr = address;
  const bool connected = ::connect(candidate, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) == 0;
  // After an interrupting signal, connect continues in the background.
  if (!connected && errno != EINPROGRESS && errno != EINTR) {
    ::close(candidate);
    return Connecting::kFailed;
  }
  socket = candidate;
  return connected ? Connecting::kDone : Connecting::kUnderWay;
}

Connecting finishConnecting(SocketHandle socket) {
  pollfd watched{descriptor(socket), POLLOUT, 0};
  const int ready = ::poll(&watched, 1, 0);
  if (ready < 0 && errno != EINTR) return Connecting::kFailed;
  if (ready <= 0) return Connecting::kUnderWay;
  int error = 0;
  socklen_t size = sizeof error;
  const bool known = ::getsockopt(descriptor(socket), SOL_SOCKET, SO_ERROR, &error, &size) == 0;
  return known && error == 0 ? Connecting::kDone : Connecting::kFailed;
}

std::ptrdiff_t sendBytes(SocketHandle socket, const void* data, std::size_t size) {
  std::ptrdiff_t sent = 0;
  do {
    sent = ::send(descriptor(socket), data, size, MSG_NOSIGNAL);
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

void makeInteractive(SocketHandle socket) {
  const int enable = 1;
  ::setsockopt(descriptor(socket), IPPROTO_TCP, TCP_NODELAY, &enable, sizeof enable);
}

void closeSocket(SocketHandle socket) {
  if (socket != kNoSocket) ::close(descriptor(socket));
}

void waitForSocket(SocketHandle socket, bool forWriting, Waker* waker, int timeoutMs) {
  const auto events = static_cast<short>(forWriting ? POLLIN | POLLOUT : POLLIN);
  // poll(2) ignores negative descriptors.
  std::array<pollfd, 2> watched{{{descriptor(socket), events, 0}, {-1, POLLIN, 0}}};
  if (waker != nullptr) watched[1].fd = descriptor(waker->handle());
  if (::poll(watched.data(), watched.size(), timeoutMs) > 0 && watched[1].revents != 0) waker->drain();
}

}  // namespace zephlinksdk
