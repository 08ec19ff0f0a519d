#include "sdk/facade.h"

#include <new>

#include "sdk/text.h"

using zephlinksdk::ZephlinkSDK;

void ZephlinkSDK_defaultConfig(ZephlinkSDK_Config* config) {
  if (config == nullptr) return;
  *config = {};
  zephlinksdk::copyText(config->address, "127.0.0.1");
  config->port = 9330;
}

ZephlinkSDK* ZephlinkSDK_create(ZephlinkSDK_Config config) {
  try {
    return new ZephlinkSDK(config);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void ZephlinkSDK_destroy(ZephlinkSDK* sdk) { delete sdk; }

void ZephlinkSDK_removeListener(ZephlinkSDK* sdk, uint64_t handle) {
  if (sdk != nullptr) sdk->removeListener(handle);
}
