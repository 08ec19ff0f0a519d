#include "sdk/link/websocket_client.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <optional>

namespace zephlinksdk {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kMaxUrl = 127;
constexpr std::size_t kMaxOrigin = 199;
constexpr std::size_t kLineSize = 256;
constexpr std::size_t kReadSize = 1500;
constexpr std::size_t kKeptMessage = std::size_t{64} * 1024;
constexpr std::size_t kMaxReadPerPoll = std::size_t{256} * 1024;

// The daemon trusts loopback and looks at neither: one key and one mask serve every connection.
constexpr const char* kWebSocketKey = "q7ZPmV2sT0dWc8LhE4nYfA==";
constexpr std::array<std::uint8_t, 4> kMaskingKey{0x5B, 0xC3, 0x1E, 0xA7};
constexpr std::array<std::uint8_t, 6> kCloseFrame{0x88, 0x80, 0, 0, 0, 0};

constexpr std::uint8_t kFinBit = 0x80;
constexpr std::uint8_t kMaskBit = 0x80;
constexpr std::uint8_t kLength16 = 126;
constexpr std::uint8_t kLength64 = 127;

enum Opcode : std::uint8_t { kContinuation = 0, kText = 1, kBinary = 2, kPing = 9, kPong = 10 };

struct Url {
  char host[kMaxUrl + 1] = "";
  int port = 80;
  char path[kMaxUrl + 1] = "";
};

std::optional<Url> parseUrl(const std::string& text) {
  const char* url = text.c_str();
  Url parsed;
  if (std::sscanf(url, "ws://%127[^:/]:%d/%127s", parsed.host, &parsed.port, parsed.path) == 3) return parsed;
  parsed = Url{};
  if (std::sscanf(url, "ws://%127[^:/]/%127s", parsed.host, parsed.path) == 2) return parsed;
  parsed = Url{};
  if (std::sscanf(url, "ws://%127[^:/]:%d", parsed.host, &parsed.port) == 2) return parsed;
  parsed = Url{};
  if (std::sscanf(url, "ws://%127[^:/]", parsed.host) == 1) return parsed;
  return std::nullopt;
}

/// All of it, in pieces if the system takes no more at once. Whether it arrives shows in the answer alone.
void sendAll(SocketHandle socket, const char* bytes, std::size_t size, SendMode mode) {
  while (size > 0) {
    const std::ptrdiff_t taken = sendBytes(socket, bytes, size, mode);
    if (taken <= 0) return;
    bytes += taken;
    size -= static_cast<std::size_t>(taken);
  }
}

/// One request line, its value (if it has one) put into `format`. The lines leave together with the empty one that ends
/// them: a peer is woken once.
template <class... Values>
void sendLine(SocketHandle socket, const char* format, Values... values) {
  char line[kLineSize];
  const int length = std::snprintf(line, sizeof line, format, values...);
  sendAll(socket, line, static_cast<std::size_t>(length), SendMode::kMoreFollows);
}

void sendUpgradeRequest(SocketHandle socket, const Url& url, const std::string& origin) {
  sendLine(socket, "GET /%s HTTP/1.1\r\n", url.path);
  if (url.port == 80) {
    sendLine(socket, "Host: %s\r\n", url.host);
  } else {
    sendLine(socket, "Host: %s:%d\r\n", url.host, url.port);
  }
  sendLine(socket, "%s", "Upgrade: websocket\r\n");
  sendLine(socket, "%s", "Connection: Upgrade\r\n");
  if (!origin.empty()) sendLine(socket, "Origin: %s\r\n", origin.c_str());
  sendLine(socket, "Sec-WebSocket-Key: %s\r\n", kWebSocketKey);
  sendLine(socket, "%s", "Sec-WebSocket-Version: 13\r\n");
  sendLine(socket, "%s", "Sec-WebSocket-Protocol: event-protocol\r\n");
  sendAll(socket, "\r\n", 2, SendMode::kAtOnce);
}

/// One line of the answer, taken byte by byte, and no byte behind it: those are the next line's, or the first frame's.
class AnswerLine {
 public:
  char text[kLineSize] = "";
  std::size_t length = 0;

  /// False when the peer has gone. A failed read is tried again: a byte that is passed over would be waited for without
  /// end. One that fails as often as a line has bytes counts as a peer that has gone.
  bool receive(SocketHandle socket) {
    std::memset(text, 0, sizeof text);
    length = 0;
    std::size_t failures = 0;
    while (length < 2 || !complete()) {
      // What has come is looked at before it is taken, which saves a call for every byte.
      const std::ptrdiff_t seen = peekBytes(socket, text + length, kLineSize - 1 - length);
      if (seen == 0) return false;
      if (seen < 0) {
        if (++failures == kLineSize - 1) return false;
        continue;
      }
      const std::size_t first = length;
      const std::size_t end = first + static_cast<std::size_t>(seen);
      do {
        ++length;
      } while (length < end && (length < 2 || !complete()));
      if (!take(socket, text + first, length - first)) return false;
      std::memset(text + length, 0, sizeof text - length);
    }
    return true;
  }

