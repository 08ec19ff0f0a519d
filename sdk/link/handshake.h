// The opening of a WebSocket: name, TCP connection, upgrade request and answer, without ever blocking.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/socket.h"
#include "sdk/link/host_lookup.h"

namespace zephlinksdk {

/// A handshake that its owner pumps: `advance` goes as far as it can, `wait` waits for what it needs next.
///
/// One thread at a time may use an object.
class Handshake {
 public:
  enum class State { kUnderWay, kDone, kFailed };

  /// Begins to open `ws://host[:port][/path]` (IPv4, at most 127 bytes). An `origin` that is not empty (at most 199
  /// bytes) goes into the request. `waker` (may be null) ends a `wait`; it must outlive the object.
  Handshake(const std::string& url, const std::string& origin, Waker* waker);

  /// Closes the socket of a handshake that was neither accepted nor refused.
  ~Handshake();
  Handshake(const Handshake&) = delete;
  Handshake& operator=(const Handshake&) = delete;

  /// Takes all steps that need no waiting.
  State advance();

  /// Waits until `advance` has something to do, the waker is woken, or `timeoutMs` have passed (negative: no limit).
  void wait(int timeoutMs) { waitForSocket(handle(), wantsToWrite(), waker, timeoutMs); }

  /// What such a wait watches.
  SocketHandle handle() const { return socket; }
  bool wantsToWrite() const { return current == Step::kConnect || current == Step::kSend; }

  /// The connected socket, which the caller owns from now on. REQUIRES: advance() has returned kDone.
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

  // The line of the answer that is being read.
  char line[kLineSize] = "";
  std::size_t length = 0;
  std::size_t failures = 0;
  bool inHeaders = false;
};

}  // namespace zephlinksdk
