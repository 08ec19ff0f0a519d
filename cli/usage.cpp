#include "cli/usage.h"

#include "cli/program_name.h"

namespace cli {
namespace {

constexpr char kVersion[] = "14.9.1";
constexpr char kBuild[] = "12483";

}  // namespace

void printUsage(std::FILE* stream) {
  std::fprintf(stream, "%s v%s.%s\n", programName(), kVersion, kBuild);
  std::fprintf(stream, "Usage : %s action\n", programName());
  std::fputs("Actions:\n", stream);
  for (const char* action : usage::kListed) std::fprintf(stream, "   %s\n", action);
}

}  // namespace cli
