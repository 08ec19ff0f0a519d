// Settings of the whole tunnel.
#include "cli/families/settings.h"

#include "cli/families/families.h"
#include "cli/families/port_rules.h"
#include "cli/handlers.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

Json::Value subnetToJson(const ZephlinkSDK_Subnet& subnet) {
  Json::Value value(Json::objectValue);
  value["address"] = subnet.address;
  value["prefixLength"] = subnet.prefixLength;
  return value;
}

Json::Value encryptionToJson(const ZephlinkSDK_PerConnectionEncryption& entry) {
  Json::Value value(Json::objectValue);
  value["adapterID"] = entry.adapterID;
  value["encrypted"] = entry.encrypted;
  return value;
}

Json::Value socketsToJson(const ZephlinkSDK_PerConnectionParallelSockets& entry) {
  Json::Value value(Json::objectValue);
  value["adapterID"] = entry.adapterID;
  value["sockets"] = entry.sockets;
  return value;
}

bool parseTransport(const char* argument, ZephlinkSDK_TransportMode& mode) {
  return ZephlinkSDK_transportModeFromText(argument, &mode) && ZephlinkSDK_isTransportSetting(mode);
}

/// Sets a value from exactly one argument.
template <auto& Parse, auto& Method>
constexpr Handler& changeOne = exactly<1, setValue<Parse, Method, printSettings>>;

/// A missing argument is reported as Invalid here.
template <auto& Method>
int changeRetry(Arguments arguments, const char* usage) {
  return arguments.empty() ? invalid(usage) : changeOne<parseU32, Method>(arguments, usage);
}

/// Too many arguments are reported as an unknown action here.
int changeMaxRedundant(Arguments arguments, const char* usage) {
  return arguments.size() > 1 ? unknownAction()
                              : changeOne<parseU32, ZephlinkSDK_setMaxRedundantSends>(arguments, usage);
}

int changeTargetConnections(Arguments arguments, const char* usage) {
  const auto upload = valueOf<parseI32>(arguments[0]);
  const auto download = valueOf<parseI32>(arguments[1]);
  if (!upload || !download) return invalid(usage);
  return finish(call<ZephlinkSDK_setTargetNumberOfConnections>(*upload, *download), printSettings);
}

int changePorts(Arguments arguments, const char* usage) {
  if (arguments.size() > ZephlinkSDK_MaxForwardedPorts) return tooMany(kTooManyPorts, ZephlinkSDK_MaxForwardedPorts);
  const auto count = static_cast<std::uint16_t>(arguments.size());
  ZephlinkSDK_ProtocolPortPair rules[ZephlinkSDK_MaxForwardedPorts];
  if (!parseProtocolPortList(count, arguments.data(), rules, false, false)) return invalid(usage);
  return finish(call<ZephlinkSDK_setForwardPorts>(count, rules), printSettings);
}

int changeSubnets(Arguments arguments, const char* usage) {
  if (arguments.size() > ZephlinkSDK_MaxDownstreamSubnets) {
    return tooMany("only %d subnets may be declared\n", ZephlinkSDK_MaxDownstreamSubnets);
  }
  const auto count = static_cast<std::uint16_t>(arguments.size());
  ZephlinkSDK_Subnet list[ZephlinkSDK_MaxDownstreamSubnets];
  if (!parseSubnetList(count, arguments.data(), list)) return invalid(usage);
  return finish(call<ZephlinkSDK_setDownstreamSubnets>(count, list), printSettings);
}

constexpr Action kRouteRows[] = {
    {"default", nullptr, atLeast<1, setValue<parseSwitch, ZephlinkSDK_setEnableDefaultRoute, printSettings>>},
};

