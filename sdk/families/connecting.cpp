// Choosing a server, connecting and disconnecting.
#include <algorithm>
#include <string>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "sdk/families/events.h"
#include "sdk/families/state.h"
#include "sdk/link/call.h"
#include "sdk/word_tables.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

constexpr std::uint64_t kConnectTimeoutMs = 60000;
constexpr std::uint64_t kDisconnectTimeoutMs = 10000;
constexpr std::string_view kPrivatePrefix = "private";
constexpr const char* kReportServer = "report_connected_server";
constexpr const char* kReportSettings = "report_server_settings";

/// A place in the daemon's form.
class Place {
 public:
  Place(const char* country, const char* city) : known(country != nullptr && city != nullptr) {
    if (known) joined = std::string(country) + "|" + city;
  }
  Place(const char* country, const char* city, std::int32_t number) : Place(country, city) {
    joined += "|" + std::to_string(number);
  }

  /// Prepends a prefix.
  Place& marked(const char* mark) {
    joined.insert(0, mark);
    return *this;
  }

  /// Returns null if one of the fields is null: the request is then refused.
  const char* text() const { return known ? joined.c_str() : nullptr; }

 private:
  bool known;
  std::string joined;
};

bool isYes(const Json::Value& data, const char* key) { return asString(member(data, key)) == "yes"; }

void readServer(const Json::Value& data, ZephlinkSDK_ServerInfo& server) {
  server.isPrivate = isYes(data, "private");
  server.isPremium = server.isPrivate;
  server.torrentAllowed = isYes(data, "torrent");
  std::string country = asString(member(data, "country"));
  if (server.isPrivate && country.starts_with(kPrivatePrefix)) country.erase(0, kPrivatePrefix.size());
  copyText(server.country, country);
  readMember(data, "city", server.city);
  readMember(data, "dc", server.dataCenter);
  server.num = leadingInteger(asString(member(data, "num")).c_str());
  readTexts(member(data, "publicIP"), server.publicIP, server.publicIPCount);
  readTexts(member(data, "dnsIP"), server.dnsIP, server.dnsIPCount);
}

void readConnectedServer(const Json::Value& data, ZephlinkSDK_ConnectResult& record) {
  readServer(data, record.server);
}

void readDirectory(const Json::Value& data, ZephlinkSDK_DirectoryResult& record) {
  readEntries(data, record.servers, record.count, readServer);
}

/// Removes and returns the part of `text` before the next "|"; empty at the end.
std::string_view takePiece(std::string_view& text) {
  const std::string_view piece = text.substr(0, text.find('|'));
  text.remove_prefix(std::min(text.size(), piece.size() + 1));
  return piece;
}

/// Clears the fields that the method does not use. An unknown method reads as the closest server.
void readServerSettings(const Json::Value& data, ZephlinkSDK_ServerSettingsResult& record) {
  const auto method = kStoredConnectMethods.find(asString(member(data, "connect_to_best_method")));
  record.connectMethod = method.value_or(ZephlinkSDK_ConnectMethod_Closest);
  const bool hasPlace = record.connectMethod == ZephlinkSDK_ConnectMethod_Country ||
                        record.connectMethod == ZephlinkSDK_ConnectMethod_Exact;
  const std::string place = hasPlace ? asString(member(data, "connect_country")) : "";
  std::string_view rest = place;
  copyText(record.country, takePiece(rest));
  copyText(record.city, takePiece(rest));
  record.num = leadingInteger(std::string(takePiece(rest)).c_str());
}

/// The daemon reports the server before it is connected: store it and continue to wait.
bool noteServer(const Json::Value& data, ZephlinkSDK_ConnectResult& record) {
  readServer(data, record.server);
  return false;
}

void endConnected(const Json::Value&, ZephlinkSDK_ConnectResult&) {}

}  // namespace

// ---- Connecting ----

