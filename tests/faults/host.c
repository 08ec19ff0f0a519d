// A host of the library for the sweep of failed allocations: makes a synchronous call and a subscription with a
// callback, then destroys the object. Prints the results. Prints an error to stderr and exits with status 1.
#include <semaphore.h>
#include <stdio.h>
#include <stdlib.h>

#include "zephlinksdk/zephlinksdk.h"

// The result of the callback.
struct Outcome {
  sem_t arrived;
  bool hasError;
  uint32_t errorCode;
  uint64_t time;
  int connections;
};

static bool onStats(ZephlinkSDK_ConnectionStatsResult record, void* userData) {
  struct Outcome* outcome = userData;
  outcome->hasError = record.hasError;
  outcome->errorCode = record.errorCode;
  outcome->time = record.time;
  outcome->connections = record.connectionCount;
  sem_post(&outcome->arrived);
  return false;
}

static int failed(ZephlinkSDK* sdk, const char* what, uint32_t code) {
  fprintf(stderr, "{\"errorCode\":%u,\"errorType\":\"\",\"errorMessage\":\"%s\"}", (unsigned)code, what);
  ZephlinkSDK_destroy(sdk);
  return EXIT_FAILURE;
}

int main(int argc, char** argv) {
  if (argc != 3) return EXIT_FAILURE;
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  config.port = (uint16_t)strtoul(argv[2], NULL, 10);  // -p PORT, as for the program
  ZephlinkSDK* sdk = ZephlinkSDK_create(config);
  if (sdk == NULL) return failed(sdk, "no object", ZephlinkSDK_Error_Sdk);

  const ZephlinkSDK_StateResult state = ZephlinkSDK_getState(sdk, NULL, NULL);
  if (state.hasError) return failed(sdk, "no state", state.errorCode);

  struct Outcome outcome = {.hasError = false};
  sem_init(&outcome.arrived, 0, 0);
  const ZephlinkSDK_ConnectionStatsResult begun = ZephlinkSDK_getConnectionStats(sdk, onStats, &outcome);
  if (begun.hasError) return failed(sdk, "no subscription", begun.errorCode);
  sem_wait(&outcome.arrived);  // if the callback never runs, the sweep reports a hang
  if (outcome.hasError) return failed(sdk, "no statistics", outcome.errorCode);
  ZephlinkSDK_destroy(sdk);
  printf("state %d, time %llu, connections %d\n", (int)state.state, (unsigned long long)outcome.time,
         outcome.connections);
  return EXIT_SUCCESS;
}
