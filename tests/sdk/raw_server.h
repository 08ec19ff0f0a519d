// A TCP server that sends any bytes, including those that a WebSocket server must not send.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <utility>

#include "tests/ports.h"
#include "tests/watched.h"

namespace tests {

/// Writes are sent at once; reads end early if the peer closes or sends nothing.
using RawConnection = boost::asio::ip::tcp::iostream;

/// Reads until the peer ends its side.
inline std::string readAll(RawConnection& connection) { return {std::istreambuf_iterator<char>(connection), {}}; }

/// Reads up to and including the first empty line.
inline std::string readRequest(RawConnection& connection) {
  std::string request;
  for (std::string line; line != "\r" && std::getline(connection, line);) request += line + '\n';
  return request;
}

/// Ends the connection with a reset instead of an orderly close.
inline void reset(RawConnection& connection) {
  connection.socket().set_option(boost::asio::socket_base::linger(true, 0));
  connection.close();
}

/// Runs `script` for the first connection, on its own thread, then closes the connection. The destructor waits for a
/// running script.
class RawServer {
 public:
  explicit RawServer(std::function<void(RawConnection&)> script) {
    acceptor.async_accept([script = std::move(script)](boost::system::error_code failed, auto socket) {
      if (failed) return;
      RawConnection connection(std::move(socket));
      connection.expires_after(kPatience);
      script(connection);
    });
    thread = std::thread([this] { context.run(); });
  }
  ~RawServer() {
    context.stop();
    thread.join();
  }
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;

  std::uint16_t port() const { return acceptor.local_endpoint().port(); }

 private:
  boost::asio::io_context context;
  boost::asio::ip::tcp::acceptor acceptor{context, {boost::asio::ip::address_v4::loopback(), nextPort()}};
  std::thread thread;
};

/// Accepts connections in the kernel and never answers, like a stopped daemon.
class SilentPeer {
 public:
  std::uint16_t port() const { return acceptor.local_endpoint().port(); }

 private:
  boost::asio::io_context context;
  boost::asio::ip::tcp::acceptor acceptor{context, {boost::asio::ip::address_v4::loopback(), nextPort()}};
};

}  // namespace tests
