// Settings of the whole tunnel.
#include <algorithm>

#include "sdk/families/port_rules.h"
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

constexpr const char* kReport = "report_connection_settings";
constexpr const char* kSetEncryption = "set_encryption_enabled";

void readSubnet(const Json::Value& entry, ZephlinkSDK_Subnet& subnet) {
  readMember(entry, "address", subnet.address);
  readMember(entry, "prefix_length", subnet.prefixLength);
}

/// Reads an object whose keys are adapter IDs, in their order. Drops entries that do not fit.
template <class Entry, std::size_t N, class Read>
void readPerConnection(const Json::Value& object, Entry (&entries)[N], std::uint16_t& count, Read read) {
  count = 0;
  if (!object.isObject()) return;
  for (auto member = object.begin(); member != object.end() && count < N; ++member) {
    Entry& entry = entries[count++];
    copyText(entry.adapterID, member.name());
    read(*member, entry);
  }
}

void readLists(const Json::Value& data, ZephlinkSDK_SettingsResult& record) {
  if (has(data, "forward_ports")) {
    readEntries(member(data, "forward_ports"), record.forwardedPorts, record.forwardedPortCount, readPortRule);
  }
  if (has(data, "downstream_subnets")) {
    readEntries(member(data, "downstream_subnets"), record.downstreamSubnets, record.downstreamSubnetCount, readSubnet);
  }
}

void readAllPerConnection(const Json::Value& data, ZephlinkSDK_SettingsResult& record) {
  readMember(data, "perconn_encryption", record.perConnectionEncryptionEnabled);
  if (!record.perConnectionEncryptionEnabled) {
    record.perConnectionEncryptionCount = 0;
  } else if (has(data, "perconn_encryption_settings")) {
    readPerConnection(
        member(data, "perconn_encryption_settings"), record.perConnectionEncryptionSettings,
        record.perConnectionEncryptionCount,
        [](const Json::Value& value, ZephlinkSDK_PerConnectionEncryption& entry) { entry.encrypted = asBool(value); });
  }
  if (has(data, "perconn_dscp_expose")) {
    readPerConnection(
        member(data, "perconn_dscp_expose"), record.perConnectionDscpExpose, record.perConnectionDscpExposeCount,
        [](const Json::Value& value, ZephlinkSDK_PerConnectionDscpExpose& entry) { entry.exposed = asBool(value); });
  }
  if (has(data, "parallel_sockets")) {
    readPerConnection(member(data, "parallel_sockets"), record.perConnectionParallelSockets,
                      record.perConnectionParallelSocketCount,
                      [](const Json::Value& value, ZephlinkSDK_PerConnectionParallelSockets& entry) {
                        entry.sockets = static_cast<std::uint16_t>(asUInt(value));
                      });
  }
}

void readSettings(const Json::Value& data, ZephlinkSDK_SettingsResult& record) {
  readMember(data, "jumbo_packets", record.jumboPackets);
  readMember(data, "encrypted", record.encrypted);
  readMember(data, "allow_chacha_encryption", record.allowChaChaEncryption);
  const auto mode = kBondingModeWire.find(asString(member(data, "algorithm")));
  record.bondingMode = mode.value_or(ZephlinkSDK_BondingMode_Speed);
  readMember(data, "startup_connect", record.startupConnect);
  const auto transport = kTransportModeWords.find(asString(member(data, "transport_mode")));
  record.transportMode = transport && isTransportSetting(*transport) ? *transport : ZephlinkSDK_TransportMode_Auto;
  readLists(data, record);
  readAllPerConnection(data, record);
  readMember(data, "connection_secondary_speed_activation", record.overflowThreshold);
  // "treshold" is the daemon's spelling.
  readMember(data, "connection_priority_overflow_treshold", record.priorityOverflowThreshold);
  readMember(data, "packet_aggregation", record.packetAggregation);
  readMember(data, "enable_default_route", record.enableDefaultRoute);
  readMember(data, "header_compress", record.headerCompression);
  readMember(data, "language", record.language);
  readMember(data, "enable_automatic_priority", record.enableAutomaticPriority);
  readMember(data, "ulp_report_interval_seconds", record.ulpReportIntervalSeconds);
  readMember(data, "max_redundant", record.maxRedundant);
  readMember(data, "maximum_connect_retry", record.maximumConnectRetry);
  readMember(data, "maximum_transport_retry", record.maximumTransportRetry);
  readMember(data, "packet_pool_size", record.packetPoolSize);
  const Json::Value& targets = member(data, "num_target_connections");
  readMember(targets, "upload", record.targetUploadConnections);
  readMember(targets, "download", record.targetDownloadConnections);
}

using SettingsCallback = ZephlinkSDK::SettingsCallback;

ZephlinkSDK_SettingsResult change(const Channel& channel, const char* request, Members members,
                                  SettingsCallback callback, void* userData) {
  return changeSetting(channel, request, members, kReport, readSettings, callback, userData);
}

