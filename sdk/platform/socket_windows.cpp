#include "sdk/platform/socket.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <climits>
#include <string>

#include "sdk/platform/waker.h"

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
    const SOCKET candidate = ::socket(address->ai_family, address->ai_socktype, address->ai_protocol);
    if (candidate == INVALID_SOCKET) continue;
    connected = ::connect(candidate, address->ai_addr, static_cast<int>(address->ai_addrlen)) == 0;
    if (connected) {
      socket = static_cast<SocketHandle>(candidate);
    } else {
      ::closesocket(candidate);
    }
  }
  ::freeaddrinfo(addresses);
  return connected;
}

std::ptrdiff_t sendBytes(SocketHandle socket, const void* data, std::size_t size, SendMode) {
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

bool makeInteractive(SocketHandle socket) {
  const int enable = 1;
  ::setsockopt(native(socket), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&enable), sizeof enable);
  u_long nonBlocking = 1;
  return ::ioctlsocket(native(socket), FIONBIO, &nonBlocking) == 0;
}

void closeSocket(SocketHandle socket) {
  if (socket != kNoSocket) ::closesocket(native(socket));
}

void waitForSocket(SocketHandle socket, bool forWriting, Waker* waker, int timeoutMs) {
  fd_set readable;
  fd_set writable;
  FD_ZERO(&readable);
  FD_ZERO(&writable);
  watch(socket, readable);
  if (forWriting) watch(socket, writable);
  const SocketHandle wakeHandle = waker != nullptr ? waker->handle() : kNoSocket;
  watch(wakeHandle, readable);
  if (readable.fd_count == 0) {
    // select refuses to wait on nothing at all.
    ::Sleep(timeoutMs < 0 ? INFINITE : static_cast<DWORD>(timeoutMs));
    return;
  }
  timeval limit{timeoutMs / 1000, (timeoutMs % 1000) * 1000};
  const int ready = ::select(0, &readable, &writable, nullptr, timeoutMs < 0 ? nullptr : &limit);
  if (ready > 0 && wakeHandle != kNoSocket && FD_ISSET(native(wakeHandle), &readable)) waker->drain();
}

}  // namespace zephlinksdk
