// Historic statistics (the last minutes) and session statistics (periods of hours).
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <string>

#include "platform/clock.h"
#include "sdk/errors.h"
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

constexpr std::uint64_t kHistoryMs = 300000;

/// The reason why a text of the daemon could not be read; null on success.
using Failure = const char*;

/// Stores a failed conversion in the head.
void fail(Failure failure, ZephlinkSDK_Result& head) { setError(head, ZephlinkSDK_Error_Sdk, failure); }

/// Returns the members of an object; empty for any other value.
Elements membersOf(const Json::Value& value) {
  return Elements(value.isObject() ? value : Json::Value::nullSingleton());
}

// ---- Historic samples ----

/// The packed text of one connection: consecutive fields of fixed width. The first failure is kept, and later fields
/// read as 0.
class PackedText {
 public:
  explicit PackedText(std::string packed) : text(std::move(packed)) {}

  bool flag() { return next(1) == "1"; }

  /// Reads a hexadecimal number up to the first invalid character, after optional blanks and a sign.
  std::int64_t number(std::size_t width) {
    const std::string digits = next(width);
    if (failed != nullptr) return 0;
    char* end = nullptr;
    errno = 0;
    const long long value = std::strtoll(digits.c_str(), &end, 16);
    if (end == digits.c_str()) failed = "invalid stoll argument";
    if (errno == ERANGE) failed = "stoll argument out of range";
    return failed == nullptr ? value : 0;
  }

  double hundredths(std::size_t width) { return static_cast<double>(number(width)) / 100.0; }

  Failure failure() const { return failed; }

 private:
  /// Returns the next field; shorter than `width` at the end of the text.
  std::string next(std::size_t width) {
    if (failed == nullptr && position > text.size()) failed = "invalid string position";
    if (failed != nullptr) return {};
    std::string field = text.substr(position, width);
    position += width;
    return field;
  }

  std::string text;
  std::size_t position = 0;
  Failure failed = nullptr;
};

/// Clears the fields that a sample does not contain, except for those that no sample ever sets.
Failure readConnection(const std::string& adapter, const std::string& protocol, const Json::Value& packed,
                       ZephlinkSDK_ConnectionStatsEntry& entry) {
  copyText(entry.adapterID, adapter);
  const auto known = kTransportModeWords.find(protocol);
  if (known && *known != ZephlinkSDK_TransportMode_Auto) entry.protocol = *known;
  copyText(entry.connectionID, "");
  copyText(entry.localIp, "");
  copyText(entry.privateIp, "");
  copyText(entry.remoteIp, "");
  entry.sendBps = 0;
  entry.receiveBps = 0;
  entry.sendEstimateMbps = 0;
  entry.receiveEstimateMbps = 0;
  entry.mos = 0;
  entry.jitterMs = -1;

  PackedText text(asString(packed));
  entry.connected = text.flag();
  entry.sleeping = text.flag();
  entry.totalBps = text.number(16);
  entry.inFlight = text.number(8);
  entry.inFlightWindow = text.number(8);
  entry.latencyMs = text.number(4);
  entry.lossReceive = text.hundredths(2);
  entry.lossSend = text.hundredths(2);
  return text.failure();
}

Failure readSample(const Json::Value& sample, ZephlinkSDK_ConnectionStatsResult& record) {
  record.time = 0;
  record.connectionCount = 0;
  if (!has(sample, "connections") || !has(sample, "time")) return nullptr;
  record.time = static_cast<std::uint64_t>(asInt64(member(sample, "time")));
  const Elements adapters = membersOf(member(sample, "connections"));
  for (auto adapter = adapters.begin(); adapter != adapters.end(); ++adapter) {
    const Elements protocols = membersOf(*adapter);
    for (auto protocol = protocols.begin(); protocol != protocols.end(); ++protocol) {
      if (record.connectionCount == ZephlinkSDK_MaxConnections) return nullptr;
      ZephlinkSDK_ConnectionStatsEntry& entry = record.connections[record.connectionCount++];
      if (const Failure failure = readConnection(adapter.name(), protocol.name(), *protocol, entry)) return failure;
    }
  }
  return nullptr;
}

// ---- Session statistics ----

/// Reads the number of hours in a name up to the first invalid character, after optional blanks and a sign. Negative
/// numbers wrap.
Failure readPeriodName(const std::string& name, std::uint32_t& period) {
  constexpr long long kMost = std::numeric_limits<std::uint32_t>::max();
  char* end = nullptr;
  errno = 0;
  const long long hours = std::strtoll(name.c_str(), &end, 10);
  if (end == name.c_str()) return "invalid stoul argument";
  if (errno == ERANGE || hours > kMost || hours < -kMost) return "stoul argument out of range";
  period = static_cast<std::uint32_t>(hours);
  return nullptr;
}

/// Returns the gain of all connections together over the fastest alone.
double readBenefit(const Json::Value& benefit) {
  if (asInt(member(benefit, "num_connections")) == 0) return 0;
  return asDouble(member(benefit, "combined_mbps")) - asDouble(member(benefit, "fastest_conn_mbps"));
}

