// Hidden input on a real terminal (a pseudo terminal) and on standard input that is none.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

#include <csignal>
#include <cstring>
#include <string>
#include <thread>

#include "cli/parsers.h"

namespace {

/// What the asking process says of itself, in this order of events.
struct Report {
  enum Kind { Started, Answered, Ended } kind;
  pid_t process;     // Started
  bool accepted;     // Answered
  char answer[600];  // Answered
  int status;        // Ended: as of waitpid, also for a stop
  bool echo;         // Ended: what the terminal was left in
};

void say(int pipe, const Report& report) {
  if (write(pipe, &report, sizeof report) != sizeof report) _exit(99);
}

Report hear(int pipe) {
  Report report = {};
  pollfd ready = {pipe, POLLIN, 0};
  if (poll(&ready, 1, 20000) != 1 || read(pipe, &report, sizeof report) != sizeof report) {
    ADD_FAILURE() << "the asking process says nothing";
  }
  return report;
}

/// Asks for a line of at most `size` - 1 bytes and reports the answer.
[[noreturn]] void ask(int pipe, std::size_t size) {
  Report report = {};
  report.kind = Report::Answered;
  std::memset(report.answer, '#', sizeof report.answer);
  report.accepted = cli::readHidden("Enter password", report.answer, size);
  say(pipe, report);
  _exit(0);
}

/// A session as a shell runs it: the asking process stands in the foreground of the terminal, and its parent sees how
/// it ends and in what state it leaves the terminal. A stopped one is continued.
class Session {
 public:
  explicit Session(std::size_t size = 129) {
    int terminal = -1;
    int reports[2];
    EXPECT_EQ(openpty(&master, &terminal, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(pipe(reports), 0);
    shell = fork();
    if (shell == 0) {
      const rlimit none = {};
      setrlimit(RLIMIT_CORE, &none);
      close(master);
      login_tty(terminal);
      runShell(reports[1], size);
    }
    close(terminal);
    close(reports[1]);
    pipeEnd = reports[0];
    asker = hear(pipeEnd).process;
    readUntil("Enter password : ");
  }
  ~Session() {
    waitpid(shell, nullptr, 0);
    close(pipeEnd);
    close(master);
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void type(const std::string& keys) { EXPECT_EQ(write(master, keys.data(), keys.size()), ssize_t(keys.size())); }
  void send(int signal) { kill(asker, signal); }
  Report next() { return hear(pipeEnd); }

  bool echo() const { return echoOf(master); }

  /// All that has reached the screen so far.
  std::string screen() {
    readUntil("");
    return seen;
  }

 private:
  [[noreturn]] static void runShell(int pipe, std::size_t size) {
    const pid_t process = fork();
    if (process == 0) {
      signal(SIGTTOU, SIG_IGN);
      setpgid(0, 0);
      tcsetpgrp(STDIN_FILENO, getpid());
      signal(SIGTTOU, SIG_DFL);
      Report report = {};
      report.kind = Report::Started;
      report.process = getpid();
      say(pipe, report);
      ask(pipe, size);
    }
    Report report = {};
    report.kind = Report::Ended;
    do {
      waitpid(process, &report.status, WUNTRACED);
      report.echo = echoOf(STDIN_FILENO);
      say(pipe, report);
      if (WIFSTOPPED(report.status)) kill(process, SIGCONT);
    } while (WIFSTOPPED(report.status));
    _exit(0);
  }

  static bool echoOf(int terminal) {
    termios mode = {};
    tcgetattr(terminal, &mode);
    return (mode.c_lflag & ECHO) != 0;
  }

  /// Takes what the terminal shows until `text` stands there; without a text, what there is.
  void readUntil(const std::string& text) {
    const int patience = text.empty() ? 0 : 20000;
    while (text.empty() || seen.find(text) == std::string::npos) {
      pollfd ready = {master, POLLIN, 0};
      char bytes[256];
      const ssize_t count = poll(&ready, 1, patience) == 1 ? read(master, bytes, sizeof bytes) : 0;
      if (count <= 0) break;
      seen.append(bytes, static_cast<std::size_t>(count));
    }
  }

  int master = -1;
  int pipeEnd = -1;
  pid_t shell = -1;
  pid_t asker = -1;
  std::string seen;
};

// ThreadSanitizer holds signals back while a thread waits in read(2), for as long as it waits.
#ifdef __SANITIZE_THREAD__
constexpr bool kSignalsStrike = false;
#else
constexpr bool kSignalsStrike = true;
#endif

TEST(HiddenInput, AnswersAtATerminal) {
  const struct {
    std::size_t size;
    std::string keys;
    bool accepted;
    std::string answer;
  } cases[] = {
      {129, "s3cret\n", true, "s3cret"},
      {129, " two words \n", true, " two words "},
      {129, "wrong\x15right\n", true, "right"},  // Ctrl-U takes the line back
      {129, "\n", true, ""},
      {129, "\x04", true, ""},  // Ctrl-D: the end of input
      {129, std::string(128, 'x') + "\n", true, std::string(128, 'x')},
      {129, std::string(129, 'x') + "\n", false, ""},
  };
  for (const auto& each : cases) {
    Session session(each.size);
    EXPECT_FALSE(session.echo());
    session.type(each.keys);
    const Report answered = session.next();
    EXPECT_EQ(answered.accepted, each.accepted);
    EXPECT_EQ(answered.answer, each.answer);
    const Report ended = session.next();
    EXPECT_TRUE(WIFEXITED(ended.status));
    EXPECT_TRUE(ended.echo);
    EXPECT_EQ(session.screen(), "Enter password : ");
  }
}

TEST(HiddenInput, LeavesTheEchoOnWhenASignalEndsIt) {
  if (!kSignalsStrike) GTEST_SKIP() << "ThreadSanitizer holds the signals back";
  const struct {
    const char* keys;
    int sent;
    int signal;
  } cases[] = {{"half\x03", 0, SIGINT}, {"half\x1c", 0, SIGQUIT}, {"half", SIGTERM, SIGTERM}, {"", SIGHUP, SIGHUP}};
  for (const auto& each : cases) {
    Session session;
    session.type(each.keys);
    if (each.sent != 0) session.send(each.sent);
    const Report ended = session.next();
    EXPECT_EQ(ended.kind, Report::Ended);
    EXPECT_TRUE(WIFSIGNALED(ended.status));
    EXPECT_EQ(WTERMSIG(ended.status), each.signal);
    EXPECT_TRUE(ended.echo) << each.signal;
  }
}

TEST(HiddenInput, GoesOnAfterAStop) {
  if (!kSignalsStrike) GTEST_SKIP() << "ThreadSanitizer holds the signals back";
  Session session;
  session.type("\x1a");  // Ctrl-Z
  const Report stopped = session.next();
  ASSERT_EQ(stopped.kind, Report::Ended);
  EXPECT_TRUE(WIFSTOPPED(stopped.status));
  EXPECT_TRUE(stopped.echo);
  while (session.echo()) std::this_thread::yield();  // until it asks again
  session.type("s3cret\n");
  EXPECT_STREQ(session.next().answer, "s3cret");
  EXPECT_TRUE(session.next().echo);
  EXPECT_EQ(session.screen(), "Enter password : ");
}

TEST(HiddenInput, ReadsALineOfWhatIsNoTerminal) {
  const struct {
    std::string input;
    bool accepted;
    std::string answer;
    std::string left;
  } cases[] = {
      {"first\nsecond\n", true, "first", "second\n"},
      {"no line end", true, "no line end", ""},
      {"", true, "", ""},
      {std::string(700, 'x') + "\nsecond\n", false, "", "second\n"},
  };
  for (const auto& each : cases) {
    int input[2];
    int reports[2];
    ASSERT_EQ(pipe(input), 0);
    ASSERT_EQ(pipe(reports), 0);
    ASSERT_EQ(write(input[1], each.input.data(), each.input.size()), ssize_t(each.input.size()));
    close(input[1]);
    const pid_t process = fork();
    if (process == 0) {
      dup2(input[0], STDIN_FILENO);
      dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
      ask(reports[1], 512);
    }
    const Report answered = hear(reports[0]);
    EXPECT_EQ(answered.accepted, each.accepted);
    EXPECT_EQ(answered.answer, each.answer);
    char left[16] = {};
    EXPECT_EQ(read(input[0], left, sizeof left), ssize_t(each.left.size()));
    EXPECT_EQ(left, each.left);
    waitpid(process, nullptr, 0);
    for (const int descriptor : {input[0], reports[0], reports[1]}) close(descriptor);
  }
}

}  // namespace
