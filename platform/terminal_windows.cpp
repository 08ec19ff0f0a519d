#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "platform/terminal.h"

namespace zephlinksdk {
namespace {

// Read by the control handler, which runs on a thread of the system. Constant while the handler is installed.
HANDLE console = nullptr;
bool isConsole = false;
DWORD loudMode = 0;

// The UTF-8 bytes of the last character read, and how many of them were returned.
char bytes[4];
int byteCount = 0;
int bytesTaken = 0;

BOOL WINAPI onControlEvent(DWORD) {
  SetConsoleMode(console, loudMode);
  return FALSE;  // continue with the handler that ends the process
}

bool readUnit(wchar_t& unit) {
  DWORD count = 0;
  do {
    SetLastError(ERROR_SUCCESS);
    if (!ReadConsoleW(console, &unit, 1, &count, nullptr)) return false;
    // An interrupt aborts the read before it ends the process: do not return it as a result.
  } while (count == 0 && GetLastError() == ERROR_OPERATION_ABORTED);
  return count == 1;
}

/// Reads one character, one or two UTF-16 units, into `bytes`.
bool readCharacter() {
  wchar_t units[2] = {};
  int unitCount = 1;
  if (!readUnit(units[0])) return false;
  if (IS_HIGH_SURROGATE(units[0]) && readUnit(units[1])) unitCount = 2;
  byteCount = WideCharToMultiByte(CP_UTF8, 0, units, unitCount, bytes, sizeof bytes, nullptr, nullptr);
  bytesTaken = 0;
  SecureZeroMemory(units, sizeof units);
  return byteCount > 0;
}

int nextOfConsole() {
  constexpr char kEndOfInput = 26;  // Ctrl-Z
  if (bytesTaken == byteCount && !readCharacter()) return HiddenInput::kEnd;
  const unsigned char byte = static_cast<unsigned char>(bytes[bytesTaken]);
  bytes[bytesTaken++] = 0;
  if (byte == '\r') return nextOfConsole();
  return byte == kEndOfInput ? HiddenInput::kEnd : byte;
}

}  // namespace

HiddenInput::HiddenInput() {
  console = GetStdHandle(STD_INPUT_HANDLE);
  isConsole = GetConsoleMode(console, &loudMode) != 0;
  byteCount = bytesTaken = 0;
  if (!isConsole) return;
  SetConsoleCtrlHandler(onControlEvent, TRUE);
  SetConsoleMode(console, loudMode & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
}

HiddenInput::~HiddenInput() {
  SecureZeroMemory(bytes, sizeof bytes);
  if (!isConsole) return;
  SetConsoleMode(console, loudMode);
  SetConsoleCtrlHandler(onControlEvent, FALSE);
}

int HiddenInput::next() {
  if (isConsole) return nextOfConsole();
  // Text mode, so that a line ends in one character, but without a buffer that could retain a secret.
  unsigned char byte = 0;
  return _read(_fileno(stdin), &byte, 1) == 1 ? byte : kEnd;
}

}  // namespace zephlinksdk
