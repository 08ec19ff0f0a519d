// The names of countries and cities, and how a server is called.
#pragma once

#include <string>
#include <string_view>

#include "sdk/results.h"

namespace zephlinksdk {

/// The country's name; nothing for nothing, "proxy" for "proxy", and the key in its braces for an unknown code.
std::string countryName(std::string_view code);

/// The city's name; nothing for nothing, and the key in its braces for an unknown city.
std::string cityName(std::string_view city);

// Each of the following gives back a buffer of its own, which its next call overwrites: for use on one thread. Texts
// are cut to 99 bytes.

const char* serverCountryText(const ZephlinkSDK_ServerInfo& server);
const char* serverCityText(const ZephlinkSDK_ServerInfo& server);

/// "Country - City #7"; without a city or a number above 0 their parts are missing.
const char* serverFriendlyName(const ZephlinkSDK_ServerInfo& server);

}  // namespace zephlinksdk
