// Signing in and out, the account's figures and the directory settings.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "sdk/families/events.h"
#include "sdk/families/state.h"
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

constexpr std::uint64_t kLoginTimeoutMs = 60000;
constexpr const char* kReportDirectory = "report_directory_settings";
constexpr std::int64_t kFirstYear = 1900;

/// Reads "year-month-day" up to the first invalid character.
void readDate(const std::string& text, ZephlinkSDK_Date& date) {
  date = {};
  const char* rest = text.c_str();
  std::int32_t number = 0;
  if (!takeInteger(rest, number)) return;
  date.year = static_cast<std::int32_t>(number - kFirstYear);
  if (*rest++ != '-' || !takeInteger(rest, number)) return;
  date.month = static_cast<std::int32_t>(std::int64_t{number} - 1);
  if (*rest++ != '-' || !takeInteger(rest, number)) return;
  date.day = number;
}

void readAccounting(const Json::Value& data, ZephlinkSDK_AccountingResult& record) {
  readMember(data, "email", record.email);
  readMember(data, "isAutoAccount", record.isAutoAccount);
  readMember(data, "bytesAvail", record.bytesAvailable);
  readMember(data, "bytesUsed", record.bytesUsed);
  readMember(data, "isTeam", record.isTeam);
  readMember(data, "minutesAvail", record.minutesAvailable);
  readMember(data, "minutesUsed", record.minutesUsed);
  record.paymentType = kPaymentTiers.find(asInt(member(data, "payTier"))).value_or(ZephlinkSDK_PaymentType_Free);
  readDate(asString(member(data, "periodEndDate")), record.dataPeriodEnd);
  record.action =
      kAccountActionWire.find(asString(member(data, "account_action"))).value_or(ZephlinkSDK_AccountAction_None);
}

void readDirectorySettings(const Json::Value& data, ZephlinkSDK_DirectorySettingsResult& record) {
  readMember(data, "domain", record.domain);
  readMember(data, "enableEsni", record.enableEsni);
  readMember(data, "gatewayUri", record.gatewayUri);
}

/// All ways of signing in end with the same reports.
ZephlinkSDK_StateResult signIn(const Channel& channel, std::vector<Request> requests,
                               Callback<ZephlinkSDK_StateResult> callback, void* userData) {
  return ask(channel,
             {.requests = std::move(requests),
              .reports = {stateReport(ZephlinkSDK_State_LoggedIn),
                          stateReport(ZephlinkSDK_State_Connected),
                          stateReport(ZephlinkSDK_State_OverLimit),
                          {kReportLoginError, readDaemonError}},
              .timeoutMs = kLoginTimeoutMs},
             callback, userData);
}

/// A null `value` sends the request without members. A refusal does not end the call, which then times out.
ZephlinkSDK_DirectorySettingsResult setDirectoryText(const Channel& channel, const char* request, const char* key,
                                                     const char* value,
                                                     Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                     void* userData) {
  return ask(channel,
             {.requests = {value != nullptr ? Request(request, {{key, value}}) : Request(request)},
              .reports = {{kReportDirectory, readDirectorySettings}}},
             callback, userData);
}

}  // namespace

ZephlinkSDK_StateResult ZephlinkSDK::login(const char* username, const char* password,
                                           Callback<ZephlinkSDK_StateResult> callback, void* userData) {
  return signIn(channel, {{"login", {{"username", username}, {"password", password}}}}, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK::loginOAuth(const char* token, Callback<ZephlinkSDK_StateResult> callback,
                                                void* userData) {
  return signIn(channel, {{"login_oauth", {{"oauth", token}}}}, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK::refreshOAuthToken(const char* token, Callback<ZephlinkSDK_StateResult> callback,
                                                       void* userData) {
  return signIn(channel, {{"update_oauth", {{"oauth", token}}}}, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK::loginAutoAccount(Callback<ZephlinkSDK_StateResult> callback, void* userData) {
  return signIn(channel, {"allow_auto_account", "login_auto"}, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK::logout(Callback<ZephlinkSDK_StateResult> callback, void* userData) {
  return ask(channel, {.requests = {"logout", kRequestState}, .reports = {stateReport(ZephlinkSDK_State_LoggedOut)}},
             callback, userData);
}

ZephlinkSDK_AccountingResult ZephlinkSDK::getAccountingData(Callback<ZephlinkSDK_AccountingResult> callback,
                                                            void* userData) {
  return subscribe(channel, "request_accounting_data", "report_accounting_data", readAccounting, callback, userData);
}

ZephlinkSDK_DirectorySettingsResult ZephlinkSDK::getDirectorySettings(
    Callback<ZephlinkSDK_DirectorySettingsResult> callback, void* userData) {
  return subscribe(channel, "request_directory_url", kReportDirectory, readDirectorySettings, callback, userData);
}

ZephlinkSDK_DirectorySettingsResult ZephlinkSDK::setDirectoryDomain(
    const char* domain, Callback<ZephlinkSDK_DirectorySettingsResult> callback, void* userData) {
  return setDirectoryText(channel, "set_directory_domain", "domain", domain, callback, userData);
}

ZephlinkSDK_DirectorySettingsResult ZephlinkSDK::setDirectoryGatewayURI(
    const char* uri, Callback<ZephlinkSDK_DirectorySettingsResult> callback, void* userData) {
  return setDirectoryText(channel, "set_directory_gateway_uri", "url", uri, callback, userData);
}

ZephlinkSDK_DirectorySettingsResult ZephlinkSDK::setEnableEsni(bool /*enabled*/,
                                                               Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                               void* userData) {
  return getDirectorySettings(callback, userData);
}

}  // namespace zephlinksdk
