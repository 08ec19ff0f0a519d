#include "simulator/ws_server.h"

#include <algorithm>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <deque>
#include <stdexcept>
#include <thread>

namespace zephsim {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using asio::ip::tcp;
using boost::system::error_code;

constexpr char kSubprotocol[] = "event-protocol";

/// One entry of a connection's send queue.
struct Outgoing {
  enum class Kind { Message, Raw, Ping, Close, Drop, Reset };
  Kind kind;
  std::vector<std::string> parts;  ///< the frames of a message; otherwise a single part, the bytes or the payload

  bool last() const { return kind == Kind::Close || kind == Kind::Drop || kind == Kind::Reset; }
};

bool asksForSubprotocol(const http::request<http::empty_body>& request) {
  const auto range = request.equal_range(http::field::sec_websocket_protocol);
  return std::any_of(range.first, range.second,
                     [](const auto& field) { return http::token_list(field.value()).exists(kSubprotocol); });
}

Upgrade copyUpgrade(const http::request<http::empty_body>& request) {
  Upgrade upgrade{request.target().to_string(), {}};
  for (const auto& field : request) {
    upgrade.fields.emplace_back(field.name_string().to_string(), field.value().to_string());
  }
  return upgrade;
}

/// One connection, from its upgrade to its end. Exists while an operation on it is pending.
class Session : public std::enable_shared_from_this<Session> {
 public:
  Session(tcp::socket socket, Connection connectionId, const WsHandlers& serverHandlers,
          std::function<void(Connection)> onEnd)
      : stream(std::move(socket)), id(connectionId), handlers(serverHandlers), ended(std::move(onEnd)) {}

  void start() {
    error_code ignored;
    stream.next_layer().set_option(tcp::no_delay(true), ignored);
    http::async_read(stream.next_layer(), buffer, request,
                     [self = shared_from_this()](error_code error, std::size_t) { self->upgradeRead(error); });
  }

  bool isOpen() const { return open; }

  void enqueue(Outgoing outgoing) {
    if (closing) return;
    closing = outgoing.last();
    queue.push_back(std::move(outgoing));
    if (open && queue.size() == 1) writeFront();
  }

  /// Ends the connection without notifying the owner.
  void abandon() {
    closing = true;
    error_code ignored;
    stream.next_layer().close(ignored);
  }

 private:
  void upgradeRead(error_code error) {
    // A client must not send frames before the answer to its upgrade.
    if (error || buffer.size() != 0 || !websocket::is_upgrade(request)) return end();
    if (handlers.onUpgrade) handlers.onUpgrade(id, copyUpgrade(request));
    if (asksForSubprotocol(request)) {
      stream.set_option(websocket::stream_base::decorator(
          [](websocket::response_type& response) { response.set(http::field::sec_websocket_protocol, kSubprotocol); }));
    }
    stream.read_message_max(0);
    stream.auto_fragment(false);
    stream.control_callback([this](websocket::frame_type type, beast::string_view payload) {
      if (type == websocket::frame_type::pong && handlers.onPong) handlers.onPong(id, payload.to_string());
    });
    stream.async_accept(request, [self = shared_from_this()](error_code result) { self->accepted(result); });
  }

  void accepted(error_code error) {
    if (error) return end();
    open = true;
    if (handlers.onOpen) handlers.onOpen(id);
    read();
    if (!queue.empty() && !writing) writeFront();
  }

  void read() {
    stream.async_read(buffer, [self = shared_from_this()](error_code error, std::size_t) {
      if (error) return self->end();
      self->deliver();
      self->read();
    });
  }

  void deliver() {
    const std::string message = beast::buffers_to_string(buffer.data());
    buffer.consume(buffer.size());
    const auto& handler = stream.got_text() ? handlers.onText : handlers.onBinary;
    if (handler) handler(id, message);
  }

