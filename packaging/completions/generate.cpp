// Writes a shell's completion from its template: TEMPLATE OUTPUT TABLE LISTED. Replaces the line "@RULES@" by the rules
// (see rules.h) of all actions, "@SENTENCES@" by their sentences in TABLE (docs/commands.toml), and "@LISTED@" by the
// file LISTED. With --usages, prints for each action and subcommand its path, a tab, and its usage text.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/actions.h"
#include "packaging/completions/action_table.h"
#include "packaging/completions/rules.h"

namespace completions {

namespace {

/// The sentence of each action, by the words of the action.
using Sentences = std::map<std::string, std::string>;

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::vector<std::string> formsOf(const Entry& entry) {
  std::vector<std::string> forms = entry.otherForms;
  forms.push_back(entry.form);
  return forms;
}

std::set<std::string> ruleLines(const std::vector<Entry>& entries) {
  std::set<std::string> lines;
  for (const Entry& entry : entries) {
    // The usage text of a head only lists its subcommands, which have usage texts.
    if (entry.isHead) continue;
    for (const std::string& form : formsOf(entry)) {
      for (const Rule& rule : rulesOf(form)) lines.insert(joined(rule));
    }
  }
  return lines;
}

/// Returns the names that the first `length` slots allow: "a b|c" gives "a b" and "a c".
std::vector<std::string> namesOf(const Rule& rule, std::size_t length) {
  std::vector<std::string> names{""};
  for (const std::string& slot : Rule(rule.begin(), rule.begin() + static_cast<std::ptrdiff_t>(length))) {
    std::vector<std::string> longer;
    for (const std::string& name : names) {
      for (const std::string& word : wordsOf(slot)) longer.push_back(name + (name.empty() ? "" : " ") + word);
    }
    names = std::move(longer);
  }
  return names;
}

/// Adds the sentences of an action and of its other forms.
void addSentences(const Entry& entry, Sentences& sentences) {
  for (const std::string& form : formsOf(entry)) {
    const std::size_t length = form == entry.form ? entry.nameLength : plainWords(form);
    for (const Rule& rule : rulesOf(form)) {
      if (rule.size() < length) continue;
      for (const std::string& name : namesOf(rule, length)) sentences.emplace(name, entry.sentence);
    }
  }
}

/// Gives a word without a sentence that of its subcommands, if these have only one.
void addOnlyChildren(Sentences& sentences) {
  std::map<std::string, std::set<std::string>> below;
  for (const auto& [name, sentence] : sentences) {
    for (std::size_t space = name.find(' '); space != std::string::npos; space = name.find(' ', space + 1)) {
      below[name.substr(0, space)].insert(sentence);
    }
  }
  for (const auto& [name, texts] : below) {
    if (texts.size() == 1) sentences.emplace(name, *texts.begin());
  }
}

Sentences sentencesOf(const std::vector<Entry>& entries) {
  Sentences sentences;
  for (const Entry& entry : entries) addSentences(entry, sentences);
  addOnlyChildren(sentences);
  return sentences;
}

bool beginsWith(const std::string& line, const std::vector<std::string>& words) {
  const Rule rule = slotsOf(line);
  if (rule.size() < words.size()) return false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const auto choice = wordsOf(rule[i]);
    if (std::find(choice.begin(), choice.end(), words[i]) == choice.end()) return false;
  }
  return true;
}

/// Fails unless the rules contain every action of the program, and every word before a subcommand has a sentence.
void checkComplete(const std::set<std::string>& rules, const Sentences& sentences) {
  cli::forEachAction([&](const std::string& path, const cli::Action&, const char*) {
    const auto offers = [&path](const std::string& line) { return beginsWith(line, slotsOf(path)); };
    if (std::none_of(rules.begin(), rules.end(), offers)) fail("the action table does not contain \"" + path + "\"");
    const auto below = sentences.lower_bound(path + " ");
    const bool leadsToActions = below != sentences.end() && below->first.starts_with(path + " ");
    if (leadsToActions && !sentences.contains(path)) fail("the action table has no head for \"" + path + "\"");
  });
}

std::string text(const std::set<std::string>& rules) {
  std::string lines;
  for (const std::string& rule : rules) lines += rule + "\n";
  return lines;
}

/// Returns a line for each sentence: words, a tab, the sentence. Escapes it for single quotes in all three shells.
std::string text(const Sentences& sentences) {
  std::string lines;
  for (const auto& [name, sentence] : sentences) {
    lines += name + "\t";
    for (const char letter : sentence) lines += letter == '\'' ? "'\\''" : std::string(1, letter);
    lines += "\n";
  }
  return lines;
}

std::string contents(const char* path) {
  std::ifstream file(path);
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (text.empty()) fail(std::string("cannot read ") + path);
  return text;
}

std::string filledIn(std::string page, const std::map<std::string, std::string>& marks) {
  for (const auto& [mark, text] : marks) {
    if (const auto found = page.find(mark); found != std::string::npos) page.replace(found, mark.size(), text);
  }
  return page;
}

void write(const char* path, const std::string& text) {
  std::ofstream output(path);
  output << text;
  output.close();
  if (!output) fail(std::string("cannot write ") + path);
}

void printUsages() {
  cli::forEachAction([](const std::string& path, const cli::Action&, const char* usage) {
    if (usage != nullptr) std::cout << path << '\t' << usage << '\n';
  });
}

}  // namespace

}  // namespace completions

int main(int argc, char** argv) {
  using namespace completions;
  if (argc == 2 && std::string_view(argv[1]) == "--usages") {
    printUsages();
    return EXIT_SUCCESS;
  }
  if (argc != 5) fail("arguments: TEMPLATE OUTPUT TABLE LISTED | --usages");
  const auto entries = readActionTable(argv[3]);
  const auto rules = ruleLines(entries);
  const auto sentences = sentencesOf(entries);
  checkComplete(rules, sentences);
  write(argv[2],
        filledIn(contents(argv[1]),
                 {{"@RULES@\n", text(rules)}, {"@SENTENCES@\n", text(sentences)}, {"@LISTED@\n", contents(argv[4])}}));
}
