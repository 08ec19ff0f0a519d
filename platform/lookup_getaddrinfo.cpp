// A separate file because the statically linked program replaces it by lookup_cares.cpp.
#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#endif

#include <cstring>

#include "platform/socket.h"

namespace zephlinksdk {

bool lookUpHost(const char* host, std::vector<Ipv4>& addresses) {
  addrinfo hints{};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (::getaddrinfo(host, nullptr, &hints, &found) != 0) return false;
  for (const addrinfo* entry = found; entry != nullptr; entry = entry->ai_next) {
    sockaddr_in address{};
    std::memcpy(&address, entry->ai_addr, sizeof address);
    addresses.push_back(address.sin_addr.s_addr);
  }
  ::freeaddrinfo(found);
  return true;
}

}  // namespace zephlinksdk
