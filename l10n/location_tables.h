// The names of countries, cities and adapter types, by the keys that the daemon sends.
#pragma once

#include "l10n/translate.h"

namespace zephlinksdk {

inline constexpr std::string_view kAdapterTypeKey = "ADAPTERTYPES.";
inline constexpr std::string_view kCityKey = "LOCATION.CITY.";
inline constexpr std::string_view kCountryKey = "LOCATION.COUNTRY.";

extern const TranslationTable kLocationTable;

/// Until it is called, translate gives every key back as it came. To be called by every object that needs the names.
void registerLocationTables();

}  // namespace zephlinksdk
