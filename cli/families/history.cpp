// Historic and session statistics.
#include "cli/families/history.h"

#include <string>

#include "cli/families/statistics.h"
#include "cli/stream.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

/// Returns the name of a period, or its number of hours.
std::string periodKey(std::uint32_t hours) {
  const char* name = ZephlinkSDK_periodText(hours);
  return *name != '\0' ? name : std::to_string(hours);
}

Json::Value tunToJson(const ZephlinkSDK_SessionStatsPeriod& period) {
  Json::Value value(Json::objectValue);
  value["packetsIn"] = Json::UInt64{period.tunPacketsIn};
  value["packetsOut"] = Json::UInt64{period.tunPacketsOut};
  value["bytesIn"] = Json::UInt64{period.tunBytesIn};
  value["bytesOut"] = Json::UInt64{period.tunBytesOut};
  value["bufferWaits"] = Json::UInt64{period.tunBufferWaits};
  value["packetWaits"] = Json::UInt64{period.tunPacketWaits};
  value["readQueue"] = Json::UInt64{period.tunReadQueue};
  value["droppedIncoming"] = Json::UInt64{period.tunDroppedIncoming};
  return value;
}

Json::Value packetHandlerToJson(const ZephlinkSDK_SessionStatsPeriod& period) {
  Json::Value value(Json::objectValue);
  value["packetsIn"] = Json::UInt64{period.handlerPacketsIn};
  value["packetsOut"] = Json::UInt64{period.handlerPacketsOut};
  value["bytesIn"] = Json::UInt64{period.handlerBytesIn};
  value["bytesOut"] = Json::UInt64{period.handlerBytesOut};
  value["retries"] = Json::UInt64{period.handlerRetries};
  return value;
}

Json::Value captivePortalToJson(const ZephlinkSDK_SessionStatsPeriod& period) {
  Json::Value value(Json::objectValue);
  value["detections"] = Json::UInt64{period.captivePortalDetections};
  value["successes"] = Json::UInt64{period.captivePortalSuccesses};
  return value;
}

Json::Value streamingToJson(const ZephlinkSDK_SessionStatsPeriod& period) {
  Json::Value value(Json::objectValue);
  value["totalFailoverSaves"] = Json::UInt64{period.totalFailoverSaves};
  value["totalSpeedModeSaves"] = Json::UInt64{period.totalSpeedModeSaves};
  value["totalRedundantModeSaves"] = Json::UInt64{period.totalRedundantModeSaves};
  value["totalStreams"] = Json::UInt64{period.totalStreams};
  value["uniqueSaves"] = Json::UInt64{period.uniqueSaves};
  return value;
}

Json::Value toJson(const ZephlinkSDK_SessionStatsPeriod& period) {
  Json::Value value(Json::objectValue);
  value["periodStartTime"] = Json::Int64{period.periodStartTime};
  value["bytesReceived"] = Json::Int64{period.bytesReceived};
  value["bytesSent"] = Json::Int64{period.bytesSent};
  value["encryptedBytesReceived"] = Json::Int64{period.encryptedBytesReceived};
  value["encryptedBytesSent"] = Json::Int64{period.encryptedBytesSent};
  value["maxDownloadSpeed"] = period.maxDownloadSpeed;
  value["maxUploadSpeed"] = period.maxUploadSpeed;
  value["daysSinceFirst"] = period.daysSinceFirst;
  value["numFailovers"] = Json::Int64{period.numFailovers};
  value["numSessions"] = Json::Int64{period.numSessions};
  value["retransBytes"] = Json::Int64{period.retransBytes};
  value["totalConnectedMinutes"] = Json::Int64{period.totalConnectedMinutes};
  value["mbpsDownBenefit"] = period.mbpsDownBenefit;
  value["mbpsUpBenefit"] = period.mbpsUpBenefit;
  value["tun"] = tunToJson(period);
  value["packetHandler"] = packetHandlerToJson(period);
  value["captivePortal"] = captivePortalToJson(period);
  value["streaming"] = streamingToJson(period);
  return value;
}

}  // namespace

void printSessionStats(const ZephlinkSDK_SessionStatsResult& record) {
  Json::Value value(Json::objectValue);
  for (std::size_t i = 0; i < record.periodCount; ++i) {
    value[periodKey(record.periods[i].period)] = toJson(record.periods[i]);
  }
  writeJson(stdout, value);
}

int printHistory(Arguments, const char*) {
  Stream samples;
  samples.open<kConnectionStatsLabel, printConnectionStats, ZephlinkSDK_getHistoricConnectionStats>();
  samples.clock.waitForStart();
  // All samples are delivered by one event: ending the subscription waits until the last one is printed.
  samples.close();
  return kSuccess;
}

}  // namespace cli
