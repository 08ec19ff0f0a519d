#include "simulator/tunnel.h"

#include <ctime>

#include "simulator/json.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;

void endSession(World& world, const char* reason) {
  const std::int64_t now = std::time(nullptr);
  world.lastDisconnect->value = object({{"disconnectReason", reason},
                                        {"sessionEnd", Json::Int64{now}},
                                        {"sessionLength", Json::Int64{now - world.sessionStart}}});
  world.server = Json::nullValue;
  world.sessionStart = 0;
}

}  // namespace

void reportState(Daemon& daemon) {
  daemon.report("report_current_state", object({{"state", static_cast<int>(daemon.world.state)}}));
}

void moveTo(Daemon& daemon, TunnelState state) {
  daemon.world.state = state;
  ++daemon.world.moves;
  reportState(daemon);
}

void unlessMoved(Daemon& daemon, std::chrono::milliseconds delay, std::function<void()> task) {
  daemon.after(delay, [&daemon, moves = daemon.world.moves, task = std::move(task)] {
    if (daemon.world.moves == moves) task();
  });
}

void beginSession(Daemon& daemon, const Json::Value& server) {
  World& world = daemon.world;
  world.server = server;
  world.lastServer = server;
  world.sessionStart = std::time(nullptr);
  ++world.sessions;
  daemon.report("report_connected_server", server);
  moveTo(daemon, TunnelState::Connected);
}

void leaveTunnel(Daemon& daemon, const char* reason, std::function<void()> task) {
  switch (daemon.world.state) {
    case TunnelState::AutoConnecting:
    case TunnelState::Connecting:
      break;
    case TunnelState::Connected:
      endSession(daemon.world, reason);
      break;
    default:
      return task();
  }
  moveTo(daemon, TunnelState::Disconnecting);
  unlessMoved(daemon, 400ms, std::move(task));
}

}  // namespace zephsim
