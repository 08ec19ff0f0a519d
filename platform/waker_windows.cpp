// select watches sockets only, so a wake-up is a datagram that a loopback socket sends to itself.
#include "platform/waker.h"

#include <winsock2.h>

namespace zephlinksdk {

Waker::Waker() {
  const SOCKET socket = ::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  if (socket == INVALID_SOCKET) return;
  sockaddr_in self{};
  self.sin_family = AF_INET;
  self.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  int size = sizeof self;
  auto* address = reinterpret_cast<sockaddr*>(&self);
  // A socket connected to its own address receives only its own datagrams.
  u_long nonBlocking = 1;
  if (::bind(socket, address, size) != 0 || ::getsockname(socket, address, &size) != 0 ||
      ::connect(socket, address, size) != 0 || ::ioctlsocket(socket, FIONBIO, &nonBlocking) != 0) {
    ::closesocket(socket);
    return;
  }
  readEnd = writeEnd = static_cast<SocketHandle>(socket);
}

Waker::~Waker() { closeSocket(readEnd); }

void Waker::wake() {
  const char byte = 0;
  sendBytes(writeEnd, &byte, 1);
}

void Waker::drain() {
  char bytes[64];
  while (receiveBytes(readEnd, bytes, sizeof bytes) > 0) {
  }
}

}  // namespace zephlinksdk
