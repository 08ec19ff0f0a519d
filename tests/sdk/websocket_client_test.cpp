// The WebSocket client with Boost.Beast, and with raw sockets for data that a WebSocket server must not send.
#include "sdk/link/websocket_client.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <stdexcept>
#include <thread>

#include "platform/waker.h"
#include "simulator/ws_server.h"
#include "tests/sdk/raw_server.h"

namespace tests {
namespace {

using zephlinksdk::WebSocketClient;

const std::string kAccepted = "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\n\r\n";

std::string urlOf(std::uint16_t port, const std::string& path = "/") {
  return "ws://127.0.0.1:" + std::to_string(port) + path;
}

/// A connected client and its received messages.
struct Connected {
  std::unique_ptr<WebSocketClient> client;
  std::vector<std::string> messages;

  explicit Connected(std::uint16_t port, bool masked = true)
      : client(WebSocketClient::fromUrl(urlOf(port), masked, "origin")) {
    if (client == nullptr) throw std::runtime_error("no upgrade");
  }

  /// Polls until `done`, at most 20 seconds.
  template <class Done>
  bool pumpUntil(Done done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!done()) {
      if (std::chrono::steady_clock::now() > end) return false;
      client->poll(50);
      client->dispatch([&](const std::string& message) { messages.push_back(message); });
    }
    return true;
  }

  bool pumpUntilClosed() {
    return pumpUntil([&] { return client->getReadyState() == WebSocketClient::CLOSED; });
  }
};

/// A client of a raw server that sends `greeting` together with the answer to the upgrade, then runs `script`.
class Session {
 public:
  using Script = std::function<std::string(RawConnection&)>;

  explicit Session(const std::string& greeting, const Script& script = readAll, bool masked = true)
      : server(std::in_place,
               [this, greeting, script](RawConnection& connection) {
                 readRequest(connection);
                 connection << kAccepted + greeting;
                 received = script(connection);
               }),
        connected(server->port(), masked) {}

  Connected* operator->() { return &connected; }
  WebSocketClient& client() { return *connected.client; }

  /// Closes the connection. Returns the result of the script.
  std::string end() {
    client().close();
    EXPECT_TRUE(connected.pumpUntilClosed());
    server.reset();
    return received;
  }

