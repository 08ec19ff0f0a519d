// The arguments of the command line, compared with the system's own function.
#include "platform/console_arguments.h"

#include <gtest/gtest.h>
#include <windows.h>
// This header requires windows.h first.
#include <shellapi.h>

namespace {

using Arguments = std::vector<std::wstring>;

Arguments splitBySystem(const wchar_t* line) {
  const HMODULE library = LoadLibraryW(L"shell32.dll");
  const auto split = reinterpret_cast<decltype(&CommandLineToArgvW)>(
      reinterpret_cast<void*>(GetProcAddress(library, "CommandLineToArgvW")));
  int count = 0;
  wchar_t** arguments = split(line, &count);
  Arguments all(arguments, arguments + count);
  LocalFree(arguments);
  return all;
}

TEST(ConsoleArguments, AreSplitAsBySystem) {
  const struct {
    const wchar_t* line;
    bool plain;
  } cases[] = {
      {L"zephctl", true},
      {L"zephctl state", true},
      {L"\"C:\\Program Files\\zephctl.exe\" state", true},
      {L"\"zephctl\"", true},
      {L"zephctl  a\tb \t ", true},
      {L"zephctl a\\b\\\\c d\\", true},
      {L"zephctl \u00e4\u20ac ^ * %PATH%", true},
      {L"\"zephctl\"state", false},
      {L"zephctl \"two words\"", false},
      {L"zephctl a\\\"b \"\" c", false},
      {L"zephctl \"a\"\"b\" c", false},
      {L" zephctl", false},
      {L"zephctl a\nb", false},
      {L"\"zephctl", false},
  };
  for (const auto& each : cases) {
    const auto plain = zephlinksdk::splitPlainCommandLine(each.line);
    EXPECT_EQ(plain.has_value(), each.plain) << testing::PrintToString(std::wstring(each.line));
    EXPECT_EQ(zephlinksdk::splitCommandLine(each.line), splitBySystem(each.line))
        << testing::PrintToString(std::wstring(each.line));
  }
}

}  // namespace
