// The rows of the action list, and what all handlers share.
//
// Each family defines its actions as constant rows (see cli/families/families.h). A handler gets the arguments after
// the words that named its row, checks them from left to right, and ends in one of three ways: `invalid`, `missing`, or
// a call whose record it prints. It returns the exit status. Handlers keep no state.
#pragma once

#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

#include "cli/output.h"
#include "zephlinksdk/zephlinksdk.h"

namespace cli {

/// The one object of the program; null before and after dispatch.
extern zephlinksdk::ZephlinkSDK* g_sdk;

/// Arguments of the command line. Some parsers cut them in place.
using Words = std::span<char*>;

enum Status : int {
  kSuccess = 0,
  kFailed = 1,
  kInvalidParameters = 2,
  kMissingParameters = 3,
  kUnknownAction = 4,
};

using Handler = int(Words words, const char* usage);

struct Action;
using Actions = std::span<const Action>;

/// An action, or a subcommand of the row that lists it. Rows are constant data.
struct Action {
  const char* word;
  /// The text that faults of this action name, and that the handler gets. Null: the text of the row above.
  const char* usage = nullptr;
  /// Gets the arguments unless the first of them names a subcommand. Null: no argument is Missing, an unknown
  /// subcommand is Invalid.
  Handler* handle = nullptr;
  const Actions* subcommands = nullptr;
};

/// The subcommands of a row: `&rows<kArray>`.
template <const auto& Array>
inline constexpr Actions rows = Array;

/// In a list of rows, includes the rows of another file: a row without a word.
constexpr Action include(const Actions& included) { return {.word = nullptr, .subcommands = &included}; }

/// All actions of the program.
extern const Actions kActions;

/// The row of a word, also among included rows, or null. There are no rows in null.
const Action* findAction(const Actions* rows, std::string_view word);

/// The usage text of an action or subcommand, named by its words as in "adapter datalimit daily". Null if it does not
/// exist or has no text.
const char* usageOf(std::string_view path);

/// Calls visit(path, row, usage text or null) for each action and subcommand.
template <class Visit>
void forEachAction(const Visit& visit, const Actions& rows = kActions, const std::string& above = {},
                   const char* inherited = nullptr) {
  for (const Action& row : rows) {
    const bool included = row.word == nullptr;
    const std::string path = included ? above : above + row.word;
    const char* usage = row.usage != nullptr ? row.usage : inherited;
    if (!included) visit(path, row, usage);
    if (row.subcommands != nullptr) forEachAction(visit, *row.subcommands, included ? path : path + " ", usage);
  }
}

/// Runs the action that the first word names; an unknown action if none does.
int dispatch(Words words);

/// Prints the general usage on standard error. Returns the status of an unknown action.
int unknownAction();

/// Print the fault and the usage text on standard error. Return the status of the fault.
int invalid(const char* usage);
int missing(const char* usage);

/// Invalid for a list that is too long: `format`, which ends with a line feed, is filled in with the bound and replaces
/// the usage text.
int tooMany(const char* format, std::size_t bound);

inline bool equal(const char* word, const char* other) { return std::strcmp(word, other) == 0; }

/// Calls a function of the library without a callback, so that it waits for the answer.
template <auto& Method, class... Arguments>
auto call(Arguments... arguments) {
  return Method(g_sdk, arguments..., nullptr, nullptr);
}

/// Prints the record, or its error. Returns the exit status.
template <class Record>
int finish(const Record& record, void (*print)(const Record&)) {
  if (record.hasError) {
    printError(record);
    return kFailed;
  }
  print(record);
  return kSuccess;
}

}  // namespace cli
