#include "sdk/location_names.h"

#include "base/text.h"
#include "l10n/location_tables.h"
#include "l10n/translate.h"

namespace zephlinksdk {
namespace {

std::string nameOf(std::string_view group, std::string_view key) {
  return translate(std::string("{{").append(group).append(key).append("}}"));
}

}  // namespace

std::string countryName(std::string_view code) {
  if (code.empty() || code == "proxy") return std::string(code);
  return nameOf(kCountryKey, code);
}

std::string cityName(std::string_view city) {
  if (city.empty()) return std::string();
  return nameOf(kCityKey, city);
}

std::string serverName(const ZephlinkSDK_ServerInfo& server) {
  std::string name = countryName(server.country);
  if (const std::string city = cityName(server.city); !city.empty()) name += " - " + city;
  if (server.num > 0) name += " #" + std::to_string(server.num);
  return name;
}

const char* serverCountryText(const ZephlinkSDK_ServerInfo& server) {
  static char buffer[100];
  copyText(buffer, countryName(server.country));
  return buffer;
}

const char* serverCityText(const ZephlinkSDK_ServerInfo& server) {
  static char buffer[100];
  copyText(buffer, cityName(server.city));
  return buffer;
}

const char* serverFriendlyName(const ZephlinkSDK_ServerInfo& server) {
  static char buffer[100];
  copyText(buffer, serverName(server));
  return buffer;
}

}  // namespace zephlinksdk
