// The rows of the action list, and the functions that all handlers share.
//
// Each family defines its actions as constant rows (see cli/families/families.h). A handler gets the arguments after
// the words of its row, checks them from left to right, and ends in one of three ways: `invalid`, `missing`, or a call
// whose record it prints. It returns the exit status. Handlers keep no state.
#pragma once

#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

#include "cli/output.h"
#include "zephlinksdk/zephlinksdk.h"

namespace cli {

/// The program's object. Null outside dispatch().
extern zephlinksdk::ZephlinkSDK* g_sdk;

/// Arguments of the command line. Some parsers cut them in place.
using Arguments = std::span<char*>;

enum Status : int {
  kSuccess = 0,
  kFailed = 1,
  kInvalidParameters = 2,
  kMissingParameters = 3,
  kUnknownAction = 4,
};

using Handler = int(Arguments arguments, const char* usage);

struct Action;
using Actions = std::span<const Action>;

/// An action, or a subcommand of the row that contains it. Rows are constant data.
struct Action {
  const char* word;
  /// The usage text that errors of this action print, also passed to the handler. Null: the text of the parent row.
  const char* usage = nullptr;
  /// Called unless the first argument is a subcommand. Null: a missing argument is Missing, an unknown subcommand is
  /// Invalid.
  Handler* handle = nullptr;
  const Actions* subcommands = nullptr;
};

/// The subcommands of a row: `&rows<kArray>`.
template <const auto& Array>
inline constexpr Actions rows = Array;

/// Includes the rows of another file in a list of rows: a row without a word.
constexpr Action include(const Actions& included) { return {.word = nullptr, .subcommands = &included}; }

/// All actions of the program.
extern const Actions kActions;

/// Returns the row of a word, including included rows; null if there is none or `rows` is null.
const Action* findAction(const Actions* rows, std::string_view word);

/// Returns the usage text of an action or subcommand, for a path such as "adapter datalimit daily". Null if it does not
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

/// Runs the action that the first argument names. Reports an unknown action if there is none.
int dispatch(Arguments arguments);

/// Prints the general usage to stderr. Returns the status of an unknown action.
int unknownAction();

/// Print the error and the usage text to stderr. Return the status of the error.
int invalid(const char* usage);
int missing(const char* usage);

/// Reports Invalid for a list that is too long. Prints `format`, which ends with a line feed and takes the bound,
/// instead of the usage text.
int tooMany(const char* format, std::size_t bound);

inline bool equal(const char* text, const char* other) { return std::strcmp(text, other) == 0; }

/// Calls a function of the library without a callback: waits for the answer.
template <auto& Method, class... Values>
auto call(Values... values) {
  return Method(g_sdk, values..., nullptr, nullptr);
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
