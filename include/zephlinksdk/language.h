// What lets the other headers read the same in C11 and in C++20. Not for use in a host.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
#include <cstddef>

/// The type of an enumeration's values, in its head.
#define ZEPHLINKSDK_UINT32 : uint32_t
/// Follows an enumeration. In C, a variable of 32 bits then has the enumeration's name as its type.
#define ZEPHLINKSDK_ENUM(name) static_assert(sizeof(name) == sizeof(uint32_t))
/// A constant for the size of an array.
#define ZEPHLINKSDK_BOUND(name, value) inline constexpr std::size_t name = value
#else
#define ZEPHLINKSDK_UINT32
#define ZEPHLINKSDK_ENUM(name) typedef uint32_t name
#define ZEPHLINKSDK_BOUND(name, value) enum { name = (value) }
#endif

/// C++ has no unnamed structures, but every compiler that we know takes them.
#ifdef __GNUC__
#define ZEPHLINKSDK_EXTENSION __extension__
#else
#define ZEPHLINKSDK_EXTENSION
#endif
