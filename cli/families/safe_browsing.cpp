// Safe browsing: the number of words behind `safebrowsing` chooses the list in which the first of them is looked up.
// Nothing is ever missing but the first word.
#include "cli/families/handlers.h"
#include "cli/parsers.h"
#include "cli/secrets.h"
#include "cli/stream.h"
#include "cli/usage.h"
#include "sdk/words.h"

namespace cli {

namespace {

using Settings = ZephlinkSDK_SafeBrowsingResult;

void printSettings(const Settings& record) {
  Json::Value value(Json::objectValue);
  value["initialized"] = record.initialized;
  value["configSet"] = record.configSet;
  value["enabled"] = record.enabled;
  value["log_level"] = zephlinksdk::safeBrowsingLogLevelText(record.logLevel);
  value["network_override"] = zephlinksdk::safeBrowsingOverrideText(record.networkOverride);
  writeJson(stdout, value);
}

void printConnectError(const Settings& record) {
  Json::Value value(Json::objectValue);
  value["error"] = record.connectError;
  value["msg"] = record.connectErrorMessage;
  writeJson(stdout, value);
}

void printStats(const ZephlinkSDK_SafeBrowsingStatsResult& record) {
  Json::Value value(Json::objectValue);
  value["min"] = record.min;
  value["max"] = record.max;
  value["average"] = record.average;
  value["num_errors"] = record.numErrors;
  value["num_blocks"] = record.numBlocks;
  value["failure_rate"] = record.failureRate;
  value["num_block_responses"] = record.numBlockResponses;
  value["num_lookups"] = record.numLookups;
  value["num_packets_filtered"] = record.numPacketsFiltered;
  writeJson(stdout, value);
}

void printLookupError(const ZephlinkSDK_SafeBrowsingErrorResult& record) {
  Json::Value value(Json::objectValue);
  value["host"] = record.host;
  value["error"] = record.error;
  value["message"] = record.message;
  writeJson(stdout, value);
}

void printBlock(const ZephlinkSDK_SafeBrowsingBlockResult& record) {
  Json::Value value(Json::objectValue);
  value["host"] = record.host;
  value["redirected"] = record.redirected;
  writeJson(stdout, value);
}

/// The end of the words that connect to the service: a connect error is printed in place of the settings and fails.
int finishConnecting(const Settings& record) {
  if (record.hasError || !record.connectFailed) return finish(record, printSettings);
  printConnectError(record);
  return kFailed;
}

int initialize(Words words) { return finishConnecting(call(ZephlinkSDK_initSafeBrowsing, words[0])); }

int config(Words words) { return finish(call(ZephlinkSDK_setSafeBrowsingConfig, words[0]), printSettings); }

int refreshToken(Words words) {
  const WordOfSecret token(words[0]);
  return finishConnecting(call(ZephlinkSDK_refreshSafeBrowsingToken, words[0]));
}

int enable(Words words) {
  const auto enabled = parseOnOff(words[0]);
  if (!enabled) return invalid(usage::safebrowsingEnable);
  return finish(call(ZephlinkSDK_setSafeBrowsingEnabled, *enabled), printSettings);
}

int logLevel(Words words) {
  const auto level = zephlinksdk::kSafeBrowsingLogLevelWords.find(words[0]);
  if (!level) return invalid(usage::safebrowsingLoglevel);
  return finish(call(ZephlinkSDK_setSafeBrowsingLogLevel, *level), printSettings);
}

int networkOverride(Words words) {
  const auto choice = zephlinksdk::kSafeBrowsingOverrideWords.find(words[0]);
  if (!choice) return invalid(usage::safebrowsingOverride);
  return finish(call(ZephlinkSDK_setSafeBrowsingSafeNetworkOverride, *choice), printSettings);
}

int settings(Words) { return finish(call(ZephlinkSDK_getSafeBrowsing), printSettings); }

int stats(Words) { return finish(call(ZephlinkSDK_getSafeBrowsingStats), printStats); }

/// Two calls, of which only the second counts; it tells the settings even if the service was not reached.
int startOrStop(bool enabled, const char* serviceConfig) {
  call(ZephlinkSDK_setSafeBrowsingEnabled, enabled);
  return finish(call(ZephlinkSDK_initSafeBrowsing, serviceConfig), printSettings);
}

int start(Words words) { return startOrStop(true, words[0]); }

int stop(Words) { return startOrStop(false, ""); }

// A connect error with one of these codes is a success of reporting the home network.
constexpr bool isHomeNetworkReported(std::int32_t connectError) { return connectError == 0 || connectError == 17; }

int reportHomeNetwork(std::uint32_t retries, std::uint64_t delay, std::uint64_t timeout) {
  const Settings record = ZephlinkSDK_reportSafeBrowsingHomeNetwork(g_sdk, nullptr, nullptr, retries, delay, timeout);
  const int status = finishConnecting(record);
  return record.connectFailed && isHomeNetworkReported(record.connectError) ? kSuccess : status;
}

int homeNetwork(Words) { return reportHomeNetwork(0, 0, 0); }

int homeNetworkWithLimits(Words words) {
  std::uint32_t retries = 0;
  std::uint64_t delay = 0;
  std::uint64_t timeout = 0;
  if (!parseU32(words[0], retries) || !parseU64(words[1], delay) || !parseU64(words[2], timeout)) {
    return invalid(usage::safebrowsingHomenetwork);
  }
  return reportHomeNetwork(retries, delay, timeout);
}

constexpr char kErrorLabel[] = "safebrowsing_error";
constexpr char kBlockLabel[] = "safebrowsing_block";

/// Prints what comes until `seconds` have passed since the first event, without end if they are none.
template <const char* Label, auto Print, auto& Listen>
int stream(std::int32_t seconds) {
  StreamClock clock;
  const std::uint64_t handle = openStream<Label, Print>(Listen, clock);
  clock.waitFor(seconds);
  ZephlinkSDK_removeListener(g_sdk, handle);
  return kSuccess;
}

constexpr auto streamErrors = stream<kErrorLabel, printLookupError, ZephlinkSDK_listenForSafeBrowsingError>;
constexpr auto streamBlocks = stream<kBlockLabel, printBlock, ZephlinkSDK_listenForSafeBrowsingBlock>;

template <auto Stream>
int withoutEnd(Words) {
  return Stream(0);
}

// Both streams tell a faulty duration with the usage of `errors`.
template <auto Stream>
int forSeconds(Words words) {
  std::int32_t seconds = 0;
  if (!parseI32(words[0], seconds) || seconds < -1) return invalid(usage::safebrowsingErrors);
  return Stream(seconds);
}

template <const char* Usage>
int refuse(Words) {
  return invalid(Usage);
}

constexpr Action kAlone[] = {
    {"initialize", refuse<usage::safebrowsingInitialize>},
    {"config", refuse<usage::safebrowsingConfig>},
    {"enable", refuse<usage::safebrowsingEnable>},
    {"errors", withoutEnd<streamErrors>},
    {"stats", stats},
    {"redirects", withoutEnd<streamBlocks>},
    {"loglevel", refuse<usage::safebrowsingLoglevel>},
    {"token", refuse<usage::safebrowsingToken>},
    {"homenetwork", homeNetwork},
    {"override", refuse<usage::safebrowsingOverride>},
    {"settings", settings},
    {"start", refuse<usage::safebrowsingStart>},
    {"stop", stop},
};

constexpr Action kWithValue[] = {
    {"initialize", initialize},
    {"config", config},
    {"enable", enable},
    {"errors", forSeconds<streamErrors>},
    {"redirects", forSeconds<streamBlocks>},
    {"loglevel", logLevel},
    {"token", refreshToken},
    {"override", networkOverride},
    {"start", start},
};

constexpr Action kWithThreeValues[] = {
    {"homenetwork", homeNetworkWithLimits},
};

}  // namespace

int safeBrowsing(Words words) {
  switch (words.size()) {
    case 0:
    case 1:
      return dispatchWord(kAlone, words, usage::safebrowsing);
    case 2:
      return dispatchWord(kWithValue, words, usage::safebrowsing);
    case 4:
      return dispatchWord(kWithThreeValues, words, usage::safebrowsing);
    default:
      return invalid(usage::safebrowsing);
  }
}

}  // namespace cli
