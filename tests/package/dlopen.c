// A host that loads the library by its file name, as other languages do: looks up all given functions and calls some of
// them.
//
//   dlopen LIBRARY PORT FUNCTION...
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "zephlinksdk/zephlinksdk.h"

// Prints missing functions. Returns whether all were found.
static bool hasAll(void* library, char** names, int count) {
  int found = 0;
  for (int i = 0; i < count; ++i) {
    if (dlsym(library, names[i]) != NULL) {
      ++found;
    } else {
      fprintf(stderr, "%s\n", dlerror());
    }
  }
  printf("%d of %d functions\n", found, count);
  return count > 0 && found == count;
}

// C does not convert object pointers to function pointers, so the bytes are copied.
#define LOOK_UP(library, result, name, ...) \
  result (*name)(__VA_ARGS__) = NULL;       \
  do {                                      \
    void* address = dlsym(library, #name);  \
    memcpy(&name, &address, sizeof name);   \
  } while (0)

static int askForState(void* library, uint16_t port) {
  LOOK_UP(library, void, ZephlinkSDK_defaultConfig, ZephlinkSDK_Config*);
  LOOK_UP(library, ZephlinkSDK*, ZephlinkSDK_create, ZephlinkSDK_Config);
  LOOK_UP(library, ZephlinkSDK_StateResult, ZephlinkSDK_getState, ZephlinkSDK*, ZephlinkSDK_StateCallback, void*);
  LOOK_UP(library, const char*, ZephlinkSDK_stateText, uint32_t);
  LOOK_UP(library, void, ZephlinkSDK_destroy, ZephlinkSDK*);

  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  config.port = port;
  ZephlinkSDK* sdk = ZephlinkSDK_create(config);
  const ZephlinkSDK_StateResult state = ZephlinkSDK_getState(sdk, NULL, NULL);
  ZephlinkSDK_destroy(sdk);
  if (state.hasError) {
    fprintf(stderr, "%s\n", state.errorMessage);
    return 1;
  }
  printf("state %s\n", ZephlinkSDK_stateText(state.state));
  return 0;
}

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (library == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  return hasAll(library, argv + 3, argc - 3) ? askForState(library, (uint16_t)atoi(argv[2])) : 1;
}
