// Signing in and out, the account's figures and the directory settings.
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "cli/families/families.h"
#include "cli/families/state.h"
#include "cli/handlers.h"
#include "cli/secrets.h"
#include "cli/usage.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

constexpr std::size_t kPasswordSize = 129;
constexpr std::size_t kTokenSize = 512;

/// Formats a date as "2026-02-03"; empty without a date. The C library's formatting may abort on an invalid day.
std::string dateText(const ZephlinkSDK_Date& date) {
  if (date.year == 0) return {};
  char text[80];
  std::snprintf(text, sizeof text, "%lld-%02lld-%02d", date.year + 1900LL, date.month + 1LL, date.day);
  return text;
}

void printAccounting(const ZephlinkSDK_AccountingResult& record) {
  Json::Value value(Json::objectValue);
  value["action"] = ZephlinkSDK_accountActionText(record.action);
  value["bytesAvailable"] = Json::Int64{record.bytesAvailable};
  value["bytesUsed"] = Json::Int64{record.bytesUsed};
  value["dataPeriodEnd"] = dateText(record.dataPeriodEnd);
  value["email"] = record.email;
  value["isAutoAccount"] = record.isAutoAccount;
  value["isTeam"] = record.isTeam;
  value["minutesAvailable"] = record.minutesAvailable;
  value["minutesUsed"] = record.minutesUsed;
  value["paymentType"] = ZephlinkSDK_paymentTypeText(record.paymentType);
  writeJson(stdout, value);
}

void printDirectorySettings(const ZephlinkSDK_DirectorySettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["domain"] = record.domain;
  value["enableEsni"] = record.enableEsni;
  value["gatewayUri"] = record.gatewayUri;
  writeJson(stdout, value);
}

template <auto& Method>
int sendToken(Arguments arguments, const char* usage) {
  if (arguments.size() > 1) return invalid(usage);
  if (arguments.size() == 1) {
    const SecretArgument token(arguments[0]);
    return finish(call<Method>(arguments[0]), printState);
  }
  const Secret<kTokenSize> token("Enter oauth token");
  return finish(call<Method>(token.text()), printState);
}

int loginUser(Arguments arguments, const char* usage) {
  if (arguments.empty()) return missing(usage);
  if (arguments.size() > 2) return invalid(usage);
  if (arguments.size() == 2) {
    const SecretArgument password(arguments[1]);
    return finish(call<ZephlinkSDK_login>(arguments[0], arguments[1]), printState);
  }
  const Secret<kPasswordSize> password("Enter password");
  return finish(call<ZephlinkSDK_login>(arguments[0], password.text()), printState);
}

template <auto& Method>
int setDirectory(Arguments arguments, const char* usage) {
  if (arguments.size() > 1) return invalid(usage);
  const char* value = arguments.empty() ? nullptr : arguments[0];
  return finish(call<Method>(value), printDirectorySettings);
}

int setEsni(Arguments arguments, const char*) {
  const auto enabled = arguments.size() == 1 ? valueOf<parseSwitch>(arguments[0]) : std::nullopt;
  if (enabled) return finish(call<ZephlinkSDK_setEnableEsni>(*enabled), printDirectorySettings);
  // Unlike other faults, this one exits with 0 and prints the general usage.
  printUsage(stderr);
  return kSuccess;
}

constexpr Action kLoginRows[] = {
    {"auto", "login auto", exactly<0, perform<ZephlinkSDK_loginAutoAccount, printState>>},
    {"oauth", "login oauth [access token]", sendToken<ZephlinkSDK_loginOAuth>},
};

constexpr Action kRefreshRows[] = {
    {"oauth", nullptr, sendToken<ZephlinkSDK_refreshOAuthToken>},
};

constexpr Action kRows[] = {
    {"login", "login <username> [password]", loginUser, &rows<kLoginRows>},
    {"refresh", "refresh oauth [access token]", nullptr, &rows<kRefreshRows>},
    {"logout", "logout", exactly<0, perform<ZephlinkSDK_logout, printState>>},
    {"directory", "directory [directory server domain]", setDirectory<ZephlinkSDK_setDirectoryDomain>},
    {"gateway", "gateway [directory gateway uri]", setDirectory<ZephlinkSDK_setDirectoryGatewayURI>},
    {"esni", nullptr, setEsni},
};

constexpr Action kShowRows[] = {
    {"user", nullptr, exactly<0, perform<ZephlinkSDK_getAccountingData, printAccounting>>},
    {"directory", nullptr, exactly<0, perform<ZephlinkSDK_getDirectorySettings, printDirectorySettings>>},
};

}  // namespace

constinit const families::Family families::account{kRows, kShowRows};

}  // namespace cli
