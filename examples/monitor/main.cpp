// A dashboard for the terminal: the daemon's state and server, what each adapter carries, and events as they come.
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "examples/monitor/link.h"
#include "examples/monitor/model.h"
#include "examples/monitor/view.h"
#include "sdk/facade.h"

namespace {

using namespace monitor;

constexpr int kUsageError = 2;
constexpr int kTickMs = 100;

volatile std::sig_atomic_t stopSignal = 0;

void stop(int signal) { stopSignal = signal; }

void stopOnSignals() {
  struct sigaction action {};
  action.sa_handler = stop;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

bool isOption(const char* word, const char* brief, const char* full) {
  return std::strcmp(word, brief) == 0 || std::strcmp(word, full) == 0;
}

/// Nothing when the words are none that the usage names.
std::optional<ZephlinkSDK_Config> readOptions(int argc, char** argv) {
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  std::snprintf(config.appName, sizeof config.appName, "monitor");
  for (int i = 1; i < argc; i += 2) {
    if (i + 1 == argc) return std::nullopt;
    const char* value = argv[i + 1];
    if (isOption(argv[i], "-i", "--ip")) {
      if (std::strlen(value) >= sizeof config.address) return std::nullopt;
      std::snprintf(config.address, sizeof config.address, "%s", value);
    } else if (isOption(argv[i], "-p", "--port")) {
      char* end = nullptr;
      const long port = std::strtol(value, &end, 10);
      if (end == value || *end != '\0' || port < 1 || port > 65535) return std::nullopt;
      config.port = static_cast<uint16_t>(port);
    } else {
      return std::nullopt;
    }
  }
  return config;
}

/// Keeps what the library says on standard error off the screen.
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

/// Sleeps until a key is pressed, a signal comes, or for one tick. False when the terminal has gone.
bool awaitKey() {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return poll(&input, 1, kTickMs) <= 0 || (input.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
}

/// Until a key or a signal ends it.
void watch(const View& view, Model& model, Link& link) {
  std::uint64_t drawn = 0;
  Picture picture = model.picture();
  bool paused = false;
  bool redraw = true;
  while (stopSignal == 0) {
    link.tick();
    model.passTime();
    if (!paused && model.revision() != drawn) {
      drawn = model.revision();
      picture = model.picture();
      redraw = true;
    }
    if (redraw) view.draw(picture, paused);
    redraw = false;
    if (!awaitKey()) return;
    while (const int key = View::readKey()) {
      redraw = true;
      if (key == 'q') return;
      if (key == 'p' || key == ' ') paused = !paused;
      if (key == 'c') model.clearEvents();
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  const auto config = readOptions(argc, argv);
  if (!config) {
    std::fprintf(stderr, "Usage: %s [-i|--ip ADDRESS] [-p|--port PORT]\n", argv[0]);
    return kUsageError;
  }
  std::setlocale(LC_ALL, "");
  if (isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0) {
    std::fprintf(stderr, "%s: needs a terminal\n", argv[0]);
    return EXIT_FAILURE;
  }
  stopOnSignals();
  Model model;
  {
    const Silence silence;
    const View view(std::string(config->address) + ":" + std::to_string(config->port));
    if (view.ready()) {
      Link link(*config, model);
      watch(view, model, link);
      return EXIT_SUCCESS;
    }
  }
  std::fprintf(stderr, "%s: cannot use this terminal\n", argv[0]);
  return EXIT_FAILURE;
}
