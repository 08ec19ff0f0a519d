// The daemon's log files and problem reports, and its end.
#include <cstdlib>

#include "cli/families/handlers.h"
#include "cli/usage.h"
#include "sdk/words.h"

namespace cli {

namespace {

/// The level goes out as its number.
void printSettings(const ZephlinkSDK_LogSettingsResult& record) {
  Json::Value value(Json::objectValue);
  Json::Value& daemon = value["daemon"];
  daemon["fileSize"] = record.daemon.fileSize;
  daemon["filesPerDaemon"] = record.daemon.filesPerDaemon;
  daemon["totalFiles"] = record.daemon.totalFiles;
  daemon["logLevel"] = static_cast<std::uint32_t>(record.daemon.logLevel);
  writeJson(stdout, value);
}

void printTicket(const ZephlinkSDK_LogReportResult& record) {
  Json::Value value(Json::objectValue);
  value["ticketId"] = record.ticketId;
  writeJson(stdout, value);
}

void printNothing(const ZephlinkSDK_Result&) {}

/// What is no number is 0; nothing is refused.
std::int32_t plainNumber(const char* word) { return static_cast<std::int32_t>(std::strtol(word, nullptr, 10)); }

int logReport(Words words) {
  if (words.size() != 3) return invalid(usage::logReport);
  return finish(call(ZephlinkSDK_sendLogReport, words[0], words[1], words[2]), printTicket);
}

/// Words behind it are ignored.
int logErase(Words) { return finish(ZephlinkSDK_eraseLogs(g_sdk), printNothing); }

int logDaemon(Words words) {
  if (words.size() != 4) return invalid(usage::logDaemon);
  const auto level = zephlinksdk::kDaemonLogLevelWords.find(words[3]);
  if (!level) return invalid(usage::logDaemon);
  const ZephlinkSDK_DaemonLogSettings settings{plainNumber(words[0]), plainNumber(words[1]), plainNumber(words[2]),
                                               *level};
  return finish(call(ZephlinkSDK_setDaemonLogSettings, settings), printSettings);
}

constexpr Action kLogActions[] = {{"report", logReport}, {"erase", logErase}, {"daemon", logDaemon}};

}  // namespace

int log(Words words) { return dispatchWord(kLogActions, words, usage::log); }

int daemon(Words words) {
  if (words.empty()) return missing(usage::daemonExit);
  if (words.size() > 1 || !equal(words[0], "exit")) return invalid(usage::daemonExit);
  return finish(ZephlinkSDK_exitDaemon(g_sdk), printNothing);
}

int showLogSettings(Words) { return finish(call(ZephlinkSDK_getLogSettings), printSettings); }

}  // namespace cli
