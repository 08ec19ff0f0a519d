// Hidden input on a pseudo terminal, and on standard input that is not a terminal.

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "cli/parsers.h"

namespace {

const std::string kPrompt = "Enter password : ";

/// Reads a line of at most `size` - 1 bytes and prints it to stdout.
[[noreturn]] void ask(std::size_t size) {
  std::vector<char> answer(size, '#');
  const bool accepted = cli::readHidden("Enter password", answer.data(), size);
  std::printf("%s [%.*s]", accepted ? "accepted" : "refused", static_cast<int>(size), answer.data());
  std::fflush(stdout);
  _exit(0);
}

bool echoes(int terminal) {
  termios mode = {};
  tcgetattr(terminal, &mode);
  return (mode.c_lflag & ECHO) != 0;
}

std::string describe(int status) {
  if (WIFSTOPPED(status)) return "stopped";
  return WIFSIGNALED(status) ? "ended by signal " + std::to_string(WTERMSIG(status)) : "exited";
}

/// Acts as a shell: runs the reading process in the foreground of the terminal and prints one line whenever it stops or
/// ends, with the state of the terminal. Continues a stopped process.
[[noreturn]] void runShell(std::size_t size) {
  const rlimit none = {};
  setrlimit(RLIMIT_CORE, &none);
  const pid_t process = fork();
  if (process == 0) {
    signal(SIGTTOU, SIG_IGN);
    setpgid(0, 0);
    tcsetpgrp(STDIN_FILENO, getpid());
    signal(SIGTTOU, SIG_DFL);
    ask(size);
  }
  int status = 0;
  do {
    waitpid(process, &status, WUNTRACED);
    std::printf("; %s, echo %s\n", describe(status).c_str(), echoes(STDIN_FILENO) ? "on" : "off");
    std::fflush(stdout);
    if (WIFSTOPPED(status)) kill(process, SIGCONT);
  } while (WIFSTOPPED(status));
  _exit(0);
}

/// Reads up to `end`, the end of the stream, or 20 seconds of silence.
std::string readUntil(int descriptor, const std::string& end) {
  std::string text;
  pollfd ready = {descriptor, POLLIN, 0};
  char byte = 0;
  while (!text.ends_with(end) && poll(&ready, 1, 20000) == 1 && read(descriptor, &byte, 1) == 1) text += byte;
  return text;
}

/// A shell on its own terminal, which runs the reading process.
class Session {
 public:
  Session() : shell(forkpty(&master, nullptr, nullptr, nullptr)) {
    if (shell == 0) runShell(129);
    EXPECT_EQ(readUntil(master, kPrompt), kPrompt);
    EXPECT_FALSE(echo());
  }
  ~Session() {
    waitpid(shell, nullptr, 0);
    close(master);
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void type(const std::string& keys) { EXPECT_EQ(write(master, keys.data(), keys.size()), ssize_t(keys.size())); }
  void send(int signal) { EXPECT_EQ(kill(tcgetpgrp(master), signal), 0); }
  bool echo() const { return echoes(master); }
  std::string nextLine() { return readUntil(master, "\n"); }

 private:
  int master = -1;
  pid_t shell;
};

// ThreadSanitizer defers signals while a thread waits in read(2).
#ifdef __SANITIZE_THREAD__
constexpr bool kSignalsInterrupt = false;
#else
constexpr bool kSignalsInterrupt = true;
#endif

TEST(HiddenInput, ReadsFromATerminal) {
  const std::pair<std::string, std::string> cases[] = {
      {"s3cret\n", "accepted [s3cret]"},
      {" two words \n", "accepted [ two words ]"},
      {"wrong\x15right\n", "accepted [right]"},  // Ctrl-U erases the line
      {"\n", "accepted []"},
      {"\x04", "accepted []"},  // Ctrl-D: the end of input
      {std::string(128, 'x') + "\n", "accepted [" + std::string(128, 'x') + "]"},
      {std::string(129, 'x') + "\n", "refused []"},
  };
  for (const auto& [keys, printed] : cases) {
    Session session;
    session.type(keys);
    EXPECT_EQ(session.nextLine(), printed + "; exited, echo on\r\n");
  }
}

TEST(HiddenInput, RestoresEchoWhenASignalEndsIt) {
  if (!kSignalsInterrupt) GTEST_SKIP() << "ThreadSanitizer defers signals";
  // A signal sent from outside could overtake keys on their way through the terminal, and these would be echoed.
  const struct {
    const char* keys;
    int sent;
    int signal;
  } cases[] = {{"half\x03", 0, SIGINT}, {"half\x1c", 0, SIGQUIT}, {"", SIGTERM, SIGTERM}, {"", SIGHUP, SIGHUP}};
  for (const auto& each : cases) {
    Session session;
    session.type(each.keys);
    if (each.sent != 0) session.send(each.sent);
    EXPECT_EQ(session.nextLine(), "; ended by signal " + std::to_string(each.signal) + ", echo on\r\n");
  }
}

TEST(HiddenInput, ContinuesAfterAStop) {
  if (!kSignalsInterrupt) GTEST_SKIP() << "ThreadSanitizer defers signals";
  Session session;
  session.type("\x1a");  // Ctrl-Z
  EXPECT_EQ(session.nextLine(), "; stopped, echo on\r\n");
  while (session.echo()) std::this_thread::yield();  // until it reads again
  session.type("s3cret\n");
  EXPECT_EQ(session.nextLine(), "accepted [s3cret]; exited, echo on\r\n");
}

TEST(HiddenInput, ReadsALineWithoutATerminal) {
  const struct {
    std::string input;
    std::string printed;
    std::string left;
  } cases[] = {
      {"first\nsecond\n", "accepted [first]", "second\n"},
      {"no line end", "accepted [no line end]", ""},
      {"", "accepted []", ""},
      {std::string(700, 'x') + "\nsecond\n", "refused []", "second\n"},
  };
  for (const auto& each : cases) {
    int input[2];
    int output[2];
    ASSERT_EQ(pipe(input), 0);
    ASSERT_EQ(pipe(output), 0);
    ASSERT_EQ(write(input[1], each.input.data(), each.input.size()), ssize_t(each.input.size()));
    close(input[1]);
    const pid_t process = fork();
    if (process == 0) {
      dup2(input[0], STDIN_FILENO);
      dup2(output[1], STDOUT_FILENO);
      ask(512);
    }
    close(output[1]);
    EXPECT_EQ(readUntil(output[0], "\n"), kPrompt + each.printed);
    EXPECT_EQ(readUntil(input[0], "\n"), each.left);
    waitpid(process, nullptr, 0);
    close(input[0]);
    close(output[0]);
  }
}

}  // namespace
