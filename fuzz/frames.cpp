// Fuzzes the frame reader through a socket pair. The first byte of the input determines how the following stream is
// split.
//
// However it is split, a stream produces the messages and pongs that a simple decoder finds in it. Messages after the
// frame that closes the connection may or may not be delivered, depending on when they arrive, but never changed or out
// of order.
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

#include "fuzz/check.h"
#include "sdk/link/websocket_client.h"

namespace {

using Texts = std::vector<std::string>;
using zephlinksdk::WebSocketClient;

// The number of bytes that one `poll` reads and a socket pair buffers.
constexpr std::size_t kLargestStream = 16384;

std::optional<std::string_view> take(std::string_view& rest, std::uint64_t size) {
  if (size > rest.size()) return std::nullopt;
  const std::string_view taken = rest.substr(0, static_cast<std::size_t>(size));
  rest.remove_prefix(taken.size());
  return taken;
}

std::optional<std::uint64_t> takeNumber(std::string_view& rest, std::size_t size) {
  const auto bytes = take(rest, size);
  if (!bytes) return std::nullopt;
  std::uint64_t value = 0;
  for (const char byte : *bytes) value = value * 256 + static_cast<std::uint8_t>(byte);
  return value;
}

struct Frame {
  unsigned head;         // first byte: FIN and the opcode
  std::string_view key;  // empty if the frame is not masked
  bool lengthIsIllegal;
  std::string payload;  // unmasked
};

/// Removes the next frame, with the simplest possible decoder. Returns nothing if the frame is incomplete.
std::optional<Frame> takeFrame(std::string_view& rest) {
  const auto first = takeNumber(rest, 1);
  const auto second = takeNumber(rest, 1);
  if (!first || !second) return std::nullopt;
  std::optional<std::uint64_t> length = *second & 127U;
  if (*length >= 126) length = takeNumber(rest, *length == 126 ? 2 : 8);
  const auto key = length ? take(rest, (*second & 128U) != 0 ? 4 : 0) : std::nullopt;
  if (!key) return std::nullopt;
  Frame frame{static_cast<unsigned>(*first), *key, *length >> 63U != 0, {}};
  if (frame.lengthIsIllegal) return frame;
  const auto payload = take(rest, *length);
  if (!payload) return std::nullopt;
  frame.payload = *payload;
  for (std::size_t i = 0; i < frame.payload.size() && !key->empty(); ++i) {
    frame.payload[i] = static_cast<char>(frame.payload[i] ^ (*key)[i % 4]);
  }
  return frame;
}

/// The expected result of a stream.
struct Expected {
  Texts messages;
  Texts pongs;
  /// The number of messages before the frame that ends the connection, if there is one.
  std::optional<std::size_t> messagesToClose;
};

Expected decode(std::string_view stream) {
  Expected expected;
  std::string message;
  while (const auto frame = takeFrame(stream)) {
    const unsigned opcode = frame->head & 15U;
    const bool isPing = opcode == 9;
    const bool closes = frame->lengthIsIllegal || (opcode > 2 && !isPing && opcode != 10);
    if (closes && !expected.messagesToClose) expected.messagesToClose = expected.messages.size();
    if (frame->lengthIsIllegal) break;
    if (isPing && !expected.messagesToClose) expected.pongs.push_back(frame->payload);
    if (opcode > 2) continue;
    message += frame->payload;
    if ((frame->head & 128U) != 0) expected.messages.push_back(std::exchange(message, {}));
  }
  return expected;
}

/// The frames that the client has written: pongs, and one empty close frame at the end.
struct Answers {
  Texts pongs;
  bool closes = false;
};

Answers readAnswers(std::string_view bytes) {
  constexpr std::string_view kCloseFrame("\x88\x80\0\0\0\0", 6);
  Answers answers;
  while (!bytes.empty() && bytes != kCloseFrame) {
    const auto frame = takeFrame(bytes);
    fuzz::check(frame && !frame->lengthIsIllegal && !frame->key.empty(), "a client's frames are whole and masked");
    fuzz::check(frame->head == 0x8A, "a client answers with pongs, followed by an empty close frame");
    answers.pongs.push_back(frame->payload);
  }
  answers.closes = !bytes.empty();
  return answers;
}

/// A client at one end of a socket pair, the stream's writer at the other.
class Link {
 public:
  Link() {
    int ends[2];
    fuzz::check(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends) == 0, "the socket pair is created");
    peer = ends[0];
    client.emplace(ends[1], true);
  }
  ~Link() { ::close(peer); }
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  bool open() const { return client->getReadyState() == WebSocketClient::OPEN; }

  /// One round of the channel's loop.
  void pump(std::string_view piece) {
    fuzz::check(::send(peer, piece.data(), piece.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(piece.size()),
                "a piece fits the socket");
    client->poll(0);
    client->dispatch([this](const std::string& message) { messages.push_back(message); });
    takeWritten();
  }

  /// Writes what is left and lets the client detect the end.
  void end() {
    ::shutdown(peer, SHUT_WR);
    client->poll(0);
    client->dispatch([](const std::string&) { fuzz::fail("the end of the stream is not a message", {}); });
    client->poll(0);
    fuzz::check(client->getReadyState() == WebSocketClient::CLOSED, "the end of the stream closes the client");
    takeWritten();
  }

  Texts messages;
  std::string written;

 private:
  /// Called in every round: a socket pair buffers only some hundred small writes, whatever their size.
  void takeWritten() {
    char buffer[4096];
    for (ssize_t size; (size = ::recv(peer, buffer, sizeof buffer, 0)) > 0;) {
      written.append(buffer, static_cast<std::size_t>(size));
    }
  }

  int peer = -1;
  std::optional<WebSocketClient> client;
};

bool isPrefix(const Texts& part, const Texts& whole) {
  return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}

void runCut(std::string_view stream, std::size_t step, unsigned variation, const Expected& expected) {
  Link link;
  while (!stream.empty() && link.open()) {
    const std::size_t size = std::min(stream.size(), 1 + step + variation % 7);
    variation = variation * 1103515245U + 12345U;
    link.pump(stream.substr(0, size));
    stream.remove_prefix(size);
  }
  fuzz::check(link.open() != expected.messagesToClose.has_value(),
              "only the stream determines whether the connection closes");
  // Answers to the last piece, and a close frame, are written in the next round.
  link.pump({});
  link.end();

  fuzz::check(link.messages.size() >= expected.messagesToClose.value_or(expected.messages.size()),
              "every message before the close is shown");
  fuzz::check(isPrefix(link.messages, expected.messages), "messages arrive complete and in order");
  const Answers answers = readAnswers(link.written);
  fuzz::check(answers.pongs == expected.pongs, "every ping before the close is answered with its payload");
  fuzz::check(answers.closes == expected.messagesToClose.has_value(), "a closing client sends one close frame");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The client prints a line for each invalid length.
  stderr = std::fopen("/dev/null", "w");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1 || size > kLargestStream) return 0;
  const std::string_view stream = fuzz::textOf(data + 1, size - 1);
  const Expected expected = decode(stream);
  runCut(stream, kLargestStream, 0, expected);
  runCut(stream, data[0], data[0], expected);
  if (size < 256) runCut(stream, 0, 0, expected);
  return 0;
}
