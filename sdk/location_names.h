// The names of countries, cities and servers from the string table.
#pragma once

#include <string>
#include <string_view>

#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Returns the country's name; empty for an empty code, "proxy" for "proxy", the key in braces for an unknown code.
std::string countryName(std::string_view code);

/// Returns the city's name; empty for an empty key, the key in braces for an unknown one.
std::string cityName(std::string_view city);

/// Returns "Country - City #7"; omits the city if it is empty and the number unless it is above 0.
std::string serverName(const ZephlinkSDK_ServerInfo& server);

// Each of the following returns its own static buffer, which the next call overwrites. Call them on one thread only.
// Texts are cut to 99 bytes.

const char* serverCountryText(const ZephlinkSDK_ServerInfo& server);
const char* serverCityText(const ZephlinkSDK_ServerInfo& server);
const char* serverFriendlyName(const ZephlinkSDK_ServerInfo& server);

}  // namespace zephlinksdk
