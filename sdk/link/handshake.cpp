#include "sdk/link/handshake.h"

#include <cstdio>
#include <cstring>

namespace zephlinksdk {

namespace {

constexpr std::size_t kMaxUrl = 127;
constexpr std::size_t kMaxOrigin = 199;
constexpr std::size_t kPeekSize = 2048;

// The daemon trusts loopback and ignores the key: all connections use the same one.
constexpr const char* kWebSocketKey = "q7ZPmV2sT0dWc8LhE4nYfA==";

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

std::string requestFor(const Url& url, const std::string& origin) {
  const std::string port = url.port == 80 ? "" : ":" + std::to_string(url.port);
  std::string request;
  request.reserve(512);
  request.append("GET /").append(url.path).append(" HTTP/1.1\r\n");
  request.append("Host: ").append(url.host).append(port).append("\r\n");
  request.append("Upgrade: websocket\r\nConnection: Upgrade\r\n");
  if (!origin.empty()) request.append("Origin: ").append(origin).append("\r\n");
  request.append("Sec-WebSocket-Key: ").append(kWebSocketKey).append("\r\n");
  request.append("Sec-WebSocket-Version: 13\r\nSec-WebSocket-Protocol: event-protocol\r\n\r\n");
  return request;
}

}  // namespace

Handshake::Handshake(const std::string& url, const std::string& origin, Waker* wakeBy) : waker(wakeBy) {
  if (url.size() > kMaxUrl || origin.size() > kMaxOrigin) return;
  const auto parsed = parseUrl(url);
  if (!parsed) return;
  request = requestFor(*parsed, origin);
  port = static_cast<std::uint16_t>(parsed->port);
  lookup.emplace(parsed->host, waker);
  current = Step::kLookUp;
}

Handshake::~Handshake() {
  // The socket of a refused upgrade stays open until the process exits, so the peer sees no close before.
  if (current != Step::kFailed) closeSocket(socket);
}

Handshake::State Handshake::advance() {
  while (step()) {
  }
  if (current == Step::kDone) return State::kDone;
  return current == Step::kFailed ? State::kFailed : State::kUnderWay;
}

SocketHandle Handshake::takeSocket() {
  const SocketHandle taken = socket;
  socket = kNoSocket;
  return taken;
}

/// Returns true if the next step can follow at once.
bool Handshake::step() {
  switch (current) {
    case Step::kLookUp:
      return lookUp();
    case Step::kConnect:
      return connect();
    case Step::kSend:
      return send();
    case Step::kReceive:
      return receive();
    default:
      return false;
  }
}

bool Handshake::go(Step next) {
  current = next;
  return true;
}

bool Handshake::lookUp() {
  switch (lookup->state()) {
    case HostLookup::State::kUnderWay:
      return false;
    case HostLookup::State::kFailed:
      // Continue without a socket: every call on it fails, and the handshake ends as usual.
      return go(Step::kSend);
    default:
      startNextAddress();
      return true;
  }
}

/// Connects to the next address that accepts; fails after the last one.
void Handshake::startNextAddress() {
  while (nextAddress < lookup->addresses().size()) {
    const Connecting begun = startConnecting(lookup->addresses()[nextAddress++], port, socket);
    if (begun == Connecting::kFailed) continue;
    current = begun == Connecting::kDone ? Step::kSend : Step::kConnect;
    return;
  }
  current = Step::kFailed;
}

bool Handshake::connect() {
  switch (finishConnecting(socket)) {
    case Connecting::kUnderWay:
      return false;
    case Connecting::kDone:
      return go(Step::kSend);
    default:
      closeSocket(socket);
      socket = kNoSocket;
      startNextAddress();
      return true;
  }
}

/// Send errors are ignored: only the answer shows whether the request has arrived.
bool Handshake::send() {
  while (sent < request.size()) {
    const std::ptrdiff_t taken = sendBytes(socket, request.data() + sent, request.size() - sent);
    if (taken < 0 && socket != kNoSocket && wouldBlock()) return false;
    if (taken <= 0) break;
    sent += static_cast<std::size_t>(taken);
  }
  return go(Step::kReceive);
}

/// Consumes the bytes of the answer only: the following bytes belong to the first frame. Retries failed reads; after as
/// many failures as a line has bytes, the peer counts as gone.
bool Handshake::receive() {
  char bytes[kPeekSize];
  const std::ptrdiff_t seen = peekBytes(socket, bytes, sizeof bytes);
  if (seen == 0) return go(Step::kFailed);
  if (seen < 0) {
    if (socket != kNoSocket && wouldBlock()) return false;
    return ++failures == kLineSize - 1 ? go(Step::kFailed) : true;
  }
  return readAnswer(bytes, static_cast<std::size_t>(seen));
}

bool Handshake::readAnswer(const char* bytes, std::size_t seen) {
  std::size_t used = 0;
  Step next = Step::kReceive;
  while (used < seen && next == Step::kReceive) next = takeByte(bytes[used++]);
  // Consume the peeked bytes, in several reads if necessary.
  char taken[kPeekSize];
  while (used > 0) {
    const std::ptrdiff_t count = receiveBytes(socket, taken, used);
    if (count <= 0) return go(Step::kFailed);
    used -= static_cast<std::size_t>(count);
  }
  return go(next);
}

/// A line ends with its LF, with the byte after its CR, or when the buffer is full.
Handshake::Step Handshake::takeByte(char byte) {
  line[length++] = byte;
  if (length < 2) return Step::kReceive;
  const bool full = length == kLineSize - 1;
  return full || line[length - 2] == '\r' || line[length - 1] == '\n' ? endLine() : Step::kReceive;
}

Handshake::Step Handshake::endLine() {
  const bool full = length == kLineSize - 1;
  line[length] = '\0';
  length = 0;
  failures = 0;
  if (inHeaders) return line[0] == '\r' && line[1] == '\n' ? Step::kDone : Step::kReceive;
  inHeaders = true;
  int status = 0;
  const bool accepted = !full && std::sscanf(line, "HTTP/1.1 %d", &status) == 1 && status == 101;
  return accepted ? Step::kReceive : Step::kFailed;
}

}  // namespace zephlinksdk
