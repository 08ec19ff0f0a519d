// The settings of the whole tunnel.
#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"

namespace zephsim {
namespace {

constexpr Json::ArrayIndex kMaxPorts = 20;
constexpr Json::ArrayIndex kMaxSubnets = 10;

Json::Value defaultSettings() {
  return object({{"jumbo_packets", false},
                 {"encrypted", true},
                 {"allow_chacha_encryption", true},
                 {"algorithm", "SP"},
                 {"startup_connect", false},
                 {"transport_mode", "auto"},
                 {"forward_ports", array({})},
                 {"downstream_subnets", array({})},
                 {"perconn_encryption", false},
                 {"perconn_encryption_settings", object({})},
                 {"perconn_dscp_expose", object({{"eth0", true}})},
                 {"parallel_sockets", object({{"eth0", 4}, {"wlan0", 2}})},
                 {"connection_secondary_speed_activation", 8.0},
                 {"connection_priority_overflow_treshold", 12.5},
                 {"packet_aggregation", true},
                 {"enable_default_route", true},
                 {"header_compress", true},
                 {"language", "en"},
                 {"enable_automatic_priority", true},
                 {"ulp_report_interval_seconds", 60},
                 {"max_redundant", 2},
                 {"maximum_connect_retry", 30},
                 {"maximum_transport_retry", 10},
                 {"packet_pool_size", "large"},
                 {"num_target_connections", object({{"upload", 3}, {"download", 3}})}});
}

/// With a `guid`, sets the encryption of one adapter, otherwise that of the tunnel.
void setEncryption(Daemon& daemon, const Json::Value& members) {
  Json::Value& settings = daemon.world.settings->value;
  const bool enable = requiredBool(members, "enable");
  if (members.isMember("guid")) {
    const std::string id = requiredText(members, "guid");
    if (!daemon.world.adapter(id)) throw Refusal{Fault::InvalidArgument, "There is no such adapter"};
    settings["perconn_encryption"] = true;
    settings["perconn_encryption_settings"][id] = enable;
  } else {
    settings["encrypted"] = enable;
  }
  daemon.report(*daemon.world.settings);
}

void setTargetConnections(Daemon& daemon, const Json::Value& members) {
  daemon.world.settings->value["num_target_connections"] = object(
      {{"upload", required(members, "upload", Kind::Whole)}, {"download", required(members, "download", Kind::Whole)}});
  daemon.report(*daemon.world.settings);
}

void refuseLocked(Daemon&, const Json::Value&) {
  throw Refusal{Fault::Locked, "The default route is set by the server's configuration"};
}

}  // namespace

std::vector<Request> settingsFamily(Daemon& daemon) {
  const SharedRecord settings = daemon.world.settings;
  settings->value = defaultSettings();
  return {
      {"request_connection_settings", reportRecord(settings)},
      {"set_encryption_enabled", setEncryption},
      {"set_dev_jumbo_packets", setMember(settings, "enable", "jumbo_packets", Kind::Bool)},
      {"set_packet_aggregation", setMember(settings, "enable", "packet_aggregation", Kind::Bool)},
      {"set_header_compression", setMember(settings, "enable", "header_compress", Kind::Bool)},
      {"set_startup_connect", setMember(settings, "connect", "startup_connect", Kind::Bool)},
      {"set_connection_enable_default_route", refuseLocked},
      {"set_connection_algorithm", setWord(settings, "algorithm", "algorithm", {"SP", "RD", "STR"})},
      {"set_connection_transport",
       setWord(settings, "transport_mode", "transport_mode", {"auto", "tcp", "tcp-multi", "udp", "https"})},
      {"set_max_redundant_sends", setMember(settings, "max_redundant", "max_redundant", Kind::Natural)},
      {"set_overflow_threshold", setMember(settings, "speed", "connection_secondary_speed_activation", Kind::Real)},
      {"set_priority_overflow_threshold",
       setMember(settings, "speed", "connection_priority_overflow_treshold", Kind::Real)},
      {"set_target_num_connections", setTargetConnections},
      {"set_maximum_connect_retry", setMember(settings, "value", "maximum_connect_retry", Kind::Natural)},
      {"set_maximum_transport_retry", setMember(settings, "value", "maximum_transport_retry", Kind::Natural)},
      {"set_connection_forward_ports", setList(settings, "forward_ports", kMaxPorts)},
      {"set_downstream_subnets", setList(settings, "downstream_subnets", kMaxSubnets)},
  };
}

}  // namespace zephsim
