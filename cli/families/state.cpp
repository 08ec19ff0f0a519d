// The daemon's state and version.
#include "cli/families/state.h"

#include "cli/families/families.h"
#include "cli/handlers.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

void printVersion(const ZephlinkSDK_VersionResult& record) {
  Json::Value value(Json::objectValue);
  value["maj"] = record.maj;
  value["min"] = record.min;
  value["bug"] = record.bug;
  value["build"] = record.build;
  writeJson(stdout, value);
}

constexpr Action kRows[] = {
    {"state", "state", exactly<0, perform<ZephlinkSDK_getState, printState>>},
    {"version", "version", exactly<0, perform<ZephlinkSDK_getVersion, printVersion>>},
};

}  // namespace

constinit const families::Family families::state{kRows};

void printState(const ZephlinkSDK_StateResult& record) {
  Json::Value value(Json::objectValue);
  value["state"] = ZephlinkSDK_stateText(record.state);
  writeJson(stdout, value);
}

}  // namespace cli
