// The state that more than one family of the simulated daemon uses.
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

/// A record in its wire format, and the name of its report.
struct Record {
  const char* report;
  Json::Value value = Json::objectValue;
};

using SharedRecord = std::shared_ptr<Record>;

struct World {
  TunnelState state = TunnelState::LoggedOut;
  std::uint64_t moves = 0;  ///< counts changes of `state`, so that a delayed step can detect that it is obsolete
  Json::Value server;       ///< server of the tunnel; null without a tunnel
  Json::Value lastServer;
  std::uint64_t sessions = 0;      ///< number of tunnels so far
  std::int64_t sessionStart = 0;   ///< seconds since the epoch, 0 without a tunnel
  std::uint64_t bytesThrough = 0;  ///< of all tunnels, both directions

  SharedRecord lastDisconnect = std::make_shared<Record>(Record{"report_disconnect_reason"});
  SharedRecord settings = std::make_shared<Record>(Record{"report_connection_settings"});
  SharedRecord adapters = std::make_shared<Record>(Record{"report_networks", Json::arrayValue});

  bool isConnected() const { return state == TunnelState::Connected; }
  bool isLoggedIn() const { return state != TunnelState::LoggedOut && state != TunnelState::LoggingIn; }
  /// Returns the adapter with that id, or null.
  Json::Value* adapter(const std::string& id);
};

}  // namespace zephsim
