#include "tests/raw_server.h"

#include <array>
#include <atomic>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace tests {

namespace asio = boost::asio;
using asio::ip::tcp;

namespace {

class AsioConnection : public RawConnection {
 public:
  explicit AsioConnection(tcp::socket& accepted) : socket(accepted) {}

  std::string readUntil(std::string_view end) override {
    std::string text;
    char byte = 0;
    boost::system::error_code failed;
    while (!text.ends_with(end) && asio::read(socket, asio::buffer(&byte, 1), failed) == 1) text += byte;
    return text;
  }

  std::string read(std::size_t count) override {
    std::string text(count, '\0');
    boost::system::error_code failed;
    text.resize(asio::read(socket, asio::buffer(text), failed));
    return text;
  }

  std::string readAll() override {
    std::string text;
    std::array<char, 4096> bytes{};
    boost::system::error_code failed;
    while (!failed) text.append(bytes.data(), socket.read_some(asio::buffer(bytes), failed));
    return text;
  }

  bool write(std::string_view bytes) override {
    boost::system::error_code failed;
    return asio::write(socket, asio::buffer(bytes), failed) == bytes.size();
  }

  void reset() override {
    boost::system::error_code failed;
    socket.set_option(asio::socket_base::linger(true, 0), failed);
    socket.close(failed);
  }

 private:
  tcp::socket& socket;
};

}  // namespace

std::string RawConnection::accept() {
  std::string request = readUntil("\r\n\r\n");
  write("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\n\r\n");
  return request;
}

struct RawServer::Impl {
  asio::io_context context;
  tcp::acceptor acceptor{context, tcp::endpoint(asio::ip::address_v4::loopback(), 0)};
  Script script;
  std::atomic<bool> stopping{false};
  std::mutex mutex;
  std::optional<tcp::socket> current;
  std::thread thread;

  void run() {
    while (!stopping) {
      boost::system::error_code failed;
      tcp::socket accepted = acceptor.accept(failed);
      if (failed || stopping) return;
      {
        const std::lock_guard lock(mutex);
        current.emplace(std::move(accepted));
      }
      AsioConnection connection(*current);
      script(connection);
      const std::lock_guard lock(mutex);
      current.reset();
    }
  }

  /// Ends a blocking read, or wakes a blocking accept by a last connection.
  void stop() {
    stopping = true;
    boost::system::error_code failed;
    {
      const std::lock_guard lock(mutex);
      if (current) current->shutdown(tcp::socket::shutdown_both, failed);
    }
    tcp::socket last(context);
    last.connect(acceptor.local_endpoint(), failed);
    thread.join();
  }
};

RawServer::RawServer(Script script) : impl(std::make_unique<Impl>()) {
  impl->script = std::move(script);
  impl->thread = std::thread([this] { impl->run(); });
}

RawServer::~RawServer() { impl->stop(); }

std::uint16_t RawServer::port() const { return impl->acceptor.local_endpoint().port(); }

}  // namespace tests
