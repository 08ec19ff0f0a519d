// Problem reports, and requests that the daemon does not answer.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

#include "tests/process.h"
#include "tests/program_case.h"

namespace tests {
namespace {

/// Creates a directory for the duration of a test.
class LogReport : public testing::Test {
 protected:
  LogReport() {
    std::filesystem::create_directories(folder / "inner");
    std::ofstream(file) << "log";
  }
  ~LogReport() override { std::filesystem::remove_all(folder); }

  /// Returns the case of a report on `path`, which the daemon must receive as `sent`.
  static ProgramCase reportCase(const std::filesystem::path& path, const std::filesystem::path& sent,
                                const std::string& answer, const std::string& out) {
    return {.words = {"log", "report", "a@b.example", "It is \"slow\"", path.string()},
            .answers = {{"send_log_report", {event("report_log_result", answer)}}},
            .sent = {request("send_log_report", R"({"email":"a@b.example","filename":)" + printed(sent.string()) +
                                                    R"(,"message":"It is \"slow\""})")},
            .out = out};
  }

  const std::filesystem::path folder = std::filesystem::canonical(std::filesystem::temp_directory_path()) /
                                       ("zephctl_logs_" + std::to_string(std::random_device()()));
  const std::filesystem::path file = folder / "daemon.log";
};

TEST_F(LogReport, SendsTheCanonicalPathAndPrintsTheAnswer) {
  const std::string answer = R"({"type":0,"msg":"ignored","ticket_id":"T-1"})";
  const std::string ticket = "{\n\t\"ticketId\" : \"T-1\"\n}";
  check(reportCase(file, file, answer, ticket));
  check(reportCase(folder / "inner" / ".." / "daemon.log", file, answer, ticket));
  // A directory is accepted.
  check(reportCase(folder, folder, answer, ticket));
  check(reportCase(file, file, R"({"type":null,"ticket_id":")" + std::string(40, 't') + "\"}",
                   "{\n\t\"ticketId\" : \"" + std::string(31, 't') + "\"\n}"));
  const auto isRefused = [this](const std::string& type, unsigned code, const std::string& text) {
    ProgramCase refused = reportCase(file, file, R"({"type":)" + type + R"(,"msg":"Later","ticket_id":"T-1"})", "");
    refused.err = errorObject(code, text, "Later");
    refused.status = 1;
    check(refused);
  };
  isRefused("6", 6, "Too many requests are being made by this device");
  isRefused("-1", 4294967295, "Unknown error");
}

TEST_F(LogReport, RefusesMissingFiles) {
  for (const auto& [email, path] : {std::pair<std::string, std::string>{"a@b.example", (folder / "none.log").string()},
                                    {"a@b.example", (folder / "none" / "daemon.log").string()},
                                    {"a@b.example", ""},
                                    {"", file.string()}}) {
    check({.words = {"log", "report", email, "text", path},
           .err = errorObject(3842, "An invalid argument was supplied", "An invalid argument was supplied"),
           .status = 1});
  }
}

/// The process ends at once, but its requests are still sent.
TEST(Logs, AreSentBeforeTheProcessEnds) {
  ScriptedDaemon daemon;
  std::vector<std::string> sent;
  for (int i = 0; i < 200; ++i) {
    const bool erase = i % 10 == 0;
    const ProgramRun run = zephctl(daemon.port(), erase ? std::vector<std::string>{"log", "erase", "now"}
                                                        : std::vector<std::string>{"daemon", "exit"});
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(run.status, 0);
    sent.push_back(request(erase ? "erase_all_log_files" : "exit"));
  }
  ASSERT_TRUE(daemon.waitForRequests(sent.size()));
  const auto received = daemon.received();
  EXPECT_EQ(std::count(received.begin(), received.end(), sent[0]), 20);
  EXPECT_EQ(std::count(received.begin(), received.end(), sent[1]), 180);
}

}  // namespace
}  // namespace tests
