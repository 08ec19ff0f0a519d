// An RFC 6455 client for one socket, without threads or locks.
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

/// A connected WebSocket driven by its owner: the send functions append to a buffer, `poll` moves bytes between the
/// buffers and the socket, `dispatch` delivers complete messages.
///
/// Not thread-safe: one thread at a time may use an object. The destructor does not close the socket: only `poll` and
/// `abandon` do.
class WebSocketClient {
 public:
  enum ReadyState : std::uint32_t { CLOSING = 0, CLOSED = 1, CONNECTING = 2, OPEN = 3 };

  /// Performs a whole handshake (see Handshake) and blocks until it has ended. Returns null on any failure, without
  /// printing a message.
  static std::unique_ptr<WebSocketClient> fromUrl(const std::string& url, bool useMask, const std::string& origin);

  /// The same with masked frames, as RFC 6455 requires of clients.
  static std::unique_ptr<WebSocketClient> fromUrl(const std::string& url, const std::string& origin) {
    return fromUrl(url, true, origin);
  }

  /// Returns the client of a completed handshake.
  static std::unique_ptr<WebSocketClient> fromHandshake(Handshake& handshake, bool useMask = true);

  WebSocketClient(SocketHandle socket, bool masked) : socketHandle(socket), useMask(masked) {}
  WebSocketClient(const WebSocketClient&) = delete;
  WebSocketClient& operator=(const WebSocketClient&) = delete;
  virtual ~WebSocketClient() = default;

  /// Waits up to `timeoutMs` (0: not at all, negative: no limit) for the socket or the waker. Then reads what has
  /// arrived, at most 256 KiB per call so that a flooding peer cannot starve others, and writes what the socket
  /// accepts.
  virtual void poll(int timeoutMs);

  /// Returns the handle that `poll` waits for; kNoSocket if the connection is closed.
  SocketHandle handle() const { return socketHandle; }

  /// Writes what the socket accepts without blocking; does not read.
  void flush();

  /// Closes the socket at once. Received and queued data is lost.
  void abandon();

  /// Each appends one whole frame for the next `poll`. Frames are dropped silently once the connection is closing.
  virtual void sendText(std::string_view text);
  virtual void sendBinary(const std::vector<std::uint8_t>& bytes);
  virtual void sendBinary(const std::string& bytes);
  virtual void sendPing();

  /// Starts to close: queues an empty close frame; the `poll` that flushes it closes the socket.
  virtual void close();

  virtual ReadyState getReadyState() const { return readyState; }

  /// Calls `callable` with each complete message, in order, on the caller's thread. An invalid frame length prints a
  /// message to stderr and closes the connection; nothing is dispatched afterwards.
  virtual void dispatch(const std::function<void(const std::string&)>& callable);
  virtual void dispatchBytes(const std::function<void(const std::vector<std::uint8_t>&)>& callable);

  /// Lets `waker` (may be null) end the wait of a `poll`. It must outlive its use here.
  void wakeBy(Waker* other) { waker = other; }

  /// Returns whether frames wait to be written by `poll`.
  bool hasUnsent() const { return txSent < txBuffer.size(); }

 private:
  void sendFrame(std::uint8_t opcode, std::string_view payload);
  void receiveAvailable();
  void sendPending();
  void closeNow();

  std::vector<std::uint8_t> rxBuffer;
  // Contains passwords and tokens, masked with a public key.
  std::vector<std::uint8_t, WipingAllocator<std::uint8_t>> txBuffer;
  // The number of its bytes that were sent.
  std::size_t txSent = 0;
  std::string messageBuffer;
  SocketHandle socketHandle;
  ReadyState readyState = OPEN;
  bool useMask;
  bool rxBad = false;
  Waker* waker = nullptr;
};

}  // namespace zephlinksdk
