// The loopback ports of the tests.
#pragma once

#include <cstdint>

namespace tests {

/// A port on which nobody listens, and which no other test of the run gets: a client that is left over from one test
/// never meets the server of another. The numbers are below those that the system gives to clients. Thread-safe.
std::uint16_t nextPort();

}  // namespace tests
