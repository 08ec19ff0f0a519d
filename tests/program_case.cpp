#include "tests/program_case.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <utility>

namespace tests {

namespace {

/// The program's name in its messages: the last part of its path.
std::string programName() { return std::filesystem::path(ZEPHCTL_PATH).filename().string(); }

ProgramCase fault(const char* kind, std::vector<std::string> words, const std::string& usage, int status) {
  ProgramCase row;
  row.words = std::move(words);
  row.err = std::string(kind) + " parameters: " + programName() + " " + usage + "\n";
  row.status = status;
  return row;
}

void appendLines(std::string& text, const char* mark, const std::string& lines) {
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) text.append(mark).append(line) += '\n';
}

}  // namespace

std::string described(const ProgramCase& row) {
  std::string text = row.endless ? "$~" : "$";
  for (const std::string& word : row.words) text += ' ' + testing::PrintToString(word);
  text += '\n';
  for (const std::string& request : row.sent) appendLines(text, "> ", request);
  for (const auto& [request, reports] : row.answers) {
    for (const std::string& report : reports) appendLines(text, ("< " + request + ": ").c_str(), report);
  }
  appendLines(text, "| ", row.out);
  appendLines(text, "2| ", row.err);
  return text + "status " + std::to_string(row.status);
}

void check(const ProgramCase& row) {
  SCOPED_TRACE("the expanded case:\n" + described(row));
  ScriptedDaemon daemon(row.answers);
  const auto start = std::chrono::steady_clock::now();
  Process process(command(daemon.port(), row.words), row.input);
  if (row.endless) {
    EXPECT_TRUE(process.waitForOutput(row.out));
    process.kill();
  }
  const ProgramRun run = process.finish();
  EXPECT_EQ(run.out, row.out);
  EXPECT_EQ(run.err, row.err);
  if (row.endless) return;
  EXPECT_GE(std::chrono::steady_clock::now() - start, row.duration);
  EXPECT_EQ(run.status, row.status);
  // Requests sent at the very end may not have arrived yet.
  if (daemon.received().size() < row.sent.size()) daemon.waitForRequests(row.sent.size());
  std::vector<std::string> received = daemon.received();
  for (std::size_t i = 0; i < std::min(received.size(), row.sent.size()); ++i) {
    const std::size_t any = row.sent[i].find(",*,");
    if (any != std::string::npos && received[i].compare(0, any, row.sent[i], 0, any) == 0) received[i] = row.sent[i];
  }
  EXPECT_EQ(received, row.sent);
}

std::string errorObject(unsigned code, const std::string& type, const std::string& message) {
  return "{\n\t\"errorCode\" : " + std::to_string(code) + ",\n\t\"errorMessage\" : \"" + message +
         "\",\n\t\"errorType\" : \"" + type + "\"\n}";
}

Json::Value parsed(const std::string& json) {
  Json::Value value;
  std::istringstream(json) >> value;
  return value;
}

std::string printed(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["emitUTF8"] = true;
  return Json::writeString(builder, value);
}

std::string block(const std::string& label, const std::string& json) {
  return "[\"" + label + "\",\n" + printed(parsed(json)) + "]\n\n";
}

std::string request(const std::string& name, const std::string& members) {
  return "[\"" + name + "\"," + members + ",\"zephlink_sdk\"]";
}

ProgramCase invalidCase(std::vector<std::string> words, const std::string& usage) {
  return fault("Invalid", std::move(words), usage, 2);
}

ProgramCase missingCase(std::vector<std::string> words, const std::string& usage) {
  return fault("Missing", std::move(words), usage, 3);
}

ProgramCase unknownCase(std::vector<std::string> words, const std::string& status) {
  static const std::string usage = Process({ZEPHCTL_PATH, "help"}).finish().out;
  return {.words = std::move(words), .err = usage, .status = status.empty() ? 4 : std::stoi(status)};
}

bool sendUntilPrinted(ScriptedDaemon& daemon, Process& run, const std::string& text, const std::string& printed) {
  constexpr std::chrono::milliseconds kStep{50};
  for (auto patience = Process::kPatience; patience.count() > 0; patience -= kStep) {
    daemon.send(text);
    if (run.waitForOutput(printed, 1, kStep)) return true;
  }
  return false;
}

std::string afterRepeated(const std::string& printed, std::string out) {
  while (out.starts_with(printed)) out.erase(0, printed.size());
  return out;
}

}  // namespace tests
