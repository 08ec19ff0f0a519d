// Changes of the tunnel's state, for all families.
#pragma once

#include <chrono>
#include <functional>

#include "simulator/daemon.h"

namespace zephsim {

void reportState(Daemon& daemon);
/// Sets the state and reports it.
void moveTo(Daemon& daemon, TunnelState state);
/// Runs `task` after `delay`, unless the state has changed in the meantime.
void unlessMoved(Daemon& daemon, std::chrono::milliseconds delay, std::function<void()> task);

/// Starts a session with `server` at once and reports it.
void beginSession(Daemon& daemon, const Json::Value& server);
/// Takes down the tunnel, or the attempt to open one, within a short time and then runs `task`; at once if there is no
/// tunnel. If there was a tunnel, stores `reason` as the last disconnect reason.
void leaveTunnel(Daemon& daemon, const char* reason, std::function<void()> task);

}  // namespace zephsim
