// The actions that each family adds to the program. For a new family, add a line here and its rows in cli/actions.cpp.
#pragma once

#include "cli/actions.h"

namespace cli::families {

/// The rows of one file.
struct Family {
  Actions actions;
  Actions show = {};  ///< subcommands of `show`
};

extern const Family account;
extern const Family adapters;
extern const Family connecting;
extern const Family firewall;
extern const Family localProxy;
extern const Family logs;
extern const Family networkSharing;
extern const Family privacy;
extern const Family safeBrowsing;
extern const Family settings;
extern const Family speedTests;
extern const Family state;
extern const Family statistics;
extern const Family streaming;

}  // namespace cli::families
