// Converts addresses to text and back with the system's functions.
#pragma once

#include <string>
#include <type_traits>

#include "zephlinksdk/addresses.h"

// On Windows, <ws2tcpip.h> declares these, along with the address types.
#ifndef _WIN32
#include <arpa/inet.h>
#endif

namespace zephlinksdk {

/// AF_INET for in_addr, AF_INET6 for in6_addr.
template <class Address>
inline constexpr int kAddressFamily = std::is_same_v<Address, in_addr> ? AF_INET : AF_INET6;

/// Returns all zeros if the text is not an address of this family.
template <class Address>
Address addressFromText(const char* text) {
  Address address{};
  return inet_pton(kAddressFamily<Address>, text, &address) == 1 ? address : Address{};
}

template <class Address>
std::string addressText(const Address& address) {
  char text[INET6_ADDRSTRLEN] = "";
  inet_ntop(kAddressFamily<Address>, &address, text, sizeof text);
  return text;
}

}  // namespace zephlinksdk
