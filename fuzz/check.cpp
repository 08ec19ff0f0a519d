#include "fuzz/check.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "sdk/link/json.h"

namespace fuzz {

void broken(const char* promise, const std::string& details) {
  // The targets capture or silence the streams, so the descriptor itself is written.
  const std::string text = std::string("\n*** Does not hold: ") + promise + "\n" + details + "\n";
  if (::write(STDERR_FILENO, text.data(), text.size()) < 0) std::abort();
  std::abort();
}

std::vector<std::string> linesOf(std::string_view input) {
  std::vector<std::string> lines;
  while (!input.empty()) {
    lines.emplace_back(input.substr(0, input.find('\n')));
    input.remove_prefix(std::min(input.size(), lines.back().size() + 1));
  }
  return lines;
}

bool parseJson(std::string_view text, Json::Value& value) {
  static zephlinksdk::JsonParser parser;
  std::string errors;
  return parser.parse(text, value, errors);
}

}  // namespace fuzz