  void writeFront() {
    writing = true;
    Outgoing& front = queue.front();
    switch (front.kind) {
      case Outgoing::Kind::Message:
        stream.text(true);
        return writePart(0);
      case Outgoing::Kind::Raw:
        return asio::async_write(stream.next_layer(), asio::buffer(front.parts[0]), written());
      case Outgoing::Kind::Ping:
        return stream.async_ping(websocket::ping_data(front.parts[0]),
                                 [self = shared_from_this()](error_code error) { self->wrote(error); });
      case Outgoing::Kind::Close:
        return stream.async_close(websocket::close_code::normal, [self = shared_from_this()](error_code) {});
      case Outgoing::Kind::Reset:
        linger();
        [[fallthrough]];
      case Outgoing::Kind::Drop:
        return abandonSocket();
    }
  }

  void writePart(std::size_t part) {
    const std::vector<std::string>& parts = queue.front().parts;
    if (part + 1 == parts.size()) return stream.async_write_some(true, asio::buffer(parts[part]), written());
    stream.async_write_some(false, asio::buffer(parts[part]),
                            [self = shared_from_this(), part](error_code error, std::size_t) {
                              if (error) return self->end();
                              self->writePart(part + 1);
                            });
  }

  std::function<void(error_code, std::size_t)> written() {
    return [self = shared_from_this()](error_code error, std::size_t) { self->wrote(error); };
  }

  void wrote(error_code error) {
    if (error) return end();
    writing = false;
    queue.pop_front();
    if (!queue.empty()) writeFront();
  }

  void linger() {
    error_code ignored;
    stream.next_layer().set_option(asio::socket_base::linger(true, 0), ignored);
  }

  /// The pending read then fails, which ends the session.
  void abandonSocket() {
    error_code ignored;
    stream.next_layer().close(ignored);
  }

  void end() {
    if (hasEnded) return;
    hasEnded = true;
    closing = true;
    abandonSocket();
    if (open && handlers.onClose) handlers.onClose(id);
    ended(id);
  }

  websocket::stream<tcp::socket> stream;
  const Connection id;
  const WsHandlers& handlers;
  const std::function<void(Connection)> ended;
  beast::flat_buffer buffer;
  http::request<http::empty_body> request;
  std::deque<Outgoing> queue;  ///< the first entry is being written if `writing`
  bool open = false;
  bool writing = false;
  bool closing = false;  ///< the queue accepts no more entries
  bool hasEnded = false;
};

}  // namespace

std::string Upgrade::field(std::string_view name) const {
  for (const auto& [key, value] : fields) {
    if (beast::iequals(key, beast::string_view(name.data(), name.size()))) return value;
  }
  return {};
}

struct WsServer::Impl {
  explicit Impl(WsHandlers serverHandlers) : handlers(std::move(serverHandlers)) {}

  static void bind(tcp::acceptor& socket, std::uint16_t requestedPort) {
    const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), requestedPort);
    socket.open(endpoint.protocol());
    socket.set_option(asio::socket_base::reuse_address(ZEPHSIM_REUSE_ADDRESS));
    socket.bind(endpoint);
  }

  void listen(std::uint16_t requestedPort) {
    bind(acceptor, requestedPort);
    acceptor.listen();
  }

  /// Keeps the port bound while not listening: otherwise another process could get the port and the returning clients.
  void reservePort() {
    try {
      bind(reservation, port);
    } catch (const std::runtime_error&) {
      error_code ignored;
      reservation.close(ignored);
    }
  }

  void accept() {
    acceptor.async_accept([this](error_code error, tcp::socket socket) {
      if (error == asio::error::operation_aborted || !acceptor.is_open()) return;
      if (!error) open(std::move(socket));
      accept();
    });
  }

  void open(tcp::socket socket) {
    const Connection id = ++lastId;
    auto session =
        std::make_shared<Session>(std::move(socket), id, handlers, [this](Connection ended) { sessions.erase(ended); });
    sessions.emplace(id, session);
    session->start();
  }

  void enqueue(Connection connection, Outgoing outgoing) {
    asio::post(context, [this, connection, outgoing = std::move(outgoing)]() mutable {
      const auto found = sessions.find(connection);
      if (found != sessions.end()) found->second->enqueue(std::move(outgoing));
    });
  }

  WsHandlers handlers;
  asio::io_context context{1};
  tcp::acceptor acceptor{context};
  tcp::acceptor reservation{context};
  asio::signal_set signals{context};
  std::uint16_t port = 0;
  Connection lastId = 0;
  std::map<Connection, std::shared_ptr<Session>> sessions;
  std::thread thread;
};

