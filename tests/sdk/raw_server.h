// A TCP server that speaks byte by byte, for what no sane WebSocket server sends.
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

/// Each write leaves at once; what is read ends early when the peer goes, or does not come.
using RawConnection = boost::asio::ip::tcp::iostream;

/// What comes until the peer ends its side.
inline std::string readAll(RawConnection& connection) { return {std::istreambuf_iterator<char>(connection), {}}; }

/// Up to and with the first empty line.
inline std::string readRequest(RawConnection& connection) {
  std::string request;
  for (std::string line; line != "\r" && std::getline(connection, line);) request += line + '\n';
  return request;
}

/// Ends the connection with a reset in place of an orderly close.
inline void reset(RawConnection& connection) {
  connection.socket().set_option(boost::asio::socket_base::linger(true, 0));
  connection.close();
}

/// Runs `script` for the first connection, on a thread of its own; the connection closes behind it. The destructor
/// waits for a script that has begun.
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

/// Takes connections in the kernel and never answers: as a stopped daemon does.
class SilentPeer {
 public:
  std::uint16_t port() const { return acceptor.local_endpoint().port(); }

 private:
  boost::asio::io_context context;
  boost::asio::ip::tcp::acceptor acceptor{context, {boost::asio::ip::address_v4::loopback(), nextPort()}};
};

}  // namespace tests
