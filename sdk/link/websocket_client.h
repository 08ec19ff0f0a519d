// An RFC 6455 client for one socket, without a thread or a lock of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/socket.h"
#include "platform/wipe.h"

namespace zephlinksdk {

class Handshake;

/// A connected WebSocket that its owner pumps: sends append to a buffer, `poll` moves bytes between the buffers and the
/// socket, `dispatch` hands over the complete messages.
///
/// One thread at a time may use an object. The object exists only once the handshake has succeeded. Its destructor
/// leaves the socket open: only `poll` and `abandon` close it.
class WebSocketClient {
 public:
  enum ReadyState : std::uint32_t { CLOSING = 0, CLOSED = 1, CONNECTING = 2, OPEN = 3 };

  /// Performs a whole handshake (see Handshake) and blocks until it is done. Null on any failure, without a message.
  static std::unique_ptr<WebSocketClient> fromUrl(const std::string& url, bool useMask, const std::string& origin);

  /// The same with masked frames, as RFC 6455 asks of a client.
  static std::unique_ptr<WebSocketClient> fromUrl(const std::string& url, const std::string& origin) {
    return fromUrl(url, true, origin);
  }

  /// The client of a handshake that is done.
  static std::unique_ptr<WebSocketClient> fromHandshake(Handshake& handshake, bool useMask = true);

  WebSocketClient(SocketHandle socket, bool masked) : socketHandle(socket), useMask(masked) {}
  WebSocketClient(const WebSocketClient&) = delete;
  WebSocketClient& operator=(const WebSocketClient&) = delete;
  virtual ~WebSocketClient() = default;

  /// Waits up to `timeoutMs` (0: not at all, negative: without limit) for the socket or the waker, then reads what has
  /// come, at most 256 KiB in one call so that a flooding peer starves nobody, and writes what the socket takes.
  virtual void poll(int timeoutMs);

  /// What the wait of `poll` watches; kNoSocket when the connection is closed.
  SocketHandle handle() const { return socketHandle; }

  /// Writes at once what the socket takes, without reading.
  void flush();

  /// Closes the socket at once. What was received or queued is lost.
  void abandon();

  /// Each appends one whole frame for the next `poll`. Dropped silently once the connection is closing.
  virtual void sendText(std::string_view text);
  virtual void sendBinary(const std::vector<std::uint8_t>& bytes);
  virtual void sendBinary(const std::string& bytes);
  virtual void sendPing();

  /// Starts closing: one empty close frame goes out, and the `poll` that has flushed it closes the socket.
  virtual void close();

  virtual ReadyState getReadyState() const { return readyState; }

  /// Calls `callable` with each complete message, in order, on the caller's thread. An illegal frame length closes the
  /// connection with a message on standard error; from then on nothing is dispatched.
  virtual void dispatch(const std::function<void(const std::string&)>& callable);
  virtual void dispatchBytes(const std::function<void(const std::vector<std::uint8_t>&)>& callable);

  /// Lets `waker` (null: none) end the wait of a `poll`. It must outlive its use here.
  void wakeBy(Waker* other) { waker = other; }

  /// Whether frames wait for a `poll` to write them.
  bool hasUnsent() const { return txSent < txBuffer.size(); }

 private:
  void sendFrame(std::uint8_t opcode, std::string_view payload);
  void receiveAvailable();
  void sendPending();
  void closeNow();

  std::vector<std::uint8_t> rxBuffer;
  // Passwords and tokens go through here, masked with a key that everybody knows.
  std::vector<std::uint8_t, WipingAllocator<std::uint8_t>> txBuffer;
  // How much of it the socket has taken.
  std::size_t txSent = 0;
  std::string messageBuffer;
  SocketHandle socketHandle;
  ReadyState readyState = OPEN;
  bool useMask;
  bool rxBad = false;
  Waker* waker = nullptr;
};

}  // namespace zephlinksdk
