#include "cli/usage.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <string_view>

#include "cli/program_name.h"

namespace {

TEST(Usage, ListsEveryActionOnce) {
  const std::set<std::string_view> actions(std::begin(cli::usage::kListed), std::end(cli::usage::kListed));
  EXPECT_EQ(std::size(cli::usage::kListed), 74U);
  EXPECT_EQ(actions.size(), 74U);
  EXPECT_FALSE(actions.contains("esni <on|off>"));
}

TEST(ProgramName, IsWhatStandsBehindTheLastSeparator) {
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
