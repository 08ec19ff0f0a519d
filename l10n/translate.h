// Keys into text. What daemon and library say in keys, `{{KEY}}`, becomes text by way of tables that are registered
// here.
//
// Every function may be called on any thread. Texts are UTF-8.
#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace zephlinksdk {

/// One row: the end of a key, and its text.
struct Translation {
  std::string_view key;
  std::string_view text;
};

/// The rows whose keys begin with `prefix`, in ascending byte order of what follows it.
struct TranslationGroup {
  std::string_view prefix;
  std::span<const Translation> rows;
};

/// One language; `code` is that of ISO 639-1.
struct TranslationLanguage {
  std::string_view code;
  std::span<const TranslationGroup> groups;
};

/// A table is constant data: it must stand as long as the process.
struct TranslationTable {
  std::span<const TranslationLanguage> languages;
};

/// What lookups rely on; for a static_assert beside the rows.
constexpr bool isSorted(std::span<const TranslationGroup> groups) {
  return std::all_of(groups.begin(), groups.end(), [](const TranslationGroup& group) {
    return std::is_sorted(group.rows.begin(), group.rows.end(),
                          [](const Translation& left, const Translation& right) { return left.key < right.key; });
  });
}

/// Tables are searched in the order of registration. Registering one again does nothing.
void registerTranslationTable(const TranslationTable& table);

/// What `{zephlinkProductName}` in a text stands for; "Zephlink" at first.
void setApplicationName(std::string_view name);

/// Gives back the text of `{{KEY}}`, or the input if it has another form or the key is not known.
///
/// A JSON object of arguments may follow, `{{KEY}}|{"name":"value"}`: `{name}` in the text becomes `value`. Arguments
/// that cannot be read count as none. Anything else behind the braces is dropped.
std::string translate(std::string_view input);

}  // namespace zephlinksdk
