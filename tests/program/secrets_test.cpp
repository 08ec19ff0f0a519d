// Passwords and tokens are sent to the daemon and appear nowhere else.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/actions.h"
#include "tests/process.h"
#include "tests/scripted_daemon.h"
#include "tests/sdk/host.h"

namespace tests {
namespace {

const std::string kSecret = "hush-5e2a";

struct Way {
  std::vector<std::string> words;
  std::string input;
  const char* request;
  const char* member;
};

const Way kWays[] = {
    {{"login", "user", kSecret}, "", "login", "password"},
    {{"login", "user"}, kSecret + "\n", "login", "password"},
    {{"login", "oauth", kSecret}, "", "login_oauth", "oauth"},
    {{"login", "oauth"}, kSecret + "\n", "login_oauth", "oauth"},
    {{"refresh", "oauth", kSecret}, "", "update_oauth", "oauth"},
    {{"refresh", "oauth"}, kSecret + "\n", "update_oauth", "oauth"},
    {{"safebrowsing", "token", kSecret}, "", "safe_browsing_token_refresh", "token"},
};

Answers refusalOf(const Way& way) {
  return {
      {way.request,
       {event("report_login_error", R"({"type":3,"msg":"no"})"),
        event("report_settings_error", std::string(R"({"setting":")") + way.request + R"(","type":10,"msg":"no"})")}}};
}

std::string describe(const Way& way) { return testing::PrintToString(way.words); }

void expectNoSecret(const ProgramRun& run) {
  EXPECT_EQ(run.out.find(kSecret), std::string::npos) << run.out;
  EXPECT_EQ(run.err.find(kSecret), std::string::npos) << run.err;
}

TEST(Secrets, AreNotPrintedAfterARefusal) {
  for (const Way& way : kWays) {
    SCOPED_TRACE(describe(way));
    ScriptedDaemon daemon(refusalOf(way));
    const ProgramRun run = zephctl(daemon.port(), way.words, way.input);
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("errorCode"), std::string::npos);
    expectNoSecret(run);
    // It was sent to the daemon.
    ASSERT_EQ(daemon.received().size(), 1U);
    EXPECT_NE(daemon.received()[0].find(std::string("\"") + way.member + "\":\"" + kSecret), std::string::npos);
  }
}

TEST(Secrets, AreNotPrintedByTheSimulatorByDefault) {
  for (const bool asked : {false, true}) {
    const std::uint16_t port = nextPort();
    Process simulator(
        {ZEPHSIM_PATH, "--port", std::to_string(port), "--fast", asked ? "--print-secrets" : "--print", "--print"});
    ASSERT_TRUE(simulator.waitForOutput("\n"));
    for (const Way& way : kWays) expectNoSecret(zephctl(port, way.words, way.input));
    EXPECT_EQ(zephctl(port, {"daemon", "exit"}).status, 0);
    const ProgramRun run = simulator.finish();
    for (const Way& way : kWays) {
      EXPECT_NE(run.out.find(std::string("\"") + way.member + "\":\"" + (asked ? kSecret : "***") + "\""),
                std::string::npos)
          << describe(way) << run.out;
    }
    if (!asked) expectNoSecret(run);
  }
}

TEST(Secrets, ArgumentsAreWipedAfterTheCall) {
  for (const Way& way : kWays) {
    if (!way.input.empty()) continue;
    SCOPED_TRACE(describe(way));
    ScriptedDaemon daemon(refusalOf(way));
    const Sdk sdk = connectTo(daemon.port());
    cli::g_sdk = sdk.get();
    std::vector<std::string> texts = way.words;
    std::vector<char*> words;
    words.reserve(texts.size());
    for (std::string& text : texts) words.push_back(text.data());
    EXPECT_EQ(cli::dispatch(words), 1);
    cli::g_sdk = nullptr;
    EXPECT_EQ(texts.back(), std::string(kSecret.size(), '\0'));
    EXPECT_EQ(daemon.received().size(), 1U);
  }
}

}  // namespace
}  // namespace tests
