// The network interfaces that the daemon bonds.
#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"

namespace zephsim {
namespace {

constexpr std::int64_t kMegabyte = 1'000'000;
constexpr int kAlways = 0;
constexpr int kBackup = 2;
constexpr int kAutomatic = 200;

Json::Value makeAdapter(const char* id, const char* name, const char* description, const char* type, const char* isp,
                        bool connected, int priority) {
  return object({{"guid", id},
                 {"name", name},
                 {"description", description},
                 {"type", type},
                 {"isp", isp},
                 {"connectionState", connected ? 2 : 0},
                 {"priority", priority},
                 {"workingPriority", priority == kAutomatic ? kAlways : priority},
                 {"limits", object({{"usage", 0}, {"usageDaily", 0}, {"resetDay", 0}, {"boostDaily", 0}})},
                 {"directional_mode", object({{"upload", "on"}, {"download", "on"}})}});
}

Json::Value makeAdapters() {
  Json::Value wifi =
      makeAdapter("wlan0", "Wi-Fi", "Wireless Network Adapter", "Wi-Fi", "Example Cable", true, kAutomatic);
  wifi["ssid"] = "Home";
  wifi["bssid"] = "02:00:5e:10:00:01";
  wifi["limits"]["usage"] = Json::Int64{18'400 * kMegabyte};
  wifi["limits"]["usageDaily"] = Json::Int64{310 * kMegabyte};
  Json::Value ethernet =
      makeAdapter("eth0", "Ethernet", "Gigabit Network Adapter", "Ethernet", "Example Fibre", true, kAlways);
  ethernet["limits"]["usage"] = Json::Int64{96'250 * kMegabyte};
  ethernet["limits"]["usageDaily"] = Json::Int64{1'720 * kMegabyte};
  Json::Value cellular = makeAdapter("wwan0", "Cellular", "Mobile Modem", "Cellular", "Example Mobile", true, kBackup);
  cellular["rateLimit"] = 20'000'000;
  cellular["limits"]["usage"] = Json::Int64{2'130 * kMegabyte};
  cellular["limits"]["max"] = Json::Int64{10'000 * kMegabyte};
  cellular["limits"]["resetDay"] = 1;
  cellular["limits"]["overlimitRate"] = 1'000'000;
  const Json::Value shared = makeAdapter("share0", "{{ADAPTERTYPES.NetworkShare Client}}", "Shared by a paired device",
                                         "NetworkShare Client", "", false, kAutomatic);
  return array({wifi, ethernet, cellular, shared});
}

Json::Value& requiredAdapter(Daemon& daemon, const Json::Value& members) {
  Json::Value* adapter = daemon.world.adapter(requiredText(members, "network"));
  if (!adapter) throw Refusal{Fault::InvalidArgument, "There is no such adapter"};
  return *adapter;
}

/// Makes a handler that changes one adapter and reports all.
RequestHandler change(void (*apply)(Json::Value& adapter, const Json::Value& members)) {
  return [apply](Daemon& daemon, const Json::Value& members) {
    apply(requiredAdapter(daemon, members), members);
    daemon.report(*daemon.world.adapters);
  };
}

/// A limit of 0 means no limit and is not reported.
void setLimit(Json::Value& place, const char* key, const Json::Value& limit) {
  if (limit == 0) {
    place.removeMember(key);
  } else {
    place[key] = limit;
  }
}

const Json::Value& requiredAmount(const Json::Value& members, const char* member) {
  const Json::Value& amount = required(members, member, Kind::Whole);
  if (amount.asInt64() < 0) throw Refusal{Fault::InvalidArgument, "The limit may not be negative"};
  return amount;
}

void setPriority(Json::Value& adapter, const Json::Value& members) {
  const Json::Value& priority = required(members, "priority", Kind::Natural);
  adapter["priority"] = priority;
  adapter["workingPriority"] = priority == kAutomatic ? Json::Value(kAlways) : priority;
}

void setDirectionalModes(Json::Value& adapter, const Json::Value& members) {
  static const Words kModes = {"on", "strict_off", "backup_off"};
  adapter["directional_mode"] = object(
      {{"upload", requiredWord(members, "upload", kModes)}, {"download", requiredWord(members, "download", kModes)}});
}

void setRateLimit(Json::Value& adapter, const Json::Value& members) {
  setLimit(adapter, "rateLimit", requiredAmount(members, "bps"));
}

void setMonthlyLimit(Json::Value& adapter, const Json::Value& members) {
  const Json::Value& day = required(members, "resetDay", Kind::Whole);
  if (day.asInt64() < 0 || day.asInt64() > 31) throw Refusal{Fault::InvalidArgument, "There is no such day"};
  setLimit(adapter["limits"], "max", requiredAmount(members, "max"));
  adapter["limits"]["resetDay"] = day;
}

void setDailyLimit(Json::Value& adapter, const Json::Value& members) {
  setLimit(adapter["limits"], "maxDaily", requiredAmount(members, "max"));
}

void addDailyBoost(Json::Value& adapter, const Json::Value& members) {
  Json::Value& boost = adapter["limits"]["boostDaily"];
  boost = Json::Int64{boost.asInt64() + requiredAmount(members, "value").asInt64()};
}

void setOverlimitRate(Json::Value& adapter, const Json::Value& members) {
  setLimit(adapter["limits"], "overlimitRate", requiredAmount(members, "bps"));
}

void resetUsage(Daemon& daemon, const Json::Value& members) {
  if (Json::Value* adapter = daemon.world.adapter(requiredText(members, "guid"))) {
    (*adapter)["limits"]["usage"] = 0;
    (*adapter)["limits"]["usageDaily"] = 0;
  }
  daemon.report(*daemon.world.adapters);
}

}  // namespace

std::vector<Request> adaptersFamily(Daemon& daemon) {
  daemon.world.adapters->value = makeAdapters();
  return {
      {"request_networks", reportRecord(daemon.world.adapters)},
      {"set_network_priority", change(setPriority)},
      {"set_network_directional_modes", change(setDirectionalModes)},
      {"set_network_ratelimit", change(setRateLimit)},
      {"set_network_limit", change(setMonthlyLimit)},
      {"set_network_daily_limit", change(setDailyLimit)},
      {"add_net_daily_limit_boost", change(addDailyBoost)},
      {"set_network_overlimit_rate", change(setOverlimitRate)},
      {"reset_network_usage", resetUsage},
  };
}

}  // namespace zephsim
