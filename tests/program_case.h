// One run of the program as a row: its words, what the daemon answers, what must be sent and printed.
#pragma once

#include <json/json.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/process.h"
#include "tests/scripted_daemon.h"

namespace tests {

struct ProgramCase {
  std::vector<std::string> words;
  Answers answers = {};
  /// The requests that the daemon must hear, in order; the hello is not among them. Members `*` stand for any.
  std::vector<std::string> sent = {};
  std::string out = {};
  std::string err = {};
  int status = 0;
  std::string input = {};
  /// Runs until its whole output was printed, and is killed then: its status and requests are not compared.
  bool endless = false;
  /// It takes at least that long.
  std::chrono::seconds duration{0};
  /// Where it stands in a file of cases.
  int line = 0;
};

/// The case with everything that it expects, a mark at the start of each line. Long texts are not cut.
std::string described(const ProgramCase& row);

/// Runs the case against a daemon of its own and compares everything.
void check(const ProgramCase& row);

/// The error object as the program prints it.
std::string errorObject(unsigned code, const std::string& type, const std::string& message);

/// Reads a JSON text; throws std::runtime_error when it is none.
Json::Value parsed(const std::string& json);

/// JSON as the program prints it.
std::string printed(const Json::Value& value);

/// One record of a stream as it stands in the output; `json` may have any form.
std::string block(const std::string& label, const std::string& json);

/// A request as it is sent; `members` is JSON.
std::string request(const std::string& name, const std::string& members = "null");

/// Faults of the program's words: nothing is sent, and one line on standard error names the usage text.
ProgramCase invalidCase(std::vector<std::string> words, const std::string& usage);
ProgramCase missingCase(std::vector<std::string> words, const std::string& usage);
/// Words that name no action: the whole usage text on standard error, and this status, 4 where none is told.
ProgramCase unknownCase(std::vector<std::string> words, const std::string& status = {});

/// Sends an event until the program has printed it, since a listener sends nothing that tells from when on it hears.
/// False when it is never printed.
bool sendUntilPrinted(ScriptedDaemon& daemon, Process& run, const std::string& text, const std::string& printed);

/// What stands behind all repetitions of `printed` at the beginning of `out`.
std::string behindRepeated(const std::string& printed, std::string out);

}  // namespace tests
