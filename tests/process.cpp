#include "tests/process.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <cstdio>
#include <stdexcept>
#include <string>

namespace tests {

namespace {

int countOf(std::string_view text, std::string_view part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

}  // namespace

#ifdef _WIN32

struct Process::Native {
  HANDLE process = nullptr;
};

namespace {

struct Pipe {
  HANDLE readEnd = nullptr;
  HANDLE writeEnd = nullptr;

  /// Only the child's end is inherited, so that a stream ends with its program.
  explicit Pipe(bool childReads) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    if (::CreatePipe(&readEnd, &writeEnd, &inherit, 0) == 0) throw std::runtime_error("no pipe");
    ::SetHandleInformation(childReads ? writeEnd : readEnd, HANDLE_FLAG_INHERIT, 0);
  }
};

/// What a child inherits, and nothing else: the sockets of a test's server would stay open in it.
class StartupInfo {
 public:
  StartupInfo(HANDLE input, HANDLE output, HANDLE errors) : inherited{input, output, errors} {
    SIZE_T size = 0;
    ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    storage.resize(size);
    info.StartupInfo.cb = sizeof info;
    info.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    info.StartupInfo.hStdInput = input;
    info.StartupInfo.hStdOutput = output;
    info.StartupInfo.hStdError = errors;
    info.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(storage.data());
    if (::InitializeProcThreadAttributeList(info.lpAttributeList, 1, 0, &size) == 0 ||
        ::UpdateProcThreadAttribute(info.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited,
                                    sizeof inherited, nullptr, nullptr) == 0) {
      throw std::runtime_error("no list of inherited handles");
    }
  }
  ~StartupInfo() { ::DeleteProcThreadAttributeList(info.lpAttributeList); }
  StartupInfo(const StartupInfo&) = delete;
  StartupInfo& operator=(const StartupInfo&) = delete;

  STARTUPINFOW* get() { return &info.StartupInfo; }

 private:
  HANDLE inherited[3];
  std::vector<char> storage;
  STARTUPINFOEXW info{};
};

/// The quoting that CommandLineToArgvW undoes.
std::string quoted(const std::string& word) {
  std::string text = "\"";
  std::size_t backslashes = 0;
  for (const char letter : word) {
    if (letter == '"') text.append(backslashes + 1, '\\');
    backslashes = letter == '\\' ? backslashes + 1 : 0;
    text += letter;
  }
  text.append(backslashes, '\\');
  return text + "\"";
}

std::wstring wide(const std::string& text) {
  const int size = static_cast<int>(text.size());
  std::wstring converted(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)),
                         L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, converted.data(), static_cast<int>(converted.size()));
  return converted;
}

std::ptrdiff_t readPipe(std::intptr_t pipe, char* bytes, std::size_t size) {
  DWORD count = 0;
  const bool any =
      ::ReadFile(reinterpret_cast<HANDLE>(pipe), bytes, static_cast<DWORD>(size), &count, nullptr) != 0 && count > 0;
  if (!any) ::CloseHandle(reinterpret_cast<HANDLE>(pipe));
  return any ? static_cast<std::ptrdiff_t>(count) : 0;
}

}  // namespace

Process::Process(const std::vector<std::string>& words, std::string_view input) : native(std::make_unique<Native>()) {
  std::string command;
  for (const std::string& word : words) command += (command.empty() ? "" : " ") + quoted(word);
  const Pipe in(true);
  const Pipe output(false);
  const Pipe errors(false);
  StartupInfo start(in.readEnd, output.writeEnd, errors.writeEnd);
  PROCESS_INFORMATION process{};
  // Wine refuses a start now and then while many programs start beside it; the next attempt succeeds.
  constexpr int kAttempts = 20;
  bool started = false;
  for (int attempt = 0; attempt < kAttempts && !started; ++attempt) {
    started = ::CreateProcessW(nullptr, wide(command).data(), nullptr, nullptr, TRUE, EXTENDED_STARTUPINFO_PRESENT,
                               nullptr, nullptr, start.get(), &process) != 0;
    if (!started) std::fprintf(stderr, "%s: no start, error %lu\n", words[0].c_str(), ::GetLastError());
    if (!started) ::Sleep(10);
  }
  if (!started) throw std::runtime_error("cannot start " + words[0]);
  ::CloseHandle(process.hThread);
  for (HANDLE childEnd : {in.readEnd, output.writeEnd, errors.writeEnd}) ::CloseHandle(childEnd);
  DWORD written = 0;
  ::WriteFile(in.writeEnd, input.data(), static_cast<DWORD>(input.size()), &written, nullptr);
  ::CloseHandle(in.writeEnd);
  native->process = process.hProcess;
  collect(out, reinterpret_cast<std::intptr_t>(output.readEnd));
  collect(err, reinterpret_cast<std::intptr_t>(errors.readEnd));
}

