// Runs an action and keeps what it writes.
#pragma once

#include <string>
#include <vector>

namespace fuzz {

struct Outcome {
  int status;
  std::string output;
  std::string errors;
};

/// Runs the action that the words name against `makeSdk`'s object.
Outcome runAction(std::vector<std::string> words);

/// Checks that the output of a run goes with its status: a record or a stream of records, all of it JSON, for success;
/// an error object for a failure; nothing but the fault, and nothing sent, for words that are refused.
void checkOutcome(const std::vector<std::string>& words, const Outcome& outcome);

}  // namespace fuzz