/// Reads a counter that the daemon sends as a signed number: negative numbers wrap.
void readCounter(const Json::Value& object, const char* key, std::uint64_t& field) {
  field = static_cast<std::uint64_t>(asInt64(member(object, key)));
}

void readPeriod(const Json::Value& data, ZephlinkSDK_SessionStatsPeriod& period) {
  readMember(data, "bytes_recv", period.bytesReceived);
  readMember(data, "bytes_sent", period.bytesSent);
  readMember(data, "encrypted_bytes_recv", period.encryptedBytesReceived);
  readMember(data, "encrypted_bytes_sent", period.encryptedBytesSent);
  readMember(data, "max_download_mbps", period.maxDownloadSpeed);
  readMember(data, "max_upload_mbps", period.maxUploadSpeed);
  readMember(data, "days_since_first", period.daysSinceFirst);
  readMember(data, "num_failovers", period.numFailovers);
  readMember(data, "num_sessions", period.numSessions);
  readMember(data, "retrans_bytes", period.retransBytes);
  readMember(data, "session_start_time", period.periodStartTime);
  readMember(data, "total_connected_minutes", period.totalConnectedMinutes);
  period.mbpsDownBenefit = readBenefit(member(data, "down_benefit"));
  period.mbpsUpBenefit = readBenefit(member(data, "up_benefit"));

  const Json::Value& tun = member(data, "tun");
  readCounter(tun, "packets_in", period.tunPacketsIn);
  readCounter(tun, "packets_out", period.tunPacketsOut);
  readCounter(tun, "bytes_in", period.tunBytesIn);
  readCounter(tun, "bytes_out", period.tunBytesOut);
  readCounter(tun, "buffer_waits", period.tunBufferWaits);
  readCounter(tun, "packet_waits", period.tunPacketWaits);
  readCounter(tun, "read_queue", period.tunReadQueue);
  readCounter(tun, "dropped_incoming", period.tunDroppedIncoming);

  const Json::Value& handler = member(data, "packet_handler");
  readCounter(handler, "packets_in", period.handlerPacketsIn);
  readCounter(handler, "packets_out", period.handlerPacketsOut);
  readCounter(handler, "bytes_in", period.handlerBytesIn);
  readCounter(handler, "bytes_out", period.handlerBytesOut);
  readCounter(handler, "retries", period.handlerRetries);

  const Json::Value& captivePortal = member(data, "cp_benefit");
  readCounter(captivePortal, "cp_detect", period.captivePortalDetections);
  readCounter(captivePortal, "cp_success", period.captivePortalSuccesses);

  const Json::Value& streaming = member(data, "streaming");
  readMember(streaming, "total_failover_saves", period.totalFailoverSaves);
  readMember(streaming, "total_speed_saves", period.totalSpeedModeSaves);
  readMember(streaming, "total_redundant_saves", period.totalRedundantModeSaves);
  readMember(streaming, "total_streams", period.totalStreams);
  readMember(streaming, "unique_saves", period.uniqueSaves);
}

void readSessionStats(const Json::Value& data, ZephlinkSDK_SessionStatsResult& record) {
  record.periodCount = 0;
  const Elements periods = membersOf(data);
  for (auto period = periods.begin(); period != periods.end(); ++period) {
    if (record.periodCount == ZephlinkSDK_MaxSessionPeriods) return;
    ZephlinkSDK_SessionStatsPeriod& entry = record.periods[record.periodCount];
    if (const Failure failure = readPeriodName(period.name(), entry.period)) return fail(failure, record.head);
    readPeriod(*period, entry);
    ++record.periodCount;
  }
}

}  // namespace

ZephlinkSDK_ConnectionStatsResult ZephlinkSDK::getHistoricConnectionStats(
    Callback<ZephlinkSDK_ConnectionStatsResult> callback, void* userData) {
  if (callback == nullptr) return refused<ZephlinkSDK_ConnectionStatsResult>(ZephlinkSDK_Error_CallbackRequired);
  // One report contains many samples. Each is delivered here; the frame delivers the last one (or a failure) again.
  const auto deliverSamples = [callback, userData](const Json::Value& data, ZephlinkSDK_ConnectionStatsResult& record) {
    for (const Json::Value& sample : Elements(data)) {
      if (const Failure failure = readSample(sample, record)) return fail(failure, record.head);
      callback(record, userData);
    }
  };
  // The clock of a recently started system can be below kHistoryMs.
  const std::uint64_t since = std::max(monotonicMs(), kHistoryMs) - kHistoryMs;
  return ask(channel,
             {.requests = {{"request_historic_connection_stats", {{"dataSince", Json::UInt64{since}}}}},
              .reports = {{"report_historic_connection_stats", deliverSamples}}},
             callback, userData);
}

ZephlinkSDK_SessionStatsResult ZephlinkSDK::getSessionStats(Callback<ZephlinkSDK_SessionStatsResult> callback,
                                                            void* userData) {
  return subscribe(channel, "request_session_stats", "report_session_stats", readSessionStats, callback, userData);
}

}  // namespace zephlinksdk
