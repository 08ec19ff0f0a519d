// Speed tests, which the daemon runs and stores, and the reason of the last disconnect.
#include <algorithm>
#include <ctime>
#include <iomanip>
#include <sstream>
#include <string>

#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

using Record = ZephlinkSDK_SpeedTestResult;

constexpr const char* kReport = "report_speedtest_results";
constexpr std::uint64_t kSpeedTestTimeoutMs = 60000;
constexpr std::uint64_t kStreamTestTimeoutMs = 200000;

/// Reads the local time of a run. Returns 0 for invalid texts and for times before 1970.
std::int64_t readTime(const Json::Value& run) {
  std::tm time{};
  std::istringstream stream(asString(member(run, "time")));
  stream >> std::get_time(&time, "%Y-%m-%dT%H:%M:%S");
  if (stream.fail()) return 0;
  time.tm_isdst = -1;
  return std::max<std::int64_t>(std::mktime(&time), 0);
}

/// Reads a measurement, which is never negative.
std::uint16_t readMeasure(const Json::Value& data, const char* key) {
  return static_cast<std::uint16_t>(asUInt(member(data, key)));
}

void readRun(const Json::Value& data, ZephlinkSDK_SpeedTestRun& run) {
  run.time = readTime(data);
  readMember(data, "country", run.country);
  readMember(data, "city", run.city);
  readMember(data, "num_connections", run.numConnections);
  readMember(data, "download", run.downloadSpeed);
  readMember(data, "upload", run.uploadSpeed);
  run.latency = readMeasure(data, "latency");
  run.type = kSpeedTestTypeNumbers.find(asInt(member(data, "type"))).value_or(ZephlinkSDK_SpeedTestType_Speed);
  if (run.type == ZephlinkSDK_SpeedTestType_Streaming) {
    readMember(data, "resolution", run.resolution);
    run.fps = readMeasure(data, "fps");
    run.jitter = readMeasure(data, "jitter");
    readMember(data, "loss", run.loss);
  }
  readMember(data, "error", run.isError);
  readMember(data, "msg", run.errorMessage);
}

/// Reads the first runs of the report, in its order.
void readRuns(const Json::Value& data, Record& record) { readEntries(data, record.runs, record.runCount, readRun); }

/// Reads the run that has just ended: the newest, and the last of runs with equal times. Without a valid time there is
/// no run.
void readNewestRun(const Json::Value& data, Record& record) {
  std::int64_t latest = 0;
  for (const Json::Value& entry : Elements(data)) {
    const std::int64_t time = readTime(entry);
    if (latest != 0 && time < latest) continue;
    latest = time;
    readRun(entry, record.runs[0]);
  }
  record.runCount = latest != 0 ? 1 : 0;
}

Record start(const Channel& channel, const char* request, std::uint64_t timeoutMs, Callback<Record> callback,
             void* userData) {
  return ask(channel, {.requests = {request}, .reports = {{kReport, readNewestRun}}, .timeoutMs = timeoutMs}, callback,
             userData);
}

void readDisconnect(const Json::Value& data, ZephlinkSDK_DisconnectEventResult& record) {
  record.disconnectReason = kDisconnectReasonWords.find(asString(member(data, "disconnectReason")))
                                .value_or(ZephlinkSDK_DisconnectReason_Unknown);
  readMember(data, "sessionEnd", record.sessionEnd);
  readMember(data, "sessionLength", record.sessionLength);
}

}  // namespace

Record ZephlinkSDK::getSpeedTestResults(Callback<Record> callback, void* userData) {
  return subscribe(channel, "request_speedtest_results", kReport, readRuns, callback, userData);
}

Record ZephlinkSDK::startSpeedTest(Callback<Record> callback, void* userData) {
  return start(channel, "speedtest", kSpeedTestTimeoutMs, callback, userData);
}

Record ZephlinkSDK::startStreamTest(Callback<Record> callback, void* userData) {
  return start(channel, "streamtest", kStreamTestTimeoutMs, callback, userData);
}

ZephlinkSDK_DisconnectEventResult ZephlinkSDK::getLastDisconnectEvent(
    Callback<ZephlinkSDK_DisconnectEventResult> callback, void* userData) {
  return subscribe(channel, "request_disconnect_reason", "report_disconnect_reason", readDisconnect, callback,
                   userData);
}

}  // namespace zephlinksdk
