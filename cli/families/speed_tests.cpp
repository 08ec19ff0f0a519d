// Speed tests and the reason of the last disconnect.
#include "cli/families/families.h"
#include "cli/handlers.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

/// A failed run has no measurement except its latency; only a stream test has all of them.
Json::Value runToJson(const ZephlinkSDK_SpeedTestRun& run) {
  Json::Value value(Json::objectValue);
  value["time"] = run.time;
  value["country"] = run.country;
  value["city"] = run.city;
  value["numConnections"] = run.numConnections;
  value["latency"] = run.latency;
  value["type"] = ZephlinkSDK_speedTestTypeText(run.type);
  value["isError"] = run.isError;
  if (run.isError) {
    value["errorMessage"] = run.errorMessage;
    return value;
  }
  value["downloadSpeed"] = run.downloadSpeed;
  value["uploadSpeed"] = run.uploadSpeed;
  if (run.type != ZephlinkSDK_SpeedTestType_Streaming) return value;
  value["resolution"] = run.resolution;
  value["fps"] = run.fps;
  value["jitter"] = run.jitter;
  value["loss"] = run.loss;
  return value;
}

void printRuns(const ZephlinkSDK_SpeedTestResult& record) {
  writeJson(stdout, toJsonArray(record.runs, record.runCount, runToJson));
}

void printDisconnect(const ZephlinkSDK_DisconnectEventResult& record) {
  Json::Value value(Json::objectValue);
  value["disconnectReason"] = ZephlinkSDK_disconnectReasonText(record.disconnectReason);
  writeJson(stdout, value);
}

constexpr Action kRows[] = {
    {"speedtest", "speedtest", perform<ZephlinkSDK_startSpeedTest, printRuns>},
    {"streamtest", "streamtest", perform<ZephlinkSDK_startStreamTest, printRuns>},
};

constexpr Action kShowRows[] = {
    {"disconnect", nullptr, exactly<0, perform<ZephlinkSDK_getLastDisconnectEvent, printDisconnect>>},
    {"speedtest", nullptr, exactly<0, perform<ZephlinkSDK_getSpeedTestResults, printRuns>>},
};

}  // namespace

constinit const families::Family families::speedTests{kRows, kShowRows};

}  // namespace cli
