// The frame reader, fed by a socket pair. The first byte of the input tells how the stream behind it is cut.
//
// However it is cut, a stream gives the messages and the pongs that a plain decoder finds in it. What lies behind the
// frame that closes the connection is shown or not, by when it arrives, but never changed nor out of order.
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

// What one call of `poll` reads, and what a socket pair takes without a reader.
constexpr std::size_t kLargestStream = 16384;

/// What a stream holds, taken apart by the simplest decoder that can be.
struct Expected {
  Texts messages;
  Texts pongs;
  /// How many of them come before the frame that ends the connection, if one does.
  std::size_t messagesToClose = 0;
  bool closes = false;
  bool lengthIsIllegal = false;
};

struct Cursor {
  std::string_view rest;

  std::optional<std::string_view> take(std::uint64_t size) {
    if (size > rest.size()) return std::nullopt;
    const std::string_view taken = rest.substr(0, static_cast<std::size_t>(size));
    rest.remove_prefix(taken.size());
    return taken;
  }

  std::optional<std::uint64_t> number(std::size_t size) {
    const auto bytes = take(size);
    if (!bytes) return std::nullopt;
    std::uint64_t value = 0;
    for (const char byte : *bytes) value = value * 256 + static_cast<std::uint8_t>(byte);
    return value;
  }
};

Expected decode(std::string_view stream) {
  Expected expected;
  std::string message;
  Cursor cursor{stream};
  while (true) {
    const auto first = cursor.number(1);
    const auto second = cursor.number(1);
    if (!first || !second) break;
    std::optional<std::uint64_t> length = *second & 127U;
    if (*length == 126) length = cursor.number(2);
    if (length && *length == 127 && (*second & 127U) == 127) length = cursor.number(8);
    if (!length) break;
    const auto key = cursor.take((*second & 128U) != 0 ? 4 : 0);
    if (!key) break;
    if (*length >> 63U != 0) {
      expected.lengthIsIllegal = true;
      if (!std::exchange(expected.closes, true)) expected.messagesToClose = expected.messages.size();
      return expected;
    }
    const auto payload = cursor.take(*length);
    if (!payload) break;
    std::string plain(*payload);
    for (std::size_t i = 0; i < plain.size() && !key->empty(); ++i) {
      plain[i] = static_cast<char>(plain[i] ^ (*key)[i % 4]);
    }
    const unsigned opcode = *first & 15U;
    if (opcode <= 2) {
      message += plain;
      if ((*first & 128U) != 0) expected.messages.push_back(std::exchange(message, {}));
    } else if (opcode == 9) {
      if (!expected.closes) expected.pongs.push_back(plain);
    } else if (opcode != 10) {
      if (!std::exchange(expected.closes, true)) expected.messagesToClose = expected.messages.size();
    }
  }
  if (!expected.closes) expected.messagesToClose = expected.messages.size();
  return expected;
}

/// What the client wrote, unmasked: pongs, and one close frame at the end.
struct Answers {
  Texts pongs;
  std::size_t closeFrames = 0;
};

Answers readAnswers(std::string_view bytes) {
  Answers answers;
  Cursor cursor{bytes};
  while (!cursor.rest.empty()) {
    fuzz::check(answers.closeFrames == 0, "nothing follows the close frame");
    const auto first = cursor.number(1);
    const auto second = cursor.number(1);
    fuzz::check(first && second && (*second & 128U) != 0, "a client's frames are whole and masked");
    if (*first == 0x88) {
      fuzz::check(*second == 0x80 && cursor.take(4) == std::string_view("\0\0\0\0", 4), "a close frame is empty");
      ++answers.closeFrames;
      continue;
    }
    fuzz::check(*first == 0x8A, "a client answers with pongs only");
    std::optional<std::uint64_t> length = *second & 127U;
    if ((*second & 127U) >= 126) length = cursor.number((*second & 127U) == 126 ? 2 : 8);
    const auto key = cursor.take(4);
    const auto payload = length ? cursor.take(*length) : std::nullopt;
    fuzz::check(key && payload, "a pong is whole");
    std::string plain(*payload);
    for (std::size_t i = 0; i < plain.size(); ++i) plain[i] = static_cast<char>(plain[i] ^ (*key)[i % 4]);
    answers.pongs.push_back(std::move(plain));
  }
  return answers;
}

/// A client at one end of a socket pair, the stream's writer at the other.
class Link {
 public:
  Link() {
    int ends[2];
    fuzz::check(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends) == 0, "a socket pair is made");
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

  /// Lets go what is left to be written, and the client see the end.
  void end() {
    ::shutdown(peer, SHUT_WR);
    client->poll(0);
    client->dispatch([](const std::string&) { fuzz::broken("an end of the stream is no message", {}); });
    client->poll(0);
    fuzz::check(client->getReadyState() == WebSocketClient::CLOSED, "the end of the stream closes the client");
    takeWritten();
  }

  Texts messages;
  std::string written;

 private:
  /// In every round: a socket pair holds some hundred small writes, whatever their bytes, and then takes no more.
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
  fuzz::check(link.open() != expected.closes, "a connection closes by what the stream holds alone");
  // Answers to the last piece, and a close, leave with the next round.
  link.pump({});
  link.end();

  fuzz::check(link.messages.size() >= expected.messagesToClose, "every message before the close is shown");
  fuzz::check(isPrefix(link.messages, expected.messages), "messages come whole and in order");
  const Answers answers = readAnswers(link.written);
  fuzz::check(answers.pongs == expected.pongs, "every ping before the close is answered with its payload");
  fuzz::check(answers.closeFrames == (expected.closes ? 1 : 0), "a closing client says so once");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // An illegal length is told on every such stream.
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
