// The network adapters that the daemon bonds.
#include "cli/families/adapters.h"

#include "cli/families/families.h"
#include "cli/families/settings.h"
#include "cli/handlers.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

Json::Value usageToJson(const ZephlinkSDK_Adapter& adapter) {
  Json::Value value(Json::objectValue);
  value["usageMonthly"] = Json::Int64{adapter.usageMonthly};
  value["usageDaily"] = Json::Int64{adapter.usageDaily};
  value["usageMonthlyLimit"] = Json::Int64{adapter.usageMonthlyLimit};
  value["usageMonthlyResetDay"] = Json::Int64{adapter.usageMonthlyResetDay};
  value["usageDailyLimit"] = Json::Int64{adapter.usageDailyLimit};
  value["usageDailyBoost"] = Json::Int64{adapter.usageDailyBoost};
  value["overlimitRatelimit"] = Json::Int64{adapter.overlimitRatelimit};
  return value;
}

Json::Value adapterToJson(const ZephlinkSDK_Adapter& adapter) {
  Json::Value value(Json::objectValue);
  value["adapterID"] = adapter.adapterID;
  value["description"] = adapter.description;
  value["name"] = adapter.name;
  value["state"] = ZephlinkSDK_adapterStateText(adapter.state);
  value["type"] = ZephlinkSDK_adapterTypeText(adapter.type);
  value["priority"] = ZephlinkSDK_connectionPriorityText(adapter.priority);
  value["workingPriority"] = ZephlinkSDK_connectionPriorityText(adapter.workingPriority);
  value["connectedNetworkName"] = adapter.connectedNetworkName;
  value["connectedNetworkBSSID"] = adapter.connectedNetworkBSSID;
  value["isp"] = adapter.isp;
  value["rateLimit"] = Json::Int64{adapter.rateLimit};
  value["dataUsage"] = usageToJson(adapter);
  value["directionalSettings"]["upload"] = ZephlinkSDK_directionalModeText(adapter.directionalUpload);
  value["directionalSettings"]["download"] = ZephlinkSDK_directionalModeText(adapter.directionalDownload);
  return value;
}

bool isUnlimited(const char* argument) { return equal(argument, "unlimited"); }

// The first argument of all handlers is the adapter ID.

/// Sets a number. REQUIRES: two arguments.
template <auto& Method>
int changeNumber(Arguments arguments, const char* usage) {
  const auto number = valueOf<parseI64>(arguments[1]);
  return number ? finish(call<Method>(arguments[0], *number), printAdapters) : invalid(usage);
}

// Some setters have C++ overloads, so `auto&` cannot select one.
using SetLimit = ZephlinkSDK_AdaptersResult(zephlinksdk::ZephlinkSDK*, const char*, std::int64_t,
                                            ZephlinkSDK_AdaptersCallback, void*);
using ClearLimit = ZephlinkSDK_AdaptersResult(zephlinksdk::ZephlinkSDK*, const char*, ZephlinkSDK_AdaptersCallback,
                                              void*);

/// Sets a number; "unlimited" removes the limit.
template <SetLimit& Set, ClearLimit& Clear>
int changeLimit(Arguments arguments, const char* usage) {
  return isUnlimited(arguments[1]) ? finish(call<Clear>(arguments[0]), printAdapters)
                                   : changeNumber<Set>(arguments, usage);
}

int changePriority(Arguments arguments, const char* usage) {
  // Unlike in other handlers, too many arguments are Missing.
  if (arguments.size() != 2) return missing(usage);
  const auto priority = valueOf<ZephlinkSDK_connectionPriorityFromText>(arguments[1]);
  if (!priority) return invalid(usage);
  return finish(call<ZephlinkSDK_setConnectionPriorities>(arguments[0], *priority), printAdapters);
}

int changeRateLimit(Arguments arguments, const char* usage) {
  // Unlike in other handlers, too few arguments are Invalid.
  if (arguments.size() != 2) return invalid(usage);
  return changeLimit<ZephlinkSDK_setConnectionRateLimit, ZephlinkSDK_clearConnectionRateLimit>(arguments, usage);
}

