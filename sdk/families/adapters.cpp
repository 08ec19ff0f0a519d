// The network adapters that the daemon bonds.
#include <algorithm>
#include <cctype>

#include "l10n/translate.h"
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

constexpr const char* kReport = "report_networks";

/// The value of rates and limits that the daemon omits.
constexpr std::int64_t kNoLimit = -1;

std::int64_t readLimit(const Json::Value& limits, const char* key) {
  return has(limits, key) ? asInt64(member(limits, key)) : kNoLimit;
}

ZephlinkSDK_ConnectionPriority readPriority(const Json::Value& number) {
  return kConnectionPriorityNumbers.find(asInt(number)).value_or(ZephlinkSDK_ConnectionPriority_Always);
}

ZephlinkSDK_ConnectionDirectionalMode readDirectionalMode(const Json::Value& word) {
  std::string text = asString(word);
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char letter) { return static_cast<char>(std::tolower(static_cast<unsigned char>(letter))); });
  return kDirectionalModeWords.find(text).value_or(ZephlinkSDK_ConnectionDirectionalMode_On);
}

void readUsage(const Json::Value& limits, ZephlinkSDK_Adapter& adapter) {
  readMember(limits, "usage", adapter.usageMonthly);
  readMember(limits, "usageDaily", adapter.usageDaily);
  adapter.usageMonthlyLimit = readLimit(limits, "max");
  readMember(limits, "resetDay", adapter.usageMonthlyResetDay);
  adapter.usageDailyLimit = readLimit(limits, "maxDaily");
  readMember(limits, "boostDaily", adapter.usageDailyBoost);
  adapter.overlimitRatelimit = readLimit(limits, "overlimitRate");
}

void readAdapter(const Json::Value& entry, ZephlinkSDK_Adapter& adapter) {
  readMember(entry, "guid", adapter.adapterID);
  copyText(adapter.name, translate(asString(member(entry, "name"))));
  readMember(entry, "description", adapter.description);
  adapter.state = valueOfNumber(asInt(member(entry, "connectionState")), ZephlinkSDK_AdapterState_Connected);
  adapter.type = kAdapterTypeWords.find(asString(member(entry, "type"))).value_or(ZephlinkSDK_AdapterType_Unknown);
  adapter.priority = readPriority(member(entry, "priority"));
  readMember(entry, "ssid", adapter.connectedNetworkName);
  readMember(entry, "bssid", adapter.connectedNetworkBSSID);
  // Unlike the limits, this rate has 32 bits.
  adapter.rateLimit = has(entry, "rateLimit") ? asInt(member(entry, "rateLimit")) : kNoLimit;
  readUsage(member(entry, "limits"), adapter);
  adapter.workingPriority =
      has(entry, "workingPriority") ? readPriority(member(entry, "workingPriority")) : adapter.priority;
  readMember(entry, "isp", adapter.isp);
  const Json::Value& modes = member(entry, "directional_mode");
  adapter.directionalUpload = readDirectionalMode(member(modes, "upload"));
  adapter.directionalDownload = readDirectionalMode(member(modes, "download"));
}

void readAdapters(const Json::Value& data, ZephlinkSDK_AdaptersResult& record) {
  readEntries(data, record.adapters, record.adapterCount, readAdapter);
}

using AdaptersCallback = ZephlinkSDK::AdaptersCallback;

ZephlinkSDK_AdaptersResult change(const Channel& channel, const char* request, Members members,
                                  AdaptersCallback callback, void* userData) {
  return changeSetting(channel, request, members, kReport, readAdapters, callback, userData);
}

/// Changes the usage counters. This is not a setting: the daemon reports no refusal.
ZephlinkSDK_AdaptersResult changeUsage(const Channel& channel, const char* request, Members members,
                                       AdaptersCallback callback, void* userData) {
  return ask(channel, {.requests = {{request, members}}, .reports = {{kReport, readAdapters}}}, callback, userData);
}

}  // namespace

ZephlinkSDK_AdaptersResult ZephlinkSDK::getAdapters(AdaptersCallback callback, void* userData) {
  return subscribe(channel, "request_networks", kReport, readAdapters, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::setConnectionPriorities(const char* adapterID,
                                                                ZephlinkSDK_ConnectionPriority priority,
                                                                AdaptersCallback callback, void* userData) {
  if (priority > ZephlinkSDK_ConnectionPriority_Automatic) {
    return refused<ZephlinkSDK_AdaptersResult>(ZephlinkSDK_Error_InvalidArgument);
  }
  return change(channel, "set_network_priority",
                {{"network", adapterID}, {"priority", kConnectionPriorityNumbers.text(priority)}}, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::setConnectionDirectionalMode(const char* adapterID,
                                                                     ZephlinkSDK_ConnectionDirectionalMode upload,
                                                                     ZephlinkSDK_ConnectionDirectionalMode download,
                                                                     AdaptersCallback callback, void* userData) {
  return change(channel, "set_network_directional_modes",
                {{"network", adapterID},
                 {"upload", kDirectionalModeWords.text(upload)},
                 {"download", kDirectionalModeWords.text(download)}},
                callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::setConnectionRateLimit(const char* adapterID, std::int64_t bps,
                                                               AdaptersCallback callback, void* userData) {
  return change(channel, "set_network_ratelimit", {{"network", adapterID}, {"bps", bps}}, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::clearConnectionRateLimit(const char* adapterID, AdaptersCallback callback,
                                                                 void* userData) {
  return setConnectionRateLimit(adapterID, 0, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::setAdapterMonthlyDataLimit(const char* adapterID, std::int64_t bytes,
                                                                   std::int64_t resetDay, AdaptersCallback callback,
                                                                   void* userData) {
  return change(channel, "set_network_limit", {{"network", adapterID}, {"max", bytes}, {"resetDay", resetDay}},
                callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::clearAdapterMonthlyDataLimit(const char* adapterID, AdaptersCallback callback,
                                                                     void* userData) {
  return setAdapterMonthlyDataLimit(adapterID, 0, 0, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::setAdapterDailyDataLimit(const char* adapterID, std::int64_t bytes,
                                                                 AdaptersCallback callback, void* userData) {
  return change(channel, "set_network_daily_limit", {{"network", adapterID}, {"max", bytes}}, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::clearAdapterDailyDataLimit(const char* adapterID, AdaptersCallback callback,
                                                                   void* userData) {
  return setAdapterDailyDataLimit(adapterID, 0, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::addAdapterDailyDataLimitBoost(const char* adapterID, std::int64_t bytes,
                                                                      AdaptersCallback callback, void* userData) {
  return changeUsage(channel, "add_net_daily_limit_boost", {{"network", adapterID}, {"value", bytes}}, callback,
                     userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::setAdapterOverlimitRatelimit(const char* adapterID, std::int64_t bps,
                                                                     AdaptersCallback callback, void* userData) {
  return change(channel, "set_network_overlimit_rate", {{"network", adapterID}, {"bps", bps}}, callback, userData);
}

ZephlinkSDK_AdaptersResult ZephlinkSDK::resetAdapterUsage(const char* adapterID, AdaptersCallback callback,
                                                          void* userData) {
  // Only this request names the adapter "guid".
  return changeUsage(channel, "reset_network_usage", {{"guid", adapterID}}, callback, userData);
}

}  // namespace zephlinksdk
