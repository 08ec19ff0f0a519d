// Choosing a server, connecting and disconnecting.
#include <cstdint>
#include <new>
#include <optional>
#include <span>
#include <string>

#include "cli/families/families.h"
#include "cli/families/state.h"
#include "cli/handlers.h"
#include "zephlinksdk/words.h"

namespace cli {

namespace {

// ---- Output ----

Json::Value toJson(const ZephlinkSDK_ServerInfo& server) {
  Json::Value value(Json::objectValue);
  value["city"] = server.city;
  value["country"] = server.country;
  value["dataCenter"] = server.dataCenter;
  char name[100];
  if (ZephlinkSDK_serverName(&server, name, sizeof name) == SIZE_MAX) throw std::bad_alloc();
  value["friendlyName"] = name;
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
  value["connectMethod"] = ZephlinkSDK_connectMethodText(record.connectMethod);
  value["country"] = record.country;
  value["num"] = record.num;
  writeJson(stdout, value);
}

// ---- Arguments ----

constexpr ZephlinkSDK_ConnectMethod kConnectKeywords[] = {
    ZephlinkSDK_ConnectMethod_Closest,    ZephlinkSDK_ConnectMethod_Public, ZephlinkSDK_ConnectMethod_Private,
    ZephlinkSDK_ConnectMethod_P2P,        ZephlinkSDK_ConnectMethod_Last,   ZephlinkSDK_ConnectMethod_Proxy,
    ZephlinkSDK_ConnectMethod_IgnoreLast,
};

constexpr ZephlinkSDK_ConnectMethod kDefaultKeywords[] = {
    ZephlinkSDK_ConnectMethod_Closest, ZephlinkSDK_ConnectMethod_Public, ZephlinkSDK_ConnectMethod_Private,
    ZephlinkSDK_ConnectMethod_P2P,     ZephlinkSDK_ConnectMethod_Proxy,
};

/// A keyword is valid only as the single argument.
std::optional<ZephlinkSDK_ConnectMethod> findKeyword(std::span<const ZephlinkSDK_ConnectMethod> methods,
                                                     Arguments arguments) {
  if (arguments.size() != 1) return std::nullopt;
  for (const ZephlinkSDK_ConnectMethod method : methods) {
    if (equal(ZephlinkSDK_connectMethodText(method), arguments[0])) return method;
  }
  return std::nullopt;
}

constexpr char kConnectUsage[] =
    "connect [ closest | public | private | p2p | <country> [<city> [<number>]] | last | <tag> ]";

/// A tag with a leading "#" selects exactly this server.
template <auto& Server, auto& ExactServer, auto& Print>
int chooseTag(const char* argument, const char* usage) {
  const bool exact = *argument == '#';
  ServerTag tag;
  if (!parseServerTag(exact ? argument + 1 : argument, tag)) return invalid(usage);
  if (exact) return finish(call<ExactServer>(tag.country, tag.city, tag.number), Print);
  return finish(call<Server>(tag.country, tag.city, tag.number), Print);
}

template <auto& Country, auto& City, auto& Server, auto& ExactServer, auto& Print>
int choosePlace(Arguments arguments, const char* usage) {
  if (arguments.empty() || arguments.size() > 3) return invalid(usage);
  if (arguments.size() == 1 && isServerTag(arguments[0]))
    return chooseTag<Server, ExactServer, Print>(arguments[0], usage);
  if (!isCountryCode(arguments[0]) && !isPrivateCountryCode(arguments[0])) return invalid(usage);
  if (arguments.size() == 1) return finish(call<Country>(arguments[0]), Print);
  // Both actions print the usage of `connect` for an invalid city.
  if (!isAllLetters(arguments[1])) return invalid(kConnectUsage);
  if (arguments.size() == 2) return finish(call<City>(arguments[0], arguments[1]), Print);
  const auto number = valueOf<parseI32>(arguments[2]);
  if (!number || *number <= 0) return invalid(usage);
  return finish(call<Server>(arguments[0], arguments[1], *number), Print);
}

constexpr Handler& connectToPlace =
    choosePlace<ZephlinkSDK_connectToCountry, ZephlinkSDK_connectToCity, ZephlinkSDK_connectToServer,
                ZephlinkSDK_connectToExactServer, printServer>;

constexpr Handler& setDefaultPlace =
    choosePlace<ZephlinkSDK_setConnectMethodCountry, ZephlinkSDK_setConnectMethodCity,
                ZephlinkSDK_setConnectMethodServer, ZephlinkSDK_setConnectMethodExactServer, printServerSettings>;

int connectTo(Arguments arguments, const char* usage) {
  if (arguments.empty()) return finish(call<ZephlinkSDK_connect>(ZephlinkSDK_ConnectMethod_Auto), printServer);
  const auto keyword = findKeyword(kConnectKeywords, arguments);
  if (!keyword) return connectToPlace(arguments, usage);
  if (*keyword == ZephlinkSDK_ConnectMethod_Proxy)
    return perform<ZephlinkSDK_connectToProxy, printServer>(arguments, usage);
  return finish(call<ZephlinkSDK_connect>(*keyword), printServer);
}

int setDefault(Arguments arguments, const char* usage) {
  const auto keyword = findKeyword(kDefaultKeywords, arguments);
  if (!keyword) return setDefaultPlace(arguments, usage);
  return finish(call<ZephlinkSDK_setConnectMethod>(*keyword), printServerSettings);
}

constexpr Action kRows[] = {
    {"connect", kConnectUsage, connectTo},
    {"connectmethod", "connectmethod < closest | public | private | p2p | <country> [<city> [<number>]] | <tag> >",
     atLeast<1, setDefault>},
    {"disconnect", "disconnect", exactly<0, perform<ZephlinkSDK_disconnect, printState>>},
};

constexpr Handler& showServers = exactly<0, perform<ZephlinkSDK_getDirectory, printDirectory>>;

constexpr Action kShowRows[] = {
    {"countries", nullptr, showServers},
    {"cities", nullptr, showServers},
    {"servers", nullptr, showServers},
    {"currentserver", nullptr, exactly<0, perform<ZephlinkSDK_getConnectedServer, printServer>>},
    {"connectmethod", nullptr, exactly<0, perform<ZephlinkSDK_getServerSettings, printServerSettings>>},
};

}  // namespace

constinit const families::Family families::connecting{kRows, kShowRows};

}  // namespace cli
