// Macros that let the other headers compile as both C11 and C++20. Not for use in a host.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
#include <cstddef>

/// The underlying type of an enumeration, in its declaration.
#define ZEPHLINKSDK_UINT32 : uint32_t
/// Must follow the declaration of an enumeration. In C, declares the enumeration's name as a 32-bit type.
#define ZEPHLINKSDK_ENUM(name) static_assert(sizeof(name) == sizeof(uint32_t))
/// Defines a constant for the size of an array.
#define ZEPHLINKSDK_BOUND(name, value) inline constexpr std::size_t name = value
#else
#define ZEPHLINKSDK_UINT32
#define ZEPHLINKSDK_ENUM(name) typedef uint32_t name
#define ZEPHLINKSDK_BOUND(name, value) enum { name = (value) }
#endif

/// Standard C++ has no unnamed structures, but all supported compilers accept them.
#ifdef __GNUC__
#define ZEPHLINKSDK_EXTENSION __extension__
#else
#define ZEPHLINKSDK_EXTENSION
#endif
