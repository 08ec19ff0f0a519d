#include "cli/usage.h"

#include <string>

#include "cli/actions.h"
#include "cli/program_name.h"
#include "platform/console.h"

namespace cli {

void printUsage(std::FILE* stream) {
  std::string text = std::string(programName()) + " v" ZEPHCTL_VERSION "\n";
  text += std::string("Usage : ") + programName() + " action\nActions:\n";
  for (const char* path : kListedActions) text += std::string("   ") + usageOf(path) + "\n";
  zephlinksdk::writeText(stream, text);
}

}  // namespace cli
