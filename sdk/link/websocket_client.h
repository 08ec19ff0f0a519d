// An RFC 6455 client for one socket, without a thread or a lock of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sdk/platform/socket.h"
#include "sdk/platform/wipe.h"

namespace zephlinksdk {

/// A connected WebSocket that its owner pumps: sends append to a buffer, `poll` moves bytes between the buffers and the
/// socket, `dispatch` hands over the complete messages.
///
/// One thread at a time may use an object. The object exists only once the handshake has succeeded. Its destructor
/// leaves the socket open: only `poll` closes it.
class WebSocketClient {
 public:
  enum ReadyState : std::uint32_t { CLOSING = 0, CLOSED = 1, CONNECTING = 2, OPEN = 3 };

  /// Connects to `ws://host[:port][/path]` (IPv4, at most 127 bytes) and upgrades, blocking until that is done. An
  /// `origin` that is not empty (at most 199 bytes) goes into the request. Null on any failure, without a message.
  static std::unique_ptr<WebSocketClient> fromUrl(const std::string& url, bool useMask, const std::string& origin);

  /// The same with masked frames, as RFC 6455 asks of a client.
  static std::unique_ptr<WebSocketClient> fromUrl(const std::string& url, const std::string& origin) {
    return fromUrl(url, true, origin);
  }

  WebSocketClient(SocketHandle socket, bool masked) : socketHandle(socket), useMask(masked) {}
  WebSocketClient(const WebSocketClient&) = delete;
  WebSocketClient& operator=(const WebSocketClient&) = delete;
  virtual ~WebSocketClient() = default;

  /// Waits up to `timeoutMs` (0: not at all, negative: without limit) for the socket or the waker, then reads what has
  /// come, at most 256 KiB in one call so that a flooding peer starves nobody, and writes what the socket takes.
  virtual void poll(int timeoutMs);

  /// Each appends one whole frame for the next `poll`. Dropped silently once the connection is closing.
  virtual void sendText(const std::string& text);
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
  bool hasUnsent() const { return !txBuffer.empty(); }

 private:
  void sendFrame(std::uint8_t opcode, std::string_view payload);
  void receiveAvailable();
  void releaseMessage();
  void sendPending();
  void closeNow();

  std::vector<std::uint8_t> rxBuffer;
  // Passwords and tokens go through here, masked with a key that everybody knows.
  std::vector<std::uint8_t, WipingAllocator<std::uint8_t>> txBuffer;
  // Keeps its room from message to message.
  std::string messageBuffer;
  SocketHandle socketHandle;
  ReadyState readyState = OPEN;
  bool useMask;
  bool rxBad = false;
  Waker* waker = nullptr;
};

}  // namespace zephlinksdk
