#include "tests/scripted_daemon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace tests {

namespace {

constexpr std::chrono::seconds kPatience{30};
constexpr const char* kHello = R"(["set_app_name",{"name":"Zephlink"},"zephlink_sdk"])";

}  // namespace

std::string event(const std::string& name, const std::string& data) {
  return "[\"" + name + "\"," + data + ",\"daemon\"]";
}

ScriptedDaemon::ScriptedDaemon(Answers script)
    : answers(std::move(script)),
      server(0, {.onOpen =
                     [this](zephsim::Connection) {
                       const std::lock_guard lock(mutex);
                       ++connections;
                       changed.notify_all();
                     },
                 .onText = [this](zephsim::Connection from, const std::string& text) { onText(from, text); }}) {
  server.start();
}

ScriptedDaemon::~ScriptedDaemon() { server.stop(); }

void ScriptedDaemon::onText(zephsim::Connection connection, const std::string& text) {
  EXPECT_TRUE(text.ends_with('\n')) << text;
  const std::string request = text.substr(0, text.size() - 1);
  if (request != kHello) {
    const std::lock_guard lock(mutex);
    requests.push_back(request);
    changed.notify_all();
  }
  const std::string name = request.substr(2, request.find('"', 2) - 2);
  const auto answer = answers.find(name);
  if (answer == answers.end()) return;
  for (const std::string& report : answer->second) server.send(connection, report);
}

std::vector<std::string> ScriptedDaemon::heard() {
  const std::lock_guard lock(mutex);
  return requests;
}

bool ScriptedDaemon::waitForRequests(std::size_t count) {
  std::unique_lock lock(mutex);
  return changed.wait_for(lock, kPatience, [&] { return requests.size() >= count; });
}

bool ScriptedDaemon::waitForRequest(const std::string& text) {
  std::unique_lock lock(mutex);
  return changed.wait_for(lock, kPatience,
                          [&] { return std::find(requests.begin(), requests.end(), text) != requests.end(); });
}

bool ScriptedDaemon::waitForConnections(std::size_t count) {
  std::unique_lock lock(mutex);
  return changed.wait_for(lock, kPatience, [&] { return connections >= count; });
}

}  // namespace tests
