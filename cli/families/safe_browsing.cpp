// Safe browsing. Only a missing subcommand is Missing; all other errors are Invalid. A missing or invalid value prints
// the usage of the subcommand, a wrong number of arguments that of the family.
#include "cli/families/families.h"
#include "cli/handlers.h"
#include "cli/secrets.h"
#include "cli/stream.h"
#include "platform/console.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

using Settings = ZephlinkSDK_SafeBrowsingResult;

void printSettings(const Settings& record) {
  Json::Value value(Json::objectValue);
  value["initialized"] = record.initialized;
  value["configSet"] = record.configSet;
  value["enabled"] = record.enabled;
  value["log_level"] = ZephlinkSDK_safeBrowsingLogLevelText(record.logLevel);
  value["network_override"] = ZephlinkSDK_safeBrowsingOverrideText(record.networkOverride);
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

/// Ends the actions that connect to the service: a connect error is printed instead of the settings and fails the
/// action.
int finishConnecting(const Settings& record) {
  if (record.hasError || !record.connectFailed) return finish(record, printSettings);
  printConnectError(record);
  return kFailed;
}

constexpr char kUsage[] =
    "safebrowsing "
    "<initialize|config|enable|errors|stats|redirects|loglevel|token|homenetwork|override|settings|start|stop>";

/// Requires exactly one argument.
template <Handler& Handle>
int withValue(Arguments arguments, const char* usage) {
  if (arguments.size() > 1) return invalid(kUsage);
  return arguments.empty() ? invalid(usage) : Handle(arguments, usage);
}

int initialize(Arguments arguments, const char*) {
  return finishConnecting(call<ZephlinkSDK_initSafeBrowsing>(arguments[0]));
}

int setConfig(Arguments arguments, const char*) {
  return finish(call<ZephlinkSDK_setSafeBrowsingConfig>(arguments[0]), printSettings);
}

int refreshToken(Arguments arguments, const char*) {
  const SecretArgument token(arguments[0]);
  return finishConnecting(call<ZephlinkSDK_refreshSafeBrowsingToken>(arguments[0]));
}

/// Makes two calls. The status depends on the second one only; it prints the settings even if the service was not
/// reached.
int startOrStop(bool enabled, const char* serviceConfig) {
  call<ZephlinkSDK_setSafeBrowsingEnabled>(enabled);
  return finish(call<ZephlinkSDK_initSafeBrowsing>(serviceConfig), printSettings);
}

int start(Arguments arguments, const char*) { return startOrStop(true, arguments[0]); }

int stop(Arguments, const char*) { return startOrStop(false, ""); }

// A connect error with one of these codes means that the home network was reported.
constexpr bool isHomeNetworkReported(std::int32_t connectError) { return connectError == 0 || connectError == 17; }

int reportHomeNetwork(std::uint32_t retries, std::uint64_t delay, std::uint64_t timeout) {
  const Settings record = ZephlinkSDK_reportSafeBrowsingHomeNetwork(g_sdk, nullptr, nullptr, retries, delay, timeout);
  const int status = finishConnecting(record);
  return record.connectFailed && isHomeNetworkReported(record.connectError) ? kSuccess : status;
}

int homeNetwork(Arguments arguments, const char* usage) {
  if (arguments.empty()) return reportHomeNetwork(0, 0, 0);
  if (arguments.size() != 3) return invalid(kUsage);
  const auto retries = valueOf<parseU32>(arguments[0]);
  const auto delay = valueOf<parseU64>(arguments[1]);
  const auto timeout = valueOf<parseU64>(arguments[2]);
  if (!retries || !delay || !timeout) return invalid(usage);
  return reportHomeNetwork(*retries, *delay, *timeout);
}

constexpr char kErrorLabel[] = "safebrowsing_error";
constexpr char kBlockLabel[] = "safebrowsing_block";

/// Prints events until the given number of seconds has passed since the first event; without an end if no number is
/// given.
template <const char* Label, auto& Print, auto& Listen>
int stream(Arguments arguments, const char* usage) {
  if (arguments.size() > 1) return invalid(kUsage);
  const auto seconds = arguments.empty() ? 0 : valueOf<parseI32>(arguments[0]);
  if (!seconds || *seconds < -1) return invalid(usage);
  zephlinksdk::endOnClosedPipe();
  Stream events;
  events.open<Label, Print, Listen>();
  events.clock.waitFor(*seconds);
  return kSuccess;
}

// Also printed by `redirects`.
constexpr char kErrorsUsage[] = "safebrowsing errors [duration in seconds]";

constexpr Action kSafeBrowsingRows[] = {
    {"initialize", "safebrowsing initialize <string>", withValue<initialize>},
    {"config", "safebrowsing config <string>", withValue<setConfig>},
    {"enable", "safebrowsing enable <on|off>",
     withValue<setValue<parseSwitch, ZephlinkSDK_setSafeBrowsingEnabled, printSettings>>},
    {"errors", kErrorsUsage, stream<kErrorLabel, printLookupError, ZephlinkSDK_listenForSafeBrowsingError>},
    {"stats", nullptr, exactly<0, perform<ZephlinkSDK_getSafeBrowsingStats, printStats>>},
    {"redirects", kErrorsUsage, stream<kBlockLabel, printBlock, ZephlinkSDK_listenForSafeBrowsingBlock>},
    {"loglevel", "safebrowsing loglevel <trace|debug|info|warning|error>",
     withValue<setValue<ZephlinkSDK_safeBrowsingLogLevelFromText, ZephlinkSDK_setSafeBrowsingLogLevel, printSettings>>},
    {"token", "safebrowsing token <string>", withValue<refreshToken>},
    {"homenetwork", "safebrowsing homenetwork [retries delay timeout]", homeNetwork},
    {"override", "safebrowsing override <none|unsafe|safe>",
     withValue<setValue<ZephlinkSDK_safeBrowsingOverrideFromText, ZephlinkSDK_setSafeBrowsingSafeNetworkOverride,
                        printSettings>>},
    {"settings", nullptr, exactly<0, perform<ZephlinkSDK_getSafeBrowsing, printSettings>>},
    {"start", "safebrowsing start <string>", withValue<start>},
    {"stop", nullptr, exactly<0, stop>},
};

constexpr Action kRows[] = {
    {"safebrowsing", kUsage, nullptr, &rows<kSafeBrowsingRows>},
};

}  // namespace

constinit const families::Family families::safeBrowsing{kRows};

}  // namespace cli
