#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>

#include "platform/terminal.h"

namespace zephlinksdk {
namespace {

// The signals that end or stop the process.
constexpr int kSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};
constexpr std::size_t kSignalCount = sizeof kSignals / sizeof kSignals[0];

// Read by the signal handler. Constant while the handler is installed.
bool isTerminal = false;
termios loudMode;
termios silentMode;
struct sigaction earlierActions[kSignalCount];

void setMode(const termios& mode) {
  while (tcsetattr(STDIN_FILENO, TCSANOW, &mode) != 0 && errno == EINTR) {
  }
}

/// Restores echo, lets the signal take its previous effect, and disables echo again if the process continues (it was
/// stopped and resumed).
void onSignal(int signal) {
  const int error = errno;
  setMode(loudMode);

  struct sigaction ours;
  struct sigaction earlier = {};
  for (std::size_t i = 0; i < kSignalCount; ++i) {
    if (kSignals[i] == signal) earlier = earlierActions[i];
  }
  sigaction(signal, &earlier, &ours);

  sigset_t thisSignal;
  sigset_t mask;
  sigemptyset(&thisSignal);
  sigaddset(&thisSignal, signal);
  raise(signal);
  pthread_sigmask(SIG_UNBLOCK, &thisSignal, &mask);  // the signal is delivered here
  pthread_sigmask(SIG_SETMASK, &mask, nullptr);

  sigaction(signal, &ours, nullptr);
  setMode(silentMode);
  errno = error;
}

}  // namespace

HiddenInput::HiddenInput() {
  isTerminal = tcgetattr(STDIN_FILENO, &loudMode) == 0;
  if (!isTerminal) return;
  silentMode = loudMode;
  silentMode.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL);

  struct sigaction action = {};
  action.sa_handler = onSignal;
  action.sa_flags = SA_RESTART;
  // Blocks the other signals in the handler: a second handler must not run between two terminal modes.
  sigemptyset(&action.sa_mask);
  for (const int signal : kSignals) sigaddset(&action.sa_mask, signal);
  for (std::size_t i = 0; i < kSignalCount; ++i) {
    sigaction(kSignals[i], nullptr, &earlierActions[i]);
    const bool ignored = earlierActions[i].sa_handler == SIG_IGN;
    if (!ignored) sigaction(kSignals[i], &action, nullptr);
  }
  setMode(silentMode);
}

HiddenInput::~HiddenInput() {
  if (!isTerminal) return;
  setMode(loudMode);
  for (std::size_t i = 0; i < kSignalCount; ++i) sigaction(kSignals[i], &earlierActions[i], nullptr);
}

int HiddenInput::next() {
  // Reads single bytes without a buffer, so that no copy of a secret remains and no later input is consumed.
  unsigned char byte = 0;
  ssize_t count = 0;
  do {
    count = read(STDIN_FILENO, &byte, 1);
  } while (count < 0 && errno == EINTR);
  return count == 1 ? byte : kEnd;
}

}  // namespace zephlinksdk
