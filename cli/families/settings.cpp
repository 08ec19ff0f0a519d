// Settings of the tunnel as a whole.
#include "cli/families/settings.h"

#include "cli/families/handlers.h"
#include "cli/families/port_rules.h"
#include "cli/parsers.h"
#include "cli/usage.h"
#include "sdk/words.h"

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

bool parseSwitch(const char* word, bool& on) {
  const auto known = parseOnOff(word);
  if (known) on = *known;
  return known.has_value();
}

bool parseMode(const char* word, ZephlinkSDK_BondingMode& mode) {
  const auto known = zephlinksdk::kBondingModeWords.find(word);
  if (known) mode = *known;
  return known.has_value();
}

bool parseTransport(const char* word, ZephlinkSDK_TransportMode& mode) {
  const auto known = zephlinksdk::kTransportModeWords.find(word);
  if (!known || !zephlinksdk::isTransportSetting(*known)) return false;
  mode = *known;
  return true;
}

/// Changes what takes one word: none is Missing, one that `parse` refuses and more words are Invalid.
template <class Value, class Method>
int changeOne(Words words, const char* usage, bool (*parse)(const char*, Value&), Method& method) {
  if (words.empty()) return missing(usage);
  Value value{};
  if (words.size() > 1 || !parse(words[0], value)) return invalid(usage);
  return finish(call(method, value), printSettings);
}

/// The retry limits know no Missing.
template <class Method>
int changeRetry(Words words, const char* usage, Method& method) {
  return words.empty() ? invalid(usage) : changeOne(words, usage, parseU32, method);
}

}  // namespace

void printSettings(const ZephlinkSDK_SettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["jumboPackets"] = record.jumboPackets;
  value["encrypted"] = record.encrypted;
  value["allowChaChaEncryption"] = record.allowChaChaEncryption;
  value["bondingMode"] = zephlinksdk::bondingModeText(record.bondingMode);
  value["startupConnect"] = record.startupConnect;
  value["transportMode"] = zephlinksdk::transportModeText(record.transportMode);
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

int showSettings(Words) { return finish(call(ZephlinkSDK_getSettings), printSettings); }

int encryption(Words words) { return changeOne(words, usage::encryption, parseSwitch, ZephlinkSDK_setTunnelEncrypted); }

int jumbo(Words words) { return changeOne(words, usage::jumbo, parseSwitch, ZephlinkSDK_setJumboPackets); }

int packetAggregation(Words words) {
  return changeOne(words, usage::packetaggr, parseSwitch, ZephlinkSDK_setPacketAggregation);
}

int headerCompression(Words words) {
  return changeOne(words, usage::headercompression, parseSwitch, ZephlinkSDK_setHeaderCompression);
}

int startupConnect(Words words) {
  return changeOne(words, usage::startupconnect, parseSwitch, ZephlinkSDK_setStartupConnect);
}

int mode(Words words) { return changeOne(words, usage::mode, parseMode, ZephlinkSDK_setMode); }

int transport(Words words) {
  return changeOne(words, usage::transport, parseTransport, ZephlinkSDK_setConnectionTransportMode);
}

int overflow(Words words) { return changeOne(words, usage::overflow, parseMbps, ZephlinkSDK_setOverflowThreshold); }

int priorityOverflow(Words words) {
  return changeOne(words, usage::priorityoverflow, parseMbps, ZephlinkSDK_setPriorityOverflowThreshold);
}

int connectRetry(Words words) { return changeRetry(words, usage::connectretry, ZephlinkSDK_setMaximumConnectRetry); }

int transportRetry(Words words) {
  return changeRetry(words, usage::transportretry, ZephlinkSDK_setMaximumTransportRetry);
}

int maxRedundant(Words words) {
  // More words than one have always counted as an unknown action here.
  if (words.size() > 1) {
    printUsage(stderr);
    return kUnknownAction;
  }
  return changeOne(words, usage::maxredundant, parseU32, ZephlinkSDK_setMaxRedundantSends);
}

int targetConnections(Words words) {
  if (words.size() < 2) return missing(usage::targetconnections);
  int upload = 0;
  int download = 0;
  if (words.size() > 2 || !parseI32(words[0], upload) || !parseI32(words[1], download)) {
    return invalid(usage::targetconnections);
  }
  return finish(call(ZephlinkSDK_setTargetNumberOfConnections, upload, download), printSettings);
}

int route(Words words) {
  if (words.empty()) return missing(usage::routeDefault);
  if (!equal(words[0], "default")) return invalid(usage::routeDefault);
  if (words.size() < 2) return missing(usage::routeDefault);
  const auto on = parseOnOff(words[1]);
  if (!on) return invalid(usage::routeDefault);
  return finish(call(ZephlinkSDK_setEnableDefaultRoute, *on), printSettings);
}

int ports(Words words) {
  if (words.size() > ZephlinkSDK_MaxForwardedPorts) {
    return tooMany(usage::tooManyPortsFormat, ZephlinkSDK_MaxForwardedPorts);
  }
  const auto count = static_cast<unsigned short>(words.size());
  ZephlinkSDK_ProtocolPortPair rules[ZephlinkSDK_MaxForwardedPorts];
  if (!parseProtocolPortList(count, words.data(), rules, false, false)) return invalid(usage::ports);
  return finish(call(ZephlinkSDK_setForwardPorts, count, rules), printSettings);
}

int subnets(Words words) {
  if (words.size() > ZephlinkSDK_MaxDownstreamSubnets) {
    return tooMany(usage::tooManySubnetsFormat, ZephlinkSDK_MaxDownstreamSubnets);
  }
  const auto count = static_cast<unsigned short>(words.size());
  ZephlinkSDK_Subnet list[ZephlinkSDK_MaxDownstreamSubnets];
  if (!parseSubnetList(count, words.data(), list)) return invalid(usage::subnets);
  return finish(call(ZephlinkSDK_setDownstreamSubnets, count, list), printSettings);
}

}  // namespace cli
