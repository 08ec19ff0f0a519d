// The WebSocket client against Boost.Beast, and against raw sockets for what a sane server never sends.
#include "sdk/link/websocket_client.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "sdk/platform/waker.h"
#include "simulator/ws_server.h"
#include "tests/raw_server.h"

namespace tests {
namespace {

using zephlinksdk::WebSocketClient;
using Client = std::unique_ptr<WebSocketClient>;

std::string urlOf(std::uint16_t port, const std::string& path = "/") {
  return "ws://127.0.0.1:" + std::to_string(port) + path;
}

/// Pumps until `done`, for 20 seconds at most.
template <class Done>
bool pump(WebSocketClient& client, std::vector<std::string>& messages, Done done) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) return false;
    client.poll(50);
    client.dispatch([&](const std::string& message) { messages.push_back(message); });
  }
  return true;
}

/// A frame as a server sends it.
std::string frame(unsigned opcode, const std::string& payload, bool fin = true) {
  std::string bytes(1, static_cast<char>((fin ? 0x80U : 0U) | opcode));
  if (payload.size() < 126) {
    bytes += static_cast<char>(payload.size());
  } else if (payload.size() < 65536) {
    bytes += {126, static_cast<char>(payload.size() >> 8U), static_cast<char>(payload.size())};
  } else {
    bytes += '\x7f';
    for (int shift = 56; shift >= 0; shift -= 8)
      bytes += static_cast<char>(payload.size() >> static_cast<unsigned>(shift));
  }
  return bytes + payload;
}

/// The payload of a frame that the client sent, unmasked; the header must be `header`, the mask the client's own.
std::string unmasked(const std::string& bytes, const std::string& header) {
  const std::string key = "\x5B\xC3\x1E\xA7";
  EXPECT_EQ(bytes.substr(0, header.size() + 4), header + key);
  std::string payload = bytes.substr(header.size() + 4);
  for (std::size_t i = 0; i < payload.size(); ++i) payload[i] = static_cast<char>(payload[i] ^ key[i % 4]);
  return payload;
}

// ---- The handshake ----

/// The upgrade request that a server sees while `connect` runs.
template <class Connect>
std::string requestOf(Connect connect) {
  std::string request;
  {
    RawServer server([&](RawConnection& connection) { request = connection.accept(); });
    connect(server.port());
  }
  return request;
}

TEST(Handshake, SendsItsLinesToTheByte) {
  std::uint16_t port = 0;
  const std::string request = requestOf([&](std::uint16_t serverPort) {
    port = serverPort;
    const Client client = WebSocketClient::fromUrl(urlOf(port, "/some/path"), "easywsclient://");
    ASSERT_NE(client, nullptr);
    EXPECT_EQ(client->getReadyState(), WebSocketClient::OPEN);
  });
  EXPECT_EQ(request, "GET /some/path HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                         "\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nOrigin: easywsclient://\r\n"
                         "Sec-WebSocket-Key: q7ZPmV2sT0dWc8LhE4nYfA==\r\nSec-WebSocket-Version: 13\r\n"
                         "Sec-WebSocket-Protocol: event-protocol\r\n\r\n");
}

TEST(Handshake, TakesAnEmptyPathAndNoOrigin) {
  for (const char* path : {"/", ""}) {
    const std::string request =
        requestOf([&](std::uint16_t port) { EXPECT_NE(WebSocketClient::fromUrl(urlOf(port, path), ""), nullptr); });
    EXPECT_TRUE(request.starts_with("GET / HTTP/1.1\r\n"));
    EXPECT_EQ(request.find("Origin"), std::string::npos);
  }
}

TEST(Handshake, BoundsUrlAndOrigin) {
  const auto attempt = [](std::size_t urlSize, std::size_t originSize) {
    RawServer server([](RawConnection& connection) { connection.accept(); });
    std::string url = urlOf(server.port());
    url.append(urlSize - url.size(), 'p');
    return WebSocketClient::fromUrl(url, std::string(originSize, 'o')) != nullptr;
  };
  EXPECT_TRUE(attempt(127, 199));
  EXPECT_FALSE(attempt(128, 199));
  EXPECT_FALSE(attempt(127, 200));
}

TEST(Handshake, RefusesOtherUrls) {
  for (const char* url : {"", "wss://127.0.0.1:1/", "http://127.0.0.1:1/", "ws://", "ws://:1/", "127.0.0.1:1"}) {
    EXPECT_EQ(WebSocketClient::fromUrl(url, ""), nullptr) << url;
  }
}

