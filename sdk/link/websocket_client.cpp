#include "sdk/link/websocket_client.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <optional>

#include "platform/waker.h"
#include "sdk/link/handshake.h"

namespace zephlinksdk {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kReadSize = 1500;
constexpr std::size_t kMaxReadPerPoll = std::size_t{256} * 1024;

// The capacity that a buffer keeps for later messages: allocating a buffer for each message of a burst would cost more
// than the message. Larger capacity is freed.
constexpr std::size_t kKeptMessage = std::size_t{64} * 1024;
constexpr std::size_t kKeptReceived = 2 * kMaxReadPerPoll;

// The daemon trusts loopback and ignores the mask: all frames use the same one.
constexpr std::array<std::uint8_t, 4> kMaskingKey{0x5B, 0xC3, 0x1E, 0xA7};
constexpr std::array<std::uint8_t, 6> kCloseFrame{0x88, 0x80, 0, 0, 0, 0};

constexpr std::uint8_t kFinBit = 0x80;
constexpr std::uint8_t kMaskBit = 0x80;
constexpr std::uint8_t kLength16 = 126;
constexpr std::uint8_t kLength64 = 127;

enum Opcode : std::uint8_t { kContinuation = 0, kText = 1, kBinary = 2, kPing = 9, kPong = 10 };

struct FrameHeader {
  bool fin;
  std::uint8_t opcode;
  bool masked;
  std::size_t size;
  std::uint64_t length;
  std::array<std::uint8_t, 4> key;

  bool lengthIsLegal() const { return (length >> 63U) == 0; }
};

std::uint64_t bigEndian(const std::uint8_t* bytes, std::size_t count) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < count; ++i) value = value << 8U | bytes[i];
  return value;
}

/// Returns nothing if the first `available` bytes do not contain the whole header.
std::optional<FrameHeader> parseHeader(const std::uint8_t* bytes, std::size_t available) {
  if (available < 2) return std::nullopt;
  const std::uint8_t shortLength = bytes[1] & 0x7FU;
  const std::size_t lengthBytes = shortLength == kLength16 ? 2 : shortLength == kLength64 ? 8 : 0;
  FrameHeader header{};
  header.fin = (bytes[0] & kFinBit) != 0;
  header.opcode = bytes[0] & 0x0FU;
  header.masked = (bytes[1] & kMaskBit) != 0;
  header.size = 2 + lengthBytes + (header.masked ? header.key.size() : 0);
  if (available < header.size) return std::nullopt;
  header.length = lengthBytes == 0 ? shortLength : bigEndian(bytes + 2, lengthBytes);
  if (header.masked) std::memcpy(header.key.data(), bytes + 2 + lengthBytes, header.key.size());
  return header;
}

void applyMask(std::uint8_t* payload, std::size_t size, const std::array<std::uint8_t, 4>& key) {
  for (std::size_t i = 0; i < size; ++i) payload[i] ^= key[i % key.size()];
}

/// Removes the first `count` bytes. Called once for all frames of a call, so that the cost of a burst is linear in its
/// size.
template <class Buffer>
void eraseFront(Buffer& buffer, std::size_t count) {
  buffer.erase(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
}

/// Frees the excess capacity of a buffer that has shrunk.
template <class Buffer>
void trim(Buffer& buffer, std::size_t kept) {
  if (buffer.capacity() > kept && buffer.size() <= kept) buffer.shrink_to_fit();
}

}  // namespace

std::unique_ptr<WebSocketClient> WebSocketClient::fromUrl(const std::string& url, bool useMask,
                                                          const std::string& origin) {
  Waker lookedUp;
  Handshake handshake(url, origin, &lookedUp);
  Handshake::State state = handshake.advance();
  while (state == Handshake::State::kUnderWay) {
    handshake.wait(-1);
    state = handshake.advance();
  }
  if (state == Handshake::State::kFailed) return nullptr;
  return fromHandshake(handshake, useMask);
}

std::unique_ptr<WebSocketClient> WebSocketClient::fromHandshake(Handshake& handshake, bool useMask) {
  auto client = std::make_unique<WebSocketClient>(kNoSocket, useMask);
  client->socketHandle = handshake.takeSocket();
  makeInteractive(client->socketHandle);
  return client;
}

void WebSocketClient::poll(int timeoutMs) {
  const bool open = readyState != CLOSED;
  if (open ? timeoutMs != 0 : timeoutMs > 0) waitForSocket(socketHandle, open && hasUnsent(), waker, timeoutMs);
  if (!open) return;
  receiveAvailable();
  sendPending();
  if (!hasUnsent() && readyState == CLOSING) closeNow();
}

void WebSocketClient::flush() {
  if (readyState == OPEN) sendPending();
}

void WebSocketClient::abandon() {
  if (readyState != CLOSED) closeNow();
}

void WebSocketClient::receiveAvailable() {
  // On the stack and uninitialized: a short report touches only one page.
  std::array<std::uint8_t, kReadSize> bytes;
  for (std::size_t total = 0; total < kMaxReadPerPoll;) {
    const std::ptrdiff_t received = receiveBytes(socketHandle, bytes.data(), bytes.size());
    if (received <= 0) {
      if (received == 0 || !wouldBlock()) closeNow();
      return;
    }
    rxBuffer.insert(rxBuffer.end(), bytes.data(), bytes.data() + received);
    total += static_cast<std::size_t>(received);
    // A short read has emptied the socket. The next wait detects an end of the stream.
    if (static_cast<std::size_t>(received) < bytes.size()) return;
  }
}

