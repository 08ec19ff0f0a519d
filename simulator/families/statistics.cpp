// Live, historic and session statistics, sent about once a second while a client is subscribed.
#include <algorithm>
#include <ctime>

#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"
#include "simulator/traffic.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kTick = 1000ms;
constexpr double kTickSeconds = 1.0;
constexpr int kTicksPerUsageReport = 5;
/// A subscription expires unless it is repeated within this time.
constexpr auto kSubscriptionLife = 60s;
constexpr std::uint32_t kHoursPerDay = 24;
/// The total time that the daemon has been in use; no period exceeds it.
constexpr std::uint32_t kHoursInUse = 2000;

struct Subscription {
  Clock::time_point renewed;
  std::vector<std::uint32_t> periods = {0, kHoursPerDay};
};

/// A stream that the daemon tracks while the tunnel is up.
struct TrackedStream {
  const char* name;
  const char* domain;
  const char* remoteIp;
  const char* protocol;
  int port;
  double downShare, upShare;  ///< of the tunnel's throughput
};

constexpr TrackedStream kStreams[] = {
    {"Video call", "meet.example.org", "198.51.100.20", "udp", 3478, 0.05, 0.3},
    {"Films", "films.example.com", "198.51.100.41", "tcp", 443, 0.3, 0.02},
};

std::uint64_t monotonicMs() {
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch()).count());
}

class Statistics {
 public:
  explicit Statistics(Daemon& owner)
      : daemon(owner),
        world(owner.world),
        traffic([&owner](double low, double high) { return owner.random(low, high); }) {}

  void subscribe(const Json::Value& members) {
    if (!requiredBool(members, "enable")) {
      subscriptions.erase(daemon.requester());
      return;
    }
    Subscription& subscription = subscriptions[daemon.requester()];
    subscription.renewed = Clock::now();
    if (members.isMember("periods")) {
      subscription.periods.clear();
      for (const Json::Value& period : members["periods"]) subscription.periods.push_back(period.asUInt());
    }
    daemon.flood("report_connection_stats", traffic.connectionStats(world, monotonicMs()));
  }

  void reportConnections(const Json::Value&) {
    daemon.report("report_connection_stats", traffic.connectionStats(world, monotonicMs()));
  }

  void reportHistory(const Json::Value& members) {
    const std::uint64_t since = required(members, "dataSince", Kind::Natural).asUInt64();
    daemon.report("report_historic_connection_stats", traffic.history(since));
  }

  void reportSessions(const Json::Value&) {
    Json::Value periods(Json::objectValue);
    const auto found = subscriptions.find(daemon.requester());
    for (const std::uint32_t hours : found != subscriptions.end() ? found->second.periods : Subscription().periods) {
      periods[std::to_string(hours)] = describePeriod(hours);
    }
    daemon.report("report_session_stats", periods);
  }

  void reportStreams(const Json::Value&) {
    Json::Value streams(Json::arrayValue);
    if (world.isConnected()) {
      for (const TrackedStream& stream : kStreams) streams.append(describeStream(stream, streams.size() + 1));
    }
    daemon.report("report_streaming_stats", object({{"bonding_mode", world.settings->value["algorithm"]},
                                                    {"streams", streams},
                                                    {"badLoss", traffic.worstLoss() > 0.03},
                                                    {"badLatency", false},
                                                    {"badCpu", false},
                                                    {"badMemory", false}}));
  }

  void tick() {
    ++ticks;
    const bool adaptersChanged = world.isConnected() ? advance() : traffic.rest(world);
    dropStaleSubscriptions();
    if (subscriptions.empty()) return;
    reportConnections(Json::nullValue);
    reportSubscribedSessions();
    reportStreams(Json::nullValue);
    if (adaptersChanged || (world.isConnected() && ticks % kTicksPerUsageReport == 0)) daemon.report(*world.adapters);
  }

 private:
  bool advance() {
    if (session != world.sessions) traffic.restart();
    session = world.sessions;
    return traffic.tick(world, kTickSeconds, monotonicMs());
  }

  void dropStaleSubscriptions() {
    const auto now = Clock::now();
    for (auto it = subscriptions.begin(); it != subscriptions.end();) {
      const bool alive = daemon.isConnected(it->first) && now - it->second.renewed < kSubscriptionLife;
      it = alive ? std::next(it) : subscriptions.erase(it);
    }
  }

  /// One report for all clients: all requested periods, as many as fit a record.
  void reportSubscribedSessions() {
    constexpr Json::ArrayIndex kMaxPeriods = 5;
    Json::Value periods(Json::objectValue);
    for (const auto& [connection, subscription] : subscriptions) {
      for (const std::uint32_t hours : subscription.periods) {
        if (periods.size() < kMaxPeriods) periods[std::to_string(hours)] = describePeriod(hours);
      }
    }
    daemon.report("report_session_stats", periods);
  }

  Json::Value describeStream(const TrackedStream& stream, Json::ArrayIndex id) const {
    const std::int64_t age = std::time(nullptr) - world.sessionStart;
    const double down = traffic.totalDown() * stream.downShare;
    const double up = traffic.totalUp() * stream.upShare;
    const std::uint64_t failovers = traffic.failovers();
    return object({{"active", true},
                   {"id", id},
                   {"group_id", id},
                   {"name", stream.name},
                   {"hostname", stream.domain},
                   {"remoteIp", stream.remoteIp},
                   {"remote_port", stream.port},
                   {"protocol", stream.protocol},
                   {"start_time", Json::Int64{world.sessionStart}},
                   {"duration", Json::Int64{age}},
                   {"download_speed", down},
                   {"upload_speed", up},
                   {"average_download_speed", averageMbps(traffic.sessionVolume().received) * stream.downShare},
                   {"average_upload_speed", averageMbps(traffic.sessionVolume().sent) * stream.upShare},
                   {"redundant_saves", Json::Int64{age / 20}},
                   {"speed_saves", Json::Int64{age / 30}},
                   {"failover_saves", Json::UInt64{failovers}},
                   {"health", traffic.worstLoss() > 0.03 ? 1 : 2}});
  }