struct Answer {
  const char* name;
  std::string bytes;
  bool accepted;
};

TEST(Handshake, LooksAtTheStatusLineOnly) {
  const Answer answers[] = {
      {"switching", "HTTP/1.1 101 Switching Protocols\r\n\r\n", true},
      {"bare number", "HTTP/1.1 101\r\n\r\n", true},
      {"any header", "HTTP/1.1 101 \r\nSec-WebSocket-Accept: wrong\r\nSec-WebSocket-Protocol: other\r\n\r\n", true},
      {"long header", "HTTP/1.1 101 \r\nX: " + std::string(1000, 'x') + "\r\n\r\n", true},
      {"line feed alone", "HTTP/1.1 101 \n\r\n", true},
      {"other status", "HTTP/1.1 200 OK\r\n\r\n", false},
      {"other version", "HTTP/1.0 101 Switching Protocols\r\n\r\n", false},
      {"no number", "HTTP/1.1 abc\r\n\r\n", false},
      {"no line", std::string(300, 'x') + "\r\n\r\n", false},
      {"line of 255 bytes", "HTTP/1.1 101 " + std::string(242, 'x') + "\r\n\r\n", false},
      {"end in the status line", "HTTP/1.1 10", false},
      {"end in the headers", "HTTP/1.1 101 \r\nUpgrade: webs", false},
      {"nothing", "", false},
  };
  for (const Answer& answer : answers) {
    RawServer server([&](RawConnection& connection) {
      connection.readUntil("\r\n\r\n");
      connection.write(answer.bytes);
    });
    EXPECT_EQ(WebSocketClient::fromUrl(urlOf(server.port()), "o") != nullptr, answer.accepted) << answer.name;
  }
}

TEST(Handshake, EndsWhenThePeerResets) {
  for (const char* part : {"", "HTTP/1.1 101 \r\nUpgr"}) {
    RawServer server([&](RawConnection& connection) {
      connection.readUntil("\r\n\r\n");
      connection.write(part);
      connection.reset();
    });
    EXPECT_EQ(WebSocketClient::fromUrl(urlOf(server.port()), "o"), nullptr);
  }
}

TEST(Handshake, LeavesTheBytesBehindItForTheFrames) {
  RawServer server([](RawConnection& connection) {
    connection.readUntil("\r\n\r\n");
    connection.write("HTTP/1.1 101 \r\n\r\n" + frame(1, "early"));
    connection.readAll();
  });
  const Client client = WebSocketClient::fromUrl(urlOf(server.port()), "o");
  ASSERT_NE(client, nullptr);
  std::vector<std::string> messages;
  EXPECT_TRUE(pump(*client, messages, [&] { return !messages.empty(); }));
  EXPECT_EQ(messages, std::vector<std::string>{"early"});
  client->close();
  client->poll(1000);
}

// ---- Sending ----

struct Sent {
  std::size_t size;
  std::string header;
};

TEST(Sending, ChoosesTheShortestLengthAndMasks) {
  const Sent cases[] = {
      {0, std::string("\x81\x80", 2)},
      {125, "\x81\xFD"},
      {126, std::string("\x81\xFE\x00\x7E", 4)},
      {65535, "\x81\xFE\xFF\xFF"},
      {65536, std::string("\x81\xFF\x00\x00\x00\x00\x00\x01\x00\x00", 10)},
  };
  for (const Sent& sent : cases) {
    std::string bytes;
    std::string text(sent.size, 'a');
    for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>('a' + i % 26);
    {
      RawServer server([&](RawConnection& connection) {
        connection.accept();
        bytes = connection.read(sent.header.size() + 4 + sent.size);
        connection.write(frame(1, "got it"));
        connection.readAll();
      });
      const Client client = WebSocketClient::fromUrl(urlOf(server.port()), "o");
      ASSERT_NE(client, nullptr);
      client->sendText(text);
      std::vector<std::string> messages;
      ASSERT_TRUE(pump(*client, messages, [&] { return !messages.empty(); }));
      client->close();
      client->poll(1000);
    }
    EXPECT_EQ(unmasked(bytes, sent.header), text) << sent.size;
  }
}

