#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
// This header requires windows.h first.
#include <shellapi.h>

#include <algorithm>

#include "platform/console_arguments.h"

namespace zephlinksdk {

namespace {

constexpr std::wstring_view kBlanks = L" \t";

bool isUnusual(wchar_t letter) { return letter < L' ' && letter != L'\t'; }

/// The function of the system. Null if its library cannot be loaded.
decltype(&::CommandLineToArgvW) systemSplit() {
  HMODULE library = ::LoadLibraryExW(L"shell32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (library == nullptr) return nullptr;
  return reinterpret_cast<decltype(&::CommandLineToArgvW)>(
      reinterpret_cast<void*>(::GetProcAddress(library, "CommandLineToArgvW")));
}

}  // namespace

std::optional<std::vector<std::wstring>> splitPlainCommandLine(std::wstring_view line) {
  if (line.empty() || std::ranges::any_of(line, isUnusual)) return std::nullopt;
  const bool quoted = line[0] == L'"';
  const std::size_t end = quoted ? line.find(L'"', 1) : std::min(line.find_first_of(kBlanks), line.size());
  if (end == std::wstring_view::npos) return std::nullopt;
  const std::wstring_view name = quoted ? line.substr(1, end - 1) : line.substr(0, end);
  std::wstring_view rest = line.substr(quoted ? end + 1 : end);
  const bool separated = rest.empty() || kBlanks.find(rest[0]) != std::wstring_view::npos;
  if (name.empty() || !separated || rest.find(L'"') != std::wstring_view::npos) return std::nullopt;

  std::vector<std::wstring> arguments{std::wstring(name)};
  for (std::size_t start = rest.find_first_not_of(kBlanks); start != std::wstring_view::npos;
       start = rest.find_first_not_of(kBlanks)) {
    rest.remove_prefix(start);
    const std::size_t length = std::min(rest.find_first_of(kBlanks), rest.size());
    arguments.emplace_back(rest.substr(0, length));
    rest.remove_prefix(length);
  }
  return arguments;
}

std::vector<std::wstring> splitCommandLine(const wchar_t* line) {
  if (auto plain = splitPlainCommandLine(line)) return *std::move(plain);
  const auto split = systemSplit();
  int count = 0;
  wchar_t** arguments = split != nullptr ? split(line, &count) : nullptr;
  if (arguments == nullptr) return {};
  std::vector<std::wstring> all(arguments, arguments + count);
  ::LocalFree(arguments);
  return all;
}

}  // namespace zephlinksdk
