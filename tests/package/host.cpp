// Requests the state and version of the daemon on the given port, once synchronously and once with a callback.
#include <cstdio>
#include <cstdlib>
#include <future>

#include "zephlinksdk/zephlinksdk.h"

namespace {

bool onVersion(ZephlinkSDK_VersionResult version, void* userData) {
  static_cast<std::promise<ZephlinkSDK_VersionResult>*>(userData)->set_value(version);
  return false;
}

template <class Record>
bool failed(const Record& record) {
  if (record.hasError) std::fprintf(stderr, "%u: %s\n", record.errorCode, record.errorMessage);
  return record.hasError;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  config.port = static_cast<uint16_t>(std::atoi(argv[1]));
  zephlinksdk::ZephlinkSDK* sdk = ZephlinkSDK_create(config);

  const ZephlinkSDK_StateResult state = ZephlinkSDK_getState(sdk, nullptr, nullptr);
  std::promise<ZephlinkSDK_VersionResult> answer;
  ZephlinkSDK_getVersion(sdk, onVersion, &answer);
  const ZephlinkSDK_VersionResult version = answer.get_future().get();
  ZephlinkSDK_destroy(sdk);

  if (failed(state) || failed(version)) return 1;
  char country[50];
  ZephlinkSDK_countryName("de", country, sizeof country);
  std::printf("state %u, version %d.%d, %s\n", state.state, version.maj, version.min, country);
  return 0;
}
