// The command line of the simulated daemon.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace zephsim {

struct Options {
  std::uint16_t port = 9330;  ///< 0 takes a free one
  bool print = false;
  bool printSecrets = false;
  bool fast = false;  ///< what takes time takes a tenth
  std::uint32_t seed = 1;
  std::chrono::milliseconds delay{0};  ///< before each answer
  std::uint32_t dropAfter = 0;         ///< messages of a connection, heard and said; 0 is never
  std::uint32_t closeAfter = 0;        ///< as `dropAfter`
  bool silent = false;
  bool garble = false;
  std::uint32_t flood = 0;        ///< reports of connection statistics that follow each subscription at once
  std::set<std::string> refused;  ///< requests that are answered by a settings error
};

/// The options of a command line, or nothing and `exitStatus` when the process is to end: after the help text on
/// standard output, or after a line on standard error that names the fault.
std::optional<Options> parseOptions(int argc, const char* const* argv, int& exitStatus);

}  // namespace zephsim