WsServer::WsServer(std::uint16_t port, WsHandlers handlers) : impl(std::make_unique<Impl>(std::move(handlers))) {
  impl->listen(port);
  impl->port = impl->acceptor.local_endpoint().port();
}

WsServer::~WsServer() { stop(); }

void WsServer::start() {
  impl->accept();
  impl->thread = std::thread([this] {
    const auto work = asio::make_work_guard(impl->context);
    impl->context.run();
  });
}

void WsServer::stop() {
  if (impl->thread.joinable()) {
    asio::post(impl->context, [this] {
      error_code ignored;
      impl->acceptor.close(ignored);
      for (const auto& [id, session] : impl->sessions) session->abandon();
      impl->context.stop();
    });
    impl->thread.join();
  }
  error_code ignored;
  impl->acceptor.close(ignored);
}

std::uint16_t WsServer::port() const { return impl->port; }

void WsServer::send(Connection connection, std::string text) {
  impl->enqueue(connection, {Outgoing::Kind::Message, {std::move(text)}});
}

void WsServer::sendFragments(Connection connection, std::vector<std::string> parts) {
  if (!parts.empty()) impl->enqueue(connection, {Outgoing::Kind::Message, std::move(parts)});
}

void WsServer::sendRaw(Connection connection, std::string bytes) {
  impl->enqueue(connection, {Outgoing::Kind::Raw, {std::move(bytes)}});
}

void WsServer::broadcast(std::string text) {
  asio::post(impl->context, [this, text = std::move(text)] {
    for (const auto& [id, session] : impl->sessions) {
      if (session->isOpen()) session->enqueue({Outgoing::Kind::Message, {text}});
    }
  });
}

void WsServer::ping(Connection connection, std::string payload) {
  payload.resize(std::min(payload.size(), websocket::ping_data::max_size_n));
  impl->enqueue(connection, {Outgoing::Kind::Ping, {std::move(payload)}});
}

void WsServer::close(Connection connection) { impl->enqueue(connection, {Outgoing::Kind::Close, {}}); }

void WsServer::drop(Connection connection) { impl->enqueue(connection, {Outgoing::Kind::Drop, {}}); }

void WsServer::reset(Connection connection) { impl->enqueue(connection, {Outgoing::Kind::Reset, {}}); }

void WsServer::pauseAccepting() {
  asio::post(impl->context, [this] {
    error_code ignored;
    impl->acceptor.close(ignored);
    impl->reservePort();
  });
}

void WsServer::resumeAccepting() {
  asio::post(impl->context, [this] {
    if (impl->acceptor.is_open()) return;
    error_code ignored;
    impl->reservation.close(ignored);
    try {
      impl->listen(impl->port);
      impl->accept();
    } catch (const std::runtime_error&) {
      impl->acceptor.close(ignored);
    }
  });
}

void WsServer::post(std::function<void()> task) { asio::post(impl->context, std::move(task)); }

void WsServer::after(std::chrono::milliseconds delay, std::function<void()> task) {
  asio::post(impl->context,
             [this, task = std::move(task), deadline = std::chrono::steady_clock::now() + delay]() mutable {
               auto timer = std::make_shared<asio::steady_timer>(impl->context, deadline);
               timer->async_wait([timer, task = std::move(task)](error_code error) {
                 if (!error) task();
               });
             });
}

void WsServer::onTermination(std::function<void()> task) {
  impl->signals.add(SIGINT);
  impl->signals.add(SIGTERM);
  impl->signals.async_wait([task = std::move(task)](error_code error, int) {
    if (!error) task();
  });
}

}  // namespace zephsim
