// Rules for completions, made from usage texts.
//
// A rule is a line of slots, one for each argument. A slot is a list of alternatives separated by "|": "*" is any
// argument, "@adapters", "@countries", ... are values that the daemon knows. A "+" after the last slot repeats it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace completions {

using Rule = std::vector<std::string>;
using Rules = std::vector<Rule>;

/// The rules of a usage text.
Rules rulesOf(std::string_view usage);

/// The slots of a rule's line.
Rule slotsOf(const std::string& line);

/// The words that a slot offers, without the mark of repetition.
std::vector<std::string> wordsOf(const std::string& slot);

}  // namespace completions
