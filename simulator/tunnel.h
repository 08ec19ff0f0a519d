// How the tunnel's state moves, for all families that move it.
#pragma once

#include <chrono>
#include <functional>

#include "simulator/daemon.h"

namespace zephsim {

void reportState(Daemon& daemon);
/// Takes the state and says it.
void moveTo(Daemon& daemon, TunnelState state);
/// Runs `task` after `delay`, unless the state has moved meanwhile.
void unlessMoved(Daemon& daemon, std::chrono::milliseconds delay, std::function<void()> task);

/// A tunnel to `server`, said and entered into at once.
void beginSession(Daemon& daemon, const Json::Value& server);
/// Takes down the tunnel or the attempt at one, over a short time, then runs `task`; at once if there is none.
/// `reason` is remembered as the last disconnect if there was a tunnel.
void leaveTunnel(Daemon& daemon, const char* reason, std::function<void()> task);

}  // namespace zephsim
