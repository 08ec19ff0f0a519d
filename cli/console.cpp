#include "cli/console.h"

#ifdef _WIN32
#include <windows.h>
// behind windows.h
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <string>
#include <vector>
#else
#include <fcntl.h>
#include <unistd.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <cerrno>
#endif

namespace cli {

#ifdef _WIN32

namespace {

std::wstring toUtf16(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string toUtf8(const wchar_t* wide) {
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
  text.resize(text.size() - 1);
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
  int count = 0;
  wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (wide == nullptr) return;
  for (int i = 0; i < count; ++i) words.push_back(toUtf8(wide[i]));
  ::LocalFree(wide);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  argc = count;
  argv = pointers.data();
}

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

#else

void prepareConsole(int&, char**&) {
#ifdef __GLIBC__
  // Two threads that hardly allocate need no arena each.
  ::mallopt(M_ARENA_MAX, 1);
#endif
  // A standard descriptor that the parent has closed would go to our next socket, and our output into it.
  int opened = ::open("/dev/null", O_RDWR);
  while (opened >= 0 && opened <= STDERR_FILENO) opened = ::open("/dev/null", O_RDWR);
  if (opened >= 0) ::close(opened);
}

void writeText(std::FILE* stream, std::string_view text) {
  std::fflush(stream);
  while (!text.empty()) {
    const ssize_t written = ::write(::fileno(stream), text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

#endif

}  // namespace cli
