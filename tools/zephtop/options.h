// The arguments of zephtop.
#pragma once

#include <optional>

#include "zephlinksdk/zephlinksdk.h"

namespace zephtop {

struct Options {
  ZephlinkSDK_Config daemon;
  bool readOnly = false;
  std::optional<int> status;  ///< of the process, if it ends here: help or version was printed, or a usage error
};

/// Prints what was asked for to standard output, and errors to standard error.
Options readOptions(int argc, char** argv);

}  // namespace zephtop
