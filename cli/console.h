// What a console needs that a pipe or a file does not.
#pragma once

#include <cstdio>
#include <string_view>

namespace cli {

/// Makes the program's words UTF-8 and lets its output go out unchanged. Once, before all else.
void prepareConsole(int& argc, char**& argv);

/// Writes UTF-8 text at once, in one write where the system takes it whole; where a Windows console shows the stream it
/// goes out as UTF-16. Failures are ignored.
void writeText(std::FILE* stream, std::string_view text);

}  // namespace cli