TEST(Sending, WritesEachKindOfFrame) {
  std::string bytes;
  {
    RawServer server([&](RawConnection& connection) {
      connection.accept();
      connection.write(frame(9, "p") + frame(1, "then"));
      bytes = connection.readAll();
    });
    const Client client = WebSocketClient::fromUrl(urlOf(server.port()), false, "");
    ASSERT_NE(client, nullptr);
    std::vector<std::string> messages;
    client->sendText("t");
    client->sendBinary(std::string("b"));
    client->sendBinary(std::vector<std::uint8_t>{0, 1});
    client->sendPing();
    EXPECT_TRUE(client->hasUnsent());
    EXPECT_TRUE(pump(*client, messages, [&] { return !messages.empty(); }));
    // The pong goes out behind them, the close frame is the last, and once.
    client->close();
    client->close();
    client->sendText("dropped");
    EXPECT_EQ(client->getReadyState(), WebSocketClient::CLOSING);
    client->poll(5000);
    EXPECT_EQ(client->getReadyState(), WebSocketClient::CLOSED);
    client->sendText("dropped too");
  }
  const std::string expected = std::string("\x81\x01t\x82\x01") + "b" +
                               std::string("\x82\x02\x00\x01\x89\x00\x8A\x01p\x88\x80\x00\x00\x00\x00", 15);
  EXPECT_EQ(bytes, expected);
}

// ---- Receiving ----

struct Received {
  const char* name;
  std::string bytes;
  std::vector<std::string> messages;
  WebSocketClient::ReadyState state = WebSocketClient::OPEN;
};

const Received kReceived[] = {
    {"text", frame(1, "a"), {"a"}},
    {"binary and text are told apart by nobody", frame(2, "a") + frame(0, "b"), {"a", "b"}},
    {"empty", frame(1, "") + frame(1, "x"), {"", "x"}},
    {"16-bit length", frame(1, std::string(126, 'm')), {std::string(126, 'm')}},
    {"64-bit length", frame(1, std::string(70000, 'l')), {std::string(70000, 'l')}},
    {"long form of a short length", std::string("\x81\x7E\x00\x01x", 5), {"x"}},
    {"masked", std::string("\x81\x82\x01\x02\x03\x04", 6) + std::string("\x60\x60", 2), {"ab"}},
    {"fragments with a ping between",
     frame(1, "one ", false) + frame(9, "p") + frame(0, "two ", false) + frame(10, "") + frame(0, "three"),
     {"one two three"}},
    {"reserved bits are passed over", "\xF1\x01x", {"x"}},
    {"frame behind a close frame", frame(1, "a") + frame(8, "") + frame(1, "b"), {"a", "b"}, WebSocketClient::CLOSING},
    {"unknown opcode", frame(3, "?") + frame(1, "b"), {"b"}, WebSocketClient::CLOSING},
    {"illegal length",
     frame(1, "a") + std::string("\x81\x7F\x80\x00\x00\x00\x00\x00\x00\x00", 10) + frame(1, "b"),
     {"a"},
     WebSocketClient::CLOSING},
    {"incomplete", frame(1, "a") + std::string("\x81\x05hell"), {"a"}},
};

/// Sends the bytes in pieces of `piece`, then a last message or a close of the case's own.
void receive(const Received& row, std::size_t piece) {
  SCOPED_TRACE(std::string(row.name) + ", pieces of " + std::to_string(piece));
  RawServer server([&](RawConnection& connection) {
    connection.accept();
    for (std::size_t at = 0; at < row.bytes.size(); at += piece) {
      connection.write(std::string_view(row.bytes).substr(at, piece));
      if (piece < 8) std::this_thread::yield();
    }
    connection.readAll();
  });
  const Client client = WebSocketClient::fromUrl(urlOf(server.port()), "o");
  ASSERT_NE(client, nullptr);
  std::vector<std::string> messages;
  EXPECT_TRUE(pump(*client, messages,
                   [&] { return messages.size() >= row.messages.size() && client->getReadyState() == row.state; }));
  EXPECT_EQ(messages, row.messages);
  client->close();
  client->poll(1000);
}

TEST(Receiving, GivesTheMessagesOfAStream) {
  for (const Received& row : kReceived) receive(row, 1000000);
}

TEST(Receiving, GivesTheSameHoweverTheStreamIsCut) {
  for (const Received& row : kReceived) {
    // Once closing, a poll may end the connection before the rest has come.
    if (row.bytes.size() > 1000 || row.state != WebSocketClient::OPEN) continue;
    for (const std::size_t piece : {1U, 2U, 3U, 7U}) receive(row, piece);
  }
}

