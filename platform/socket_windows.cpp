#include "platform/socket.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <climits>

#include "platform/waker.h"

namespace zephlinksdk {

namespace {

SOCKET native(SocketHandle socket) { return static_cast<SOCKET>(socket); }

int chunk(std::size_t size) { return static_cast<int>(std::min<std::size_t>(size, INT_MAX)); }

void watch(SocketHandle socket, fd_set& set) {
  if (socket != kNoSocket) FD_SET(native(socket), &set);
}

}  // namespace

bool startSockets() {
  WSADATA data;
  return ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
}

void stopSockets() { ::WSACleanup(); }

std::optional<Ipv4> addressOfText(const char* text) {
  in_addr address{};
  if (::inet_pton(AF_INET, text, &address) != 1) return std::nullopt;
  return address.s_addr;
}

Connecting startConnecting(Ipv4 address, std::uint16_t port, SocketHandle& socket) {
  socket = kNoSocket;
  const SOCKET candidate = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  if (candidate == INVALID_SOCKET) return Connecting::kFailed;
  sockaddr_in peer{};
  peer.sin_family = AF_INET;
  peer.sin_port = htons(port);
  peer.sin_addr.s_addr = address;
  // A blocking socket would delay every time-out.
  u_long nonBlocking = 1;
  if (::ioctlsocket(candidate, FIONBIO, &nonBlocking) == 0) {
    const bool connected = ::connect(candidate, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) == 0;
    if (connected || wouldBlock()) {
      socket = static_cast<SocketHandle>(candidate);
      return connected ? Connecting::kDone : Connecting::kUnderWay;
    }
  }
  ::closesocket(candidate);
  return Connecting::kFailed;
}

Connecting finishConnecting(SocketHandle socket) {
  fd_set writable;
  fd_set failed;
  FD_ZERO(&writable);
  FD_ZERO(&failed);
  watch(socket, writable);
  watch(socket, failed);
  timeval now{0, 0};
  if (::select(0, nullptr, &writable, &failed, &now) == SOCKET_ERROR) return Connecting::kFailed;
  if (FD_ISSET(native(socket), &failed)) return Connecting::kFailed;
  return FD_ISSET(native(socket), &writable) ? Connecting::kDone : Connecting::kUnderWay;
}

std::ptrdiff_t sendBytes(SocketHandle socket, const void* data, std::size_t size) {
  return ::send(native(socket), static_cast<const char*>(data), chunk(size), 0);
}

std::ptrdiff_t receiveBytes(SocketHandle socket, void* data, std::size_t size) {
  return ::recv(native(socket), static_cast<char*>(data), chunk(size), 0);
}

std::ptrdiff_t peekBytes(SocketHandle socket, void* data, std::size_t size) {
  return ::recv(native(socket), static_cast<char*>(data), chunk(size), MSG_PEEK);
}

bool wouldBlock() {
  const int error = ::WSAGetLastError();
  return error == WSAEWOULDBLOCK || error == WSAEINPROGRESS;
}

void makeInteractive(SocketHandle socket) {
  const int enable = 1;
  ::setsockopt(native(socket), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&enable), sizeof enable);
}

void closeSocket(SocketHandle socket) {
  if (socket != kNoSocket) ::closesocket(native(socket));
}

void waitForSocket(SocketHandle socket, bool forWriting, Waker* waker, int timeoutMs) {
  fd_set readable;
  fd_set writable;
  fd_set failed;
  FD_ZERO(&readable);
  FD_ZERO(&writable);
  FD_ZERO(&failed);
  watch(socket, readable);
  if (forWriting) watch(socket, writable);
  // A failed connection is reported in this set only.
  if (forWriting) watch(socket, failed);
  const SocketHandle wakeHandle = waker != nullptr ? waker->handle() : kNoSocket;
  watch(wakeHandle, readable);
  if (readable.fd_count == 0) {
    // select fails if no set contains a socket.
    ::Sleep(timeoutMs < 0 ? INFINITE : static_cast<DWORD>(timeoutMs));
    return;
  }
  timeval limit{timeoutMs / 1000, (timeoutMs % 1000) * 1000};
  const int ready = ::select(0, &readable, &writable, &failed, timeoutMs < 0 ? nullptr : &limit);
  if (ready > 0 && wakeHandle != kNoSocket && FD_ISSET(native(wakeHandle), &readable)) waker->drain();
}

}  // namespace zephlinksdk
