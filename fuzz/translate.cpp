// Fuzzes the translation of keys, with an additional table.
//
// Texts that are not a key and unknown keys are returned unchanged. A text without placeholders is returned as it is,
// whatever the arguments. A value without braces replaces exactly its placeholder. No arguments expand a text to more
// than a few megabytes.
#include "l10n/translate.h"

#include "fuzz/check.h"
#include "l10n/location_tables.h"

namespace {

constexpr std::size_t kLargestText = std::size_t{2} * 1024 * 1024;

constexpr zephlinksdk::Translation kRows[] = {
    {"FILLED", "<{name}|{zephlinkProductName}|{name}|{}>"},
    {"PLAIN", "unchanged"},
};
constexpr zephlinksdk::TranslationGroup kGroups[] = {{"FUZZ_", kRows}};
static_assert(zephlinksdk::isSorted(kGroups));
constexpr zephlinksdk::TranslationLanguage kLanguages[] = {{"en", kGroups}};
constexpr zephlinksdk::TranslationTable kTable{kLanguages};

/// Checks the text of FUZZ_FILLED if the arguments are an object with the single text "name".
void checkFilled(std::string_view arguments, const std::string& text) {
  Json::Value object;
  if (!fuzz::parseJson(arguments, object) || !object.isObject() || object.size() != 1 || !object["name"].isString())
    return;
  const std::string value = object["name"].asString();
  if (value.find_first_of("{}") != std::string::npos) return;
  fuzz::check(text == "<" + value + "|Zephlink|" + value + "|{}>", "a value replaces its placeholder", text);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  zephlinksdk::registerTranslationTable(kTable);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::textOf(data, size);
  const std::string text = zephlinksdk::translate(input);
  fuzz::check(text.size() <= kLargestText + 2 * input.size(), "values that contain names do not grow without bound");
  const std::size_t end = input.find("}}");
  if (!input.starts_with("{{") || end == std::string_view::npos) {
    fuzz::check(text == input, "text that is not a key is unchanged", text);
    return 0;
  }
  const std::string_view key = input.substr(2, end - 2);
  const std::string_view rest = input.substr(end + 2);
  if (key == "FUZZ_PLAIN") fuzz::check(text == "unchanged", "a text without placeholders is unchanged", text);
  if (key == "FUZZ_FILLED" && rest.starts_with("|")) checkFilled(rest.substr(1), text);
  if (key == "FUZZ_FILLED" && !rest.starts_with("|")) {
    fuzz::check(text == "<{name}|Zephlink|{name}|{}>", "without arguments only the product name is inserted", text);
  }
  if (!key.starts_with("FUZZ_")) {
    // For a key without placeholders, or an unknown key, only the key matters.
    const std::string bare = zephlinksdk::translate(input.substr(0, end + 2));
    fuzz::check(text == input || text == bare, "arguments do not change a text without placeholders", text);
  }
  return 0;
}
