// Cases of the program as text: its arguments, the daemon's requests and answers, and the output. The cases are in
// tests/program/*.cases; tests/program/README.md describes the format.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/program_case.h"

namespace tests {

/// A line of a file with its continuation lines; the rows, for a table or a list of errors.
struct CaseLine {
  int number = 0;
  std::string text;
  std::vector<std::string> rows = {};
};

/// The unparsed cases under one title, after the definitions of the file, which apply to all titles.
struct CaseGroup {
  std::string file;  ///< without folder and extension
  std::string title;
  std::vector<CaseLine> lines;
};

/// Returns all groups of a folder's files. Throws std::runtime_error on a line before the first title.
std::vector<CaseGroup> groupsIn(const std::filesystem::path& folder);

/// Reads the cases of a group. Throws std::runtime_error with the file and line of an error.
std::vector<ProgramCase> casesOf(const CaseGroup& group);

}  // namespace tests
