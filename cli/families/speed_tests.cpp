// Speed tests and why the last session ended.
#include "cli/families/handlers.h"
#include "cli/words.h"
#include "sdk/words.h"

namespace cli {

namespace {

/// A run that failed has no measurements but its latency, and only a stream test has all of them.
Json::Value runToJson(const ZephlinkSDK_SpeedTestRun& run) {
  Json::Value value(Json::objectValue);
  value["time"] = run.time;
  value["country"] = run.country;
  value["city"] = run.city;
  value["numConnections"] = run.numConnections;
  value["latency"] = run.latency;
  value["type"] = speedTestTypeText(run.type);
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
  value["disconnectReason"] = zephlinksdk::disconnectReasonText(record.disconnectReason);
  writeJson(stdout, value);
}

}  // namespace

int speedTest(Words) { return finish(call(ZephlinkSDK_startSpeedTest), printRuns); }

int streamTest(Words) { return finish(call(ZephlinkSDK_startStreamTest), printRuns); }

int showSpeedTest(Words) { return finish(call(ZephlinkSDK_getSpeedTestResults), printRuns); }

int showDisconnect(Words) { return finish(call(ZephlinkSDK_getLastDisconnectEvent), printDisconnect); }

}  // namespace cli
