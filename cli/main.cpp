// One run is one action: the program's name, the options, the library's object, the action, its status.
#include <cstdio>
#include <cstring>

#include "cli/actions.h"
#include "cli/console.h"
#include "cli/options.h"
#include "cli/program_name.h"
#include "cli/usage.h"

int main(int argc, char** argv) {
  cli::prepareConsole(argc, argv);
  if (argc < 1) return cli::kUnknownAction;
  cli::setProgramName(argv[0]);
  if (argc < 2 || cli::equal(argv[1], "-h") || cli::equal(argv[1], "--help")) {
    cli::printUsage(stdout);
    return cli::kSuccess;
  }
  ZephlinkSDK_Config config;
  const cli::Words words = cli::readOptions(cli::Words(argv, static_cast<std::size_t>(argc)).subspan(1), config);
  cli::g_sdk = ZephlinkSDK_create(config);
  const int status = cli::dispatch(words);
  ZephlinkSDK_destroy(cli::g_sdk);
  cli::g_sdk = nullptr;
  return status;
}
