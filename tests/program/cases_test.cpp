// Runs the cases of *.cases; each title is a separate test.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "tests/case_file.h"

namespace tests {

void PrintTo(const CaseGroup& group, std::ostream* stream) { *stream << group.title; }

namespace {

class Cases : public testing::TestWithParam<CaseGroup> {};

TEST_P(Cases, Pass) {
  const std::vector<ProgramCase> cases = casesOf(GetParam());
  ASSERT_FALSE(cases.empty()) << "a title without a run";
  for (const ProgramCase& each : cases) {
    SCOPED_TRACE(GetParam().file + ".cases:" + std::to_string(each.line));
    check(each);
  }
}

std::string nameOf(const testing::TestParamInfo<CaseGroup>& info) {
  std::string name = info.param.file + "_" + info.param.title;
  std::ranges::replace_if(
      name, [](unsigned char letter) { return std::isalnum(letter) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Program, Cases, testing::ValuesIn(groupsIn(CASES_FOLDER)), nameOf);

}  // namespace
}  // namespace tests