  bool tooLong() const { return length == kLineSize - 1; }

 private:
  /// Takes bytes that have been seen, in pieces if the system gives no more at once.
  static bool take(SocketHandle socket, char* bytes, std::size_t size) {
    while (size > 0) {
      const std::ptrdiff_t taken = receiveBytes(socket, bytes, size);
      if (taken <= 0) return false;
      bytes += taken;
      size -= static_cast<std::size_t>(taken);
    }
    return true;
  }

  // Looks two back for the CR, so that its LF is read as well.
  bool complete() const { return tooLong() || text[length - 2] == '\r' || text[length - 1] == '\n'; }
};

bool upgradeAccepted(SocketHandle socket) {
  AnswerLine line;
  int status = 0;
  if (!line.receive(socket) || line.tooLong()) return false;
  if (std::sscanf(line.text, "HTTP/1.1 %d", &status) != 1 || status != 101) return false;
  do {
    if (!line.receive(socket)) return false;
  } while (line.text[0] != '\r' || line.text[1] != '\n');
  return true;
}

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

/// Nothing when `available` bytes do not yet hold the whole header.
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

/// Removes the first `count` bytes, once for all frames of a call: a burst costs what its bytes cost.
template <class Buffer>
void eraseFront(Buffer& buffer, std::size_t count) {
  buffer.erase(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
}

}  // namespace

std::unique_ptr<WebSocketClient> WebSocketClient::fromUrl(const std::string& url, bool useMask,
                                                          const std::string& origin) {
  if (url.size() > kMaxUrl || origin.size() > kMaxOrigin) return nullptr;
  const auto parsed = parseUrl(url);
  if (!parsed) return nullptr;
  SocketHandle socket = kNoSocket;
  if (!connectSocket(parsed->host, parsed->port, socket)) return nullptr;
  sendUpgradeRequest(socket, *parsed, origin);
  // A refused upgrade leaves the socket to the process: its peer sees no close until then.
  if (!upgradeAccepted(socket)) return nullptr;
  if (!makeInteractive(socket)) {
    // A read that blocks would hold up every time-out.
    closeSocket(socket);
    return nullptr;
  }
  return std::make_unique<WebSocketClient>(socket, useMask);
}

void WebSocketClient::poll(int timeoutMs) {
  if (readyState == CLOSED) {
    if (timeoutMs > 0) waitForSocket(kNoSocket, false, waker, timeoutMs);
    return;
  }
  if (timeoutMs != 0) waitForSocket(socketHandle, !txBuffer.empty(), waker, timeoutMs);
  receiveAvailable();
  sendPending();
  if (txBuffer.empty() && readyState == CLOSING) closeNow();
}

/// One large message must not stay for the rest of the run; the room of a small one is worth more than a new one for
/// every message of a burst.
void WebSocketClient::releaseMessage() {
  messageBuffer.clear();
  if (messageBuffer.capacity() > kKeptMessage) messageBuffer.shrink_to_fit();
}

void WebSocketClient::receiveAvailable() {
  // On the stack and not cleared: a short report touches one page of it.
  std::array<std::uint8_t, kReadSize> bytes;
  for (std::size_t total = 0; total < kMaxReadPerPoll;) {
    const std::ptrdiff_t received = receiveBytes(socketHandle, bytes.data(), bytes.size());
    if (received <= 0) {
      if (received == 0 || !wouldBlock()) closeNow();
      return;
    }
    rxBuffer.insert(rxBuffer.end(), bytes.data(), bytes.data() + received);
    total += static_cast<std::size_t>(received);
  }
}

void WebSocketClient::sendPending() {
  std::size_t sent = 0;
  while (sent < txBuffer.size()) {
    const std::ptrdiff_t taken = sendBytes(socketHandle, txBuffer.data() + sent, txBuffer.size() - sent);
    if (taken <= 0) {
      if (taken == 0 || !wouldBlock()) closeNow();
      break;
    }
    sent += static_cast<std::size_t>(taken);
  }
  eraseFront(txBuffer, sent);
  // Gives the memory back, which wipes it: what has left does not stay behind the buffer's end.
  txBuffer.shrink_to_fit();
}

void WebSocketClient::closeNow() {
  closeSocket(socketHandle);
  socketHandle = kNoSocket;
  readyState = CLOSED;
}

void WebSocketClient::sendText(const std::string& text) { sendFrame(kText, text); }

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
  txBuffer.push_back(kFinBit | opcode);
  txBuffer.push_back(maskBit | shortLength);
  for (std::size_t i = lengthBytes; i > 0; --i) {
    txBuffer.push_back(static_cast<std::uint8_t>(std::uint64_t{size} >> (8 * (i - 1))));
  }
  if (useMask) txBuffer.insert(txBuffer.end(), kMaskingKey.begin(), kMaskingKey.end());
  const std::size_t start = txBuffer.size();
  txBuffer.insert(txBuffer.end(), payload.begin(), payload.end());
  if (useMask) applyMask(txBuffer.data() + start, size, kMaskingKey);
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
      // Nothing tells where the next frame begins.
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
          releaseMessage();
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
}

}  // namespace zephlinksdk
