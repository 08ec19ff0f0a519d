// Reads the table of all actions, docs/commands.toml, for completions.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace completions {

struct Entry {
  /// The usage text, or the member `form` of an action without a usage text.
  std::string form;
  /// The number of words at the beginning of the form that name the action.
  std::size_t nameLength = 0;
  /// Accepted forms that no usage text contains.
  std::vector<std::string> otherForms;
  /// The first sentence of the action's description, without its full stop.
  std::string sentence;
  /// Whether the action only groups subcommands.
  bool isHead = false;
};

/// Reads the table. Exits with a message if the file cannot be read, or names an action that does not exist.
std::vector<Entry> readActionTable(const char* path);

/// Returns the number of words before the first placeholder of a form.
std::size_t plainWords(const std::string& form);

[[noreturn]] void fail(const std::string& message);

}  // namespace completions
