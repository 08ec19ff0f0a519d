// Includes the system's declarations of in_addr and in6_addr, the address types of the rule lists.
#pragma once

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
// winsock2.h must precede ws2tcpip.h.
#include <winsock2.h>

#include <ws2tcpip.h>
#else
#include <netinet/in.h>
#endif
