// The action list, and what all action handlers share.
//
// A handler gets the words behind its own, checks them from left to right and ends in one of three ways: `invalid`,
// `missing`, or a call whose record it prints. What it returns is the exit status. Handlers hold no state.
#pragma once

#include <cstddef>
#include <cstring>
#include <optional>
#include <span>

#include "cli/output.h"
#include "sdk/facade.h"

namespace cli {

/// The one object of the program; null before and behind dispatch.
extern zephlinksdk::ZephlinkSDK* g_sdk;

/// Words of the command line. Some parsers cut them in place.
using Words = std::span<char*>;

enum Status : int {
  kSuccess = 0,
  kFailed = 1,
  kInvalidParameters = 2,
  kMissingParameters = 3,
  kUnknownAction = 4,
};

struct Action {
  const char* word;
  int (*handle)(Words words);
};

/// Runs the action that the first word names; the usage on standard error where none does.
int dispatch(Words words);

/// Runs the row of the first word, with the words behind it. Without a word Missing, with an unknown one Invalid.
int dispatchWord(std::span<const Action> rows, Words words, const char* usage);

/// Tell the fault on standard error, with the usage text of the action, and return its status.
int invalid(const char* usage);
int missing(const char* usage);

/// The same for too many words of a list: the bound stands in for the usage text, with a line end of its own.
int tooMany(const char* format, std::size_t bound);

inline bool equal(const char* word, const char* other) { return std::strcmp(word, other) == 0; }

/// "on" or "off", nothing for any other word.
std::optional<bool> parseOnOff(const char* word);

/// The end of every handler: prints the record, or its error.
template <class Record>
int finish(const Record& record, void (*print)(const Record&)) {
  if (record.hasError) {
    printError(record);
    return kFailed;
  }
  print(record);
  return kSuccess;
}

/// Calls a method without a callback, so that it waits for its answer.
template <class Method, class... Arguments>
auto call(Method& method, Arguments... arguments) {
  return method(g_sdk, arguments..., nullptr, nullptr);
}

}  // namespace cli
