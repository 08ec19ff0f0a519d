#include "cli/stream.h"

#include <chrono>
#include <ctime>

namespace cli {

namespace {

// The longest single wait; after each, whole seconds of the wall clock are compared.
constexpr std::chrono::milliseconds kTick{1000};

}  // namespace

std::mutex g_printing;

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

void Stream::report(const ZephlinkSDK_Result& record) {
  if (!record.hasError) return;
  clock.start();
  printBlock<ZephlinkSDK_Result>(record, "error", nullptr);
}

void Stream::close() {
  for (std::size_t i = 0; i < count; ++i) ZephlinkSDK_removeListener(g_sdk, handles[i]);
  count = 0;
}

}  // namespace cli
