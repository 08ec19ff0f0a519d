#include "cli/usage.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <sstream>
#include <string>

#include "cli/program_name.h"

namespace {

std::string generalUsage() {
  std::FILE* file = std::tmpfile();
  cli::printUsage(file);
  std::string text(static_cast<std::size_t>(std::ftell(file)), '\0');
  std::rewind(file);
  text.resize(std::fread(text.data(), 1, text.size(), file));
  std::fclose(file);
  return text;
}

TEST(Usage, ListsEveryActionOnce) {
  cli::setProgramName("/usr/bin/zephctl");
  const std::string head = "zephctl v14.9.1.12483\nUsage : zephctl action\nActions:\n";
  const std::string usage = generalUsage();
  ASSERT_EQ(usage.substr(0, head.size()), head);

  std::set<std::string> actions;
  std::istringstream lines(usage.substr(head.size()));
  for (std::string line; std::getline(lines, line);) {
    EXPECT_EQ(line.find_first_not_of(' '), 3u) << line;
    EXPECT_TRUE(actions.insert(line).second) << line;
  }
  EXPECT_EQ(actions.size(), 74u);
  EXPECT_EQ(actions.count("   esni <on|off>"), 0u);
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
