// The reader of *.cases: the expansion of lines, and the errors that it reports.
#include "tests/case_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace tests {
namespace {

/// Creates a folder with one file of cases.
class CaseFile : public testing::Test {
 protected:
  ~CaseFile() override { std::filesystem::remove_all(folder); }

  std::vector<CaseGroup> groups(const std::string& text) const {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "some.cases", std::ios::binary) << text;
    return groupsIn(folder);
  }

  std::vector<ProgramCase> cases(const std::string& lines) const { return casesOf(groups("== Title\n" + lines).at(0)); }

  std::vector<std::vector<std::string>> arguments(const std::string& lines) const {
    std::vector<std::vector<std::string>> found;
    for (const ProgramCase& each : cases(lines)) found.push_back(each.words);
    return found;
  }

  std::string failureOf(const std::string& lines) const {
    try {
      cases(lines);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "none";
  }

  const std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) /
      (std::string("zephctl_cases_") + testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(CaseFile, ReadsEveryDetailOfARun) {
  const ProgramCase read = cases(
                               "$ set \"\" \"a \\\"b\\\"\"\n> ask {\"a\":1}\n< tell {\"b\":2} | other\n< [raw\n"
                               "| one\n| two\n2| fault\nstatus 7\nlasts 3\ninput \"x\\n\"\n")
                               .at(0);
  EXPECT_EQ(read.words, (std::vector<std::string>{"set", "", "a \"b\""}));
  EXPECT_EQ(read.sent, (std::vector<std::string>{request("ask", "{\"a\":1}")}));
  EXPECT_EQ(read.answers.at("ask"),
            (std::vector<std::string>{event("tell", "{\"b\":2}"), event("other", "null"), "[raw"}));
  EXPECT_EQ(read.out, "one\ntwo");
  EXPECT_EQ(read.err, "fault");
  EXPECT_EQ(read.status, 7);
  EXPECT_EQ(read.duration, std::chrono::seconds(3));
  EXPECT_EQ(read.input, "x\n");
  EXPECT_FALSE(read.endless);
}

TEST_F(CaseFile, PrintsJsonAsTheProgramDoes) {
  EXPECT_EQ(cases("$ a\n= {\"b\":[1,{\"c\":2}]} ++ {\"b\":[3,{\"d\":4}]}\n").at(0).out,
            printed(parsed(R"({"b":[3,{"c":2,"d":4}]})")));
  const ProgramCase failed = cases("$ a\n! 12 type: a message\n").at(0);
  EXPECT_EQ(failed.err, errorObject(12, "type", "a message"));
  EXPECT_EQ(failed.status, 1);
  const ProgramCase stream = cases("$~ a\n* label {\"b\":1}\n*! 12 type: text\n").at(0);
  EXPECT_EQ(stream.out, block("label", "{\"b\":1}"));
  EXPECT_EQ(stream.err, block("error", errorObject(12, "type", "text")));
  EXPECT_TRUE(stream.endless);
}

TEST_F(CaseFile, ExpandsNamesRangesAndLoops) {
  using testing::ElementsAre;
  EXPECT_THAT(arguments("let both a # #\n$ <<both x>> <<y*3>> <<1..3 #>>\n"),
              ElementsAre(ElementsAre("a", "x", "x", "yyy", "1,2,3")));
  EXPECT_THAT(
      arguments("table pair one | two\n  a | b\n  c | d\nfor pair\nfor third = e | f\n$ <<one>><<two>><<third>>\n"),
      ElementsAre(ElementsAre("abe"), ElementsAre("abf"), ElementsAre("cde"), ElementsAre("cdf")));
  EXPECT_THAT(arguments("for x = a | b\n$ <<x>>\n\n$ after\n"),
              ElementsAre(ElementsAre("a"), ElementsAre("b"), ElementsAre("after")));
}

TEST_F(CaseFile, MakesARunOfEachInvalidLine) {
  const auto read = cases("invalid set <on|off>\n  set On | set\n  set on off\n");
  ASSERT_EQ(read.size(), 3U);
  EXPECT_EQ(read[2].words, (std::vector<std::string>{"set", "on", "off"}));
  EXPECT_EQ(read[0].status, 2);
  EXPECT_THAT(read[0].err, testing::EndsWith(" set <on|off>\n"));
}

TEST_F(CaseFile, ReportsErrorsWithTheirLine) {
  const std::pair<const char*, const char*> faults[] = {
      {"$ <<none>>\n", "some.cases:2: no such name: none"},
      {"$ a\n\nfor none\n$ a\n", "some.cases:4: no such table: none"},
      {"$ a>>\n", "some.cases:2: a >> without its <<: $ a>>"},
      {"for x = a\nfor y = b\nfor z = c\n$ a\n", "some.cases:4: more than two nested loops"},
      {"table t a | b\n  one\n", "some.cases:2: not a row of its table: one"},
      {"$ a\n< report {}\n", "some.cases:3: an answer without a request"},
      {"$ a\n! 12 type\n", "some.cases:3: an error without its message: 12 type"},
      {"nonsense here\n", "some.cases:2: no such line: nonsense here"},
  };
  for (const auto& [lines, message] : faults) EXPECT_EQ(failureOf(lines), message);
}

TEST_F(CaseFile, SharesWhatPrecedesTheFirstTitle) {
  const auto read = groups("let x shared\n# a comment\n== One\n$ <<x>>\n== Two\n$ <<x>> a,\n    b\n");
  ASSERT_EQ(read.size(), 2U);
  EXPECT_EQ(read[1].title, "Two");
  EXPECT_EQ(casesOf(read[0]).at(0).words, (std::vector<std::string>{"shared"}));
  EXPECT_EQ(casesOf(read[1]).at(0).words, (std::vector<std::string>{"shared", "a,b"}));
}

TEST_F(CaseFile, DescribesTheExpandedCase) {
  EXPECT_EQ(
      described(cases("let x 1\n$ a <<x>>\n> ask\n< tell {\"b\":<<x>>}\n| out\n").at(0)),
      "$ \"a\" \"1\"\n> [\"ask\",null,\"zephlink_sdk\"]\n< ask: [\"tell\",{\"b\":1},\"daemon\"]\n| out\nstatus 0");
}

}  // namespace
}  // namespace tests
