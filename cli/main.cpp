// Runs one action: sets the program's name, reads the options, creates the library's object, dispatches the action and
// returns its status.
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

#include "cli/actions.h"
#include "cli/options.h"
#include "cli/output.h"
#include "cli/program_name.h"
#include "cli/usage.h"
#include "platform/console.h"

namespace {

int run(int argc, char** argv) {
  if (argc < 1) return cli::kUnknownAction;
  cli::setProgramName(argv[0]);
  if (argc < 2 || cli::equal(argv[1], "-h") || cli::equal(argv[1], "--help")) {
    cli::printUsage(stdout);
    return cli::kSuccess;
  }
  ZephlinkSDK_Config config;
  const cli::Arguments arguments =
      cli::readOptions(cli::Arguments(argv, static_cast<std::size_t>(argc)).subspan(1), config);
  cli::g_sdk = ZephlinkSDK_create(config);
  if (cli::g_sdk == nullptr) throw std::bad_alloc();
  // The channel thread connects in the meantime.
  cli::prepareOutput();
  const int status = cli::dispatch(arguments);
  ZephlinkSDK_finish(cli::g_sdk);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    zephlinksdk::prepareConsole(argc, argv);
    return run(argc, argv);
  } catch (const std::exception&) {
    cli::printNoMemory();
    return cli::kFailed;
  }
}