/// Encryption is a setting of the tunnel, so this prints the settings.
int changeEncryption(Arguments arguments, const char* usage) {
  const auto on = valueOf<parseSwitch>(arguments[1]);
  return on ? finish(call<ZephlinkSDK_setConnectionEncryption>(arguments[0], *on), printSettings) : invalid(usage);
}

int changeMonthlyLimit(Arguments arguments, const char* usage) {
  // Without a limit the day is not read: any argument is accepted.
  if (isUnlimited(arguments[1]))
    return finish(call<ZephlinkSDK_clearAdapterMonthlyDataLimit>(arguments[0]), printAdapters);
  const auto bytes = valueOf<parseI64>(arguments[1]);
  const auto resetDay = valueOf<parseI64>(arguments[2]);
  if (!bytes || !resetDay) return invalid(usage);
  return finish(ZephlinkSDK_setAdapterMonthlyDataLimit(g_sdk, arguments[0], *bytes, *resetDay, nullptr, nullptr),
                printAdapters);
}

int resetUsage(Arguments arguments, const char*) {
  return finish(call<ZephlinkSDK_resetAdapterUsage>(arguments[0]), printAdapters);
}

int changeDirectionalMode(Arguments arguments, const char* usage) {
  const auto upload = valueOf<ZephlinkSDK_directionalModeFromText>(arguments[1]);
  const auto download = valueOf<ZephlinkSDK_directionalModeFromText>(arguments[2]);
  if (!upload || !download) return invalid(usage);
  return finish(call<ZephlinkSDK_setConnectionDirectionalMode>(arguments[0], *upload, *download), printAdapters);
}

constexpr char kEncryptionUsage[] = "adapter encryption <adapter id> <on|off>";

/// Without a subcommand, `adapter datalimit` prints the usage of `adapter encryption`, for compatibility.
int refuseDataLimit(Arguments arguments, const char* usage) {
  return arguments.empty() ? missing(kEncryptionUsage) : invalid(usage);
}

constexpr Action kDataLimitRows[] = {
    {"monthly",
     "adapter datalimit monthly <adapter id> <data usage in bytes|unlimited> <day of the month to reset on|0 for last "
     "30 days>",
     exactly<3, changeMonthlyLimit>},
    {"daily", "adapter datalimit daily <adapter id> <data usage in bytes|unlimited>",
     exactly<2, changeLimit<ZephlinkSDK_setAdapterDailyDataLimit, ZephlinkSDK_clearAdapterDailyDataLimit>>},
    {"dailyboost", "adapter datalimit dailyboost <adapter id> <additional bytes>",
     exactly<2, changeNumber<ZephlinkSDK_addAdapterDailyDataLimitBoost>>},
};

constexpr Action kAdapterRows[] = {
    {"priority", "adapter priority <adapter id> <automatic|always|secondary|backup|never>", changePriority},
    {"ratelimit", "adapter ratelimit <adapter id> <speed in bits per second|unlimited>", changeRateLimit},
    {"overlimitratelimit", "adapter overlimitratelimit <adapter id> <speed in bits per second|0 to stop using>",
     exactly<2, changeNumber<ZephlinkSDK_setAdapterOverlimitRatelimit>>},
    {"encryption", kEncryptionUsage, exactly<2, changeEncryption>},
    {"datalimit", "adapter datalimit <monthly|daily|dailyboost>", refuseDataLimit, &rows<kDataLimitRows>},
    {"resetusage", "adapter resetusage <adapter id>", exactly<1, resetUsage>},
    {"directionalmode",
     "adapter directionalmode <adapter id> <upload mode (on | backup_off | strict_off)> <download mode (on | "
     "backup_off | strict_off)>",
     exactly<3, changeDirectionalMode>},
};

constexpr Action kRows[] = {
    {"adapter", "adapter <datalimit|priority|ratelimit|overlimitratelimit|encryption|resetusage|directionalmode>",
     nullptr, &rows<kAdapterRows>},
};

constexpr Action kShowRows[] = {
    {"adapters", nullptr, exactly<0, perform<ZephlinkSDK_getAdapters, printAdapters>>},
};

}  // namespace

constinit const families::Family families::adapters{kRows, kShowRows};

void printAdapters(const ZephlinkSDK_AdaptersResult& record) {
  writeJson(stdout, toJsonArray(record.adapters, record.adapterCount, adapterToJson));
}

}  // namespace cli
