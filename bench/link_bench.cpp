// Benchmarks the stages of one request separately.
#include <benchmark/benchmark.h>

#include <string>

#include "sdk/link/json.h"
#include "sdk/link/websocket_client.h"
#include "simulator/ws_server.h"

namespace {

using zephlinksdk::WebSocketClient;

/// Receives messages of `size` bytes through socket, buffers and frames.
void ReceiveMessages(benchmark::State& state) {
  constexpr int kBatch = 256;
  const std::string message(static_cast<std::size_t>(state.range(0)), 'm');
  zephsim::WsServer* running = nullptr;
  zephsim::WsServer server(0, {.onText = [&](zephsim::Connection to, const std::string&) {
                             for (int i = 0; i < kBatch; ++i) running->send(to, message);
                           }});
  running = &server;
  server.start();
  const auto client = WebSocketClient::fromUrl("ws://127.0.0.1:" + std::to_string(server.port()) + "/", "");
  for (auto _ : state) {
    client->sendText("more");
    int received = 0;
    while (received < kBatch) {
      client->poll(100);
      client->dispatch([&received](const std::string&) { ++received; });
    }
  }
  state.SetBytesProcessed(state.iterations() * kBatch * state.range(0));
}
BENCHMARK(ReceiveMessages)->Arg(64)->Arg(2048)->Arg(65536)->UseRealTime();

void ParseShortReport(benchmark::State& state) {
  const std::string text = R"(["report_current_state",{"state":6},"daemon"])";
  zephlinksdk::JsonParser parser;
  for (auto _ : state) {
    Json::Value root;
    std::string errors;
    benchmark::DoNotOptimize(parser.parse(text, root, errors));
  }
}
BENCHMARK(ParseShortReport);

}  // namespace
