// Live statistics.
#include <algorithm>

#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

/// Without the member, the protocol is Auto. Unknown texts, including "auto", do not change the field.
void readProtocol(const Json::Value& connection, ZephlinkSDK_TransportMode& protocol) {
  if (!has(connection, "protocol")) {
    protocol = ZephlinkSDK_TransportMode_Auto;
    return;
  }
  std::string held;
  const auto known = kTransportModeWords.find(asText(member(connection, "protocol"), held));
  if (known && *known != ZephlinkSDK_TransportMode_Auto) protocol = *known;
}

void readConnection(const Json::Value& connection, ZephlinkSDK_ConnectionStatsEntry& entry) {
  readMember(connection, "bInF", entry.inFlight);
  readMember(connection, "bInFL", entry.inFlightWindow);
  readMember(connection, "cnnct", entry.connected);
  entry.sleeping = asInt64(member(connection, "zzz")) != 0;
  readMember(connection, "guid", entry.adapterID);
  readMember(connection, "key", entry.connectionID);
  readMember(connection, "localIp", entry.localIp);
  readMember(connection, "lsR", entry.lossReceive);
  readMember(connection, "lsS", entry.lossSend);
  readMember(connection, "ltMs", entry.latencyMs);
  readMember(connection, "privateIp", entry.privateIp);
  readProtocol(connection, entry.protocol);
  // Negative numbers wrap.
  entry.numberOfSockets = static_cast<std::uint32_t>(asInt(member(connection, "numConns")));
  readMember(connection, "remoteIp", entry.remoteIp);
  readMember(connection, "totBps", entry.totalBps);
  readMember(connection, "sndBps", entry.sendBps);
  readMember(connection, "rcvBps", entry.receiveBps);
  readMember(connection, "sndEstMbps", entry.sendEstimateMbps);
  readMember(connection, "rcvEstMbps", entry.receiveEstimateMbps);
  entry.jitterMs = has(connection, "jtMs") ? asInt(member(connection, "jtMs")) : -1;
  entry.mos = static_cast<float>(asDouble(member(connection, "mos")));
  readMember(connection, "sndBytes", entry.sendBytes);
  readMember(connection, "rcvBytes", entry.receiveBytes);
  readMember(connection, "congested", entry.congested);
}

void readConnectionStats(const Json::Value& data, ZephlinkSDK_ConnectionStatsResult& record) {
  record.time = 0;
  record.connectionCount = 0;
  if (!has(data, "connections") || !has(data, "time")) return;
  readMember(data, "time", record.time);
  readEntries(member(data, "connections"), record.connections, record.connectionCount, readConnection);
}

void readStream(const Json::Value& stream, ZephlinkSDK_StreamStatsEntry& entry) {
  readMember(stream, "active", entry.active);
  readMember(stream, "duration", entry.duration);
  readMember(stream, "id", entry.id);
  readMember(stream, "group_id", entry.groupId);
  readMember(stream, "start_time", entry.startTime);
  readMember(stream, "upload_speed", entry.uploadSpeed);
  readMember(stream, "download_speed", entry.downloadSpeed);
  readMember(stream, "average_upload_speed", entry.averageUploadSpeed);
  readMember(stream, "average_download_speed", entry.averageDownloadSpeed);
  readMember(stream, "redundant_saves", entry.redundantModeSaves);
  readMember(stream, "speed_saves", entry.speedModeSaves);
  readMember(stream, "failover_saves", entry.failoverSaves);
  readMember(stream, "name", entry.name);
  entry.health = valueOfNumber(asInt64(member(stream, "health")), ZephlinkSDK_StreamHealth_Good);
  readMember(stream, "remoteIp", entry.remoteIp);
  entry.remotePort = static_cast<std::uint16_t>(asUInt(member(stream, "remote_port")));
  readMember(stream, "protocol", entry.protocol);
  readMember(stream, "hostname", entry.domain);
}

void readStreamingStats(const Json::Value& data, ZephlinkSDK_StreamingStatsResult& record) {
  record.bondingMode =
      kBondingModeWire.find(asString(member(data, "bonding_mode"))).value_or(ZephlinkSDK_BondingMode_Speed);
  readMember(data, "badLoss", record.badLoss);
  readMember(data, "badLatency", record.badLatency);
  readMember(data, "badCpu", record.badCpu);
  readMember(data, "badMemory", record.badMemory);
  readEntries(member(data, "streams"), record.streams, record.streamCount, readStream);
}

}  // namespace

ZephlinkSDK_ConnectionStatsResult ZephlinkSDK::getConnectionStats(Callback<ZephlinkSDK_ConnectionStatsResult> callback,
                                                                  void* userData) {
  return subscribe(channel, "request_connection_stats", "report_connection_stats", readConnectionStats, callback,
                   userData);
}

ZephlinkSDK_StreamingStatsResult ZephlinkSDK::getStreamingStats(Callback<ZephlinkSDK_StreamingStatsResult> callback,
                                                                void* userData) {
  return subscribe(channel, "request_streaming_stats", "report_streaming_stats", readStreamingStats, callback,
                   userData);
}

ZephlinkSDK_Result ZephlinkSDK::subscribeStats(bool enable, std::uint8_t periodCount, const std::uint32_t* periods) {
  if (!channel) return refused<ZephlinkSDK_Result>(ZephlinkSDK_Error_Sdk);
  if (periodCount > 0 && periods == nullptr) return refused<ZephlinkSDK_Result>(ZephlinkSDK_Error_InvalidArgument);
  const std::lock_guard lock(mutex);
  statsEnabled = enable;
  Json::Value members = toObject({{"enable", enable}});
  if (enable && periodCount > 0) {
    const std::size_t count = std::min<std::size_t>(periodCount, ZephlinkSDK_MaxSessionPeriods);
    for (std::size_t i = 0; i < count; ++i) members["periods"].append(periods[i]);
  }
  channel->send("stat_subscribe", members);
  return !enable || startKeepAlive() ? ZephlinkSDK_Result{} : refused<ZephlinkSDK_Result>(ZephlinkSDK_Error_Sdk);
}

}  // namespace zephlinksdk