ZephlinkSDK_ConnectResult ZephlinkSDK::connectCombined(const char* server, Callback<ZephlinkSDK_ConnectResult> callback,
                                                       void* userData) {
  return ask(channel,
             {.requests = {{"server_auto_connect", {{"server", server}}}},
              .reports = {{kReportServer, noteServer},
                          stateReport<ZephlinkSDK_ConnectResult>(ZephlinkSDK_State_Connected, endConnected),
                          {"report_connect_error", readDaemonError},
                          {kReportLoginError, readDaemonError}},
              .timeoutMs = kConnectTimeoutMs,
              .settingName = "server_auto_connect"},
             callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK::connect(ZephlinkSDK_ConnectMethod method,
                                               Callback<ZephlinkSDK_ConnectResult> callback, void* userData) {
  if (method == ZephlinkSDK_ConnectMethod_Country || method == ZephlinkSDK_ConnectMethod_Exact) {
    return refused<ZephlinkSDK_ConnectResult>(ZephlinkSDK_Error_Sdk);
  }
  return connectCombined(kConnectTargets.text(method), callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK::connectToCountry(const char* country,
                                                        Callback<ZephlinkSDK_ConnectResult> callback, void* userData) {
  return connectCombined(country, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK::connectToCity(const char* country, const char* city,
                                                     Callback<ZephlinkSDK_ConnectResult> callback, void* userData) {
  return connectCombined(Place(country, city).text(), callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK::connectToServer(const char* country, const char* city, std::int32_t number,
                                                       Callback<ZephlinkSDK_ConnectResult> callback, void* userData) {
  return connectCombined(Place(country, city, number).text(), callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK::connectToExactServer(const char* country, const char* city, std::int32_t number,
                                                            Callback<ZephlinkSDK_ConnectResult> callback,
                                                            void* userData) {
  return connectCombined(Place(country, city, number).marked("#").text(), callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK::connectToProxy(Callback<ZephlinkSDK_ConnectResult> callback, void* userData) {
  return connectCombined("proxy", callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK::connectIgnoreLast(Callback<ZephlinkSDK_ConnectResult> callback, void* userData) {
  return connect(ZephlinkSDK_ConnectMethod_IgnoreLast, callback, userData);
}

ZephlinkSDK_StateResult ZephlinkSDK::disconnect(Callback<ZephlinkSDK_StateResult> callback, void* userData) {
  return ask(channel,
             {.requests = {"server_disconnect"},
              .reports = {stateReport(ZephlinkSDK_State_LoggedIn), stateReport(ZephlinkSDK_State_LoggedOut)},
              .timeoutMs = kDisconnectTimeoutMs},
             callback, userData);
}

// ---- Servers ----

ZephlinkSDK_DirectoryResult ZephlinkSDK::getDirectory(Callback<ZephlinkSDK_DirectoryResult> callback, void* userData) {
  return subscribe(channel, "request_directory", "report_directory", readDirectory, callback, userData);
}

ZephlinkSDK_ConnectResult ZephlinkSDK::getConnectedServer(Callback<ZephlinkSDK_ConnectResult> callback,
                                                          void* userData) {
  return subscribe(channel, "request_connected_server", kReportServer, readConnectedServer, callback, userData);
}

// ---- The default server ----

ZephlinkSDK_ServerSettingsResult ZephlinkSDK::getServerSettings(Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                                void* userData) {
  return subscribe(channel, "request_server_settings", kReportSettings, readServerSettings, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK::setConnectMethodCombined(
    const char* mode, const char* country, Callback<ZephlinkSDK_ServerSettingsResult> callback, void* userData) {
  return changeSetting(channel, "set_server_connectbest", {{"connect_to_best_method", mode}, {"countryCode", country}},
                       kReportSettings, readServerSettings, callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK::setConnectMethod(ZephlinkSDK_ConnectMethod method,
                                                               Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                               void* userData) {
  switch (method) {
    case ZephlinkSDK_ConnectMethod_Closest:
    case ZephlinkSDK_ConnectMethod_Private:
    case ZephlinkSDK_ConnectMethod_Public:
    case ZephlinkSDK_ConnectMethod_P2P:
    case ZephlinkSDK_ConnectMethod_Proxy:
      return setConnectMethodCombined(kStoredConnectMethods.text(method), "", callback, userData);
    default:
      return refused<ZephlinkSDK_ServerSettingsResult>(ZephlinkSDK_Error_InvalidArgument);
  }
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK::setConnectMethodCountry(
    const char* country, Callback<ZephlinkSDK_ServerSettingsResult> callback, void* userData) {
  return setConnectMethodCombined(kStoredConnectMethods.text(ZephlinkSDK_ConnectMethod_Country), country, callback,
                                  userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK::setConnectMethodCity(const char* country, const char* city,
                                                                   Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                                   void* userData) {
  return setConnectMethodCountry(Place(country, city).text(), callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK::setConnectMethodServer(
    const char* country, const char* city, std::int32_t number, Callback<ZephlinkSDK_ServerSettingsResult> callback,
    void* userData) {
  return setConnectMethodCountry(Place(country, city, number).text(), callback, userData);
}

ZephlinkSDK_ServerSettingsResult ZephlinkSDK::setConnectMethodExactServer(
    const char* country, const char* city, std::int32_t number, Callback<ZephlinkSDK_ServerSettingsResult> callback,
    void* userData) {
  return setConnectMethodCombined(kStoredConnectMethods.text(ZephlinkSDK_ConnectMethod_Exact),
                                  Place(country, city, number).text(), callback, userData);
}

}  // namespace zephlinksdk
