// The daemon's log files, problem reports and shutdown.
#include <cstdlib>

#include "cli/families/families.h"
#include "cli/handlers.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

/// Prints the level as a number.
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

/// Text that is not a number gives 0.
std::int32_t plainNumber(const char* argument) { return static_cast<std::int32_t>(std::strtol(argument, nullptr, 10)); }

int sendReport(Arguments arguments, const char* usage) {
  if (arguments.size() != 3) return invalid(usage);
  return finish(call<ZephlinkSDK_sendLogReport>(arguments[0], arguments[1], arguments[2]), printTicket);
}

/// Ignores arguments.
int eraseLogs(Arguments, const char*) { return finish(ZephlinkSDK_eraseLogs(g_sdk), printNothing); }

int setDaemonLog(Arguments arguments, const char* usage) {
  if (arguments.size() != 4) return invalid(usage);
  const auto level = valueOf<ZephlinkSDK_daemonLogLevelFromText>(arguments[3]);
  if (!level) return invalid(usage);
  const ZephlinkSDK_DaemonLogSettings settings{plainNumber(arguments[0]), plainNumber(arguments[1]),
                                               plainNumber(arguments[2]), *level};
  return finish(call<ZephlinkSDK_setDaemonLogSettings>(settings), printSettings);
}

int exitDaemon(Arguments, const char*) { return finish(ZephlinkSDK_exitDaemon(g_sdk), printNothing); }

constexpr Action kLogRows[] = {
    {"report", "log report <email> <message> <filepath>", sendReport},
    {"erase", "log erase", eraseLogs},
    {"daemon", "log daemon <file size> <files per daemon> <total files> <verbose|info|warn|error>", setDaemonLog},
};

constexpr Action kDaemonRows[] = {
    {"exit", nullptr, exactly<0, exitDaemon>},
};

constexpr Action kRows[] = {
    {"log", "log <erase|daemon>", nullptr, &rows<kLogRows>},
    {"daemon", "daemon exit", nullptr, &rows<kDaemonRows>},
};

constexpr Action kShowRows[] = {
    {"logsettings", nullptr, exactly<0, perform<ZephlinkSDK_getLogSettings, printSettings>>},
};

}  // namespace

constinit const families::Family families::logs{kRows, kShowRows};

}  // namespace cli
