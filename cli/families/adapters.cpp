// The network adapters that the daemon bonds.
#include "cli/families/adapters.h"

#include "cli/families/handlers.h"
#include "cli/families/settings.h"
#include "cli/parsers.h"
#include "cli/usage.h"
#include "cli/words.h"
#include "sdk/words.h"

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
  value["state"] = adapterStateText(adapter.state);
  value["type"] = zephlinksdk::adapterTypeText(adapter.type);
  value["priority"] = zephlinksdk::connectionPriorityText(adapter.priority);
  value["workingPriority"] = zephlinksdk::connectionPriorityText(adapter.workingPriority);
  value["connectedNetworkName"] = adapter.connectedNetworkName;
  value["connectedNetworkBSSID"] = adapter.connectedNetworkBSSID;
  value["isp"] = adapter.isp;
  value["rateLimit"] = Json::Int64{adapter.rateLimit};
  value["dataUsage"] = usageToJson(adapter);
  value["directionalSettings"]["upload"] = zephlinksdk::directionalModeText(adapter.directionalUpload);
  value["directionalSettings"]["download"] = zephlinksdk::directionalModeText(adapter.directionalDownload);
  return value;
}

/// The status of a wrong number of words: too few are Missing, too many Invalid.
std::optional<int> countFault(Words words, std::size_t count, const char* usage) {
  if (words.size() < count) return missing(usage);
  if (words.size() > count) return invalid(usage);
  return std::nullopt;
}

bool isUnlimited(const char* word) { return equal(word, "unlimited"); }

/// Changes the one number that stands behind an adapter's ID.
template <class Method>
int changeNumber(Words words, const char* usage, Method& method) {
  int64_t number = 0;
  if (!parseI64(words[1], number)) return invalid(usage);
  return finish(call(method, words[0], number), printAdapters);
}

/// The same, with a word that lifts the limit.
template <class Method>
int changeLimit(Words words, const char* usage, Method& method) {
  if (isUnlimited(words[1])) return finish(call(method, words[0]), printAdapters);
  return changeNumber(words, usage, method);
}

int adapterPriority(Words words) {
  // Too many words are Missing as well.
  if (words.size() != 2) return missing(usage::adapterPriority);
  const auto priority = zephlinksdk::kConnectionPriorityWords.find(words[1]);
  if (!priority) return invalid(usage::adapterPriority);
  return finish(call(ZephlinkSDK_setConnectionPriorities, words[0], *priority), printAdapters);
}

int adapterRateLimit(Words words) {
  // Too few words are Invalid as well.
  if (words.size() != 2) return invalid(usage::adapterRatelimit);
  return changeLimit(words, usage::adapterRatelimit, ZephlinkSDK_setConnectionRateLimit);
}

int adapterOverlimitRateLimit(Words words) {
  if (const auto fault = countFault(words, 2, usage::adapterOverlimitratelimit)) return *fault;
  return changeNumber(words, usage::adapterOverlimitratelimit, ZephlinkSDK_setAdapterOverlimitRatelimit);
}

/// A setting of the tunnel, with its report.
int adapterEncryption(Words words) {
  if (const auto fault = countFault(words, 2, usage::adapterEncryption)) return *fault;
  const auto on = parseOnOff(words[1]);
  if (!on) return invalid(usage::adapterEncryption);
  return finish(call(ZephlinkSDK_setConnectionEncryption, words[0], *on), printSettings);
}

int monthlyDataLimit(Words words) {
  if (const auto fault = countFault(words, 3, usage::adapterDatalimitMonthly)) return *fault;
  // Without a limit the day is not read: any word will do.
  if (isUnlimited(words[1])) return finish(call(ZephlinkSDK_setAdapterMonthlyDataLimit, words[0]), printAdapters);
  int64_t bytes = 0;
  int64_t resetDay = 0;
  if (!parseI64(words[1], bytes) || !parseI64(words[2], resetDay)) return invalid(usage::adapterDatalimitMonthly);
  return finish(call(ZephlinkSDK_setAdapterMonthlyDataLimit, words[0], bytes, resetDay), printAdapters);
}

int dailyDataLimit(Words words) {
  if (const auto fault = countFault(words, 2, usage::adapterDatalimitDaily)) return *fault;
  return changeLimit(words, usage::adapterDatalimitDaily, ZephlinkSDK_setAdapterDailyDataLimit);
}

int dailyDataLimitBoost(Words words) {
  if (const auto fault = countFault(words, 2, usage::adapterDatalimitDailyboost)) return *fault;
  return changeNumber(words, usage::adapterDatalimitDailyboost, ZephlinkSDK_addAdapterDailyDataLimitBoost);
}

constexpr Action kDataLimits[] = {
    {"monthly", monthlyDataLimit},
    {"daily", dailyDataLimit},
    {"dailyboost", dailyDataLimitBoost},
};

int adapterDataLimit(Words words) {
  // Names another word's usage, as it always has.
  if (words.empty()) return missing(usage::adapterEncryption);
  return dispatchWord(kDataLimits, words, usage::adapterDatalimit);
}

int adapterResetUsage(Words words) {
  if (const auto fault = countFault(words, 1, usage::adapterResetusage)) return *fault;
  return finish(call(ZephlinkSDK_resetAdapterUsage, words[0]), printAdapters);
}

int adapterDirectionalMode(Words words) {
  if (const auto fault = countFault(words, 3, usage::adapterDirectionalmode)) return *fault;
  ZephlinkSDK_ConnectionDirectionalMode upload{};
  ZephlinkSDK_ConnectionDirectionalMode download{};
  if (!parseDirectionalMode(words[1], upload) || !parseDirectionalMode(words[2], download)) {
    return invalid(usage::adapterDirectionalmode);
  }
  return finish(call(ZephlinkSDK_setConnectionDirectionalMode, words[0], upload, download), printAdapters);
}

constexpr Action kAdapterActions[] = {
    {"priority", adapterPriority},
    {"ratelimit", adapterRateLimit},
    {"overlimitratelimit", adapterOverlimitRateLimit},
    {"encryption", adapterEncryption},
    {"datalimit", adapterDataLimit},
    {"resetusage", adapterResetUsage},
    {"directionalmode", adapterDirectionalMode},
};

}  // namespace

void printAdapters(const ZephlinkSDK_AdaptersResult& record) {
  writeJson(stdout, toJsonArray(record.adapters, record.adapterCount, adapterToJson));
}

int adapter(Words words) { return dispatchWord(kAdapterActions, words, usage::adapter); }

int showAdapters(Words) { return finish(call(ZephlinkSDK_getAdapters), printAdapters); }

}  // namespace cli
