// A WebSocket server on 127.0.0.1 with its own thread, used by the simulated daemon and by tests that script a daemon.
// The header does not include the networking library, so that its users compile fast.
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

/// One accepted connection. Ids are unique within a server; 0 is invalid.
using Connection = std::uint64_t;

/// A client's upgrade request: its target and its header fields in order.
struct Upgrade {
  std::string target;
  std::vector<std::pair<std::string, std::string>> fields;

  /// Returns the value of the first field with that name (case-insensitive); empty if there is none.
  std::string field(std::string_view name) const;
};

/// Events of a server. All handlers run on the server's thread; each may be empty. A handler may call every function of
/// `WsServer` except `stop`.
struct WsHandlers {
  std::function<void(Connection, const Upgrade&)> onUpgrade = {};           ///< before the answer to the upgrade
  std::function<void(Connection)> onOpen = {};                              ///< the answer has been written
  std::function<void(Connection, const std::string& text)> onText = {};     ///< one whole text message
  std::function<void(Connection, const std::string& bytes)> onBinary = {};  ///< one whole binary message
  std::function<void(Connection, const std::string& payload)> onPong = {};  ///< the answer to a ping
  std::function<void(Connection)> onClose = {};  ///< closed by either side; not called by stop
};

/// The server. Accepts messages of any size and repeated masks and keys. Agrees to the subprotocol "event-protocol" if
/// a client requests it.
///
/// Data for one connection is sent in the order of the calls, including `close`, `drop` and `reset`: data sent before
/// them is still written, data sent after them is discarded. Calls for a closed connection do nothing. All functions
/// except `start`, `stop` and `onTermination` are thread-safe and return at once.
class WsServer {
 public:
  /// Binds and listens: clients can connect from now on and are answered after `start`. With `port` 0, uses any free
  /// port. Throws `std::runtime_error` if the port is not available.
  WsServer(std::uint16_t port, WsHandlers handlers);
  /// Calls `stop`.
  ~WsServer();
  WsServer(const WsServer&) = delete;
  WsServer& operator=(const WsServer&) = delete;

  /// Starts the thread. Call at most once.
  void start();
  /// Ends all connections without a close frame, frees the port and joins the thread. Returns promptly; may be called
  /// repeatedly, but not on the server's thread. A new server may listen on the same port at once.
  void stop();

  std::uint16_t port() const;

  void send(Connection connection, std::string text);
  /// Sends one text message, with one frame for each part.
  void sendFragments(Connection connection, std::vector<std::string> parts);
  /// Sends bytes without framing: for invalid data.
  void sendRaw(Connection connection, std::string bytes);
  /// Sends a message to all connections that are open when the server's thread handles the call.
  void broadcast(std::string text);
  /// `payload` is cut to 125 bytes, the maximum for a ping.
  void ping(Connection connection, std::string payload);

  /// Sends a close frame and waits for the peer to end the connection.
  void close(Connection connection);
  /// Closes the TCP connection without a close frame.
  void drop(Connection connection);
  /// Resets the TCP connection.
  void reset(Connection connection);

  /// Stops listening: new clients are refused, open connections remain.
  void pauseAccepting();
  /// Listens on the same port again. If that fails, the server remains paused.
  void resumeAccepting();

  /// Runs `task` on the server's thread, as soon as possible or after `delay`. Tasks of a stopped server never run.
  void post(std::function<void()> task);
  void after(std::chrono::milliseconds delay, std::function<void()> task);
  /// Runs `task` on the server's thread at the first SIGINT or SIGTERM, which then do not end the process. Call before
  /// `start`.
  void onTermination(std::function<void()> task);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace zephsim
