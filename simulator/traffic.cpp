#include "simulator/traffic.h"

#include <algorithm>
#include <cstdio>

#include "simulator/json.h"

namespace zephsim {
namespace {

constexpr double kBitsPerMegabit = 1e6;
constexpr std::uint64_t kHistoryMs = 300'000;
constexpr double kOutageChance = 1.0 / 45;  ///< in each tick
constexpr int kStateConnecting = 1;
constexpr int kStateConnected = 2;
constexpr int kPriorityBackup = 2;
constexpr int kPriorityNever = 100;

const Flow kFlows[] = {
    {.adapter = "eth0", .downLimit = 180, .upLimit = 40, .baseLatency = 14},
    {.adapter = "wlan0", .downLimit = 90, .upLimit = 22, .baseLatency = 22},
    {.adapter = "wwan0", .downLimit = 35, .upLimit = 12, .baseLatency = 48},
    {.adapter = "share0", .downLimit = 25, .upLimit = 8, .baseLatency = 61},
};

/// Returns a step towards a random value between the bounds, small enough to look like load rather than noise.
double wander(const Random& random, double value, double low, double high) {
  const double goal = random(low, high);
  return value == 0 ? goal : value + 0.25 * (goal - value);
}

std::uint64_t bitsPerSecond(double mbps) { return static_cast<std::uint64_t>(mbps * kBitsPerMegabit); }

std::uint64_t bytesOf(double mbps, double seconds) {
  return static_cast<std::uint64_t>(mbps * kBitsPerMegabit * seconds / 8);
}

std::int64_t inFlight(const Flow& flow) {
  return static_cast<std::int64_t>(flow.up * kBitsPerMegabit / 8 * flow.latency / 1000);
}

std::int64_t window(const Flow& flow) { return inFlight(flow) * 3 / 2 + 32768; }

/// Returns the estimated mean opinion score of a call over the connection, 1 to 4.5.
double opinionScore(const Flow& flow) {
  return std::clamp(4.45 - flow.latency / 400 - flow.jitter / 100 - flow.loss * 12, 1.0, 4.5);
}

void addUsage(Json::Value& adapter, std::uint64_t bytes) {
  for (const char* counter : {"usage", "usageDaily"}) {
    Json::Value& value = adapter["limits"][counter];
    value = Json::Int64{value.asInt64() + static_cast<std::int64_t>(bytes)};
  }
}

std::string protocolOf(const Flow& flow, const World& world) {
  if (flow.adapter == "share0") return "share";
  const std::string mode = world.settings->value["transport_mode"].asString();
  return mode == "auto" ? "udp" : mode;
}

Json::Value describe(const Flow& flow, std::size_t index, const World& world) {
  const std::string number = std::to_string(index + 1);
  return object({{"guid", flow.adapter},
                 {"key", flow.adapter + "-" + protocolOf(flow, world)},
                 {"cnnct", flow.connected},
                 {"zzz", flow.sleeping ? 1 : 0},
                 {"protocol", protocolOf(flow, world)},
                 {"localIp", "192.0.2." + number},
                 {"privateIp", "10.8.0." + number},
                 {"remoteIp", world.server["publicIP"][0].asString()},
                 {"numConns", 2},
                 {"bInF", Json::Int64{inFlight(flow)}},
                 {"bInFL", Json::Int64{window(flow)}},
                 {"lsR", flow.loss},
                 {"lsS", flow.loss / 2},
                 {"ltMs", static_cast<int>(flow.latency)},
                 {"jtMs", static_cast<int>(flow.jitter)},
                 {"mos", opinionScore(flow)},
                 {"totBps", Json::UInt64{bitsPerSecond(flow.down + flow.up)}},
                 {"rcvBps", Json::UInt64{bitsPerSecond(flow.down)}},
                 {"sndBps", Json::UInt64{bitsPerSecond(flow.up)}},
                 {"rcvEstMbps", flow.downLimit},
                 {"sndEstMbps", flow.upLimit},
                 {"rcvBytes", Json::UInt64{flow.received}},
                 {"sndBytes", Json::UInt64{flow.sent}},
                 {"congested", flow.loss > 0.02}});
}

/// The packed form: two flags, then hexadecimal numbers of fixed width.
std::string pack(const Flow& flow) {
  const auto hundredths = [](double fraction) { return static_cast<unsigned>(std::clamp(fraction * 100, 0.0, 255.0)); };
  char text[48];
  std::snprintf(text, sizeof text, "%d%d%016llx%08x%08x%04x%02x%02x", flow.connected ? 1 : 0, flow.sleeping ? 1 : 0,
                static_cast<unsigned long long>(bitsPerSecond(flow.down + flow.up)),
                static_cast<unsigned>(inFlight(flow)), static_cast<unsigned>(window(flow)),
                static_cast<unsigned>(flow.latency), hundredths(flow.loss), hundredths(flow.loss / 2));
  return text;
}

}  // namespace

Traffic::Traffic(Random numbers) : random(std::move(numbers)) { restart(); }

void Traffic::restart() {
  flows.assign(std::begin(kFlows), std::end(kFlows));
  failoverCount = 0;
  peakDown = peakUp = 0;
}

bool Traffic::tick(World& world, double seconds, std::uint64_t now) {
  bool changed = false;
  for (Flow& flow : flows) {
    Json::Value& adapter = *world.adapter(flow.adapter);
    changed |= updateOutage(flow, adapter);
    flow.connected = adapter["connectionState"] == kStateConnected && adapter["priority"] != kPriorityNever;
  }
  setReserves(world);
  for (Flow& flow : flows) {
    Json::Value& adapter = *world.adapter(flow.adapter);
    move(flow, adapter);
    const std::uint64_t received = bytesOf(flow.down, seconds);
    const std::uint64_t sent = bytesOf(flow.up, seconds);
    flow.received += received;
    flow.sent += sent;
    world.bytesThrough += received + sent;
    addUsage(adapter, received + sent);
  }
  peakDown = std::max(peakDown, totalDown());
  peakUp = std::max(peakUp, totalUp());
  remember(world, now);
  return changed;
}

bool Traffic::rest(World& world) {
  bool changed = false;
  for (Flow& flow : flows) changed |= flow.outage > 0 && endOutage(flow, *world.adapter(flow.adapter));
  return changed;
}

bool Traffic::endOutage(Flow& flow, Json::Value& adapter) {
  flow.outage = 0;
  if (adapter["connectionState"] != kStateConnecting) return false;
  adapter["connectionState"] = kStateConnected;
  return true;
}

/// An active adapter may fail for some ticks, and the others take over. The fixed line never fails.
bool Traffic::updateOutage(Flow& flow, Json::Value& adapter) {
  if (flow.outage > 0) return --flow.outage == 0 && endOutage(flow, adapter);
  if (flow.adapter == "eth0" || !flow.carries() || random(0, 1) >= kOutageChance) return false;
  flow.outage = 3 + static_cast<int>(random(0, 4));
  adapter["connectionState"] = kStateConnecting;
  ++failoverCount;
  return true;
}

/// Backups sleep while another adapter carries traffic.
void Traffic::setReserves(World& world) {
  const auto isBackup = [&](const Flow& flow) {
    return (*world.adapter(flow.adapter))["workingPriority"] == kPriorityBackup;
  };
  const bool othersCarry =
      std::any_of(flows.begin(), flows.end(), [&](const Flow& flow) { return flow.connected && !isBackup(flow); });
  for (Flow& flow : flows) flow.sleeping = flow.connected && isBackup(flow) && othersCarry;
}

void Traffic::move(Flow& flow, const Json::Value& adapter) {
  if (!flow.connected) {
    flow.down = flow.up = flow.latency = flow.jitter = flow.loss = 0;
    return;
  }
  flow.latency = wander(random, flow.latency, flow.baseLatency * 0.9, flow.baseLatency * 1.6);
  flow.jitter = wander(random, flow.jitter, 1, flow.baseLatency / 5);
  flow.loss = random(0, 1) < 0.1 ? random(0, 0.04) : flow.loss * 0.6;
  if (flow.sleeping) {
    flow.down = flow.up = 0;
    return;
  }
  const double cap = adapter.isMember("rateLimit") ? adapter["rateLimit"].asDouble() / kBitsPerMegabit : 1e9;
  flow.down = std::min(cap, wander(random, flow.down, flow.downLimit * 0.2, flow.downLimit * 0.95));
  flow.up = std::min(cap, wander(random, flow.up, flow.upLimit * 0.1, flow.upLimit * 0.8));
}

Json::Value Traffic::connectionStats(const World& world, std::uint64_t now) const {
  Json::Value connections(Json::arrayValue);
  if (world.isConnected()) {
    for (std::size_t i = 0; i < flows.size(); ++i) connections.append(describe(flows[i], i, world));
  }
  return object({{"time", Json::UInt64{now}}, {"connections", connections}});
}

void Traffic::remember(const World& world, std::uint64_t now) {
  Json::Value connections(Json::objectValue);
  for (const Flow& flow : flows) {
    if (flow.connected) connections[flow.adapter][protocolOf(flow, world)] = pack(flow);
  }
  samples.push_back(object({{"time", Json::UInt64{now}}, {"connections", connections}}));
  while (samples.front()["time"].asUInt64() + kHistoryMs < now) samples.pop_front();
}

Json::Value Traffic::history(std::uint64_t since) const {
  Json::Value recent(Json::arrayValue);
  for (const Json::Value& sample : samples) {
    if (sample["time"].asUInt64() >= since) recent.append(sample);
  }
  return recent;
}

Volume Traffic::sessionVolume() const {
  Volume volume;
  for (const Flow& flow : flows) {
    volume.received += flow.received;
    volume.sent += flow.sent;
  }
  return volume;
}

double Traffic::totalDown() const { return sum(&Flow::down); }
double Traffic::totalUp() const { return sum(&Flow::up); }
double Traffic::fastestDown() const { return most(&Flow::down); }
double Traffic::fastestUp() const { return most(&Flow::up); }
double Traffic::worstLoss() const { return most(&Flow::loss); }

double Traffic::sum(double Flow::*field) const {
  double total = 0;
  for (const Flow& flow : flows) total += flow.*field;
  return total;
}

double Traffic::most(double Flow::*field) const {
  double found = 0;
  for (const Flow& flow : flows) found = std::max(found, flow.*field);
  return found;
}

int Traffic::carrying() const {
  return static_cast<int>(std::count_if(flows.begin(), flows.end(), [](const Flow& flow) { return flow.carries(); }));
}

}  // namespace zephsim
