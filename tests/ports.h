// The loopback ports of the tests.
#pragma once

#include <cstdint>

namespace tests {

/// Returns a port without a listener, different from those of all other tests of the run: a client left over from one
/// test never connects to the server of another. The numbers are below the system's ephemeral ports. Thread-safe.
std::uint16_t nextPort();

}  // namespace tests