/// Wipes sent bytes at once. Moves the rest to a new buffer when half is sent: the cost is linear in the queued bytes,
/// and no copy of a secret remains in a buffer.
void WebSocketClient::sendPending() {
  while (hasUnsent()) {
    const std::ptrdiff_t taken = sendBytes(socketHandle, txBuffer.data() + txSent, txBuffer.size() - txSent);
    if (taken <= 0) {
      if (taken == 0 || !wouldBlock()) closeNow();
      break;
    }
    wipe(txBuffer.data() + txSent, static_cast<std::size_t>(taken));
    txSent += static_cast<std::size_t>(taken);
  }
  if (txSent * 2 < txBuffer.size()) return;
  if (hasUnsent()) {
    decltype(txBuffer)(txBuffer.begin() + static_cast<std::ptrdiff_t>(txSent), txBuffer.end()).swap(txBuffer);
  } else {
    txBuffer.clear();
    trim(txBuffer, kKeptMessage);
  }
  txSent = 0;
}

void WebSocketClient::closeNow() {
  closeSocket(socketHandle);
  socketHandle = kNoSocket;
  readyState = CLOSED;
}

void WebSocketClient::sendText(std::string_view text) { sendFrame(kText, text); }

void WebSocketClient::sendBinary(const std::vector<std::uint8_t>& bytes) {
  sendFrame(kBinary, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

void WebSocketClient::sendBinary(const std::string& bytes) { sendFrame(kBinary, bytes); }

void WebSocketClient::sendPing() { sendFrame(kPing, {}); }

void WebSocketClient::sendFrame(std::uint8_t opcode, std::string_view payload) {
  if (readyState == CLOSING || readyState == CLOSED) return;
  const std::size_t size = payload.size();
  const std::uint8_t maskBit = useMask ? kMaskBit : 0;
  std::size_t lengthBytes = 0;
  std::uint8_t shortLength = static_cast<std::uint8_t>(size);
  if (size >= kLength16) {
    lengthBytes = size < 65536 ? 2 : 8;
    shortLength = size < 65536 ? kLength16 : kLength64;
  }
  // All or nothing: if memory for the whole frame is refused, the buffer is unchanged.
  std::array<std::uint8_t, 14> header{};
  std::size_t headerSize = 0;
  header[headerSize++] = kFinBit | opcode;
  header[headerSize++] = maskBit | shortLength;
  for (std::size_t i = lengthBytes; i > 0; --i) {
    header[headerSize++] = static_cast<std::uint8_t>(std::uint64_t{size} >> (8 * (i - 1)));
  }
  if (useMask) {
    std::copy(kMaskingKey.begin(), kMaskingKey.end(), header.begin() + static_cast<std::ptrdiff_t>(headerSize));
    headerSize += kMaskingKey.size();
  }
  const std::size_t needed = txBuffer.size() + headerSize + size;
  if (needed > txBuffer.capacity()) txBuffer.reserve(std::max(needed, 2 * txBuffer.capacity()));
  txBuffer.insert(txBuffer.end(), header.begin(), header.begin() + static_cast<std::ptrdiff_t>(headerSize));
  txBuffer.insert(txBuffer.end(), payload.begin(), payload.end());
  if (useMask) applyMask(txBuffer.data() + txBuffer.size() - size, size, kMaskingKey);
}

void WebSocketClient::close() {
  if (readyState == CLOSING || readyState == CLOSED) return;
  readyState = CLOSING;
  txBuffer.insert(txBuffer.end(), kCloseFrame.begin(), kCloseFrame.end());
}

void WebSocketClient::dispatchBytes(const std::function<void(const std::vector<std::uint8_t>&)>& callable) {
  dispatch([&callable](const std::string& message) { callable(Bytes(message.begin(), message.end())); });
}

void WebSocketClient::dispatch(const std::function<void(const std::string&)>& callable) {
  if (rxBad) return;
  std::size_t consumed = 0;
  while (const auto header = parseHeader(rxBuffer.data() + consumed, rxBuffer.size() - consumed)) {
    if (!header->lengthIsLegal()) {
      // The start of the next frame is unknown.
      rxBad = true;
      std::fputs("ERROR: Frame has invalid frame length. Closing.\n", stderr);
      close();
      break;
    }
    if (rxBuffer.size() - consumed < header->size + header->length) break;
    std::uint8_t* payload = rxBuffer.data() + consumed + header->size;
    const auto length = static_cast<std::size_t>(header->length);
    if (header->masked) applyMask(payload, length, header->key);
    switch (header->opcode) {
      case kContinuation:
      case kText:
      case kBinary:
        messageBuffer.append(reinterpret_cast<const char*>(payload), length);
        if (header->fin) {
          callable(messageBuffer);
          messageBuffer.clear();
          trim(messageBuffer, kKeptMessage);
        }
        break;
      case kPing:
        sendFrame(kPong, {reinterpret_cast<const char*>(payload), length});
        break;
      case kPong:
        break;
      default:
        close();
    }
    consumed += header->size + length;
  }
  eraseFront(rxBuffer, consumed);
  trim(rxBuffer, kKeptReceived);
}

}  // namespace zephlinksdk
