// The standard streams and the arguments of a console program. Used by the program only: the library does not print
// here.
#pragma once

#include <cstdio>
#include <string_view>

namespace zephlinksdk {

/// Converts the program's arguments to UTF-8, sends its output unchanged, and makes writes to a closed pipe fail
/// instead of ending the process. Call once, before anything else.
void prepareConsole(int& argc, char**& argv);

/// Restores the default that a write to a closed pipe ends the process, unless the process was started with another
/// setting. Does nothing on Windows, where such a write fails.
void endOnClosedPipe();

/// Writes UTF-8 text without buffering, in one write if the system accepts all of it, and waits while a non-blocking
/// descriptor is full. Converts to UTF-16 if the stream is a Windows console. Ignores failures.
void writeText(std::FILE* stream, std::string_view text);

}  // namespace zephlinksdk