TEST(Receiving, AnswersPingsWithTheirPayload) {
  std::string pong;
  {
    RawServer server([&](RawConnection& connection) {
      connection.accept();
      connection.write(frame(9, "are you there"));
      pong = connection.read(2 + 4 + 13);
      connection.write(frame(1, "thanks"));
      connection.readAll();
    });
    const Client client = WebSocketClient::fromUrl(urlOf(server.port()), "o");
    ASSERT_NE(client, nullptr);
    std::vector<std::string> messages;
    ASSERT_TRUE(pump(*client, messages, [&] { return !messages.empty(); }));
    EXPECT_EQ(messages, std::vector<std::string>{"thanks"});
    client->close();
    client->poll(1000);
  }
  EXPECT_EQ(unmasked(pong, "\x8A\x8D"), "are you there");
}

TEST(Receiving, NoticesTheEndOfThePeer) {
  for (const bool reset : {false, true}) {
    RawServer server([&](RawConnection& connection) {
      connection.accept();
      connection.write(frame(1, "last"));
      connection.read(1);
      if (reset) connection.reset();
    });
    const Client client = WebSocketClient::fromUrl(urlOf(server.port()), "o");
    ASSERT_NE(client, nullptr);
    std::vector<std::string> messages;
    ASSERT_TRUE(pump(*client, messages, [&] { return !messages.empty(); }));
    client->sendText("go");
    EXPECT_TRUE(pump(*client, messages, [&] { return client->getReadyState() == WebSocketClient::CLOSED; }));
    client->sendText("nobody hears this");
    client->poll(1);
    client->close();
    EXPECT_EQ(client->getReadyState(), WebSocketClient::CLOSED);
  }
}

TEST(Receiving, WakerEndsAPollAtOnce) {
  RawServer server([](RawConnection& connection) {
    connection.accept();
    connection.readAll();
  });
  const Client client = WebSocketClient::fromUrl(urlOf(server.port()), "o");
  ASSERT_NE(client, nullptr);
  zephlinksdk::Waker waker;
  client->wakeBy(&waker);
  std::thread other([&] { waker.wake(); });
  const auto start = std::chrono::steady_clock::now();
  client->poll(20000);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  other.join();
  client->close();
  client->poll(1000);
}

// ---- Against Boost.Beast ----

TEST(Beast, ExchangesMessagesOfEverySize) {
  zephsim::WsServer* running = nullptr;
  std::string protocol;
  zephsim::WsServer server(
      0, {.onUpgrade = [&](zephsim::Connection,
                           const zephsim::Upgrade& upgrade) { protocol = upgrade.field("Sec-WebSocket-Protocol"); },
          .onText = [&](zephsim::Connection from, const std::string& text) { running->send(from, text); }});
  running = &server;
  server.start();
  const Client client = WebSocketClient::fromUrl(urlOf(server.port()), "easywsclient://");
  ASSERT_NE(client, nullptr);
  EXPECT_EQ(protocol, "event-protocol");
  std::vector<std::string> sent;
  for (const std::size_t size : {0, 1, 125, 126, 65535, 65536, 5 * 1024 * 1024}) {
    sent.emplace_back(size, 'z');
    client->sendText(sent.back());
  }
  std::vector<std::string> messages;
  EXPECT_TRUE(pump(*client, messages, [&] { return messages.size() == sent.size(); }));
  EXPECT_TRUE(messages == sent);
  client->close();
  EXPECT_TRUE(pump(*client, messages, [&] { return client->getReadyState() == WebSocketClient::CLOSED; }));
}

TEST(Beast, TakesFragmentsAndAnswersPings) {
  std::mutex mutex;
  std::condition_variable changed;
  std::string pong;
  zephsim::WsServer* running = nullptr;
  zephsim::WsServer server(0, {.onOpen =
                                   [&](zephsim::Connection to) {
                                     running->ping(to, "ping");
                                     running->sendFragments(to, {"a", "", "b", "c"});
                                   },
                               .onPong =
                                   [&](zephsim::Connection, const std::string& payload) {
                                     const std::lock_guard lock(mutex);
                                     pong = payload;
                                     changed.notify_all();
                                   }});
  running = &server;
  server.start();
  const Client client = WebSocketClient::fromUrl(urlOf(server.port()), "o");
  ASSERT_NE(client, nullptr);
  std::vector<std::string> messages;
  EXPECT_TRUE(pump(*client, messages, [&] {
    const std::lock_guard lock(mutex);
    return !messages.empty() && !pong.empty();
  }));
  EXPECT_EQ(messages, std::vector<std::string>{"abc"});
  EXPECT_EQ(pong, "ping");
  client->close();
  EXPECT_TRUE(pump(*client, messages, [&] { return client->getReadyState() == WebSocketClient::CLOSED; }));
}

}  // namespace
}  // namespace tests
