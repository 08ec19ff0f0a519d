// Safe browsing: its configuration, settings and counters, and the lookups that fail or are blocked.
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

using Settings = ZephlinkSDK_SafeBrowsingResult;
using Stats = ZephlinkSDK_SafeBrowsingStatsResult;
using LookupError = ZephlinkSDK_SafeBrowsingErrorResult;
using Block = ZephlinkSDK_SafeBrowsingBlockResult;

constexpr const char* kInitialize = "initialize_safe_browsing";
constexpr const char* kRefreshToken = "safe_browsing_token_refresh";
constexpr const char* kSettingsReport = "report_safe_browsing_settings";

void readSettings(const Json::Value& data, Settings& record) {
  readMember(data, "initialized", record.initialized);
  readMember(data, "enabled", record.enabled);
  readMember(data, "config_set", record.configSet);
  record.logLevel = kSafeBrowsingLogLevelWords.find(asString(member(data, "log_level")))
                        .value_or(ZephlinkSDK_SafeBrowsingLogLevel_Debug);
  record.networkOverride = kSafeBrowsingOverrideWords.find(asString(member(data, "network_override")))
                               .value_or(ZephlinkSDK_SafeBrowsingSafeNetworkOverride_None);
}

void readConnectError(const Json::Value& data, Settings& record) {
  record.connectFailed = true;
  readMember(data, "error", record.connectError);
  readMember(data, "safebro_msg", record.connectErrorMessage);
}

void readStats(const Json::Value& data, Stats& record) {
  readMember(data, "min", record.min);
  readMember(data, "max", record.max);
  readMember(data, "average", record.average);
  readMember(data, "num_errors", record.numErrors);
  readMember(data, "num_blocks", record.numBlocks);
  readMember(data, "failure_rate", record.failureRate);
  readMember(data, "num_block_responses", record.numBlockResponses);
  readMember(data, "num_safe_browsing_lookups", record.numLookups);
  readMember(data, "num_safe_browsing_packets_filtered", record.numPacketsFiltered);
}

void readLookupError(const Json::Value& data, LookupError& record) {
  readMember(data, "error", record.error);
  readMember(data, "safebro_msg", record.message);
  readMember(data, "host", record.host);
}

void readBlock(const Json::Value& data, Block& record) {
  readMember(data, "redirected", record.redirected);
  readMember(data, "host", record.host);
}

Report<Settings> settings() { return {kSettingsReport, readSettings}; }
Report<Settings> settingsOnceInitialized() { return {kSettingsReport, readSettings, {{"initialized", true}}}; }
Report<Settings> connectError() { return {"report_safe_browsing_connect_error", readConnectError}; }

}  // namespace

Settings ZephlinkSDK::initSafeBrowsing(const char* config, Callback<Settings> callback, void* userData) {
  return ask(channel,
             {.requests = {{kInitialize, {{"config", config}}}},
              .reports = {settings(), connectError()},
              .settingName = kInitialize},
             callback, userData);
}

// The daemon refuses it under the name of another request.
Settings ZephlinkSDK::setSafeBrowsingConfig(const char* config, Callback<Settings> callback, void* userData) {
  return ask(channel,
             {.requests = {{"set_safe_browsing_config", {{"config", config}}}},
              .reports = {settings()},
              .settingName = kInitialize},
             callback, userData);
}

Settings ZephlinkSDK::setSafeBrowsingEnabled(bool enabled, Callback<Settings> callback, void* userData) {
  return changeSetting(channel, "enable_safe_browsing", {{"enable", enabled}}, kSettingsReport, readSettings, callback,
                       userData);
}

Settings ZephlinkSDK::setSafeBrowsingLogLevel(ZephlinkSDK_SafeBrowsingLogLevel level, Callback<Settings> callback,
                                              void* userData) {
  if (level > ZephlinkSDK_SafeBrowsingLogLevel_Warning) return refused<Settings>(ZephlinkSDK_Error_InvalidArgument);
  return ask(channel,
             {.requests = {{"set_safe_browsing_log_level", {{"log_level", kSafeBrowsingLogLevelWords.text(level)}}}},
              .reports = {settings()}},
             callback, userData);
}

Settings ZephlinkSDK::setSafeBrowsingSafeNetworkOverride(ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride,
                                                         Callback<Settings> callback, void* userData) {
  if (networkOverride > ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Safe) {
    return refused<Settings>(ZephlinkSDK_Error_InvalidArgument);
  }
  return ask(channel,
             {.requests = {{"set_safe_browsing_safe_network_override",
                            {{"network_override", kSafeBrowsingOverrideWords.text(networkOverride)}}}},
              .reports = {settings()}},
             callback, userData);
}

Settings ZephlinkSDK::refreshSafeBrowsingToken(const char* token, Callback<Settings> callback, void* userData) {
  return ask(channel,
             {.requests = {{kRefreshToken, {{"token", token}}}},
              .reports = {settingsOnceInitialized(), connectError()},
              .settingName = kRefreshToken},
             callback, userData);
}

// The daemon refuses it under the name of another request.
Settings ZephlinkSDK::reportSafeBrowsingHomeNetwork(Callback<Settings> callback, void* userData, std::uint32_t retries,
                                                    std::uint64_t delay, std::uint64_t timeout) {
  return ask(channel,
             {.requests = {{"safe_browsing_report_home_network",
                            {{"retries", retries}, {"delay", delay}, {"timeout", timeout}}}},
              .reports = {settingsOnceInitialized(), connectError()},
              .settingName = kRefreshToken},
             callback, userData);
}

Settings ZephlinkSDK::getSafeBrowsing(Callback<Settings> callback, void* userData) {
  return subscribe(channel, "request_safe_browsing_settings", kSettingsReport, readSettings, callback, userData);
}

Stats ZephlinkSDK::getSafeBrowsingStats(Callback<Stats> callback, void* userData) {
  return subscribe(channel, "request_safe_browsing_stats", "report_safe_browsing_stats", readStats, callback, userData);
}

LookupError ZephlinkSDK::listenForSafeBrowsingError(Callback<LookupError> callback, void* userData) {
  return listenFor(channel, "report_safe_browsing_lookup_error", readLookupError, callback, userData);
}

Block ZephlinkSDK::listenForSafeBrowsingBlock(Callback<Block> callback, void* userData) {
  return listenFor(channel, "report_safe_browsing_block", readBlock, callback, userData);
}

}  // namespace zephlinksdk
