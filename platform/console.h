// The standard streams and the arguments of a console program. Only the program uses it: the library prints nothing
// here.
#pragma once

#include <cstdio>
#include <string_view>

namespace zephlinksdk {

/// Makes the program's words UTF-8, lets its output go out unchanged, and makes writes to a closed pipe fail instead of
/// ending the process. Call once, before all else.
void prepareConsole(int& argc, char**& argv);

/// Makes a write to a closed pipe end the process again, unless the process was started without that. Nothing on
/// Windows, where such a write fails.
void endOnClosedPipe();

/// Writes UTF-8 text at once, in one write where the system takes it whole, and waits while a non-blocking descriptor
/// takes no more. Where a Windows console shows the stream it goes out as UTF-16. Failures are ignored.
void writeText(std::FILE* stream, std::string_view text);

}  // namespace zephlinksdk
