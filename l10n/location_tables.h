// The names of countries, cities and adapter types, by the keys that the daemon sends.
#pragma once

#include "l10n/translate.h"

namespace zephlinksdk {

inline constexpr std::string_view kAdapterTypeKey = "ADAPTERTYPES.";
inline constexpr std::string_view kCityKey = "LOCATION.CITY.";
inline constexpr std::string_view kCountryKey = "LOCATION.COUNTRY.";

extern const TranslationTable kLocationTable;

/// Before the first call, translate returns every key unchanged. Each object that needs the names calls this.
void registerLocationTables();

}  // namespace zephlinksdk
