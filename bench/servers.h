// Scripted daemons within this process.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "simulator/ws_server.h"

namespace bench {

/// Returns a report like the daemon's statistics, about 2.2 KB.
std::string connectionReport();

/// Returns a directory of `servers` servers.
std::string directoryReport(int servers);

/// Returns `text` as a frame from a server. REQUIRES: 126 to 65,535 bytes.
std::string frameOf(const std::string& text);

/// A server that calls `onRequest` with the name of each request, on its own thread.
class RequestServer {
 public:
  using OnRequest = std::function<void(zephsim::WsServer&, zephsim::Connection, std::string_view name)>;

  explicit RequestServer(OnRequest onRequest);

  std::string portText() const { return std::to_string(server.port()); }
  std::uint16_t port() const { return server.port(); }

 private:
  OnRequest handler;
  zephsim::WsServer server;
};

/// Answers the requests of `state` and `show servers`, with a directory of `servers` servers.
RequestServer::OnRequest stateAndDirectory(int servers);

/// Answers the requests of `stats`; answers the one for connections with `count` reports in one burst.
RequestServer::OnRequest burst(const std::string& report, std::size_t count);

}  // namespace bench
