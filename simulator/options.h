// The command line of the simulated daemon.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace zephsim {

struct Options {
  std::uint16_t port = 9330;  ///< 0: any free port
  bool print = false;
  bool printSecrets = false;
  bool fast = false;  ///< delays take a tenth of their time
  std::uint32_t seed = 1;
  std::chrono::milliseconds delay{0};  ///< before each answer
  std::uint32_t dropAfter = 0;         ///< messages of a connection, received and sent; 0: never
  std::uint32_t closeAfter = 0;        ///< like `dropAfter`
  bool silent = false;
  bool garble = false;
  std::uint32_t flood = 0;        ///< additional reports of connection statistics, sent at once after each subscription
  std::set<std::string> refused;  ///< requests that are answered by a settings error
};

/// Parses a command line. Returns nothing if the process must exit with `exitStatus`: after printing the help to
/// stdout, or an error line to stderr.
std::optional<Options> parseOptions(int argc, const char* const* argv, int& exitStatus);

}  // namespace zephsim
