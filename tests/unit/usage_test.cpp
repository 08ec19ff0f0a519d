#include "cli/usage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

#include "cli/actions.h"
#include "cli/program_name.h"

namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::StartsWith;

TEST(Usage, ListsExistingActionsOnce) {
  std::set<std::string> texts;
  for (const char* path : cli::kListedActions) {
    const char* usage = cli::usageOf(path);
    ASSERT_NE(usage, nullptr) << path;
    EXPECT_TRUE(texts.insert(usage).second) << usage;
  }
}

TEST(Usage, OmitsSomeActions) {
  std::set<std::string> unlisted;
  cli::forEachAction([&unlisted](const std::string& path, const cli::Action& action, const char*) {
    if (action.subcommands == nullptr) unlisted.insert(path.substr(0, path.find(' ')));
  });
  for (const char* path : cli::kListedActions) unlisted.erase(std::string(path).substr(0, std::string(path).find(' ')));
  EXPECT_THAT(unlisted, ElementsAre("esni", "firewall", "help", "localproxy", "safebrowsing"));
}

// A second row with the same path would never run.
TEST(Actions, HaveUniquePaths) {
  std::set<std::string> paths;
  cli::forEachAction([&paths](const std::string& path, const cli::Action&, const char*) {
    EXPECT_TRUE(paths.insert(path).second) << path;
  });
  EXPECT_GT(paths.size(), std::size(cli::kListedActions));
}

// All errors print their usage text, except those of esni.
TEST(Actions, HaveAUsageTextAndAHandlerOrSubcommands) {
  cli::forEachAction([](const std::string& path, const cli::Action& action, const char* usage) {
    EXPECT_TRUE(action.handle != nullptr || action.subcommands != nullptr) << path;
    if (path == "esni") return;
    ASSERT_NE(usage, nullptr) << path;
    EXPECT_THAT(usage, StartsWith(path.substr(0, path.find(' '))));
  });
}

TEST(Actions, InheritTheUsageTextOfTheParentRow) {
  const std::pair<const char*, const char*> cases[] = {
      {"daemon exit", "daemon exit"},
      {"stats historic", cli::usageOf("stats")},
      {"streamingbypass service enable", cli::usageOf("streamingbypass service")},
      {"networksharing set peer allowhost",
       "networksharing set peer <autoreconnect|allowhost|allowclient> <peer uuid> <on|off>"},
      {"safebrowsing stop", cli::usageOf("safebrowsing")},
  };
  for (const auto& [path, usage] : cases) EXPECT_STREQ(cli::usageOf(path), usage) << path;
  for (const char* path : {"", "esni", "adapter bogus", "state state", "adapter  priority", "Help"}) {
    EXPECT_THAT(cli::usageOf(path), Eq(nullptr)) << path;
  }
}

TEST(ProgramName, IsTheTextAfterTheLastSeparator) {
  const std::pair<std::string, std::string> cases[] = {
      {"zephctl", "zephctl"},
      {"/usr/bin/zephctl", "zephctl"},
      {"C:\\bin\\zephctl.exe", "zephctl.exe"},
      {"C:\\bin/odd\\zephctl", "odd\\zephctl"},
      {"bin/", ""},
      {"", ""},
      {std::string(600, 'x'), std::string(511, 'x')},
  };
  for (const auto& [argv0, expected] : cases) {
    cli::setProgramName(argv0.c_str());
    EXPECT_EQ(cli::programName(), expected) << argv0;
  }
  cli::setProgramName(nullptr);
  EXPECT_STREQ(cli::programName(), "");
}

}  // namespace
