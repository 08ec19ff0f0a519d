#include "simulator/daemon.h"

#include <json/reader.h>
#include <json/writer.h>

#include <cstdio>
#include <memory>

#include "simulator/families.h"
#include "simulator/json.h"

namespace zephsim {
namespace {

constexpr char kSourceTag[] = "zephlink";
constexpr char kSecretMembers[][16] = {"password", "oauth", "token"};

std::string compact(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["emitUTF8"] = true;
  return Json::writeString(builder, value);
}

/// Throws Json::Exception if the text is nested too deeply.
Json::Value parse(const std::string& text) {
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  Json::Value root;
  if (!reader->parse(text.data(), text.data() + text.size(), &root, nullptr)) return Json::nullValue;
  return root;
}

/// Cuts a message off in the middle: its event can be read, but its members cannot be parsed.
std::string garbled(const std::string& text) { return text.substr(0, text.size() - text.size() / 3); }

Json::Value withoutSecrets(Json::Value members) {
  if (!members.isObject()) return members;
  for (const char* secret : kSecretMembers) {
    if (members.isMember(secret)) members[secret] = "***";
  }
  return members;
}

}  // namespace

Daemon::Daemon(const Options& daemonOptions)
    : options(daemonOptions),
      generator(daemonOptions.seed),
      server(daemonOptions.port, {.onOpen = [this](Connection connection) { connections[connection] = 0; },
                                  .onText = [this](Connection from, const std::string& text) { receive(from, text); },
                                  .onClose = [this](Connection connection) { connections.erase(connection); }}) {
  for (const Family family : kFamilies) {
    for (Request& request : family(*this)) requests[request.event] = std::move(request.handle);
  }
}

void Daemon::run() {
  server.onTermination([this] { quit(); });
  server.start();
  ended.get_future().wait();
  server.stop();
}

void Daemon::quit() {
  if (hasEnded) return;
  hasEnded = true;
  ended.set_value();
}

void Daemon::receive(Connection connection, const std::string& text) {
  Json::Value root;
  try {
    root = parse(text);
  } catch (const std::exception&) {
    return;
  }
  if (!root.isArray() || root.size() < 2 || !root[0].isString()) return;
  const std::string event = root[0].asString();
  if (options.print) print('<', event, root[1]);
  if (!count(connection)) return;
  currentRequester = connection;
  dispatch(event, root[1]);
  currentRequester = 0;
}

void Daemon::dispatch(const std::string& event, const Json::Value& members) {
  if (options.refused.count(event)) return refuse(event, {Fault::Locked, "The setting is locked"});
  const auto found = requests.find(event);
  if (found == requests.end()) {
    if (options.print) print('?', event, members);
    return;
  }
  try {
    found->second(*this, members);
  } catch (const Refusal& refusal) {
    refuse(event, refusal);
  } catch (const Json::Exception&) {  // members of a wrong type
    refuse(event, {Fault::InvalidArgument, "The request is not understood"});
  }
}

void Daemon::report(const char* event, const Json::Value& data) { send(event, data, 1); }

void Daemon::flood(const char* event, const Json::Value& data) { send(event, data, options.flood); }

void Daemon::send(const char* event, const Json::Value& data, std::uint32_t times) {
  if (options.silent) return;
  const std::string whole = compact(array({event, data, kSourceTag}));
  const std::string text = options.garble ? garbled(whole) : whole;
  for (std::uint32_t i = 0; i < times; ++i) {
    if (options.print) print('>', event, data);
    deliverInTime(text);
  }
}

void Daemon::fault(const char* event, Fault code, const std::string& text, Json::Value members) {
  members["type"] = static_cast<int>(code);
  members["msg"] = text;
  report(event, members);
}

void Daemon::refuse(const std::string& setting, const Refusal& refusal) {
  fault("report_settings_error", refusal.fault, refusal.text, object({{"setting", setting}}));
}

void Daemon::deliverInTime(const std::string& text) {
  if (options.delay.count() == 0) return deliver(text);
  server.after(options.delay, [this, text] { deliver(text); });
}

void Daemon::deliver(const std::string& text) {
  std::vector<Connection> open;
  for (const auto& [connection, messages] : connections) open.push_back(connection);
  for (const Connection connection : open) {
    server.send(connection, text);
    count(connection);
  }
}

/// Returns false once the connection has reached its number of messages; it is then ended after the queued messages.
bool Daemon::count(Connection connection) {
  const std::uint32_t messages = ++connections[connection];
  if (options.dropAfter != 0 && messages >= options.dropAfter) {
    server.drop(connection);
    return false;
  }
  if (options.closeAfter != 0 && messages >= options.closeAfter) {
    server.close(connection);
    return false;
  }
  return true;
}

void Daemon::print(char direction, const std::string& event, const Json::Value& members) const {
  const Json::Value shown = options.printSecrets ? members : withoutSecrets(members);
  std::printf("%c %s %s\n", direction, event.c_str(), compact(shown).c_str());
  std::fflush(stdout);
}

void Daemon::after(std::chrono::milliseconds delay, std::function<void()> task) {
  server.after(options.fast ? delay / 10 : delay, std::move(task));
}

void Daemon::every(std::chrono::milliseconds period, std::function<void()> task) {
  after(period, [this, period, task = std::move(task)]() mutable {
    task();
    every(period, std::move(task));
  });
}

double Daemon::random(double low, double high) { return std::uniform_real_distribution<double>(low, high)(generator); }

}  // namespace zephsim
