// The daemon's state and version.
#include "cli/families/state.h"

#include "cli/families/handlers.h"
#include "cli/usage.h"
#include "cli/words.h"

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

}  // namespace

void printState(const ZephlinkSDK_StateResult& record) {
  Json::Value value(Json::objectValue);
  value["state"] = stateText(record.state);
  writeJson(stdout, value);
}

int state(Words words) {
  if (!words.empty()) return invalid(usage::state);
  return finish(call(ZephlinkSDK_getState), printState);
}

int version(Words words) {
  if (!words.empty()) return invalid(usage::version);
  return finish(call(ZephlinkSDK_getVersion), printVersion);
}

}  // namespace cli
