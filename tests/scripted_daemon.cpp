#include "tests/scripted_daemon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace tests {

namespace {

constexpr const char* kHello = R"(["set_app_name",{"name":"Zephlink"},"zephlink_sdk"])";

}  // namespace

std::string event(const std::string& name, const std::string& data) {
  return "[\"" + name + "\"," + data + ",\"daemon\"]";
}

ScriptedDaemon::ScriptedDaemon(Answers script, std::uint16_t port)
    : answers(std::move(script)),
      server(port, {.onOpen = [this](zephsim::Connection) { connections.change([](std::size_t& count) { ++count; }); },
                    .onText = [this](zephsim::Connection from, const std::string& text) { onText(from, text); }}) {
  server.start();
}

void ScriptedDaemon::onText(zephsim::Connection connection, const std::string& text) {
  EXPECT_TRUE(text.ends_with('\n')) << text;
  const std::string request = text.substr(0, text.size() - 1);
  if (request != kHello) requests.change([&](auto& received) { received.push_back(request); });
  const auto answer = answers.find(request.substr(2, request.find('"', 2) - 2));
  if (answer == answers.end()) return;
  for (const std::string& report : answer->second) server.send(connection, report);
}

bool ScriptedDaemon::waitForRequests(std::size_t count) {
  return requests.waitUntil([&](const auto& received) { return received.size() >= count; });
}

bool ScriptedDaemon::waitForConnections(std::size_t count) {
  return connections.waitUntil([&](std::size_t opened) { return opened >= count; });
}

bool ScriptedDaemon::waitForRequest(const std::string& text, std::ptrdiff_t times) {
  return requests.waitUntil([&](const auto& received) { return std::ranges::count(received, text) >= times; });
}

}  // namespace tests
