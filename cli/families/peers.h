// Actions and events of single peers, included by network sharing and the stream of statistics.
#pragma once

#include "cli/actions.h"

namespace cli {

class Stream;

/// Rows of `networksharing` for a single peer.
extern const Actions kPeerRows;
/// Rows of `networksharing set` for a single peer.
extern const Actions kPeerSetRows;

/// Subscribes to the three events about peers.
void listenForPeers(Stream& stream);

}  // namespace cli
