// The simulated daemon: it hears requests, hands each to the family that knows it, and says reports to everybody.
// Everything here runs on the server's thread, so families need no locks.
#pragma once

#include <json/value.h>

#include <chrono>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "simulator/options.h"
#include "simulator/world.h"
#include "simulator/ws_server.h"

namespace zephsim {

class Daemon;

/// The members of a request are an object, or null when the request has none.
using RequestHandler = std::function<void(Daemon&, const Json::Value& members)>;

/// A row of a family's table.
struct Request {
  std::string event;
  RequestHandler handle;
};

/// Codes of the errors that a daemon reports.
enum class Fault {
  Network = 1,
  Credentials = 3,
  Directory = 4,
  Account = 5,
  OAuthExpired = 7,
  Locked = 11,
  InvalidArgument = 13,
};

/// Thrown by a handler: the request is answered by a settings error that names it.
struct Refusal {
  Fault fault;
  std::string text;
};

/// A handler that is a method of a family with state of its own.
template <typename State>
RequestHandler method(std::shared_ptr<State> state, void (State::*handle)(const Json::Value& members)) {
  return [state, handle](Daemon&, const Json::Value& members) { ((*state).*handle)(members); };
}

class Daemon {
 public:
  /// Takes the port; throws `std::runtime_error` if it can't be had.
  explicit Daemon(const Options& options);

  std::uint16_t port() const { return server.port(); }
  /// Serves until `exit` is heard or the process is told to end.
  void run();

  // For the families.

  /// Says a report to all connections.
  void report(const char* event, const Json::Value& data);
  /// Says a report as often as `--flood` tells, not at all without it.
  void flood(const char* event, const Json::Value& data);
  void report(const Record& record) { report(record.report, record.value); }
  /// `report` of an error event: `type` and `msg`, and what else `members` holds.
  void fault(const char* event, Fault code, const std::string& text, Json::Value members = Json::objectValue);
  /// Runs `task` later; what takes time takes a tenth of it with `--fast`.
  void after(std::chrono::milliseconds delay, std::function<void()> task);
  /// Runs `task` again and again, the first time after `period`.
  void every(std::chrono::milliseconds period, std::function<void()> task);
  /// A number from `low` to `high`, at random.
  double random(double low, double high);
  bool chance(double probability) { return random(0, 1) < probability; }
  /// Of whom the request now in hand comes.
  Connection asker() const { return currentAsker; }
  bool isConnected(Connection connection) const { return connections.count(connection) != 0; }
  void quit();

  World world;

 private:
  void hear(Connection connection, const std::string& text);
  void refuse(const std::string& setting, const Refusal& refusal);
  void dispatch(const std::string& event, const Json::Value& members);
  void say(const char* event, const Json::Value& data, std::uint32_t times);
  void deliverInTime(const std::string& text);
  void deliver(const std::string& text);
  bool count(Connection connection);
  void print(char direction, const std::string& event, const Json::Value& members) const;

  const Options options;
  std::map<std::string, RequestHandler> requests;
  std::map<Connection, std::uint32_t> connections;  ///< and the messages of each, heard and said
  Connection currentAsker = 0;
  std::promise<void> ended;
  bool hasEnded = false;
  std::mt19937 generator;
  WsServer server;  ///< last, so that its thread ends before what it works on
};

}  // namespace zephsim
