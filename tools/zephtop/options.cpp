#include "tools/zephtop/options.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace zephtop {

namespace {

constexpr int kUsageError = 2;
constexpr char kUsage[] =
    "Usage: zephtop [-i|--ip <address>] [-p|--port <port>] [--read-only]\n"
    "       zephtop -h|--help | --version\n";
constexpr char kHelp[] =
    "Shows the daemon's state and the traffic of each network adapter as they change.\n"
    "\n"
    "  -i, --ip <address>   address of the daemon (127.0.0.1)\n"
    "  -p, --port <port>    port of the daemon (9330)\n"
    "      --read-only      without the keys that change the daemon\n"
    "  -h, --help           print this\n"
    "      --version        print the version\n"
    "\n"
    "Press ? for the keys.\n";

bool readAddress(const std::string& text, ZephlinkSDK_Config& config) {
  if (text.empty() || text.size() >= sizeof config.address) return false;
  std::snprintf(config.address, sizeof config.address, "%s", text.c_str());
  return true;
}

bool readPort(const std::string& text, ZephlinkSDK_Config& config) {
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, config.port);
  return error == std::errc() && stop == end && config.port != 0;
}

int refuse(const std::string& reason) {
  std::fprintf(stderr, "zephtop: %s\n%s", reason.c_str(), kUsage);
  return kUsageError;
}

}  // namespace

Options readOptions(int argc, char** argv) {
  Options options{};
  ZephlinkSDK_defaultConfig(&options.daemon);
  std::snprintf(options.daemon.appName, sizeof options.daemon.appName, "zephtop");
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    if (option == "-h" || option == "--help") {
      std::printf("%s\n%s", kUsage, kHelp);
      options.status = EXIT_SUCCESS;
    } else if (option == "--version") {
      std::printf("zephtop %s\n", ZEPHTOP_VERSION);
      options.status = EXIT_SUCCESS;
    } else if (option == "--read-only") {
      options.readOnly = true;
    } else if (option == "-i" || option == "--ip" || option == "-p" || option == "--port") {
      if (++i == argc) {
        options.status = refuse(option + " requires an argument");
      } else if (option[option.find_first_not_of('-')] == 'i' ? !readAddress(argv[i], options.daemon)
                                                              : !readPort(argv[i], options.daemon)) {
        options.status = refuse(option + ": invalid argument \"" + argv[i] + "\"");
      }
    } else {
      options.status = refuse("unknown argument \"" + option + "\"");
    }
    if (options.status) return options;
  }
  return options;
}

}  // namespace zephtop
