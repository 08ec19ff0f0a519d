#include "cli/options.h"

#include <cstdlib>

#include "base/text.h"

namespace cli {

namespace {

constexpr const char* kAppName = "Zephlink";

bool isOption(const char* word, const char* brief, const char* full) { return equal(word, brief) || equal(word, full); }

}  // namespace

Words readOptions(Words words, ZephlinkSDK_Config& config) {
  ZephlinkSDK_defaultConfig(&config);
  zephlinksdk::copyText(config.appName, kAppName);
  if (words.size() < 2) return words;
  if (isOption(words[0], "-i", "--ip")) {
    zephlinksdk::copyText(config.address, words[1]);
    words = words.subspan(2);
    // After an address, "-p" is an option only if a value follows.
    if (words.size() < 2) return words;
  }
  if (isOption(words[0], "-p", "--port")) {
    // Text that is not a number gives port 0; larger numbers are truncated to 16 bits.
    config.port = static_cast<std::uint16_t>(std::strtol(words[1], nullptr, 10));
    words = words.subspan(2);
  }
  return words;
}

}  // namespace cli
