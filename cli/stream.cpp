#include "cli/stream.h"

#include <chrono>
#include <ctime>
#include <string>

namespace cli {

namespace {

// The bound of one wait; whole seconds of the wall clock are compared behind each.
constexpr std::chrono::milliseconds kTick{1000};

}  // namespace

void StreamClock::start() {
  const std::lock_guard lock(mutex);
  if (startTime != 0) return;
  startTime = std::time(nullptr);
  changed.notify_all();
}

void StreamClock::waitForStart() {
  std::unique_lock lock(mutex);
  changed.wait(lock, [this] { return startTime != 0; });
}

void StreamClock::waitFor(std::int32_t seconds) {
  std::unique_lock lock(mutex);
  while (!expired(seconds)) changed.wait_for(lock, kTick);
}

bool StreamClock::expired(std::int32_t seconds) const {
  return seconds > 0 && startTime != 0 && std::time(nullptr) - startTime >= seconds;
}

OutputBlock streamBlock(std::FILE* stream, const char* label) {
  return {stream, std::string("[\"") + label + "\",\n", "]\n\n"};
}

}  // namespace cli
