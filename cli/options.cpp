#include "cli/options.h"

#include <cstdlib>

#include "base/text.h"

namespace cli {

namespace {

constexpr const char* kAppName = "Zephlink";

bool isOption(const char* argument, const char* brief, const char* full) {
  return equal(argument, brief) || equal(argument, full);
}

}  // namespace

Arguments readOptions(Arguments arguments, ZephlinkSDK_Config& config) {
  ZephlinkSDK_defaultConfig(&config);
  zephlinksdk::copyText(config.appName, kAppName);
  if (arguments.size() < 2) return arguments;
  if (isOption(arguments[0], "-i", "--ip")) {
    zephlinksdk::copyText(config.address, arguments[1]);
    arguments = arguments.subspan(2);
    // After an address, "-p" is an option only if a value follows.
    if (arguments.size() < 2) return arguments;
  }
  if (isOption(arguments[0], "-p", "--port")) {
    // Text that is not a number gives port 0; larger numbers are truncated to 16 bits.
    config.port = static_cast<std::uint16_t>(std::strtol(arguments[1], nullptr, 10));
    arguments = arguments.subspan(2);
  }
  return arguments;
}

}  // namespace cli