  double averageMbps(std::uint64_t bytes) const {
    const double seconds = std::max(1.0, static_cast<double>(std::time(nullptr) - world.sessionStart));
    return static_cast<double>(bytes) * 8 / 1e6 / seconds;
  }

  /// The current session plus a past in which the daemon was used for part of each day.
  Json::Value describePeriod(std::uint32_t hours) const {
    const std::uint64_t past = std::min(hours, kHoursInUse);
    const Volume volume = traffic.sessionVolume();
    const std::uint64_t received = volume.received + past * 410'000'000;
    const std::uint64_t sent = volume.sent + past * 62'000'000;
    const std::int64_t now = std::time(nullptr);
    const std::int64_t length = world.isConnected() ? now - world.sessionStart : 0;
    const std::int64_t start = hours == 0 ? world.sessionStart : now - static_cast<std::int64_t>(past) * 3600;
    const bool encrypted = world.settings->value["encrypted"].asBool();
    return object(
        {{"session_start_time", Json::Int64{start}},
         {"bytes_recv", Json::UInt64{received}},
         {"bytes_sent", Json::UInt64{sent}},
         {"encrypted_bytes_recv", Json::UInt64{encrypted ? received : received / 2}},
         {"encrypted_bytes_sent", Json::UInt64{encrypted ? sent : sent / 2}},
         {"max_download_mbps", std::max(traffic.maxDown(), past == 0 ? 0.0 : 262.5)},
         {"max_upload_mbps", std::max(traffic.maxUp(), past == 0 ? 0.0 : 58.75)},
         {"days_since_first", Json::UInt64{past / kHoursPerDay}},
         {"num_failovers", Json::UInt64{traffic.failovers() + past / 6}},
         {"num_sessions", Json::UInt64{(world.isConnected() ? 1 : 0) + past / 8}},
         {"retrans_bytes", Json::UInt64{(received + sent) / 400}},
         {"total_connected_minutes", Json::UInt64{static_cast<std::uint64_t>(length) / 60 + past * 20}},
         {"down_benefit", benefit(traffic.totalDown(), traffic.fastestDown())},
         {"up_benefit", benefit(traffic.totalUp(), traffic.fastestUp())},
         {"tun", describeTunnelDevice(received, sent)},
         {"packet_handler", describePacketHandler(received, sent)},
         {"cp_benefit", object({{"cp_detect", Json::UInt64{past / 100}}, {"cp_success", Json::UInt64{past / 120}}})},
         {"streaming", describeSaves(past)}});
  }

  Json::Value benefit(double combined, double fastest) const {
    return object(
        {{"num_connections", traffic.carrying()}, {"combined_mbps", combined}, {"fastest_conn_mbps", fastest}});
  }

  static Json::Value describeTunnelDevice(std::uint64_t received, std::uint64_t sent) {
    constexpr std::uint64_t kPacket = 1200;
    return object({{"packets_in", Json::UInt64{sent / kPacket}},
                   {"packets_out", Json::UInt64{received / kPacket}},
                   {"bytes_in", Json::UInt64{sent}},
                   {"bytes_out", Json::UInt64{received}},
                   {"buffer_waits", Json::UInt64{sent / 90'000'000}},
                   {"packet_waits", Json::UInt64{sent / 40'000'000}},
                   {"read_queue", Json::UInt64{sent % 7}},
                   {"dropped_incoming", Json::UInt64{received / 700'000'000}}});
  }

  static Json::Value describePacketHandler(std::uint64_t received, std::uint64_t sent) {
    constexpr std::uint64_t kPacket = 1350;
    return object({{"packets_in", Json::UInt64{received / kPacket}},
                   {"packets_out", Json::UInt64{sent / kPacket}},
                   {"bytes_in", Json::UInt64{received}},
                   {"bytes_out", Json::UInt64{sent}},
                   {"retries", Json::UInt64{sent / 5'000'000}}});
  }

  Json::Value describeSaves(std::uint64_t past) const {
    const std::uint64_t failover = traffic.failovers() + past / 12;
    const std::uint64_t speed = past / 5;
    const std::uint64_t redundant = past / 3;
    return object({{"total_failover_saves", Json::UInt64{failover}},
                   {"total_speed_saves", Json::UInt64{speed}},
                   {"total_redundant_saves", Json::UInt64{redundant}},
                   {"total_streams", Json::UInt64{(world.isConnected() ? std::size(kStreams) : 0) + past}},
                   {"unique_saves", Json::UInt64{failover + speed + redundant}}});
  }

  Daemon& daemon;
  World& world;
  Traffic traffic;
  std::uint64_t session = 0;  ///< the session that `traffic` describes
  int ticks = 0;
  std::map<Connection, Subscription> subscriptions;
};

}  // namespace

std::vector<Request> statisticsFamily(Daemon& daemon) {
  const auto family = std::make_shared<Statistics>(daemon);
  daemon.every(kTick, [family] { family->tick(); });
  return {
      {"stat_subscribe", method(family, &Statistics::subscribe)},
      {"request_connection_stats", method(family, &Statistics::reportConnections)},
      {"request_historic_connection_stats", method(family, &Statistics::reportHistory)},
      {"request_session_stats", method(family, &Statistics::reportSessions)},
      {"request_streaming_stats", method(family, &Statistics::reportStreams)},
  };
}

}  // namespace zephsim
