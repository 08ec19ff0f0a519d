#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
// These headers require windows.h first.
#include <fcntl.h>
#include <io.h>

#include <string>
#include <vector>

#include "platform/console.h"
#include "platform/console_arguments.h"

namespace zephlinksdk {

namespace {

std::wstring toUtf16(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string toUtf8(const std::wstring& wide) {
  const int length = static_cast<int>(wide.size());
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(), size, nullptr, nullptr);
  return text;
}

HANDLE consoleOf(std::FILE* stream) {
  const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(stream)));
  DWORD mode = 0;
  return ::GetConsoleMode(handle, &mode) != 0 ? handle : nullptr;
}

}  // namespace

void prepareConsole(int& argc, char**& argv) {
  ::_setmode(::_fileno(stdout), _O_BINARY);
  ::_setmode(::_fileno(stderr), _O_BINARY);
  static std::vector<std::string> words;
  static std::vector<char*> pointers;
  for (const std::wstring& argument : splitCommandLine(::GetCommandLineW())) words.push_back(toUtf8(argument));
  if (words.empty()) return;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  argc = static_cast<int>(words.size());
  argv = pointers.data();
}

void endOnClosedPipe() {}

void writeText(std::FILE* stream, std::string_view text) {
  if (HANDLE console = consoleOf(stream)) {
    const std::wstring wide = toUtf16(text);
    DWORD written = 0;
    ::WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    return;
  }
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

}  // namespace zephlinksdk
