#include "packaging/completions/action_table.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string_view>

#include "cli/actions.h"

namespace completions {

namespace {

// A completion is one line of a terminal, which also contains other columns.
constexpr std::size_t kLongestSentence = 72;

/// Returns the texts between quotes. The table uses no escapes.
std::vector<std::string> quoted(const std::string& line) {
  if (line.find('\\') != std::string::npos) fail("escapes are not supported: " + line);
  std::vector<std::string> texts;
  std::istringstream stream(line);
  for (std::string piece; std::getline(stream, piece, '"');) texts.push_back(piece);
  std::vector<std::string> inside;
  for (std::size_t i = 1; i < texts.size(); i += 2) inside.push_back(texts[i]);
  return inside;
}

std::string firstSentence(const std::string& text) {
  const std::size_t end = std::min(text.find(". "), text.size() - 1);
  if (text.empty() || text[end] != '.') fail("not a sentence: " + text);
  if (end > kLongestSentence) fail("the first sentence is too long: " + text.substr(0, end));
  return text.substr(0, end);
}

void readLine(const std::string& line, Entry& entry) {
  const auto texts = quoted(line);
  if (line.starts_with("usage = ")) {
    const char* usage = cli::usageOf(texts.at(0));
    if (usage == nullptr) fail("no such action: " + texts[0]);
    entry.form = usage;
    entry.nameLength = plainWords(texts[0]);
  } else if (line.starts_with("form = ")) {
    entry.form = texts.at(0);
    entry.nameLength = plainWords(entry.form);
  } else if (line.starts_with("also = ") || line.starts_with("forms = ")) {
    entry.otherForms.insert(entry.otherForms.end(), texts.begin(), texts.end());
  } else if (line.starts_with("about = ")) {
    entry.sentence = firstSentence(texts.at(0));
  }
}

}  // namespace

std::vector<Entry> readActionTable(const char* path) {
  std::ifstream file(path);
  std::vector<Entry> entries;
  bool isEntry = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("[[")) {
      const bool isHead = line == "[[family.head]]";
      isEntry = isHead || line == "[[family.action]]";
      if (isEntry) entries.emplace_back().isHead = isHead;
    } else if (isEntry && !line.starts_with("#")) {
      readLine(line, entries.back());
    }
  }
  if (entries.empty()) fail(std::string("no actions in ") + path);
  return entries;
}

std::size_t plainWords(const std::string& form) {
  constexpr std::string_view kSpecial = "<[(|.";
  std::istringstream stream(form);
  std::size_t count = 0;
  for (std::string word; stream >> word && word.find_first_of(kSpecial) == std::string::npos;) ++count;
  return count;
}

void fail(const std::string& message) {
  std::cerr << "zephctl_completions: " << message << '\n';
  std::exit(EXIT_FAILURE);
}

}  // namespace completions
