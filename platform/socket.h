// TCP sockets, as far as the daemon link needs them. Each function has a POSIX and a Windows implementation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zephlinksdk {

class Waker;

using SocketHandle = std::intptr_t;
inline constexpr SocketHandle kNoSocket = -1;

/// An IPv4 address in network byte order.
using Ipv4 = std::uint32_t;

/// Starts the system's socket layer. Each successful call needs one later `stopSockets`. Returns false if the system
/// refuses.
bool startSockets();
void stopSockets();

/// Returns the address of a text in dotted decimal form; nothing for any other text. Does not block.
std::optional<Ipv4> addressOfText(const char* text);

/// Appends the IPv4 addresses of `host` in the resolver's order. Blocks until the resolver returns. Returns false if
/// the lookup fails.
bool lookUpHost(const char* host, std::vector<Ipv4>& addresses);

enum class Connecting { kDone, kUnderWay, kFailed };

/// Creates a non-blocking socket and starts to connect it. While the result is "under way", wait until the socket is
/// writable and call `finishConnecting`. On failure sets `socket` to kNoSocket.
Connecting startConnecting(Ipv4 address, std::uint16_t port, SocketHandle& socket);

/// Returns the state of a connection under way. Does not close the socket.
Connecting finishConnecting(SocketHandle socket);

/// Sends without raising a signal. Returns the number of bytes accepted, 0, or -1 on an error.
std::ptrdiff_t sendBytes(SocketHandle socket, const void* data, std::size_t size);

/// Returns the number of bytes received, 0 if the peer has ended the stream, or -1 on an error.
std::ptrdiff_t receiveBytes(SocketHandle socket, void* data, std::size_t size);

/// Like `receiveBytes`, but leaves the bytes in the receive buffer.
std::ptrdiff_t peekBytes(SocketHandle socket, void* data, std::size_t size);

/// Returns whether the last failed `sendBytes` or `receiveBytes` of this thread should be retried later.
bool wouldBlock();

/// Makes small texts leave without delay.
void makeInteractive(SocketHandle socket);

/// Does nothing on `kNoSocket`.
void closeSocket(SocketHandle socket);

/// Waits until `socket` is readable (writable if `forWriting`), `waker` (may be null) is woken, or `timeoutMs` have
/// passed (negative: no limit). `kNoSocket` is not watched.
void waitForSocket(SocketHandle socket, bool forWriting, Waker* waker, int timeoutMs);

}  // namespace zephlinksdk
