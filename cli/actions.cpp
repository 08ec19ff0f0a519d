#include "cli/actions.h"

#include <cstdio>
#include <string>

#include "cli/families/families.h"
#include "cli/program_name.h"
#include "cli/usage.h"
#include "platform/console.h"

namespace cli {

zephlinksdk::ZephlinkSDK* g_sdk = nullptr;

namespace {

int help(Arguments, const char*) {
  printUsage(stdout);
  return kSuccess;
}

constexpr Action kShowRows[] = {
    include(families::connecting.show), include(families::settings.show),   include(families::privacy.show),
    include(families::adapters.show),   include(families::account.show),    include(families::localProxy.show),
    include(families::firewall.show),   include(families::speedTests.show), include(families::streaming.show),
    include(families::logs.show),
};

constexpr Action kRows[] = {
    {"help", "help", help},
    {"show",
     "show < servers | settings | privacy | adapters | currentserver | user | directory | connectmethod | "
     "streamingbypass | disconnect | streaming | speedtest | logsettings >",
     nullptr, &rows<kShowRows>},
    include(families::state.actions),
    include(families::connecting.actions),
    include(families::account.actions),
    include(families::settings.actions),
    include(families::adapters.actions),
    include(families::statistics.actions),
    include(families::speedTests.actions),
    include(families::privacy.actions),
    include(families::firewall.actions),
    include(families::streaming.actions),
    include(families::localProxy.actions),
    include(families::safeBrowsing.actions),
    include(families::networkSharing.actions),
    include(families::logs.actions),
};

int run(const Action& action, Arguments arguments, const char* inherited) {
  const char* usage = action.usage != nullptr ? action.usage : inherited;
  const Action* subcommand = arguments.empty() ? nullptr : findAction(action.subcommands, arguments[0]);
  if (subcommand != nullptr) return run(*subcommand, arguments.subspan(1), usage);
  if (action.handle != nullptr) return action.handle(arguments, usage);
  return arguments.empty() ? missing(usage) : invalid(usage);
}

int fault(const char* kind, const char* usage, Status status) {
  zephlinksdk::writeText(stderr, std::string(kind) + " parameters: " + programName() + " " + usage + "\n");
  return status;
}

}  // namespace

constinit const Actions kActions = kRows;

const Action* findAction(const Actions* rows, std::string_view word) {
  if (rows == nullptr) return nullptr;
  for (const Action& row : *rows) {
    if (row.word == nullptr) {
      if (const Action* found = findAction(row.subcommands, word)) return found;
    } else if (word == row.word) {
      return &row;
    }
  }
  return nullptr;
}

const char* usageOf(std::string_view path) {
  const char* usage = nullptr;
  const Actions* rows = &kActions;
  while (!path.empty()) {
    const std::size_t length = path.find(' ');
    const Action* action = findAction(rows, path.substr(0, length));
    if (action == nullptr) return nullptr;
    if (action->usage != nullptr) usage = action->usage;
    rows = action->subcommands;
    path.remove_prefix(length == std::string_view::npos ? path.size() : length + 1);
  }
  return usage;
}

int dispatch(Arguments arguments) {
  const Action* action = arguments.empty() ? nullptr : findAction(&kActions, arguments[0]);
  return action != nullptr ? run(*action, arguments.subspan(1), nullptr) : unknownAction();
}

int unknownAction() {
  printUsage(stderr);
  return kUnknownAction;
}

int invalid(const char* usage) { return fault("Invalid", usage, kInvalidParameters); }

int missing(const char* usage) { return fault("Missing", usage, kMissingParameters); }

int tooMany(const char* format, std::size_t bound) {
  char text[100];
  std::snprintf(text, sizeof text, format, static_cast<int>(bound));
  return invalid(text);
}

}  // namespace cli