void Process::kill() { ::TerminateProcess(native->process, 137); }

ProgramRun Process::finish() {
  out.reader.join();
  err.reader.join();
  ::WaitForSingleObject(native->process, INFINITE);
  DWORD status = 0;
  ::GetExitCodeProcess(native->process, &status);
  ::CloseHandle(native->process);
  native->process = nullptr;
  return {static_cast<int>(status), out.text, err.text};
}

#else

struct Process::Native {
  pid_t process = 0;
};

namespace {

struct Pipe {
  int ends[2] = {-1, -1};

  Pipe() {
    if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  }
};

std::ptrdiff_t readPipe(std::intptr_t pipe, char* bytes, std::size_t size) {
  const auto descriptor = static_cast<int>(pipe);
  const ssize_t count = ::read(descriptor, bytes, size);
  if (count <= 0) ::close(descriptor);
  return count;
}

}  // namespace

Process::Process(const std::vector<std::string>& words, std::string_view input) : native(std::make_unique<Native>()) {
  const Pipe in;
  const Pipe output;
  const Pipe errors;
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, in.ends[0], STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, output.ends[1], STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, errors.ends[1], STDERR_FILENO);
  // A listening socket that a program inherits would listen on.
  ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const int failed = ::posix_spawn(&native->process, arguments[0], &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  for (const int childEnd : {in.ends[0], output.ends[1], errors.ends[1]}) ::close(childEnd);
  if (failed != 0) throw std::runtime_error("cannot start " + words[0]);
  [[maybe_unused]] const ssize_t written = ::write(in.ends[1], input.data(), input.size());
  ::close(in.ends[1]);
  collect(out, output.ends[0]);
  collect(err, errors.ends[0]);
}

void Process::kill() { ::kill(native->process, SIGKILL); }

ProgramRun Process::finish() {
  out.reader.join();
  err.reader.join();
  int status = 0;
  ::waitpid(native->process, &status, 0);
  native->process = 0;
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), out.text, err.text};
}

#endif

Process::~Process() {
  if (native->process == decltype(native->process){}) return;
  kill();
  finish();
}

void Process::collect(Stream& stream, std::intptr_t pipe) {
  stream.reader = std::thread([this, &stream, pipe] {
    char bytes[65536];
    std::ptrdiff_t count = 0;
    do {
      count = readPipe(pipe, bytes, sizeof bytes);
      const std::lock_guard lock(mutex);
      if (count > 0) stream.text.append(bytes, static_cast<std::size_t>(count));
      stream.ended = count <= 0;
      changed.notify_all();
    } while (count > 0);
  });
}

bool Process::waitFor(Stream& stream, std::string_view text, int times, std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex);
  changed.wait_for(lock, patience, [&] { return stream.ended || countOf(stream.text, text) >= times; });
  return countOf(stream.text, text) >= times;
}

bool Process::waitForOutput(std::string_view text, int times, std::chrono::milliseconds patience) {
  return waitFor(out, text, times, patience);
}

std::string Process::outputSoFar() {
  const std::lock_guard lock(mutex);
  return out.text;
}

bool Process::waitForError(std::string_view text) { return waitFor(err, text, 1, kPatience); }

ProgramRun zephctl(std::uint16_t port, const std::vector<std::string>& words, std::string_view input) {
  std::vector<std::string> all{ZEPHCTL_PATH, "-p", std::to_string(port)};
  all.insert(all.end(), words.begin(), words.end());
  return Process(all, input).finish();
}

}  // namespace tests
