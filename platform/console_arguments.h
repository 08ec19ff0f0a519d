// The command line of a Windows process.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zephlinksdk {

/// Splits a command line as CommandLineToArgvW does. Returns nullopt for a line with quotes after the program's name,
/// and for unusual ones. The library that contains CommandLineToArgvW takes longer to load than the rest of a start.
std::optional<std::vector<std::wstring>> splitPlainCommandLine(std::wstring_view line);

/// Splits any command line, with that library if necessary. Returns an empty list if it cannot be loaded.
std::vector<std::wstring> splitCommandLine(const wchar_t* line);

}  // namespace zephlinksdk
