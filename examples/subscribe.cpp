// From nothing to a subscription: asks the daemon for its state, then prints what each adapter carries, once a second,
// until Enter is pressed. An argument is the daemon's port.
#include <cstdio>
#include <cstdlib>

#include "sdk/facade.h"

namespace {

// On the channel thread. `stats` is a copy of our own; false would end the subscription.
bool onStats(ZephlinkSDK_ConnectionStatsResult stats, void* userData) {
  if (stats.hasError) {
    std::fprintf(stderr, "No statistics: %s\n", stats.errorMessage);
    return true;
  }
  const double bitsPerMegabit = *static_cast<const double*>(userData);
  for (int i = 0; i < stats.connectionCount; ++i) {
    const ZephlinkSDK_ConnectionStatsEntry& connection = stats.connections[i];
    std::printf("%-10s %8.2f Mbit/s down %8.2f Mbit/s up\n", connection.adapterID,
                static_cast<double>(connection.receiveBps) / bitsPerMegabit,
                static_cast<double>(connection.sendBps) / bitsPerMegabit);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  if (argc > 1) config.port = static_cast<uint16_t>(std::atoi(argv[1]));
  zephlinksdk::ZephlinkSDK* sdk = ZephlinkSDK_create(config);  // connects in the background

  // Without a callback a call waits for its answer, five seconds at most.
  const ZephlinkSDK_StateResult state = ZephlinkSDK_getState(sdk, nullptr, nullptr);
  if (state.hasError) {
    std::fprintf(stderr, "No state: %s\n", state.errorMessage);
    ZephlinkSDK_destroy(sdk);
    return 1;
  }
  std::printf("The daemon is %s\n", state.state == ZephlinkSDK_State_Connected ? "connected" : "not connected");

  // With a callback it returns at once. What userData points to must live until the listener is removed.
  double bitsPerMegabit = 1e6;
  const ZephlinkSDK_ConnectionStatsResult begun = ZephlinkSDK_getConnectionStats(sdk, onStats, &bitsPerMegabit);
  ZephlinkSDK_subscribeStats(sdk, true, 0, nullptr);  // makes the daemon send them, about once a second

  std::getchar();

  ZephlinkSDK_removeListener(sdk, begun.handle);  // from here on onStats does not run
  ZephlinkSDK_destroy(sdk);
  return 0;
}
