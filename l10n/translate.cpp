#include "l10n/translate.h"

#include <json/json.h>

#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "base/json_reals.h"

namespace zephlinksdk {
namespace {

constexpr std::string_view kOpening = "{{";
constexpr std::string_view kClosing = "}}";
constexpr char kProductName[] = "zephlinkProductName";
// In bytes. Values may contain the names of other arguments, so a few hundred bytes of arguments could double a text
// without limit.
constexpr std::size_t kLargestText = std::size_t{1024} * 1024;

struct Translator {
  std::mutex translationMutex;
  std::vector<const TranslationTable*> tables;
  std::string_view currentLanguage = "en";
  std::string_view fallbackLanguage = "en";
  std::string applicationName = "Zephlink";
};

Translator& translator() {
  static Translator instance;
  return instance;
}

std::optional<std::string_view> find(const TranslationLanguage& language, std::string_view key) {
  for (const TranslationGroup& group : language.groups) {
    if (!key.starts_with(group.prefix)) continue;
    const std::string_view end = key.substr(group.prefix.size());
    const auto row =
        std::lower_bound(group.rows.begin(), group.rows.end(), end,
                         [](const Translation& each, std::string_view wanted) { return each.key < wanted; });
    if (row != group.rows.end() && row->key == end) return row->text;
  }
  return std::nullopt;
}

std::optional<std::string_view> find(const Translator& from, std::string_view key) {
  for (const TranslationTable* table : from.tables) {
    for (const std::string_view code : {from.currentLanguage, from.fallbackLanguage}) {
      for (const TranslationLanguage& language : table->languages) {
        if (language.code != code) continue;
        if (const auto text = find(language, key)) return text;
      }
    }
  }
  return std::nullopt;
}

/// Returns the JSON object in `text`, as far as it can be read; an empty object for anything else.
Json::Value parseArguments(std::string_view text) {
  try {
    Json::CharReaderBuilder builder;
    builder["collectComments"] = false;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value arguments;
    reader->parse(text.data(), text.data() + text.size(), &arguments, nullptr);
    if (arguments.isObject()) return arguments;
  } catch (const std::exception&) {
    // Nested too deeply for the reader.
  }
  return Json::Value(Json::objectValue);
}

/// Returns an argument as text; empty for an array or an object.
std::string textOf(const Json::Value& value, const JsonReals& reals) {
  if (value.isNumeric() && value.asDouble() == 0) {
    if (const double* real = reals.at(value.getOffsetStart())) return realText(*real);
  }
  return value.isConvertibleTo(Json::stringValue) ? value.asString() : "";
}

/// Does not search the replacements. Stops with a partial result when the text exceeds its bound.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  for (std::size_t at = text.find(from); at != std::string_view::npos; at = text.find(from)) {
    result.append(text.substr(0, at)).append(to);
    text.remove_prefix(at + from.size());
    if (result.size() > kLargestText) break;
  }
  return result.append(text);
}

std::string fillIn(std::string_view pattern, std::string_view argumentText, const std::string& applicationName) {
  std::string text(pattern);
  if (text.find('{') == std::string::npos) return text;
  const JsonReals reals(argumentText);
  Json::Value arguments = parseArguments(reals.text());
  arguments[kProductName] = applicationName;
  for (const std::string& name : arguments.getMemberNames()) {
    text = replaceAll(text, "{" + name + "}", textOf(arguments[name], reals));
    if (text.size() > kLargestText) break;
  }
  return text;
}

}  // namespace

void registerTranslationTable(const TranslationTable& table) {
  Translator& to = translator();
  const std::lock_guard lock(to.translationMutex);
  if (std::find(to.tables.begin(), to.tables.end(), &table) == to.tables.end()) to.tables.push_back(&table);
}

void setApplicationName(std::string_view name) {
  Translator& to = translator();
  const std::lock_guard lock(to.translationMutex);
  to.applicationName = name;
}

std::string translate(std::string_view input) {
  const std::size_t end = input.find(kClosing);
  if (!input.starts_with(kOpening) || end == std::string_view::npos) return std::string(input);
  const std::string_view key = input.substr(kOpening.size(), end - kOpening.size());
  const std::size_t bar = end + kClosing.size();
  const bool hasArguments = input.find('|') == bar;

  Translator& from = translator();
  const std::lock_guard lock(from.translationMutex);
  const auto text = find(from, key);
  if (!text) return std::string(input);
  return fillIn(*text, hasArguments ? input.substr(bar + 1) : std::string_view(), from.applicationName);
}

}  // namespace zephlinksdk
