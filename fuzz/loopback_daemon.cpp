#include "fuzz/loopback_daemon.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "fuzz/check.h"

namespace fuzz {

LoopbackDaemon::LoopbackDaemon() : listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* const any = reinterpret_cast<sockaddr*>(&address);
  socklen_t size = sizeof address;
  const bool listens = ::bind(listener, any, size) == 0 && ::listen(listener, 1) == 0;
  check(listens && ::getsockname(listener, any, &size) == 0, "a loopback port is there");
  listeningPort = ntohs(address.sin_port);
}

LoopbackDaemon::~LoopbackDaemon() {
  ::close(connection);
  ::close(listener);
}

void LoopbackDaemon::accept() {
  connection = ::accept(listener, nullptr, nullptr);
  const int on = 1;
  ::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  std::string request;
  char byte = 0;
  while (!request.ends_with("\r\n\r\n") && ::recv(connection, &byte, 1, 0) == 1) request += byte;
  pending = "HTTP/1.1 101 Switching Protocols\r\n\r\n";
  flush();
}

void LoopbackDaemon::send(const std::string& text) {
  pending += '\x81';
  if (text.size() < 126) {
    pending += static_cast<char>(text.size());
  } else {
    check(text.size() < 65536, "a message is short");
    pending += {126, static_cast<char>(text.size() >> 8U), static_cast<char>(text.size())};
  }
  pending += text;
}

void LoopbackDaemon::flush() {
  const ssize_t size = static_cast<ssize_t>(pending.size());
  check(::send(connection, pending.data(), pending.size(), MSG_NOSIGNAL) == size, "the client takes what is sent");
  pending.clear();
}

}  // namespace fuzz