constexpr Action kRows[] = {
    {"encryption", "encryption <on|off>", changeOne<parseSwitch, ZephlinkSDK_setTunnelEncrypted>},
    {"jumbo", "jumbo <on|off>", changeOne<parseSwitch, ZephlinkSDK_setJumboPackets>},
    {"packetaggr", "packetaggr <on|off>", changeOne<parseSwitch, ZephlinkSDK_setPacketAggregation>},
    {"headercompression", "headercompression <on|off>", changeOne<parseSwitch, ZephlinkSDK_setHeaderCompression>},
    {"startupconnect", "startupconnect <on|off>", changeOne<parseSwitch, ZephlinkSDK_setStartupConnect>},
    {"route", "route default <on|off>", nullptr, &rows<kRouteRows>},
    {"mode", "mode <redundant|speed|streaming>", changeOne<ZephlinkSDK_bondingModeFromText, ZephlinkSDK_setMode>},
    {"transport", "transport <auto|tcp|tcp-multi|udp|https>",
     changeOne<parseTransport, ZephlinkSDK_setConnectionTransportMode>},
    {"transportretry", "transportretry <time in seconds>", changeRetry<ZephlinkSDK_setMaximumTransportRetry>},
    {"connectretry", "connectretry <time in seconds>", changeRetry<ZephlinkSDK_setMaximumConnectRetry>},
    {"maxredundant", "maxredundant <number of conns>", changeMaxRedundant},
    {"targetconnections", "targetconnections <number upload connections> <number download connections>",
     exactly<2, changeTargetConnections>},
    {"overflow", "overflow <speed in mbps>", changeOne<parseMbps, ZephlinkSDK_setOverflowThreshold>},
    {"priorityoverflow", "priorityoverflow <speed in mbps>",
     changeOne<parseMbps, ZephlinkSDK_setPriorityOverflowThreshold>},
    {"ports", "ports [port/proto] ...", changePorts},
    {"subnets", "subnets [subnet/length] ...", changeSubnets},
};

constexpr Action kShowRows[] = {
    {"settings", nullptr, exactly<0, perform<ZephlinkSDK_getSettings, printSettings>>},
};

}  // namespace

constinit const families::Family families::settings{kRows, kShowRows};

void printSettings(const ZephlinkSDK_SettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["jumboPackets"] = record.jumboPackets;
  value["encrypted"] = record.encrypted;
  value["allowChaChaEncryption"] = record.allowChaChaEncryption;
  value["bondingMode"] = ZephlinkSDK_bondingModeText(record.bondingMode);
  value["startupConnect"] = record.startupConnect;
  value["transportMode"] = ZephlinkSDK_transportModeText(record.transportMode);
  value["packetAggregation"] = record.packetAggregation;
  value["headerCompression"] = record.headerCompression;
  value["enableAutomaticPriority"] = record.enableAutomaticPriority;
  value["forwardedPorts"] = toJsonArray(record.forwardedPorts, record.forwardedPortCount, portRuleToJson);
  value["perConnectionEncryptionEnabled"] = record.perConnectionEncryptionEnabled;
  value["perConnectionEncryptionSettings"] =
      toJsonArray(record.perConnectionEncryptionSettings, record.perConnectionEncryptionCount, encryptionToJson);
  value["perConnectionParallelSockets"] =
      toJsonArray(record.perConnectionParallelSockets, record.perConnectionParallelSocketCount, socketsToJson);
  value["overflowThreshold"] = record.overflowThreshold;
  value["priorityOverflowThreshold"] = record.priorityOverflowThreshold;
  value["enableDefaultRoute"] = record.enableDefaultRoute;
  value["ulpReportIntervalSeconds"] = record.ulpReportIntervalSeconds;
  value["maxRedundant"] = record.maxRedundant;
  value["downstreamSubnets"] = toJsonArray(record.downstreamSubnets, record.downstreamSubnetCount, subnetToJson);
  value["maximumConnectRetry"] = record.maximumConnectRetry;
  value["maximumTransportRetry"] = record.maximumTransportRetry;
  value["packetPoolSize"] = record.packetPoolSize;
  value["targetNumberOfConnections"]["upload"] = record.targetUploadConnections;
  value["targetNumberOfConnections"]["download"] = record.targetDownloadConnections;
  writeJson(stdout, value);
}

}  // namespace cli
