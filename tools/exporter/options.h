// The arguments of the exporter.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace exporter {

/// A host, as a name or an address, and a port.
struct Endpoint {
  std::string host;
  std::uint16_t port;

  std::string text() const { return host + ":" + std::to_string(port); }
};

struct Options {
  enum class Action : std::uint8_t { Serve, PrintOnce, ShowHelp, ShowVersion, Fail };

  Action action = Action::Serve;
  std::string error;  ///< the reason for Fail
  Endpoint daemon{"127.0.0.1", 9330};
  Endpoint listen{"127.0.0.1", 9331};  ///< port 0: any free port
};

Options readOptions(int argc, char** argv);

/// Returns the text of --help.
std::string_view usage();

}  // namespace exporter
