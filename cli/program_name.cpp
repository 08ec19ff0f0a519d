#include "cli/program_name.h"

#include <string_view>

#include "base/text.h"

namespace cli {
namespace {

char name[512];

}  // namespace

void setProgramName(const char* argv0) {
  const std::string_view path = argv0 != nullptr ? argv0 : "";
  std::size_t separator = path.rfind('/');
  if (separator == std::string_view::npos) separator = path.rfind('\\');
  zephlinksdk::copyText(name, separator == std::string_view::npos ? path : path.substr(separator + 1));
}

const char* programName() { return name; }

}  // namespace cli
