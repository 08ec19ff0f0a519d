// in_addr and in6_addr, the address types of the rule lists, wherever the system keeps them.
#pragma once

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
// The order of these two is required by the system.
#include <winsock2.h>

#include <ws2tcpip.h>
#else
#include <netinet/in.h>
#endif
