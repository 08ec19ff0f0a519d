// TCP sockets, as far as the daemon link needs them. Each function has a posix and a windows twin.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zephlinksdk {

class Waker;

using SocketHandle = std::intptr_t;
inline constexpr SocketHandle kNoSocket = -1;

/// Starts the system's sockets layer, once for each later `stopSockets`. False when the system refuses.
bool startSockets();
void stopSockets();

/// Connects to the first IPv4 address of `host` that accepts, trying them in the resolver's order. Blocks.
///
/// False when no address accepts. A failed lookup is no such case: it gives true with `kNoSocket`, on which every
/// later call fails, so that the caller's handshake takes its usual course.
bool connectSocket(const char* host, int port, SocketHandle& socket);

/// Whether a send may wait for the ones behind it, to leave together with them.
enum class SendMode { kAtOnce, kMoreFollows };

/// Sends without raising a signal. The count of bytes taken, 0, or -1 on an error.
std::ptrdiff_t sendBytes(SocketHandle socket, const void* data, std::size_t size, SendMode mode = SendMode::kAtOnce);

/// The count of bytes received, 0 when the peer has ended the stream, or -1 on an error.
std::ptrdiff_t receiveBytes(SocketHandle socket, void* data, std::size_t size);

/// As `receiveBytes`, but leaves the bytes to be received again.
std::ptrdiff_t peekBytes(SocketHandle socket, void* data, std::size_t size);

/// Whether the last failed `sendBytes` or `receiveBytes` of this thread only asks to be tried again later.
bool wouldBlock();

/// Sends small texts at once, and never blocks from here on. False when the socket stays one that blocks.
bool makeInteractive(SocketHandle socket);

/// Does nothing on `kNoSocket`.
void closeSocket(SocketHandle socket);

/// Waits until `socket` can be read, or written if `forWriting`, or `waker` (may be null) is woken, or `timeoutMs` have
/// passed (negative: no limit). `kNoSocket` is watched for nothing.
void waitForSocket(SocketHandle socket, bool forWriting, Waker* waker, int timeoutMs);

}  // namespace zephlinksdk
