// A daemon with scripted answers, which records its requests.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <map>
#include <string>
#include <vector>

#include "simulator/ws_server.h"
#include "tests/ports.h"
#include "tests/watched.h"

namespace tests {

/// The texts to send, in order, in answer to a request with this name.
using Answers = std::map<std::string, std::vector<std::string>>;

/// Returns the text of an event as a daemon sends it; `data` is JSON.
std::string event(const std::string& name, const std::string& data);

/// Reserves an unused port during the object's lifetime: no other program can listen on it.
class ClosedPort {
 public:
  std::uint16_t number() const { return socket.local_endpoint().port(); }

 private:
  boost::asio::io_context context;
  boost::asio::ip::tcp::socket socket{context, {boost::asio::ip::address_v4::loopback(), nextPort()}};
};

class ScriptedDaemon {
 public:
  /// Answers each request at once, on its connection. Listens on this loopback port; by default on an unused one.
  explicit ScriptedDaemon(Answers script = {}, std::uint16_t port = nextPort());
  ~ScriptedDaemon() { server.stop(); }

  std::uint16_t port() const { return server.port(); }
  zephsim::WsServer& socket() { return server; }

  /// Sends to every open connection.
  void send(std::string text) { server.broadcast(std::move(text)); }

  /// Returns the requests so far without the hello and without the line feeds at their ends.
  std::vector<std::string> received() { return requests.get(); }

  /// Wait for that many requests after the hello, or for that many connections; return false after 30 seconds.
  bool waitForRequests(std::size_t count);
  bool waitForConnections(std::size_t count);
  /// Waits until this exact request has arrived `times` times.
  bool waitForRequest(const std::string& text, std::ptrdiff_t times = 1);

 private:
  void onText(zephsim::Connection connection, const std::string& text);

  Answers answers;
  Watched<std::vector<std::string>> requests;
  Watched<std::size_t> connections;
  zephsim::WsServer server;
};

}  // namespace tests
