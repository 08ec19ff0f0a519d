// The simulated daemon: passes each request to the family that handles it, and sends reports to all connections.
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

/// The members of a request are an object, or null if the request has none.
using RequestHandler = std::function<void(Daemon&, const Json::Value& members)>;

/// A row of a family's table.
struct Request {
  std::string event;
  RequestHandler handle;
};

/// Error codes of the daemon.
enum class Fault {
  Network = 1,
  Credentials = 3,
  Directory = 4,
  Account = 5,
  OAuthExpired = 7,
  Locked = 11,
  InvalidArgument = 13,
};

/// Thrown by a handler: the request is answered by a settings error with the request's name.
struct Refusal {
  Fault fault;
  std::string text;
};

/// Makes a handler of a method of a family that has state.
template <typename State>
RequestHandler method(std::shared_ptr<State> state, void (State::*handle)(const Json::Value& members)) {
  return [state, handle](Daemon&, const Json::Value& members) { ((*state).*handle)(members); };
}

class Daemon {
 public:
  /// Binds the port. Throws `std::runtime_error` if it is not available.
  explicit Daemon(const Options& options);

  std::uint16_t port() const { return server.port(); }
  /// Serves until an `exit` request or a termination signal.
  void run();

  // For the families.

  /// Sends a report to all connections.
  void report(const char* event, const Json::Value& data);
  /// Sends a report as often as `--flood` specifies; not at all without it.
  void flood(const char* event, const Json::Value& data);
  void report(const Record& record) { report(record.report, record.value); }
  /// Reports an error event: `type`, `msg` and the given `members`.
  void fault(const char* event, Fault code, const std::string& text, Json::Value members = Json::objectValue);
  /// Runs `task` after `delay`; with `--fast`, after a tenth of it.
  void after(std::chrono::milliseconds delay, std::function<void()> task);
  /// Runs `task` repeatedly, first after `period`.
  void every(std::chrono::milliseconds period, std::function<void()> task);
  /// Returns a random number from `low` to `high`.
  double random(double low, double high);
  bool chance(double probability) { return random(0, 1) < probability; }
  /// The connection that sent the current request.
  Connection requester() const { return currentRequester; }
  bool isConnected(Connection connection) const { return connections.count(connection) != 0; }
  void quit();

  World world;

 private:
  void receive(Connection connection, const std::string& text);
  void refuse(const std::string& setting, const Refusal& refusal);
  void dispatch(const std::string& event, const Json::Value& members);
  void send(const char* event, const Json::Value& data, std::uint32_t times);
  void deliverInTime(const std::string& text);
  void deliver(const std::string& text);
  bool count(Connection connection);
  void print(char direction, const std::string& event, const Json::Value& members) const;

  const Options options;
  std::map<std::string, RequestHandler> requests;
  std::map<Connection, std::uint32_t> connections;  ///< with the number of messages of each, received and sent
  Connection currentRequester = 0;
  std::promise<void> ended;
  bool hasEnded = false;
  std::mt19937 generator;
  WsServer server;  ///< last member: its thread ends before the members that it uses
};

}  // namespace zephsim
