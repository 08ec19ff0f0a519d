// Writes a shell's completion from its template: replaces the line "@RULES@" by rules generated from the usage texts.
// With --usages, prints these texts: for each action and subcommand its path, a tab, and its usage text.
//
// A rule is a line of slots, one for each argument. A slot is a list of alternatives separated by "|": "*" is any
// argument, "@adapters", "@countries", ... are values that the daemon knows. A "+" after the last slot repeats it.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/actions.h"
#include "cli/usage.h"

namespace {

using Rule = std::vector<std::string>;
using Rules = std::vector<Rule>;

struct LiveValue {
  std::string_view placeholder;
  const char* slot;
};

constexpr LiveValue kLiveValues[] = {
    {"adapter id", "@adapters"}, {"country", "@countries"}, {"city", "@cities"},
    {"number", "@numbers"},      {"tag", "@tags"},          {"peer uuid", "@peers"},
    {"filepath", "@files"},
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

std::string rulesText() {
  std::set<std::string> lines;
  const auto add = [&lines](const char* usage) {
    for (const Rule& rule : sequence(usage, false)) {
      std::string line;
      for (const std::string& slot : rule) line += (line.empty() ? "" : " ") + slot;
      lines.insert(line);
    }
  };
  for (const char* path : cli::kListedActions) add(cli::usageOf(path));
  // Add all other actions that have a handler. A text with subcommands only repeats their texts.
  cli::forEachAction([&add](const std::string&, const cli::Action& action, const char* usage) {
    if (usage != nullptr && action.subcommands == nullptr) add(usage);
  });
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

void printUsages() {
  cli::forEachAction([](const std::string& path, const cli::Action&, const char* usage) {
    if (usage != nullptr) std::cout << path << '\t' << usage << '\n';
  });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--usages") {
    printUsages();
    return EXIT_SUCCESS;
  }
  if (argc != 3) {
    std::cerr << "usage: completions TEMPLATE OUTPUT | --usages\n";
    return EXIT_FAILURE;
  }
  std::ifstream input(argv[1]);
  std::string text((std::istreambuf_iterator<char>(input)), std::istreambuf_iterator<char>());
  constexpr std::string_view kMark = "@RULES@\n";
  const auto mark = text.find(kMark);
  if (mark == std::string::npos) {
    std::cerr << argv[1] << ": no line of " << kMark;
    return EXIT_FAILURE;
  }
  std::ofstream output(argv[2]);
  output << text.replace(mark, kMark.size(), rulesText());
  output.close();
  return output ? EXIT_SUCCESS : EXIT_FAILURE;
}
