// The choice of a server, connecting to it and disconnecting.
#include <optional>
#include <span>
#include <string>

#include "cli/families/handlers.h"
#include "cli/families/state.h"
#include "cli/parsers.h"
#include "cli/usage.h"
#include "cli/words.h"
#include "l10n/location_names.h"

namespace cli {

namespace {

using zephlinksdk::Callback;
using zephlinksdk::ZephlinkSDK;

// ---- Output ----

Json::Value toJson(const ZephlinkSDK_ServerInfo& server) {
  Json::Value value(Json::objectValue);
  value["city"] = server.city;
  value["country"] = server.country;
  value["dataCenter"] = server.dataCenter;
  value["friendlyName"] = zephlinksdk::serverFriendlyName(server);
  value["isPremium"] = server.isPremium;
  value["isPrivate"] = server.isPrivate;
  value["num"] = server.num;
  value["tag"] = std::string(server.isPrivate ? "private" : "") + server.country + "-" + server.city + "-" +
                 std::to_string(server.num);
  value["torrentAllowed"] = server.torrentAllowed;
  return value;
}

template <std::size_t N>
Json::Value toJson(const char (*texts)[N], std::size_t count) {
  Json::Value list(Json::arrayValue);
  for (std::size_t i = 0; i < count; ++i) list.append(texts[i]);
  return list;
}

void printServer(const ZephlinkSDK_ConnectResult& record) {
  Json::Value value = toJson(record.server);
  value["dnsIP"] = toJson(record.server.dnsIP, record.server.dnsIPCount);
  value["publicIP"] = toJson(record.server.publicIP, record.server.publicIPCount);
  writeJson(stdout, value);
}

void printDirectory(const ZephlinkSDK_DirectoryResult& record) {
  Json::Value value(Json::objectValue);
  Json::Value& publicServers = value["public"] = Json::arrayValue;
  Json::Value& privateServers = value["private"] = Json::arrayValue;
  for (const ZephlinkSDK_ServerInfo& server : std::span(record.servers).first(record.count)) {
    (server.isPrivate ? privateServers : publicServers).append(toJson(server));
  }
  writeJson(stdout, value);
}

void printServerSettings(const ZephlinkSDK_ServerSettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["city"] = record.city;
  value["connectMethod"] = connectMethodText(record.connectMethod);
  value["country"] = record.country;
  value["num"] = record.num;
  writeJson(stdout, value);
}

// ---- Words ----

constexpr ZephlinkSDK_ConnectMethod kConnectKeywords[] = {
    ZephlinkSDK_ConnectMethod_Closest,    ZephlinkSDK_ConnectMethod_Public, ZephlinkSDK_ConnectMethod_Private,
    ZephlinkSDK_ConnectMethod_P2P,        ZephlinkSDK_ConnectMethod_Last,   ZephlinkSDK_ConnectMethod_Proxy,
    ZephlinkSDK_ConnectMethod_IgnoreLast,
};

constexpr ZephlinkSDK_ConnectMethod kDefaultKeywords[] = {
    ZephlinkSDK_ConnectMethod_Closest, ZephlinkSDK_ConnectMethod_Public, ZephlinkSDK_ConnectMethod_Private,
    ZephlinkSDK_ConnectMethod_P2P,     ZephlinkSDK_ConnectMethod_Proxy,
};

/// Keywords count only as the single word.
std::optional<ZephlinkSDK_ConnectMethod> findKeyword(std::span<const ZephlinkSDK_ConnectMethod> methods, Words words) {
  if (words.size() != 1) return std::nullopt;
  for (const ZephlinkSDK_ConnectMethod method : methods) {
    if (equal(connectMethodText(method), words[0])) return method;
  }
  return std::nullopt;
}

/// What is called for a place, as far as the words tell it.
template <class Record>
struct PlaceMethods {
  Record (&country)(ZephlinkSDK*, const char*, Callback<Record>, void*);
  Record (&city)(ZephlinkSDK*, const char*, const char*, Callback<Record>, void*);
  Record (&server)(ZephlinkSDK*, const char*, const char*, int32_t, Callback<Record>, void*);
  Record (&exactServer)(ZephlinkSDK*, const char*, const char*, int32_t, Callback<Record>, void*);
  void (*print)(const Record&);
  const char* usage;
};

/// A tag with "#" in front means this server and no other of its place.
template <class Record>
int chooseTag(const PlaceMethods<Record>& methods, const char* word) {
  const bool exact = *word == '#';
  ServerTag tag;
  if (!parseServerTag(exact ? word + 1 : word, tag)) return invalid(methods.usage);
  auto& method = exact ? methods.exactServer : methods.server;
  return finish(call(method, tag.country, tag.city, tag.number), methods.print);
}

template <class Record>
int choosePlace(const PlaceMethods<Record>& methods, Words words) {
  if (words.empty() || words.size() > 3) return invalid(methods.usage);
  if (words.size() == 1 && isServerTag(words[0])) return chooseTag(methods, words[0]);
  if (!isCountryCode(words[0]) && !isPrivateCountryCode(words[0])) return invalid(methods.usage);
  if (words.size() == 1) return finish(call(methods.country, words[0]), methods.print);
  // A bad city has the usage text of `connect` in both actions.
  if (!isAllLetters(words[1])) return invalid(usage::connect);
  if (words.size() == 2) return finish(call(methods.city, words[0], words[1]), methods.print);
  int32_t number = 0;
  if (!parseI32(words[2], number) || number <= 0) return invalid(methods.usage);
  return finish(call(methods.server, words[0], words[1], number), methods.print);
}

constexpr PlaceMethods<ZephlinkSDK_ConnectResult> kConnectMethods = {
    ZephlinkSDK_connectToCountry,
    ZephlinkSDK_connectToCity,
    ZephlinkSDK_connectToServer,
    ZephlinkSDK_connectToExactServer,
    printServer,
    usage::connect,
};

constexpr PlaceMethods<ZephlinkSDK_ServerSettingsResult> kDefaultMethods = {
    ZephlinkSDK_setConnectMethodCountry,
    ZephlinkSDK_setConnectMethodCity,
    ZephlinkSDK_setConnectMethodServer,
    ZephlinkSDK_setConnectMethodExactServer,
    printServerSettings,
    usage::connectmethod,
};

}  // namespace

int connect(Words words) {
  if (words.empty()) return finish(call(ZephlinkSDK_connect, ZephlinkSDK_ConnectMethod_Auto), printServer);
  const auto keyword = findKeyword(kConnectKeywords, words);
  if (!keyword) return choosePlace(kConnectMethods, words);
  if (*keyword == ZephlinkSDK_ConnectMethod_Proxy) return finish(call(ZephlinkSDK_connectToProxy), printServer);
  return finish(call(ZephlinkSDK_connect, *keyword), printServer);
}

int connectMethod(Words words) {
  if (words.empty()) return missing(usage::connectmethod);
  const auto keyword = findKeyword(kDefaultKeywords, words);
  if (!keyword) return choosePlace(kDefaultMethods, words);
  return finish(call(ZephlinkSDK_setConnectMethod, *keyword), printServerSettings);
}

int disconnect(Words words) {
  if (!words.empty()) return invalid(usage::disconnect);
  return finish(call(ZephlinkSDK_disconnect), printState);
}

int showServers(Words) { return finish(call(ZephlinkSDK_getDirectory), printDirectory); }

int showCurrentServer(Words) { return finish(call(ZephlinkSDK_getConnectedServer), printServer); }

int showConnectMethod(Words) { return finish(call(ZephlinkSDK_getServerSettings), printServerSettings); }

}  // namespace cli
