// One run of the program as a row: its arguments, the daemon's answers, the expected requests and output.
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
  /// The expected requests, in order, without the hello. `*` as members matches any.
  std::vector<std::string> sent = {};
  std::string out = {};
  std::string err = {};
  int status = 0;
  std::string input = {};
  /// The program is killed after printing the whole expected output: its status and requests are not compared.
  bool endless = false;
  /// The run takes at least this time.
  std::chrono::seconds duration{0};
  /// The line in a file of cases.
  int line = 0;
};

/// Returns the arguments and everything that the case expects, with a mark at the start of each line.
std::string described(const ProgramCase& row);

/// Runs the case with its own daemon and compares everything.
void check(const ProgramCase& row);

/// Returns the error object as the program prints it.
std::string errorObject(unsigned code, const std::string& type, const std::string& message);

/// Parses a JSON text. Throws std::runtime_error if it is not JSON.
Json::Value parsed(const std::string& json);

/// Returns JSON as the program prints it.
std::string printed(const Json::Value& value);

/// Returns one record of a stream as printed; `json` may have any format.
std::string block(const std::string& label, const std::string& json);

/// Returns a request as sent; `members` is JSON.
std::string request(const std::string& name, const std::string& members = "null");

/// Invalid arguments: nothing is sent, and one line on stderr contains the usage text.
ProgramCase invalidCase(std::vector<std::string> words, const std::string& usage);
ProgramCase missingCase(std::vector<std::string> words, const std::string& usage);
/// An unknown action: the whole usage text is printed on stderr. The status is 4 unless given.
ProgramCase unknownCase(std::vector<std::string> words, const std::string& status = {});

/// Sends an event repeatedly until the program has printed it: a listener sends nothing that would show when it is
/// ready. Returns false if it is never printed.
bool sendUntilPrinted(ScriptedDaemon& daemon, Process& run, const std::string& text, const std::string& printed);

/// Returns the rest of `out` after all repetitions of `printed` at its start.
std::string afterRepeated(const std::string& printed, std::string out);

}  // namespace tests
