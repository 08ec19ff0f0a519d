// Signing in and out, the account's figures, and where the directory is found.
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "cli/families/handlers.h"
#include "cli/families/state.h"
#include "cli/parsers.h"
#include "cli/secrets.h"
#include "cli/usage.h"
#include "cli/words.h"

namespace cli {

namespace {

constexpr std::size_t kPasswordSize = 129;
constexpr std::size_t kTokenSize = 512;

/// "2026-02-03", or nothing for no date. The C library's own formatting may end the process over a day that is none.
std::string dateText(const ZephlinkSDK_Date& date) {
  if (date.year == 0) return {};
  char text[80];
  std::snprintf(text, sizeof text, "%lld-%02lld-%02d", date.year + 1900LL, date.month + 1LL, date.day);
  return text;
}

void printAccounting(const ZephlinkSDK_AccountingResult& record) {
  Json::Value value(Json::objectValue);
  value["action"] = accountActionText(record.action);
  value["bytesAvailable"] = Json::Int64{record.bytesAvailable};
  value["bytesUsed"] = Json::Int64{record.bytesUsed};
  value["dataPeriodEnd"] = dateText(record.dataPeriodEnd);
  value["email"] = record.email;
  value["isAutoAccount"] = record.isAutoAccount;
  value["isTeam"] = record.isTeam;
  value["minutesAvailable"] = record.minutesAvailable;
  value["minutesUsed"] = record.minutesUsed;
  value["paymentType"] = paymentTypeText(record.paymentType);
  writeJson(stdout, value);
}

void printDirectorySettings(const ZephlinkSDK_DirectorySettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["domain"] = record.domain;
  value["enableEsni"] = record.enableEsni;
  value["gatewayUri"] = record.gatewayUri;
  writeJson(stdout, value);
}

template <class Method>
int sendToken(Method& method, Words words, const char* usage) {
  if (words.size() > 1) return invalid(usage);
  if (words.size() == 1) {
    const WordOfSecret token(words[0]);
    return finish(call(method, words[0]), printState);
  }
  const Secret<kTokenSize> token("Enter oauth token");
  return finish(call(method, token.text()), printState);
}

int loginAuto(Words words) {
  if (!words.empty()) return invalid(usage::loginAuto);
  return finish(call(ZephlinkSDK_loginAutoAccount), printState);
}

int loginOAuth(Words words) { return sendToken(ZephlinkSDK_loginOAuth, words, usage::loginOauth); }

int refreshOAuth(Words words) { return sendToken(ZephlinkSDK_refreshOAuthToken, words, usage::refreshOauth); }

int loginUser(Words words) {
  if (words.size() > 2) return invalid(usage::login);
  if (words.size() == 2) {
    const WordOfSecret password(words[1]);
    return finish(call(ZephlinkSDK_login, words[0], words[1]), printState);
  }
  const Secret<kPasswordSize> password("Enter password");
  return finish(call(ZephlinkSDK_login, words[0], password.text()), printState);
}

template <class Method>
int setDirectory(Method& method, Words words, const char* usage) {
  if (words.size() > 1) return invalid(usage);
  const char* value = words.empty() ? nullptr : words[0];
  return finish(call(method, value), printDirectorySettings);
}

}  // namespace

int login(Words words) {
  if (words.empty()) return missing(usage::login);
  if (equal(words[0], "auto")) return loginAuto(words.subspan(1));
  if (equal(words[0], "oauth")) return loginOAuth(words.subspan(1));
  return loginUser(words);
}

int refresh(Words words) {
  static constexpr Action kActions[] = {{"oauth", refreshOAuth}};
  return dispatchWord(kActions, words, usage::refreshOauth);
}

int logout(Words words) {
  if (!words.empty()) return invalid(usage::logout);
  return finish(call(ZephlinkSDK_logout), printState);
}

int directory(Words words) { return setDirectory(ZephlinkSDK_setDirectoryDomain, words, usage::directory); }

int gateway(Words words) { return setDirectory(ZephlinkSDK_setDirectoryGatewayURI, words, usage::gateway); }

int esni(Words words) {
  const auto enabled = words.size() == 1 ? parseOnOff(words[0]) : std::nullopt;
  if (enabled) return finish(call(ZephlinkSDK_setEnableEsni, *enabled), printDirectorySettings);
  // The one fault that does not fail.
  printUsage(stderr);
  return kSuccess;
}

int showUser(Words) { return finish(call(ZephlinkSDK_getAccountingData), printAccounting); }

int showDirectory(Words) { return finish(call(ZephlinkSDK_getDirectorySettings), printDirectorySettings); }

}  // namespace cli
