// The arguments of zephtop.
#pragma once

#include <optional>

#include "zephlinksdk/zephlinksdk.h"

namespace zephtop {

struct Options {
  ZephlinkSDK_Config daemon;
  bool readOnly = false;
  std::optional<int> status;  ///< exit status if the process ends here: after help, version or a usage error
};

/// Prints requested information to stdout and errors to stderr.
Options readOptions(int argc, char** argv);

}  // namespace zephtop
