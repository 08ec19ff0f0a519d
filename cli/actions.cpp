#include "cli/actions.h"

#include <cstdio>

#include "cli/families/handlers.h"
#include "cli/program_name.h"
#include "cli/usage.h"

namespace cli {

zephlinksdk::ZephlinkSDK* g_sdk = nullptr;

namespace {

int help(Words) {
  printUsage(stdout);
  return kSuccess;
}

int show(Words words);

// The first equal word decides.
constexpr Action kActions[] = {
    {"help", help},
    {"state", state},
    {"headercompression", headerCompression},
    {"connect", connect},
    {"connectmethod", connectMethod},
    {"disconnect", disconnect},
    {"encryption", encryption},
    {"jumbo", jumbo},
    {"login", login},
    {"refresh", refresh},
    {"directory", directory},
    {"gateway", gateway},
    {"esni", esni},
    {"logout", logout},
    {"maxredundant", maxRedundant},
    {"mode", mode},
    {"overflow", overflow},
    {"priorityoverflow", priorityOverflow},
    {"packetaggr", packetAggregation},
    {"ports", ports},
    {"subnets", subnets},
    {"show", show},
    {"safebrowsing", safeBrowsing},
    {"startupconnect", startupConnect},
    {"stats", stats},
    {"adapter", adapter},
    {"transport", transport},
    {"privacy", privacy},
    {"version", version},
    {"daemon", daemon},
    {"dns", dns},
    {"captiveportal", captivePortal},
    {"localproxy", localProxy},
    {"firewall", firewall},
    {"route", route},
    {"streamingbypass", streamingBypass},
    {"streaming", streaming},
    {"speedtest", speedTest},
    {"streamtest", streamTest},
    {"connectretry", connectRetry},
    {"transportretry", transportRetry},
    {"networksharing", networkSharing},
    {"log", log},
    {"targetconnections", targetConnections},
};

constexpr Action kShowActions[] = {
    {"countries", showServers},
    {"cities", showServers},
    {"servers", showServers},
    {"settings", showSettings},
    {"privacy", showPrivacy},
    {"adapters", showAdapters},
    {"currentserver", showCurrentServer},
    {"user", showUser},
    {"directory", showDirectory},
    {"connectmethod", showConnectMethod},
    {"localproxy", showLocalProxy},
    {"firewall", showFirewall},
    {"streamingbypass", showStreamingBypass},
    {"disconnect", showDisconnect},
    {"streaming", showStreaming},
    {"speedtest", showSpeedTest},
    {"logsettings", showLogSettings},
};

int show(Words words) {
  if (words.size() > 1) return invalid(usage::show);
  return dispatchWord(kShowActions, words, usage::show);
}

const Action* find(std::span<const Action> rows, const char* word) {
  for (const Action& row : rows) {
    if (equal(row.word, word)) return &row;
  }
  return nullptr;
}

int fault(const char* kind, const char* usage, Status status) {
  std::fprintf(stderr, "%s parameters: %s %s\n", kind, programName(), usage);
  return status;
}

}  // namespace

int dispatch(Words words) {
  const Action* action = words.empty() ? nullptr : find(kActions, words[0]);
  if (action != nullptr) return action->handle(words.subspan(1));
  printUsage(stderr);
  return kUnknownAction;
}

int dispatchWord(std::span<const Action> rows, Words words, const char* usage) {
  if (words.empty()) return missing(usage);
  const Action* row = find(rows, words[0]);
  return row != nullptr ? row->handle(words.subspan(1)) : invalid(usage);
}

int invalid(const char* usage) { return fault("Invalid", usage, kInvalidParameters); }

int missing(const char* usage) { return fault("Missing", usage, kMissingParameters); }

int tooMany(const char* format, std::size_t bound) {
  char text[100];
  std::snprintf(text, sizeof text, format, static_cast<int>(bound));
  return invalid(text);
}

std::optional<bool> parseOnOff(const char* word) {
  if (equal(word, "on")) return true;
  if (equal(word, "off")) return false;
  return std::nullopt;
}

}  // namespace cli
