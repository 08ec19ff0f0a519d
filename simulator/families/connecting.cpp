// The tunnel's state.
#include "simulator/families.h"

namespace zephsim {
namespace {

void reportState(Daemon& daemon, const Json::Value&) {
  Json::Value data(Json::objectValue);
  data["state"] = static_cast<int>(daemon.world.state);
  daemon.report("report_current_state", data);
}

}  // namespace

std::vector<Request> connectingFamily(Daemon&) {
  return {
      {"request_current_state", reportState},
  };
}

}  // namespace zephsim