 private:
  std::string received;
  std::optional<RawServer> server;
  Connected connected;
};

/// Returns a frame from a server.
std::string frame(unsigned opcode, const std::string& payload, bool fin = true) {
  std::string bytes(1, static_cast<char>((fin ? 0x80U : 0U) | opcode));
  const int lengthBytes = payload.size() < 126 ? 0 : payload.size() < 65536 ? 2 : 8;
  bytes += static_cast<char>(lengthBytes == 0 ? payload.size() : lengthBytes == 2 ? 126U : 127U);
  for (int i = lengthBytes - 1; i >= 0; --i) bytes += static_cast<char>(payload.size() >> static_cast<unsigned>(8 * i));
  return bytes + payload;
}

// ---- The handshake ----

TEST(Handshake, SendsTheExactBytes) {
  const struct {
    const char* path;
    const char* origin;
    const char* requestLine;
    const char* originLine;
  } rows[] = {{"/some/path", "easywsclient://", "GET /some/path HTTP/1.1\r\n", "Origin: easywsclient://\r\n"},
              {"/", "", "GET / HTTP/1.1\r\n", ""},
              {"", "", "GET / HTTP/1.1\r\n", ""}};
  for (const auto& row : rows) {
    std::string request;
    auto server = std::make_unique<RawServer>([&](RawConnection& connection) {
      request = readRequest(connection);
      connection << kAccepted;
    });
    const std::string port = std::to_string(server->port());
    EXPECT_NE(WebSocketClient::fromUrl("ws://127.0.0.1:" + port + row.path, row.origin), nullptr);
    server.reset();
    EXPECT_EQ(request, row.requestLine + ("Host: 127.0.0.1:" + port) +
                           "\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n" + row.originLine +
                           "Sec-WebSocket-Key: q7ZPmV2sT0dWc8LhE4nYfA==\r\nSec-WebSocket-Version: 13\r\n"
                           "Sec-WebSocket-Protocol: event-protocol\r\n\r\n");
  }
}

TEST(Handshake, BoundsUrlAndOrigin) {
  const auto attempt = [](std::size_t urlSize, std::size_t originSize) {
    RawServer server([](RawConnection& connection) {
      readRequest(connection);
      connection << kAccepted;
    });
    std::string url = urlOf(server.port());
    url.resize(urlSize, 'p');
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

TEST(Handshake, ChecksTheStatusLineOnly) {
  const struct {
    const char* name;
    std::string bytes;
    bool accepted;
    bool resets = false;
  } answers[] = {
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
      {"reset in the headers", "HTTP/1.1 101 \r\nUpgr", false, true},
      {"reset", "", false, true},
  };
  for (const auto& answer : answers) {
    RawServer server([&](RawConnection& connection) {
      readRequest(connection);
      connection << answer.bytes;
      if (answer.resets) reset(connection);
    });
    EXPECT_EQ(WebSocketClient::fromUrl(urlOf(server.port()), "o") != nullptr, answer.accepted) << answer.name;
  }
}

// ---- Sending ----

TEST(Sending, ChoosesTheShortestLengthAndMasks) {
  const struct {
    std::size_t size;
    std::string header;
  } rows[] = {
      {0, std::string("\x81\x80", 2)},
      {125, "\x81\xFD"},
      {126, std::string("\x81\xFE\x00\x7E", 4)},
      {65535, "\x81\xFE\xFF\xFF"},
      {65536, std::string("\x81\xFF\x00\x00\x00\x00\x00\x01\x00\x00", 10)},
  };
  const std::string key = "\x5B\xC3\x1E\xA7";
  for (const auto& row : rows) {
    std::string text;
    std::string masked;
    for (std::size_t i = 0; i < row.size; ++i) {
      text += static_cast<char>('a' + i % 26);
      masked += static_cast<char>(text[i] ^ key[i % 4]);
    }
    Session session("");
    session.client().sendText(text);
    EXPECT_EQ(session.end(), row.header + key + masked + std::string("\x88\x80\x00\x00\x00\x00", 6)) << row.size;
  }
}

TEST(Sending, WritesEachKindOfFrame) {
  Session session(frame(9, "p") + frame(1, "then"), readAll, false);
  WebSocketClient& client = session.client();
  client.sendText("t");
  client.sendBinary(std::string("b"));
  client.sendBinary(std::vector<std::uint8_t>{0, 1});
  client.sendPing();
  EXPECT_TRUE(client.hasUnsent());
  EXPECT_TRUE(session->pumpUntil([&] { return !session->messages.empty(); }));
  // The pong is sent after them; one close frame is the last.
  client.close();
  client.sendText("dropped");
  EXPECT_EQ(client.getReadyState(), WebSocketClient::CLOSING);
  const std::string expected = std::string("\x81\x01t\x82\x01") + "b" +
                               std::string("\x82\x02\x00\x01\x89\x00\x8A\x01p\x88\x80\x00\x00\x00\x00", 15);
  EXPECT_EQ(session.end(), expected);
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

void expectReceived(Session& session, const Received& row) {
  EXPECT_TRUE(session->pumpUntil([&] {
    return session->messages.size() >= row.messages.size() && session.client().getReadyState() == row.state;
  }));
  EXPECT_EQ(session->messages, row.messages);
}

TEST(Receiving, DeliversMessagesThatArriveWithTheHandshake) {
  for (const Received& row : kReceived) {
    SCOPED_TRACE(row.name);
    Session session(row.bytes);
    expectReceived(session, row);
    session.end();
  }
}

TEST(Receiving, DeliversTheSameHoweverTheStreamIsSplit) {
  for (const Received& row : kReceived) {
    // Once closing, a poll may end the connection before the rest has arrived.
    if (row.bytes.size() > 1000 || row.state != WebSocketClient::OPEN) continue;
    for (const std::size_t piece : {1U, 2U, 3U, 7U}) {
      SCOPED_TRACE(std::string(row.name) + ", pieces of " + std::to_string(piece));
      Session session("", [&](RawConnection& connection) {
        for (std::size_t at = 0; at < row.bytes.size(); at += piece) {
          connection << row.bytes.substr(at, piece);
          std::this_thread::yield();
        }
        return readAll(connection);
      });
      expectReceived(session, row);
      session.end();
    }
  }
}

TEST(Receiving, DetectsTheEndOfThePeer) {
  for (const bool resets : {false, true}) {
    SCOPED_TRACE(resets);
    Session session(frame(1, "last"), [&](RawConnection& connection) {
      connection.ignore(1);
      if (resets) reset(connection);
      return "";
    });
    ASSERT_TRUE(session->pumpUntil([&] { return !session->messages.empty(); }));
    session.client().sendText("go");
    EXPECT_TRUE(session->pumpUntilClosed());
    session.client().sendText("nobody hears this");
    session.client().poll(1);
    session.client().close();
    EXPECT_EQ(session.client().getReadyState(), WebSocketClient::CLOSED);
  }
}

TEST(Receiving, WakerEndsAPollAtOnce) {
  Session session("");
  zephlinksdk::Waker waker;
  session.client().wakeBy(&waker);
  std::thread other([&] { waker.wake(); });
  const auto start = std::chrono::steady_clock::now();
  session.client().poll(20000);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  other.join();
  session.end();
}

// ---- Against Boost.Beast ----

TEST(Beast, ExchangesMessagesOfEverySize) {
  zephsim::WsServer* running = nullptr;
  std::string protocol;
  zephsim::WsHandlers handlers;
  handlers.onUpgrade = [&](zephsim::Connection, const zephsim::Upgrade& upgrade) {
    protocol = upgrade.field("Sec-WebSocket-Protocol");
  };
  handlers.onText = [&](zephsim::Connection from, const std::string& text) { running->send(from, text); };
  zephsim::WsServer server(nextPort(), handlers);
  running = &server;
  server.start();
  Connected connected(server.port());
  EXPECT_EQ(protocol, "event-protocol");
  std::vector<std::string> sent;
  for (const std::size_t size : {0U, 1U, 125U, 126U, 65535U, 65536U, 5U * 1024 * 1024}) {
    connected.client->sendText(sent.emplace_back(size, 'z'));
  }
  EXPECT_TRUE(connected.pumpUntil([&] { return connected.messages.size() == sent.size(); }));
  EXPECT_TRUE(connected.messages == sent);
  connected.client->close();
  EXPECT_TRUE(connected.pumpUntilClosed());
}

TEST(Beast, AcceptsFragmentsAndAnswersPings) {
  Watched<std::string> pong;
  zephsim::WsServer* running = nullptr;
  zephsim::WsHandlers handlers;
  handlers.onOpen = [&](zephsim::Connection to) {
    running->ping(to, "are you there");
    running->sendFragments(to, {"a", "", "b", "c"});
  };
  handlers.onPong = [&](zephsim::Connection, const std::string& payload) {
    pong.change([&](std::string& received) { received = payload; });
  };
  zephsim::WsServer server(nextPort(), handlers);
  running = &server;
  server.start();
  Connected connected(server.port());
  EXPECT_TRUE(connected.pumpUntil([&] { return !connected.messages.empty() && !pong.get().empty(); }));
  EXPECT_EQ(connected.messages, std::vector<std::string>{"abc"});
  EXPECT_EQ(pong.get(), "are you there");
  connected.client->close();
  EXPECT_TRUE(connected.pumpUntilClosed());
}

}  // namespace
}  // namespace tests
