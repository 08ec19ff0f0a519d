// What network sharing and the stream of statistics include about single peers.
#pragma once

#include "cli/actions.h"

namespace cli {

class Stream;

/// Rows of `networksharing` that act on a peer.
extern const Actions kPeerRows;
/// The same of `networksharing set`.
extern const Actions kPeerSetRows;

/// Subscribes to the three events of peers.
void listenForPeers(Stream& stream);

}  // namespace cli
