// What the simulated daemon knows: the state that more than one family reads.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <memory>
#include <string>

namespace zephsim {

enum class TunnelState {
  LoggedOut,
  LoggingIn,
  LoggedIn,
  AutoConnecting,
  Connecting,
  Disconnecting,
  Connected,
  Overlimit,
};

/// A record in the form that it has on the wire, and the report that says it.
struct Record {
  const char* report;
  Json::Value value = Json::objectValue;
};

using SharedRecord = std::shared_ptr<Record>;

struct World {
  TunnelState state = TunnelState::LoggedOut;
  std::uint64_t moves = 0;  ///< changes of `state`, so that a step that has been overtaken can tell
  Json::Value server;       ///< where the tunnel ends; null without a tunnel
  Json::Value lastServer;
  std::uint64_t sessions = 0;      ///< tunnels so far
  std::int64_t sessionStart = 0;   ///< seconds since the epoch, 0 without a tunnel
  std::uint64_t bytesThrough = 0;  ///< of all tunnels, both ways

  SharedRecord lastDisconnect = std::make_shared<Record>(Record{"report_disconnect_reason"});
  SharedRecord settings = std::make_shared<Record>(Record{"report_connection_settings"});
  SharedRecord adapters = std::make_shared<Record>(Record{"report_networks", Json::arrayValue});

  bool isConnected() const { return state == TunnelState::Connected; }
  bool isLoggedIn() const { return state != TunnelState::LoggedOut && state != TunnelState::LoggingIn; }
  /// The adapter of that id, or null.
  Json::Value* adapter(const std::string& id);
};

}  // namespace zephsim
