// zephlink-exporter: exports the metrics of a daemon to Prometheus.
#include <CivetServer.h>
#include <prometheus/exposer.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/exporter/collector.h"
#include "tools/exporter/options.h"

namespace {

using namespace exporter;

constexpr int kUsageError = 2;
/// The time for a daemon to answer all requests after its first answer.
constexpr std::chrono::seconds kPatience{2};
constexpr const char* kServerThreads = "2";

void log(const std::string& text) { std::fprintf(stderr, "zephlink-exporter: %s\n", text.c_str()); }

ZephlinkSDK_Config configFor(const Endpoint& daemon) {
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  std::snprintf(config.appName, sizeof config.appName, "zephlink-exporter");
  std::snprintf(config.address, sizeof config.address, "%s", daemon.host.c_str());
  config.port = daemon.port;
  return config;
}

int printOnce(const Endpoint& daemon) {
  const Collector collector(configFor(daemon));
  const bool live = collector.waitForRecords(kPatience);
  const std::string text = textOf(collector.Collect());
  if (!live) log("no daemon answers at " + daemon.text());
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!written) log("cannot write to standard output");
  return live && written ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Answers health checks; returns 0 to let the server answer everything else.
int answerHealthCheck(mg_connection* connection) {
  if (std::string_view(mg_get_request_info(connection)->local_uri) != "/-/healthy") return 0;
  constexpr std::string_view kText = "zephlink-exporter is healthy.\n";
  mg_send_http_ok(connection, "text/plain; charset=utf-8", static_cast<long long>(kText.size()));
  mg_write(connection, kText.data(), kText.size());
  return 200;
}

int logServer(const mg_connection*, const char* message) {
  log(message);
  return 1;
}

/// Throws std::exception if it cannot listen.
std::unique_ptr<prometheus::Exposer> listenOn(const Endpoint& endpoint) {
  CivetCallbacks callbacks;
  callbacks.begin_request = answerHealthCheck;
  callbacks.log_message = logServer;
  return std::make_unique<prometheus::Exposer>(
      std::vector<std::string>{"listening_ports", endpoint.text(), "num_threads", kServerThreads}, &callbacks);
}

/// Serves until a signal arrives. REQUIRES: the signals are blocked in all threads.
int serve(const Options& options, const sigset_t& signals) {
  std::unique_ptr<prometheus::Exposer> exposer;
  try {
    exposer = listenOn(options.listen);
  } catch (const std::exception&) {
    log("cannot listen on " + options.listen.text());
    return EXIT_FAILURE;
  }
  const std::string daemon = options.daemon.text();
  const auto collector = std::make_shared<Collector>(configFor(options.daemon), [&](zephlinksdk::SessionStatus status) {
    log("daemon " + daemon + " is " + zephlinksdk::sessionStatusText(status));
  });
  exposer->RegisterCollectable(collector);
  log("serving http://" + options.listen.host + ":" + std::to_string(exposer->GetListeningPorts().at(0)) +
      "/metrics of the daemon at " + daemon);
  int signal = 0;
  sigwait(&signals, &signal);
  log("exiting on signal " + std::to_string(signal));
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = readOptions(argc, argv);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  try {
    switch (options.action) {
      case Options::Action::Fail:
        log(options.error);
        std::fputs(usage().data(), stderr);
        return kUsageError;
      case Options::Action::ShowHelp:
        std::fputs(usage().data(), stdout);
        return EXIT_SUCCESS;
      case Options::Action::ShowVersion:
        std::puts("zephlink-exporter " EXPORTER_VERSION);
        return EXIT_SUCCESS;
      case Options::Action::PrintOnce:
        return printOnce(options.daemon);
      case Options::Action::Serve:
        pthread_sigmask(SIG_BLOCK, &signals, nullptr);
        return serve(options, signals);
    }
  } catch (const std::exception& failure) {
    log(failure.what());
  }
  return EXIT_FAILURE;
}
