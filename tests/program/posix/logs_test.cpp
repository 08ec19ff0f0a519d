// Problem reports where the file system has links and says no.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "tests/program_case.h"

namespace tests {
namespace {

TEST(LogReportOnPosix, ResolvesLinksAndTellsFailures) {
  namespace fs = std::filesystem;
  const fs::path folder =
      fs::canonical(fs::temp_directory_path()) / ("zephctl_" + std::to_string(std::random_device()()));
  fs::create_directory(folder);
  std::ofstream(folder / "\xC3\xA4.log") << "log";
  fs::create_symlink("\xC3\xA4.log", folder / "link");
  fs::create_symlink("loop", folder / "loop");
  const std::string sentName = "\"" + folder.string() + "/\\u00e4.log\"";
  for (const fs::path& link : {folder / "link", fs::relative(folder) / "link"}) {
    check(
        {.words = {"log", "report", "a@b.example", "", link.string()},
         .answers = {{"send_log_report", {event("report_log_result", "{}")}}},
         .sent = {request("send_log_report", R"({"email":"a@b.example","filename":)" + sentName + R"(,"message":""})")},
         .out = "{\n\t\"ticketId\" : \"\"\n}"});
  }

  const auto tells = [](const fs::path& path, std::errc reason) {
    const fs::filesystem_error failure("exists", path, std::make_error_code(reason));
    check({.words = {"log", "report", "a@b.example", "text", path.string()},
           .err = errorObject(3840, "An error in the SDK", std::string(failure.what()).substr(0, 199)),
           .status = 1});
  };
  tells(folder / "loop", std::errc::too_many_symbolic_link_levels);
  tells(std::string(300, 'x'), std::errc::filename_too_long);
  fs::remove_all(folder);
}

}  // namespace
}  // namespace tests
