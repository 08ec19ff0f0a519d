// Scripted daemons in this process.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "simulator/ws_server.h"

namespace bench {

/// One report as the daemon's statistics look, about 2.2 KB.
std::string connectionReport();

/// A directory of so many servers.
std::string directoryReport(int servers);

/// `text` as a frame of a server. REQUIRES: 126 to 65,535 bytes.
std::string frameOf(const std::string& text);

/// A server that calls `onRequest` with each request's name, on its own thread.
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

/// Answers what `state` and `show servers` ask, with a directory of so many servers.
RequestServer::OnRequest stateAndDirectory(int servers);

/// Answers what `stats` asks, the connections by `count` reports in one burst.
RequestServer::OnRequest burst(const std::string& report, std::size_t count);

}  // namespace bench
