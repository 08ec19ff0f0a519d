// Rules for completions, generated from usage texts.
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

/// Returns the rules of a usage text.
Rules rulesOf(std::string_view usage);

/// Returns the slots of a rule's line.
Rule slotsOf(const std::string& line);

/// Returns the alternatives of a slot, without the mark of repetition.
std::vector<std::string> wordsOf(const std::string& slot);

}  // namespace completions
