#include "packaging/completions/rules.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace completions {

namespace {

struct LiveValue {
  std::string_view placeholder;
  const char* slot;
};

constexpr LiveValue kLiveValues[] = {
    {"adapter id", "@adapters"},   {"country", "@countries"}, {"city", "@cities"},
    {"number", "@numbers"},        {"tag", "@tags"},          {"peer uuid", "@peers"},
    {"service name", "@services"}, {"filepath", "@files"},
};

constexpr std::string_view kOpening = "<[(";
constexpr std::string_view kClosing = ">])";

bool isOpening(char letter) { return kOpening.find(letter) != std::string_view::npos; }
bool isClosing(char letter) { return kClosing.find(letter) != std::string_view::npos; }

std::string_view trimmed(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

/// Splits a text at separators outside of all brackets. Omits empty pieces.
std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  int depth = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (i < text.size() && isOpening(text[i])) ++depth;
    if (i < text.size() && isClosing(text[i])) --depth;
    if (i < text.size() && (depth > 0 || text[i] != separator)) continue;
    const std::string_view piece = trimmed(text.substr(start, i - start));
    if (!piece.empty()) pieces.push_back(piece);
    start = i + 1;
  }
  return pieces;
}

bool isWord(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '-' || letter == '_';
  });
}

std::string placeholder(std::string_view name) {
  for (const LiveValue& value : kLiveValues) {
    if (value.placeholder == name) return value.slot;
  }
  return "*";
}

Rules sequence(std::string_view text, bool nested);

/// Returns the rules of the text within brackets. A single word is a placeholder, unless it is an optional choice.
Rules group(std::string_view text, bool singleIsWord) {
  const auto alternatives = split(text, '|');
  std::string slot;
  Rules rules;
  const auto add = [&slot](const std::string& word) { slot += (slot.empty() ? "" : "|") + word; };
  for (const std::string_view alternative : alternatives) {
    if (const auto open = alternative.find('('); open != std::string_view::npos) {
      const std::string_view choice = alternative.substr(open + 1, alternative.find(')') - open - 1);
      for (const std::string_view word : split(choice, '|')) add(std::string(word));
    } else if (isOpening(alternative.front())) {
      for (const Rule& rule : sequence(alternative, true)) {
        rule.size() == 1 && !rule[0].ends_with('+') ? add(rule[0]) : rules.push_back(rule);
      }
    } else {
      const bool literal = isWord(alternative) && (alternatives.size() > 1 || singleIsWord);
      add(literal ? std::string(alternative) : placeholder(alternative));
    }
  }
  if (!slot.empty()) rules.insert(rules.begin(), Rule{slot});
  return rules;
}

/// Returns the rules of one word of a usage text, or of brackets.
Rules item(std::string_view text, bool nested) {
  if (!isOpening(text.front())) return group(text, true);
  Rules rules = group(text.substr(1, text.size() - 2), nested && text.front() == '[');
  // An optional placeholder keeps its slot; an optional choice may be omitted.
  if (text.front() == '[' && rules[0][0] != "*") rules.emplace_back();
  return rules;
}

void repeat(Rules& rules) {
  for (Rule& rule : rules) {
    if (!rule.empty()) rule.back() += '+';
  }
}

Rules sequence(std::string_view text, bool nested) {
  Rules rules{{}};
  const auto items = split(text, ' ');
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i] == "...") continue;
    Rules next = item(items[i], nested);
    if (i + 1 < items.size() && items[i + 1] == "...") repeat(next);
    Rules joined;
    for (const Rule& head : rules) {
      for (const Rule& tail : next) {
        joined.push_back(head);
        joined.back().insert(joined.back().end(), tail.begin(), tail.end());
      }
    }
    rules = std::move(joined);
  }
  return rules;
}

/// Offers only the entries of a list for removal from it.
Rules withListedValues(const Rules& rules) {
  Rules result;
  for (const Rule& rule : rules) {
    const auto edit = std::find(rule.begin(), rule.end(), "add|rem|set");
    if (edit == rule.end() || edit + 1 == rule.end()) {
      result.push_back(rule);
      continue;
    }
    const auto position = static_cast<std::size_t>(edit - rule.begin());
    result.push_back(rule);
    result.back()[position] = "add|set";
    result.push_back(rule);
    result.back()[position] = "rem";
    result.back()[position + 1] = "@listed+";
  }
  return result;
}

}  // namespace

Rules rulesOf(std::string_view usage) { return withListedValues(sequence(usage, false)); }

Rule slotsOf(const std::string& line) {
  std::istringstream stream(line);
  Rule slots;
  for (std::string slot; stream >> slot;) slots.push_back(slot);
  return slots;
}

std::vector<std::string> wordsOf(const std::string& slot) {
  std::vector<std::string> words;
  std::istringstream stream(slot.ends_with('+') ? slot.substr(0, slot.size() - 1) : slot);
  for (std::string word; std::getline(stream, word, '|');) words.push_back(word);
  return words;
}

}  // namespace completions
