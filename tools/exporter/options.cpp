#include "tools/exporter/options.h"

#include <getopt.h>

#include <charconv>
#include <optional>

#include "zephlinksdk/records.h"

namespace exporter {

namespace {

/// Parses HOST:PORT. Returns nothing if the text has another form, the host is too long for the library, or the port is
/// below `leastPort`.
std::optional<Endpoint> parseEndpoint(std::string_view text, std::uint16_t leastPort) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon == 0 || colon >= ZephlinkSDK_AddressSize) return std::nullopt;
  const std::string_view digits = text.substr(colon + 1);
  Endpoint endpoint{std::string(text.substr(0, colon)), 0};
  const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), endpoint.port);
  const bool valid = failure == std::errc() && end == digits.data() + digits.size() && endpoint.port >= leastPort;
  return valid ? std::optional(endpoint) : std::nullopt;
}

Options failed(std::string error) {
  Options options;
  options.action = Options::Action::Fail;
  options.error = std::move(error);
  return options;
}

}  // namespace

Options readOptions(int argc, char** argv) {
  constexpr option kOptions[] = {
      {"daemon", required_argument, nullptr, 'd'}, {"listen", required_argument, nullptr, 'l'},
      {"once", no_argument, nullptr, 'o'},         {"help", no_argument, nullptr, 'h'},
      {"version", no_argument, nullptr, 'v'},      {nullptr, 0, nullptr, 0}};
  Options options;
  opterr = 0;
  for (int letter = 0; (letter = getopt_long(argc, argv, ":h", kOptions, nullptr)) != -1;) {
    switch (letter) {
      case 'd':
      case 'l': {
        const auto endpoint = parseEndpoint(optarg, letter == 'd' ? 1 : 0);
        if (!endpoint) return failed(std::string("\"") + optarg + "\" is not HOST:PORT");
        (letter == 'd' ? options.daemon : options.listen) = *endpoint;
        break;
      }
      case 'o':
        options.action = Options::Action::PrintOnce;
        break;
      case 'h':
        options.action = Options::Action::ShowHelp;
        return options;
      case 'v':
        options.action = Options::Action::ShowVersion;
        return options;
      case ':':
        return failed(std::string(argv[optind - 1]) + " needs an argument");
      default:
        return failed(std::string("unknown option ") + argv[optind - 1]);
    }
  }
  if (optind < argc) return failed(std::string("unexpected argument ") + argv[optind]);
  return options;
}

std::string_view usage() {
  return "Usage: zephlink-exporter [--daemon HOST:PORT] [--listen HOST:PORT] [--once]\n"
         "Serves the metrics of a daemon to Prometheus, at /metrics; /-/healthy responds while the exporter runs.\n"
         "  --daemon HOST:PORT  the daemon (127.0.0.1:9330)\n"
         "  --listen HOST:PORT  the address to serve on; port 0: any free port (127.0.0.1:9331)\n"
         "  --once              print the metrics and exit: status 0, or 1 if the daemon does not answer\n"
         "  --version           print the version\n"
         "  --help              print this\n";
}

}  // namespace exporter
