// Runs an action and captures its output.
#pragma once

#include <string>
#include <vector>

namespace fuzz {

struct Outcome {
  int status;
  std::string output;
  std::string errors;
};

/// Runs the action of the arguments with `makeSdk`'s object.
Outcome runAction(std::vector<std::string> words);

/// Checks that the output matches the status. Success: a record or a stream of records, all of it JSON. Failure: an
/// error object. Invalid arguments: only the error message, and no request.
void checkOutcome(const std::vector<std::string>& words, const Outcome& outcome);

}  // namespace fuzz