ZephlinkSDK_SettingsResult invalidArgument() {
  return refused<ZephlinkSDK_SettingsResult>(ZephlinkSDK_Error_InvalidArgument);
}

}  // namespace

ZephlinkSDK_SettingsResult ZephlinkSDK::getSettings(SettingsCallback callback, void* userData) {
  return subscribe(channel, "request_connection_settings", kReport, readSettings, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setTunnelEncrypted(bool enable, SettingsCallback callback, void* userData) {
  return change(channel, kSetEncryption, {{"enable", enable}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setConnectionEncryption(const char* adapterID, bool enable,
                                                                SettingsCallback callback, void* userData) {
  return change(channel, kSetEncryption, {{"guid", adapterID}, {"enable", enable}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setJumboPackets(bool enable, SettingsCallback callback, void* userData) {
  return change(channel, "set_dev_jumbo_packets", {{"enable", enable}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setPacketAggregation(bool enable, SettingsCallback callback, void* userData) {
  return change(channel, "set_packet_aggregation", {{"enable", enable}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setHeaderCompression(bool enable, SettingsCallback callback, void* userData) {
  return change(channel, "set_header_compression", {{"enable", enable}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setStartupConnect(bool enable, SettingsCallback callback, void* userData) {
  return change(channel, "set_startup_connect", {{"connect", enable}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setEnableDefaultRoute(bool enable, SettingsCallback callback, void* userData) {
  return change(channel, "set_connection_enable_default_route", {{"enabled", enable}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setMode(ZephlinkSDK_BondingMode mode, SettingsCallback callback,
                                                void* userData) {
  if (mode > ZephlinkSDK_BondingMode_Streaming) return invalidArgument();
  return change(channel, "set_connection_algorithm", {{"algorithm", kBondingModeWire.text(mode)}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setConnectionTransportMode(ZephlinkSDK_TransportMode mode,
                                                                   SettingsCallback callback, void* userData) {
  if (!isTransportSetting(mode)) return invalidArgument();
  return change(channel, "set_connection_transport", {{"transport_mode", kTransportModeWords.text(mode)}}, callback,
                userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setMaxRedundantSends(std::uint32_t connections, SettingsCallback callback,
                                                             void* userData) {
  return change(channel, "set_max_redundant_sends", {{"max_redundant", connections}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setOverflowThreshold(double mbps, SettingsCallback callback, void* userData) {
  return change(channel, "set_overflow_threshold", {{"speed", mbps}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setPriorityOverflowThreshold(double mbps, SettingsCallback callback,
                                                                     void* userData) {
  return change(channel, "set_priority_overflow_threshold", {{"speed", mbps}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setTargetNumberOfConnections(int upload, int download,
                                                                     SettingsCallback callback, void* userData) {
  return change(channel, "set_target_num_connections", {{"upload", upload}, {"download", download}}, callback,
                userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setMaximumConnectRetry(std::uint32_t seconds, SettingsCallback callback,
                                                               void* userData) {
  return change(channel, "set_maximum_connect_retry", {{"value", seconds}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setMaximumTransportRetry(std::uint32_t seconds, SettingsCallback callback,
                                                                 void* userData) {
  return change(channel, "set_maximum_transport_retry", {{"value", seconds}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setForwardPorts(std::uint16_t count, const ZephlinkSDK_ProtocolPortPair* rules,
                                                        SettingsCallback callback, void* userData) {
  if (count > 0 && rules == nullptr) return invalidArgument();
  Json::Value list(Json::arrayValue);
  const std::size_t walked = std::min<std::size_t>(count, ZephlinkSDK_MaxForwardedPorts);
  for (std::size_t i = 0; i < walked; ++i) {
    // Forwarded ports cannot be ranges.
    if (rules[i].port != 0 && rules[i].portRangeEnd == 0) list.append(portRuleObject(rules[i]));
  }
  return change(channel, "set_connection_forward_ports", {{"forward_ports", list}}, callback, userData);
}

ZephlinkSDK_SettingsResult ZephlinkSDK::setDownstreamSubnets(std::uint16_t count, const ZephlinkSDK_Subnet* subnets,
                                                             SettingsCallback callback, void* userData) {
  if (count > 0 && subnets == nullptr) return invalidArgument();
  Json::Value list(Json::arrayValue);
  const std::size_t walked = std::min<std::size_t>(count, ZephlinkSDK_MaxDownstreamSubnets);
  for (std::size_t i = 0; i < walked; ++i) {
    list.append(
        toObject({{"address", textOf(subnets[i].address)}, {"prefix_length", Json::UInt{subnets[i].prefixLength}}}));
  }
  return change(channel, "set_downstream_subnets", {{"downstream_subnets", list}}, callback, userData);
}

}  // namespace zephlinksdk
