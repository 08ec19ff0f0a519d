// Cases of the program as text: what is typed, what a daemon hears and answers, and what is printed. They stand in
// tests/program/*.cases; tests/program/README.md tells how they are written.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/program_case.h"

namespace tests {

/// A line of a file with those that continue it; of a table or a list of faults, its rows.
struct CaseLine {
  int number = 0;
  std::string text;
  std::vector<std::string> rows = {};
};

/// The cases under one title, not yet read; what its file defines for all titles stands first.
struct CaseGroup {
  std::string file;  ///< name without folder and extension
  std::string title;
  std::vector<CaseLine> lines;
};

/// All groups of a folder's files. Throws std::runtime_error on a line that stands under no title.
std::vector<CaseGroup> groupsIn(const std::filesystem::path& folder);

/// Reads the cases of a group. Throws std::runtime_error that names file and line of a fault.
std::vector<ProgramCase> casesOf(const CaseGroup& group);

}  // namespace tests
