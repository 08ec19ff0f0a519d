// The two connection options.
#pragma once

#include "cli/actions.h"
#include "zephlinksdk/records.h"

namespace cli {

/// Fills the start record from its defaults and the options in front of the action word: `[-i|--ip <address>]
/// [-p|--port <port>]`, in this order. Returns the words behind them.
Words readOptions(Words words, ZephlinkSDK_Config& config);

}  // namespace cli
