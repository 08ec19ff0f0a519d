// The daemon as a program: version, names of clients, shutdown.
#include "simulator/families.h"

namespace zephsim {
namespace {

void reportVersion(Daemon& daemon, const Json::Value&) {
  Json::Value data(Json::objectValue);
  data["maj"] = 14;
  data["min"] = 9;
  data["bug"] = 1;
  data["build"] = 12483;
  daemon.report("report_version_data", data);
}

}  // namespace

std::vector<Request> daemonControlFamily(Daemon&) {
  return {
      {"set_app_name", [](Daemon&, const Json::Value&) {}},
      {"request_version_data", reportVersion},
      {"exit", [](Daemon& daemon, const Json::Value&) { daemon.quit(); }},
  };
}

}  // namespace zephsim
