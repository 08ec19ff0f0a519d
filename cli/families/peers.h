// The words of network sharing that act on one peer, and what the stream of statistics shares with them.
#pragma once

#include <cstdint>
#include <vector>

#include "cli/actions.h"

namespace cli {

class StreamClock;

// Handlers of `networksharing connect`, `reconnect`, `peer` and `set peer`.
int connectShare(Words words);
int reconnectShare(Words words);
int peer(Words words);
int setPeer(Words words);

/// Subscribes to the three events of peers, each printed as a stream record that starts `clock`, which must outlive the
/// subscriptions. Returns their handles in the order of registration.
std::vector<std::uint64_t> listenForPeers(StreamClock& clock);

}  // namespace cli
