#include "tests/process.h"

#include <fcntl.h>
#include <unistd.h>
#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#endif

#include <array>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <stdexcept>
#include <utility>

namespace tests {

namespace {

constexpr unsigned kChunk = 65536;

using Words = std::vector<std::string>;
/// The child's ends of its standard streams, ordered by descriptor.
using Streams = std::array<int, 3>;

#ifdef _WIN32

/// CommandLineToArgvW expects backslashes to be doubled before a quote and at the end.
std::string quoted(const std::string& word) {
  const std::string doubled = std::regex_replace(word, std::regex(R"(\\+(?="|$))"), "$&$&");
  return '"' + std::regex_replace(doubled, std::regex("\""), R"(\")") + '"';
}

int openPipe(int (&ends)[2]) { return ::_pipe(ends, kChunk, _O_BINARY | _O_NOINHERIT); }

/// The job of all children. The system ends them when its last handle is closed, at the latest when this process ends.
HANDLE childrensJob() {
  static const HANDLE job = [] {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    const HANDLE created = ::CreateJobObjectW(nullptr, nullptr);
    ::SetInformationJobObject(created, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return created;
  }();
  return job;
}

/// Returns 0 on failure. The child inherits only its streams: otherwise the sockets of a test's server would stay open
/// in it.
std::intptr_t start(const Words& words, const Streams& streams) {
  std::string command;
  for (const std::string& word : words) command += quoted(word) + ' ';
  HANDLE inherited[3];
  for (std::size_t i = 0; i < streams.size(); ++i) {
    inherited[i] = reinterpret_cast<HANDLE>(::_get_osfhandle(streams[i]));
    ::SetHandleInformation(inherited[i], HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  }
  SIZE_T size = 0;
  ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
  std::vector<char> attributes(size);
  STARTUPINFOEXW info{};
  info.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(attributes.data());
  info.StartupInfo.cb = sizeof info;
  info.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  info.StartupInfo.hStdInput = inherited[0];
  info.StartupInfo.hStdOutput = inherited[1];
  info.StartupInfo.hStdError = inherited[2];
  ::InitializeProcThreadAttributeList(info.lpAttributeList, 1, 0, &size);
  ::UpdateProcThreadAttribute(info.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited, sizeof inherited,
                              nullptr, nullptr);
  PROCESS_INFORMATION process{};
  // Wine sometimes fails to start a program while many others start; retrying succeeds.
  for (int attempt = 0; attempt < 20 && process.hProcess == nullptr; ++attempt) {
    std::wstring line = std::filesystem::path(std::u8string(command.begin(), command.end())).wstring();
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, EXTENDED_STARTUPINFO_PRESENT | CREATE_SUSPENDED,
                         nullptr, nullptr, &info.StartupInfo, &process) == 0) {
      std::fprintf(stderr, "%s: no start, error %lu\n", words[0].c_str(), ::GetLastError());
      ::Sleep(10);
    }
  }
  ::DeleteProcThreadAttributeList(info.lpAttributeList);
  ::AssignProcessToJobObject(childrensJob(), process.hProcess);
  ::ResumeThread(process.hThread);
  ::CloseHandle(process.hThread);
  return reinterpret_cast<std::intptr_t>(process.hProcess);
}

void end(std::intptr_t process) { ::TerminateProcess(reinterpret_cast<HANDLE>(process), 137); }

int waitFor(std::intptr_t process) {
  const auto handle = reinterpret_cast<HANDLE>(process);
  DWORD status = 0;
  ::WaitForSingleObject(handle, INFINITE);
  ::GetExitCodeProcess(handle, &status);
  ::CloseHandle(handle);
  return static_cast<int>(status);
}

#else

int openPipe(int (&ends)[2]) { return ::pipe2(ends, O_CLOEXEC); }

/// Runs in the child: creates its process group, sets up its streams, closes all other descriptors, and lets it end
/// with this process.
[[noreturn]] void becomeProgram(char* const* arguments, const Streams& streams, pid_t parent) {
  ::setpgid(0, 0);
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(127);  // the parent ended before the call
  for (int i = 0; const int stream : streams) ::dup2(stream, i++);
  // A program that inherits a listening socket would keep it open.
  ::close_range(STDERR_FILENO + 1, ~0U, 0);
  ::execv(arguments[0], arguments);
  std::perror(arguments[0]);
  ::_exit(127);
}

/// Returns 0 on failure. The child ends with the thread that starts it, so call this on a thread that outlives the
/// child.
std::intptr_t start(const Words& words, const Streams& streams) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const pid_t parent = ::getpid();
  const pid_t process = ::fork();
  if (process == 0) becomeProgram(arguments.data(), streams, parent);
  if (process < 0) return 0;
  ::setpgid(process, process);  // the child does so too: either may be first
  return process;
}

/// Ends the whole group, so that programs started by a shell end with it.
void end(std::intptr_t process) { ::kill(static_cast<pid_t>(-process), SIGKILL); }

int waitFor(std::intptr_t process) {
  // The number belongs to the child until it is reaped; afterwards another group may get it.
  siginfo_t ended;
  ::waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOWAIT);
  end(process);
  int status = 0;
  ::waitpid(static_cast<pid_t>(process), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

#endif

/// Neither end is inherited unless the start requests it, so that a stream ends with its program.
struct Pipe {
  int ends[2];

  Pipe() {
    if (openPipe(ends) != 0) throw std::runtime_error("no pipe");
  }
  int readEnd() const { return ends[0]; }
  int writeEnd() const { return ends[1]; }
};

int countOf(std::string_view text, std::string_view part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

}  // namespace

Process::Process(const Words& words, std::string_view input) {
  const Pipe in;
  const Pipe output;
  const Pipe errors;
  const Streams streams{in.readEnd(), output.writeEnd(), errors.writeEnd()};
  native = start(words, streams);
  for (const int stream : streams) ::close(stream);
  if (native == 0) throw std::runtime_error("cannot start " + words[0]);
  [[maybe_unused]] const auto written = ::write(in.writeEnd(), input.data(), static_cast<unsigned>(input.size()));
  ::close(in.writeEnd());
  outReader = std::thread(collect, std::ref(out), output.readEnd());
  errReader = std::thread(collect, std::ref(err), errors.readEnd());
}

Process::~Process() {
  if (native == 0) return;
  kill();
  finish();
}

void Process::collect(Watched<Stream>& stream, int pipe) {
  std::vector<char> bytes(kChunk);
  for (auto count = ::read(pipe, bytes.data(), kChunk); count > 0; count = ::read(pipe, bytes.data(), kChunk)) {
    stream.change([&](Stream& seen) { seen.text.append(bytes.data(), static_cast<std::size_t>(count)); });
  }
  ::close(pipe);
  stream.change([](Stream& seen) { seen.ended = true; });
}

bool Process::waitForOutput(std::string_view text, int times, std::chrono::milliseconds patience) {
  const auto holds = [&](const Stream& seen) { return countOf(seen.text, text) >= times; };
  out.waitUntil([&](const Stream& seen) { return seen.ended || holds(seen); }, patience);
  return holds(out.get());
}

void Process::kill() { end(native); }

ProgramRun Process::finish() {
  if (!out.waitUntil([](const Stream& seen) { return seen.ended; })) kill();
  outReader.join();
  errReader.join();
  return {waitFor(std::exchange(native, 0)), out.get().text, err.get().text};
}

Words command(std::uint16_t port, const Words& words) {
  Words all{ZEPHCTL_PATH, "-p", std::to_string(port)};
  all.insert(all.end(), words.begin(), words.end());
  return all;
}

ProgramRun zephctl(std::uint16_t port, const Words& words, std::string_view input) {
  return Process(command(port, words), input).finish();
}

}  // namespace tests
