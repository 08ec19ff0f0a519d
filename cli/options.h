// The connection options.
#pragma once

#include "cli/actions.h"
#include "zephlinksdk/records.h"

namespace cli {

/// Fills in the configuration from the defaults and the options before the action: `[-i|--ip <address>] [-p|--port
/// <port>]`, in this order. Returns the remaining arguments.
Arguments readOptions(Arguments arguments, ZephlinkSDK_Config& config);

}  // namespace cli
