// Translates keys into text. The daemon and the library send keys as `{{KEY}}`; the tables registered here contain
// their texts.
//
// Every function may be called on any thread. Texts are UTF-8.
#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace zephlinksdk {

/// One row: the end of a key, and the text.
struct Translation {
  std::string_view key;
  std::string_view text;
};

/// The rows whose keys start with `prefix`, in ascending byte order of the rest of the key.
struct TranslationGroup {
  std::string_view prefix;
  std::span<const Translation> rows;
};

/// One language. `code` is its ISO 639-1 code.
struct TranslationLanguage {
  std::string_view code;
  std::span<const TranslationGroup> groups;
};

/// A table of constant data. REQUIRES: it exists until the process ends.
struct TranslationTable {
  std::span<const TranslationLanguage> languages;
};

/// Lookups require sorted rows; for a static_assert next to the rows.
constexpr bool isSorted(std::span<const TranslationGroup> groups) {
  return std::all_of(groups.begin(), groups.end(), [](const TranslationGroup& group) {
    return std::is_sorted(group.rows.begin(), group.rows.end(),
                          [](const Translation& left, const Translation& right) { return left.key < right.key; });
  });
}

/// Tables are searched in the order of registration. Registering one again does nothing.
void registerTranslationTable(const TranslationTable& table);

/// Sets the replacement for `{zephlinkProductName}` in texts; "Zephlink" initially.
void setApplicationName(std::string_view name);

/// Returns the text of `{{KEY}}`, or the input if it has another form or the key is unknown.
///
/// A JSON object of arguments may follow, `{{KEY}}|{"name":"value"}`: `{name}` in the text becomes `value`. Arguments
/// that cannot be read are ignored. Anything else after the braces is dropped.
std::string translate(std::string_view input);

}  // namespace zephlinksdk
