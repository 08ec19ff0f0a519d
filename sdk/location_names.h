// The names of countries, cities and servers, by the string table.
#pragma once

#include <string>
#include <string_view>

#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Returns the country's name; empty for an empty code, "proxy" for "proxy", the key in braces for an unknown code.
std::string countryName(std::string_view code);

/// Returns the city's name; empty for an empty key, the key in braces for an unknown one.
std::string cityName(std::string_view city);

/// Returns "Country - City #7"; without a city or a number above 0 their parts are omitted.
std::string serverName(const ZephlinkSDK_ServerInfo& server);

// Each of the following returns its own static buffer, which its next call overwrites: call them on one thread. Texts
// are cut to 99 bytes.

const char* serverCountryText(const ZephlinkSDK_ServerInfo& server);
const char* serverCityText(const ZephlinkSDK_ServerInfo& server);
const char* serverFriendlyName(const ZephlinkSDK_ServerInfo& server);

}  // namespace zephlinksdk
