// The table of all actions, docs/commands.toml, as far as completions need it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace completions {

struct Entry {
  /// The usage text, or what the table shows for an action without one.
  std::string form;
  /// How many words at the beginning of the form name the action.
  std::size_t nameLength = 0;
  /// Further forms that work although no usage text shows them.
  std::vector<std::string> otherForms;
  /// The first sentence of the action's description, without its full stop.
  std::string sentence;
  /// Whether the action only groups subcommands.
  bool isHead = false;
};

/// Reads the table. Exits with a message if the file cannot be read, or names an action that does not exist.
std::vector<Entry> readActionTable(const char* path);

/// How many words at the beginning of a form are not placeholders.
std::size_t plainWords(const std::string& form);

[[noreturn]] void fail(const std::string& message);

}  // namespace completions
