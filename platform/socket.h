// TCP sockets, as far as the daemon link needs them. Each function has a posix and a windows twin.
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

/// Starts the system's sockets layer, once for each later `stopSockets`. False when the system refuses.
bool startSockets();
void stopSockets();

/// Returns the address that a text in dotted decimal form means; nothing for any other text. Does not block.
std::optional<Ipv4> addressOfText(const char* text);

/// Appends the IPv4 addresses of `host` in the resolver's order. Blocks as long as the resolver does. False when the
/// lookup fails.
bool lookUpHost(const char* host, std::vector<Ipv4>& addresses);

enum class Connecting { kDone, kUnderWay, kFailed };

/// Makes a socket that never blocks and begins to connect it. While it is under way, wait until the socket can be
/// written and call `finishConnecting`. On a failure `socket` is kNoSocket.
Connecting startConnecting(Ipv4 address, std::uint16_t port, SocketHandle& socket);

/// Returns what became of a connection under way. Leaves the socket open.
Connecting finishConnecting(SocketHandle socket);

/// Sends without raising a signal. The count of bytes taken, 0, or -1 on an error.
std::ptrdiff_t sendBytes(SocketHandle socket, const void* data, std::size_t size);

/// The count of bytes received, 0 when the peer has ended the stream, or -1 on an error.
std::ptrdiff_t receiveBytes(SocketHandle socket, void* data, std::size_t size);

/// As `receiveBytes`, but leaves the bytes to be received again.
std::ptrdiff_t peekBytes(SocketHandle socket, void* data, std::size_t size);

/// Whether the last failed `sendBytes` or `receiveBytes` of this thread only asks to be tried again later.
bool wouldBlock();

/// Lets small texts leave at once.
void makeInteractive(SocketHandle socket);

/// Does nothing on `kNoSocket`.
void closeSocket(SocketHandle socket);

/// Waits until `socket` can be read, or written if `forWriting`, or `waker` (may be null) is woken, or `timeoutMs` have
/// passed (negative: no limit). `kNoSocket` is watched for nothing.
void waitForSocket(SocketHandle socket, bool forWriting, Waker* waker, int timeoutMs);

}  // namespace zephlinksdk
