// A complete host with one subscription: prints the daemon's state, sets the bonding mode if one is given, then prints
// the traffic of each connection about once a second, until Enter is pressed or standard input ends.
//
//   zephlink_subscribe [PORT [speed|redundant|streaming]]
#include <stdio.h>
#include <stdlib.h>

#include "zephlinksdk/zephlinksdk.h"

// Each record begins with the call's outcome.
static bool failed(const char* call, ZephlinkSDK_Result outcome) {
  if (outcome.hasError) fprintf(stderr, "%s: error %u, %s\n", call, outcome.errorCode, outcome.errorMessage);
  return outcome.hasError;
}

// Runs on the object's channel thread. `stats` is a copy.
static bool onStats(ZephlinkSDK_ConnectionStatsResult stats, void* userData) {
  const double bitsPerMegabit = *(const double*)userData;
  if (failed("getConnectionStats", stats.head)) return true;
  for (int i = 0; i < stats.connectionCount; ++i) {
    const ZephlinkSDK_ConnectionStatsEntry* connection = &stats.connections[i];
    printf("%-10s %8.2f Mbit/s down %8.2f Mbit/s up\n", connection->adapterID,
           (double)connection->receiveBps / bitsPerMegabit, (double)connection->sendBps / bitsPerMegabit);
  }
  fflush(stdout);
  return true;  // false ends the subscription
}

static int setMode(ZephlinkSDK* sdk, const char* word) {
  ZephlinkSDK_BondingMode mode;
  if (!ZephlinkSDK_bondingModeFromText(word, &mode)) {
    fprintf(stderr, "%s is not a bonding mode\n", word);
    return 2;
  }
  const ZephlinkSDK_SettingsResult settings = ZephlinkSDK_setMode(sdk, mode, NULL, NULL);
  if (failed("setMode", settings.head)) return 1;
  printf("The bonding mode is %s\n", ZephlinkSDK_bondingModeText(settings.bondingMode));
  return 0;
}

static int watchConnections(ZephlinkSDK* sdk) {
  // With a callback, a call returns at once. userData must remain valid until the listener is removed.
  double bitsPerMegabit = 1e6;
  const ZephlinkSDK_ConnectionStatsResult begun = ZephlinkSDK_getConnectionStats(sdk, onStats, &bitsPerMegabit);
  if (failed("getConnectionStats", begun.head)) return 1;
  // Makes the daemon send statistics.
  const bool sent = !failed("subscribeStats", ZephlinkSDK_subscribeStats(sdk, true, 0, NULL));

  for (int key = 0; sent && key != '\n' && key != EOF;) key = getchar();

  ZephlinkSDK_removeListener(sdk, begun.handle);  // onStats no longer runs after this
  return sent ? 0 : 1;
}

static int run(ZephlinkSDK* sdk, const char* mode) {
  // Without a callback, a call waits for its answer, at most five seconds.
  const ZephlinkSDK_StateResult state = ZephlinkSDK_getState(sdk, NULL, NULL);
  if (failed("getState", state.head)) return 1;
  printf("The daemon is %s\n", ZephlinkSDK_stateText(state.state));
  const int status = mode != NULL ? setMode(sdk, mode) : 0;
  return status == 0 ? watchConnections(sdk) : status;
}

int main(int argc, char** argv) {
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  if (argc > 1) config.port = (uint16_t)atoi(argv[1]);
  ZephlinkSDK* sdk = ZephlinkSDK_create(config);  // connects in the background
  if (sdk == NULL) return 1;
  const int status = run(sdk, argc > 2 ? argv[2] : NULL);
  ZephlinkSDK_destroy(sdk);
  return status;
}
