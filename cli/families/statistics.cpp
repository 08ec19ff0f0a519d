// The stream of live statistics.
#include "cli/families/statistics.h"

#include <optional>
#include <vector>

#include "cli/families/adapters.h"
#include "cli/families/families.h"
#include "cli/families/history.h"
#include "cli/families/peers.h"
#include "cli/families/state.h"
#include "cli/parsers.h"
#include "cli/stream.h"
#include "platform/console.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

constexpr char kStateLabel[] = "state";
constexpr char kAdaptersLabel[] = "adapters";
constexpr char kSessionStatsLabel[] = "session_stats";
constexpr char kStreamingStatsLabel[] = "streaming_stats";

Json::Value toJson(const ZephlinkSDK_ConnectionStatsEntry& entry, bool brief) {
  Json::Value value(Json::objectValue);
  value["inFlight"_key] = Json::Int64{entry.inFlight};
  value["inFlightWindow"_key] = Json::Int64{entry.inFlightWindow};
  value["connected"_key] = entry.connected;
  value["sleeping"_key] = entry.sleeping;
  value["adapterID"_key] = entry.adapterID;
  value["connectionID"_key] = entry.connectionID;
  value["lossReceive"_key] = entry.lossReceive;
  value["lossSend"_key] = entry.lossSend;
  value["latencyMs"_key] = Json::Int64{entry.latencyMs};
  value["totalBps"_key] = Json::Int64{entry.totalBps};
  if (brief) return value;
  value["localIp"_key] = entry.localIp;
  value["privateIp"_key] = entry.privateIp;
  value["protocol"_key] = ZephlinkSDK_transportModeText(entry.protocol);
  value["numberOfSockets"_key] = entry.numberOfSockets;
  value["remoteIp"_key] = entry.remoteIp;
  value["sendBps"_key] = Json::Int64{entry.sendBps};
  value["receiveBps"_key] = Json::Int64{entry.receiveBps};
  value["sendEstimateMbps"_key] = entry.sendEstimateMbps;
  value["receiveEstimateMbps"_key] = entry.receiveEstimateMbps;
  value["jitterMs"_key] = entry.jitterMs;
  value["mos"_key] = entry.mos;
  value["sendBytes"_key] = Json::UInt64{entry.sendBytes};
  value["receiveBytes"_key] = Json::UInt64{entry.receiveBytes};
  value["congested"_key] = entry.congested;
  return value;
}

Json::Value toJson(const ZephlinkSDK_StreamStatsEntry& entry) {
  Json::Value value(Json::objectValue);
  value["id"_key] = Json::UInt64{entry.id};
  value["groupId"_key] = Json::UInt64{entry.groupId};
  value["name"_key] = entry.name;
  value["protocol"_key] = entry.protocol;
  value["remoteIp"_key] = entry.remoteIp;
  value["remotePort"_key] = entry.remotePort;
  value["domain"_key] = entry.domain;
  value["active"_key] = entry.active;
  value["startTime"_key] = Json::UInt64{entry.startTime};
  value["duration"_key] = Json::UInt64{entry.duration};
  value["downloadSpeed"_key] = entry.downloadSpeed;
  value["uploadSpeed"_key] = entry.uploadSpeed;
  value["averageDownloadSpeed"_key] = entry.averageDownloadSpeed;
  value["averageUploadSpeed"_key] = entry.averageUploadSpeed;
  value["redundantModeSaves"_key] = Json::UInt64{entry.redundantModeSaves};
  value["failoverSaves"_key] = Json::UInt64{entry.failoverSaves};
  value["speedModeSaves"_key] = Json::UInt64{entry.speedModeSaves};
  value["health"_key] = ZephlinkSDK_streamHealthText(entry.health);
  return value;
}

void printStreamingStats(const ZephlinkSDK_StreamingStatsResult& record) {
  Json::Value value(Json::objectValue);
  value["bondingMode"_key] = ZephlinkSDK_bondingModeText(record.bondingMode);
  value["badLoss"_key] = record.badLoss;
  value["badLatency"_key] = record.badLatency;
  value["badCpu"_key] = record.badCpu;
  value["badMemory"_key] = record.badMemory;
  value["streams"_key] = toJsonArray(record.streams, record.streamCount,
                                     [](const ZephlinkSDK_StreamStatsEntry& entry) { return toJson(entry); });
  writeJson(stdout, value);
}

/// The arguments of the stream.
struct StreamChoice {
  std::int32_t duration = -1;
  std::vector<std::uint32_t> periods;
  bool peers = false;
};

bool takeArgument(const char* argument, StreamChoice& choice) {
  if (equal(argument, "networksharing")) {
    choice.peers = true;
    return true;
  }
  if (choice.periods.size() == ZephlinkSDK_MaxSessionPeriods) return false;
  std::uint32_t hours = 0;
  if (!ZephlinkSDK_periodFromText(argument, &hours) && !parseU32(argument, hours)) return false;
  choice.periods.push_back(hours);
  return true;
}

std::optional<StreamChoice> parseChoice(Arguments arguments) {
  StreamChoice choice;
  if (arguments.empty()) return choice;
  if (!parseI32(arguments[0], choice.duration) || choice.duration < -1) return std::nullopt;
  for (const char* argument : arguments.subspan(1)) {
    if (!takeArgument(argument, choice)) return std::nullopt;
  }
  return choice;
}

void printStream(const StreamChoice& choice) {
  zephlinksdk::endOnClosedPipe();
  Stream stream;
  stream.report(
      ZephlinkSDK_subscribeStats(g_sdk, true, static_cast<std::uint8_t>(choice.periods.size()), choice.periods.data()));
  stream.open<kStateLabel, printState, ZephlinkSDK_getState>();
  stream.open<kAdaptersLabel, printAdapters, ZephlinkSDK_getAdapters>();
  stream.open<kConnectionStatsLabel, printConnectionStats, ZephlinkSDK_getConnectionStats>();
  stream.open<kSessionStatsLabel, printSessionStats, ZephlinkSDK_getSessionStats>();
  stream.open<kStreamingStatsLabel, printStreamingStats, ZephlinkSDK_getStreamingStats>();
  if (choice.peers) listenForPeers(stream);
  stream.clock.waitFor(choice.duration);
  stream.report(ZephlinkSDK_subscribeStats(g_sdk, false, 0, nullptr));
}

int stream(Arguments arguments, const char* usage) {
  const auto choice = parseChoice(arguments);
  if (!choice) return invalid(usage);
  printStream(*choice);
  return kSuccess;
}

constexpr Action kStatsRows[] = {
    {"historic", nullptr, printHistory},
};

constexpr Action kRows[] = {
    {"stats",
     "stats [historic | [duration in seconds] [networksharing] [current|day|week|month|total|<period in hours>] ...]",
     stream, &rows<kStatsRows>},
};

}  // namespace

constinit const families::Family families::statistics{kRows};

Json::Value toJson(const ZephlinkSDK_ConnectionStatsResult& record, bool brief) {
  Json::Value value(Json::objectValue);
  value["time"_key] = Json::UInt64{record.time};
  value["connections"_key] =
      toJsonArray(record.connections, record.connectionCount,
                  [brief](const ZephlinkSDK_ConnectionStatsEntry& entry) { return toJson(entry, brief); });
  return value;
}

void printConnectionStats(const ZephlinkSDK_ConnectionStatsResult& record) { writeJson(stdout, toJson(record, false)); }

}  // namespace cli
