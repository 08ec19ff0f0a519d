// zephsim: a simulated daemon for demonstrations, tests and benchmarks.
#include <cstdio>
#include <exception>

#include "simulator/daemon.h"

int main(int argc, char** argv) {
  int exitStatus = 0;
  const auto options = zephsim::parseOptions(argc, argv, exitStatus);
  if (!options) return exitStatus;
  try {
    zephsim::Daemon daemon(*options);
    std::printf("listening on 127.0.0.1:%d\n", daemon.port());
    std::fflush(stdout);
    daemon.run();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zephsim: cannot listen on 127.0.0.1:%d: %s\n", options->port, error.what());
    return 1;
  }
  return 0;
}
