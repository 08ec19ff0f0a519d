// Addresses as text, both ways, by the system's own conversions.
#pragma once

#include <string>
#include <type_traits>

#include "zephlinksdk/addresses.h"

// The other system has these two with the addresses.
#ifndef _WIN32
#include <arpa/inet.h>
#endif

namespace zephlinksdk {

/// in_addr is of the one family, in6_addr of the other.
template <class Address>
inline constexpr int kAddressFamily = std::is_same_v<Address, in_addr> ? AF_INET : AF_INET6;

/// All zero where the text is no address of this family.
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
