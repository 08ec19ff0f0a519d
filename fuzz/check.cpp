#include "fuzz/check.h"

#include <unistd.h>

#include <cstdlib>

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
    const std::size_t end = input.find('\n');
    lines.emplace_back(input.substr(0, end));
    input = end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
  }
  return lines;
}

}  // namespace fuzz
