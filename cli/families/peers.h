// What the stream of statistics shares with the words that act on peers.
#pragma once

#include <cstdint>
#include <vector>

namespace cli {

class StreamClock;

/// Subscribes to the three events of peers, each printed as a stream record that starts `clock`, which must outlive the
/// subscriptions. Returns their handles in the order of registration.
std::vector<std::uint64_t> listenForPeers(StreamClock& clock);

}  // namespace cli
