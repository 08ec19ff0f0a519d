// A test process to be killed: starts a stream of zephctl on the port in its argument, and waits. The stream prints
// nothing unless its daemon reports something, so no closed pipe ends it.
#include <cstdint>
#include <cstdlib>

#include "tests/process.h"

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  tests::Process child(tests::command(static_cast<std::uint16_t>(std::atoi(argv[1])), {"safebrowsing", "errors"}));
  child.finish();
  return EXIT_SUCCESS;
}
