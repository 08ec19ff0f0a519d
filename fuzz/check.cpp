#include "fuzz/check.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "sdk/link/json.h"

namespace fuzz {

void fail(const char* promise, const std::string& details) {
  // Writes to the descriptor, because the targets capture or silence the streams.
  const std::string text = std::string("\n*** Check failed: ") + promise + "\n" + details + "\n";
  if (::write(STDERR_FILENO, text.data(), text.size()) < 0) std::abort();
  std::abort();
}

std::vector<std::string> piecesOf(std::string_view input, char divider) {
  std::vector<std::string> pieces;
  while (!input.empty()) {
    pieces.emplace_back(input.substr(0, input.find(divider)));
    input.remove_prefix(std::min(input.size(), pieces.back().size() + 1));
  }
  return pieces;
}

bool parseJson(std::string_view text, Json::Value& value) {
  static zephlinksdk::JsonParser parser;
  std::string errors;
  return parser.parse(text, value, errors);
}

}  // namespace fuzz
