// Opens a WebSocket without blocking: host lookup, TCP connection, upgrade request and answer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/socket.h"
#include "sdk/link/host_lookup.h"

namespace zephlinksdk {

/// A handshake driven by its owner: `advance` proceeds as far as possible, `wait` waits until it can continue.
///
/// Not thread-safe: one thread at a time may use an object.
class Handshake {
 public:
  enum class State { kUnderWay, kDone, kFailed };

  /// Starts to open `ws://host[:port][/path]` (IPv4, at most 127 bytes). If `origin` (at most 199 bytes) is not empty,
  /// the request contains it. `waker` (may be null) ends a `wait`; it must outlive the object.
  Handshake(const std::string& url, const std::string& origin, Waker* waker);

  /// Closes the socket unless the upgrade was accepted or refused.
  ~Handshake();
  Handshake(const Handshake&) = delete;
  Handshake& operator=(const Handshake&) = delete;

  /// Performs all steps that require no waiting.
  State advance();

  /// Waits until `advance` can continue, the waker is woken, or `timeoutMs` have passed (negative: no limit).
  void wait(int timeoutMs) { waitForSocket(handle(), wantsToWrite(), waker, timeoutMs); }

  /// The socket and the direction that `wait` watches.
  SocketHandle handle() const { return socket; }
  bool wantsToWrite() const { return current == Step::kConnect || current == Step::kSend; }

  /// Returns the connected socket, which the caller then owns. REQUIRES: advance() has returned kDone.
  SocketHandle takeSocket();

 private:
  enum class Step { kLookUp, kConnect, kSend, kReceive, kDone, kFailed };

  static constexpr std::size_t kLineSize = 256;

  bool step();
  bool lookUp();
  bool connect();
  bool send();
  bool receive();
  bool readAnswer(const char* bytes, std::size_t seen);
  Step takeByte(char byte);
  Step endLine();
  bool go(Step next);
  void startNextAddress();

  Waker* waker;
  Step current = Step::kFailed;
  std::string request;
  std::size_t sent = 0;
  std::uint16_t port = 0;
  std::optional<HostLookup> lookup;
  std::size_t nextAddress = 0;
  SocketHandle socket = kNoSocket;

  // The current line of the answer.
  char line[kLineSize] = "";
  std::size_t length = 0;
  std::size_t failures = 0;
  bool inHeaders = false;
};

}  // namespace zephlinksdk
