// What the simulated daemon knows: the state that more than one family reads.
#pragma once

#include <json/value.h>

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

/// Records that go out as they stand are kept in the form they have on the wire.
struct World {
  TunnelState state = TunnelState::LoggedOut;
};

}  // namespace zephsim
