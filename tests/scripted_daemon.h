// A daemon that answers as a test tells it, and remembers what it heard.
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

/// The texts that are sent, in order, when a request of this event comes.
using Answers = std::map<std::string, std::vector<std::string>>;

/// The text of an event as a daemon sends it; `data` is JSON.
std::string event(const std::string& name, const std::string& data);

/// A port on which nobody listens, and which no other program gets while the object lives.
class ClosedPort {
 public:
  std::uint16_t number() const { return socket.local_endpoint().port(); }

 private:
  boost::asio::io_context context;
  boost::asio::ip::tcp::socket socket{context, {boost::asio::ip::address_v4::loopback(), nextPort()}};
};

class ScriptedDaemon {
 public:
  /// Answers each request at once, on the connection that it came from. Listens on this loopback port; by default one
  /// of its own.
  explicit ScriptedDaemon(Answers script = {}, std::uint16_t port = nextPort());
  ~ScriptedDaemon() { server.stop(); }

  std::uint16_t port() const { return server.port(); }
  zephsim::WsServer& socket() { return server; }

  /// To every open connection.
  void send(std::string text) { server.broadcast(std::move(text)); }

  /// What came so far but for the hello, without the line feeds that end the texts.
  std::vector<std::string> heard() { return requests.get(); }

  /// Waits for that many requests behind the hello, or for that many connections so far; false after 30 seconds.
  bool waitForRequests(std::size_t count);
  bool waitForConnections(std::size_t count);
  /// Waits until this very request has come so many times.
  bool waitForRequest(const std::string& text, std::ptrdiff_t times = 1);

 private:
  void onText(zephsim::Connection connection, const std::string& text);

  Answers answers;
  Watched<std::vector<std::string>> requests;
  Watched<std::size_t> connections;
  zephsim::WsServer server;
};

}  // namespace tests
