// zephtop: a terminal dashboard of the daemon's state and server, the traffic of each adapter, and events.
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "tools/zephtop/dialogs.h"
#include "tools/zephtop/link.h"
#include "tools/zephtop/model.h"
#include "tools/zephtop/options.h"
#include "tools/zephtop/view.h"

namespace {

using namespace zephtop;

constexpr int kTickMs = 100;

volatile std::sig_atomic_t stopSignal = 0;

void stop(int signal) { stopSignal = signal; }

void stopOnSignals() {
  struct sigaction action {};
  action.sa_handler = stop;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

/// Redirects stderr to /dev/null, so that messages of the library do not disturb the screen.
class Silence {
 public:
  Silence() : kept(dup(STDERR_FILENO)) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
  }
  ~Silence() {
    dup2(kept, STDERR_FILENO);
    close(kept);
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

 private:
  int kept;
};

/// Waits until a key is pressed, a signal arrives, or one tick has passed. Returns false if the terminal was closed.
bool awaitKey() {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return poll(&input, 1, kTickMs) <= 0 || (input.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
}

/// Handles the keys that change the display only. Returns false for other keys.
bool changeDisplay(int key, Display& display) {
  constexpr int kPage = 5;
  constexpr int kStep = 15;
  if (key == ' ') {
    display.paused = !display.paused;
  } else if (key == 's') {
    display.ownScales = !display.ownScales;
  } else if (key == kUp || key == kPageUp) {
    display.selected -= key == kUp ? 1 : kPage;
  } else if (key == kDown || key == kPageDown) {
    display.selected += key == kDown ? 1 : kPage;
  } else if (key == kLeft || key == kRight) {
    display.secondsBack += key == kLeft ? kStep : -kStep;
  } else if (key == kHome) {
    display.secondsBack = std::numeric_limits<int>::max();
  } else if (key == kEnd) {
    display.secondsBack = 0;
  } else {
    return false;
  }
  return true;
}

/// Runs until a key or a signal ends it.
void watch(const View& view, Model& model, Link& link, bool readOnly) {
  std::uint64_t drawn = 0;
  Picture picture = model.picture();
  Display display;
  Dialogs dialogs(readOnly);
  bool redraw = true;
  while (stopSignal == 0) {
    model.passTime();
    // A paused display must not show a lost daemon as live.
    if (display.paused && isStale(model.link())) display.paused = false;
    if (!display.paused && model.revision() != drawn) {
      drawn = model.revision();
      picture = model.picture();
      redraw = true;
    }
    display.clampTo(picture);
    if (redraw) view.draw(picture, display, dialogs.dialog(picture));
    redraw = false;
    if (!awaitKey()) return;
    while (const int key = View::readKey()) {
      redraw = true;
      model.clearNotice();
      if (!dialogs.press(key, picture, display.selected)) {
        if (key == 'q') return;
        if (key == 'e') model.clearEvents();
        changeDisplay(key, display);
        display.clampTo(picture);
      }
      if (dialogs.dialog(picture)) display.paused = false;  // show the result of the dialog's order
      if (dialogs.takeDirectoryRequest()) link.requestDirectory();
      if (const auto order = dialogs.takeOrder()) link.perform(*order);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = readOptions(argc, argv);
  if (options.status) return *options.status;
  std::setlocale(LC_ALL, "");
  if (isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0) {
    std::fprintf(stderr, "zephtop: standard input and output must be a terminal\n");
    return EXIT_FAILURE;
  }
  const char* terminal = std::getenv("TERM");
  if (terminal == nullptr || *terminal == '\0' || std::strcmp(terminal, "dumb") == 0) {
    std::fprintf(stderr, "zephtop: cannot draw on a dumb terminal; \"zephctl stats\" prints the figures as text\n");
    return EXIT_FAILURE;
  }
  stopOnSignals();
  Model model;
  {
    const Silence silence;
    const View view(std::string(options.daemon.address) + ":" + std::to_string(options.daemon.port));
    if (view.ready()) {
      Link link(options.daemon, model);
      watch(view, model, link, options.readOnly);
      return EXIT_SUCCESS;
    }
  }
  std::fprintf(stderr, "zephtop: cannot use this terminal\n");
  return EXIT_FAILURE;
}
