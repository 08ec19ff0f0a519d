// The daemon's log files, problem reports and shutdown.
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

namespace fs = std::filesystem;

using Settings = ZephlinkSDK_LogSettingsResult;
using Ticket = ZephlinkSDK_LogReportResult;

constexpr const char* kSettingsReport = "report_log_settings";
constexpr std::uint64_t kReportTimeoutMs = 60000;

void readSettings(const Json::Value& data, Settings& record) {
  const Json::Value& daemon = member(data, "daemon");
  readMember(daemon, "file_size", record.daemon.fileSize);
  readMember(daemon, "files_per_daemon", record.daemon.filesPerDaemon);
  readMember(daemon, "total_files", record.daemon.totalFiles);
  // Keep the previous level if the level is unknown.
  if (const auto level = kDaemonLogLevelWords.find(asString(member(daemon, "log_level")))) {
    record.daemon.logLevel = *level;
  }
}

void readTicket(const Json::Value& data, Ticket& record) {
  if (reportsFailure(data)) return readDaemonError(data, record.head);
  readMember(data, "ticket_id", record.ticketId);
}

/// Returns the absolute path of an existing file with links resolved; nothing if the file does not exist. Both paths
/// are UTF-8. Throws `fs::filesystem_error` if the system cannot examine the path.
std::optional<std::string> canonicalPath(const char* file) {
  const fs::path path(reinterpret_cast<const char8_t*>(file));
  std::error_code failure;
  const fs::file_type type = fs::status(path, failure).type();
  if (type == fs::file_type::not_found) return std::nullopt;
  if (type == fs::file_type::none) {
    if (!failure) return std::nullopt;
    throw fs::filesystem_error("exists", path, failure);
  }
  const std::u8string canonical = fs::canonical(path, failure).u8string();
  if (failure) throw fs::filesystem_error("canonical", path, failure);
  return std::string(canonical.begin(), canonical.end());
}

bool isEmpty(const char* text) { return text == nullptr || *text == '\0'; }

/// Sends a request that the daemon does not answer.
ZephlinkSDK_Result sendUnanswered(const Channel& channel, const char* request) {
  if (!channel) return refused<ZephlinkSDK_Result>(ZephlinkSDK_Error_Sdk);
  channel->send(request);
  return {};
}

}  // namespace

Settings ZephlinkSDK::getLogSettings(Callback<Settings> callback, void* userData) {
  return subscribe(channel, "request_log_settings", kSettingsReport, readSettings, callback, userData);
}

Settings ZephlinkSDK::setDaemonLogSettings(ZephlinkSDK_DaemonLogSettings settings, Callback<Settings> callback,
                                           void* userData) {
  if (settings.logLevel > ZephlinkSDK_DaemonLogLevel_Error) {
    return refused<Settings>(ZephlinkSDK_Error_InvalidArgument);
  }
  const Json::Value daemon = toObject({{"file_size", settings.fileSize},
                                       {"files_per_daemon", settings.filesPerDaemon},
                                       {"total_files", settings.totalFiles},
                                       {"log_level", kDaemonLogLevelWords.text(settings.logLevel)}});
  return changeSetting(channel, "set_daemon_log_settings", {{"daemon", daemon}}, kSettingsReport, readSettings,
                       callback, userData);
}

Ticket ZephlinkSDK::sendLogReport(const char* email, const char* message, const char* filepath,
                                  Callback<Ticket> callback, void* userData) {
  if (!channel) return refused<Ticket>(ZephlinkSDK_Error_Sdk);
  if (isEmpty(email) || isEmpty(filepath)) return refused<Ticket>(ZephlinkSDK_Error_InvalidArgument);
  std::optional<std::string> file;
  try {
    file = canonicalPath(filepath);
  } catch (const fs::filesystem_error& failure) {
    Ticket record{};
    setError(record.head, ZephlinkSDK_Error_Sdk, failure.what());
    return record;
  }
  if (!file) return refused<Ticket>(ZephlinkSDK_Error_InvalidArgument);
  return ask(channel,
             {.requests = {{"send_log_report", {{"email", email}, {"filename", *file}, {"message", message}}}},
              .reports = {{"report_log_result", readTicket}},
              .timeoutMs = kReportTimeoutMs},
             callback, userData);
}

ZephlinkSDK_Result ZephlinkSDK::eraseLogs() { return sendUnanswered(channel, "erase_all_log_files"); }

ZephlinkSDK_Result ZephlinkSDK::exitDaemon() { return sendUnanswered(channel, "exit"); }

}  // namespace zephlinksdk
