// A WebSocket server on 127.0.0.1 with one thread of its own. The simulated daemon stands on it, and so do the tests
// that script a daemon. The header is free of the networking library, so that its users compile fast.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zephsim {

/// One accepted connection; ids are never used twice within a server. 0 is no connection.
using Connection = std::uint64_t;

/// A client's upgrade request as it came: its target and its header fields in their order.
struct Upgrade {
  std::string target;
  std::vector<std::pair<std::string, std::string>> fields;

  /// The value of the first field of that name (case matters not), empty if there is none.
  std::string field(std::string_view name) const;
};

/// What a server tells its owner. All of it runs on the server's thread; each may be left empty. A handler may call
/// everything of `WsServer` but `stop`.
struct WsHandlers {
  std::function<void(Connection, const Upgrade&)> onUpgrade = {};           ///< before the answer to the upgrade
  std::function<void(Connection)> onOpen = {};                              ///< the answer has been written
  std::function<void(Connection, const std::string& text)> onText = {};     ///< one whole text message
  std::function<void(Connection, const std::string& bytes)> onBinary = {};  ///< one whole binary message
  std::function<void(Connection, const std::string& payload)> onPong = {};  ///< the answer to a ping
  std::function<void(Connection)> onClose = {};  ///< gone, whoever ended it; not called by stop
};

/// The server. Messages of any size are taken; a client may use the same mask and key every time. The subprotocol
/// "event-protocol" is agreed to when a client asks for it.
///
/// What is sent to one connection leaves in the order of the calls, `close`, `drop` and `reset` included: what was
/// sent before them still goes out, what is sent behind them is forgotten. Calls for a connection that has gone do
/// nothing. All calls but `start`, `stop` and `onTermination` may come from any thread and return at once.
class WsServer {
 public:
  /// Binds and listens; a client can connect from now on and is answered once `start` has been called.
  /// `port` 0 takes a free one. Throws `std::runtime_error` if the port can't be had.
  WsServer(std::uint16_t port, WsHandlers handlers);
  /// As `stop`.
  ~WsServer();
  WsServer(const WsServer&) = delete;
  WsServer& operator=(const WsServer&) = delete;

  /// Starts the thread. Once in the life of an object.
  void start();
  /// Ends all connections without a frame, frees the port and joins the thread; prompt, and harmless if repeated.
  /// Not for the server's own thread. A new server may listen on the same port at once.
  void stop();

  std::uint16_t port() const;

  void send(Connection connection, std::string text);
  /// One text message in as many frames as there are parts.
  void sendFragments(Connection connection, std::vector<std::string> parts);
  /// Bytes as they stand, past all framing: for what no sane server sends.
  void sendRaw(Connection connection, std::string bytes);
  /// `send` to all connections that are open when the server's thread takes it up.
  void broadcast(std::string text);
  /// `payload` is cut to the 125 bytes that a ping can hold.
  void ping(Connection connection, std::string payload);

  /// Sends a close frame and waits for the peer to end the connection.
  void close(Connection connection);
  /// Closes the TCP connection without a close frame.
  void drop(Connection connection);
  /// Resets the TCP connection.
  void reset(Connection connection);

  /// Stops listening: new clients are refused, open connections stay.
  void pauseAccepting();
  /// Listens on the same port again. If that fails the server stays paused.
  void resumeAccepting();

  /// Runs `task` on the server's thread, as soon as may be or after `delay`. Tasks of a stopped server never run.
  void post(std::function<void()> task);
  void after(std::chrono::milliseconds delay, std::function<void()> task);
  /// Runs `task` on the server's thread at the first SIGINT or SIGTERM of the process, which no longer end it.
  /// To be called before `start`.
  void onTermination(std::function<void()> task);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace zephsim
