#include "tools/exporter/metrics.h"

#include <prometheus/text_serializer.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <utility>

#include "zephlinksdk/words.h"

namespace exporter {

namespace {

using prometheus::ClientMetric;
using prometheus::MetricFamily;
using prometheus::MetricType;
using Labels = std::vector<ClientMetric::Label>;
using Families = std::vector<MetricFamily>;

constexpr double kBitsPerByte = 8;
constexpr double kBytesPerMegabit = 1e6 / kBitsPerByte;
constexpr double kMsPerSecond = 1e3;
constexpr double kSecondsPerMinute = 60;

/// A value that the daemon omits: it has no metric.
constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();

double orAbsent(std::int64_t value) { return value < 0 ? kAbsent : static_cast<double>(value); }

/// Label values are in lower case.
std::string lowered(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

MetricFamily& addFamily(Families& families, const char* name, const char* help, MetricType type = MetricType::Gauge) {
  return families.emplace_back(MetricFamily{name, help, type, {}});
}

void addMetric(MetricFamily& family, double value, Labels labels = {}) {
  if (std::isnan(value)) return;
  ClientMetric& metric = family.metric.emplace_back();
  metric.label = std::move(labels);
  (family.type == MetricType::Counter ? metric.counter.value : metric.gauge.value) = value;
}

Labels with(Labels labels, const char* name, std::string value) {
  labels.push_back({name, std::move(value)});
  return labels;
}

/// Adds one series for each of the first `count` values of an enumeration: 1 for the current value, 0 for the others.
template <class Value>
void addStates(MetricFamily& family, const char* label, Value current, const char* (*text)(Value), std::uint32_t count,
               const Labels& labels = {}) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto value = static_cast<Value>(i);
    addMetric(family, value == current ? 1 : 0, with(labels, label, lowered(text(value))));
  }
}

/// A metric that each element of a list has.
template <class Thing>
struct Field {
  const char* name;
  const char* help;
  MetricType type;
  double (*value)(const Thing&);
};

template <class Thing>
using Labelled = std::vector<std::pair<const Thing*, Labels>>;

template <class Thing, std::size_t Count>
void addFields(Families& families, const Field<Thing> (&fields)[Count], const Labelled<Thing>& things) {
  for (const Field<Thing>& field : fields) {
    MetricFamily& family = addFamily(families, field.name, field.help, field.type);
    for (const auto& [thing, labels] : things) addMetric(family, field.value(*thing), labels);
  }
}

// ---- The exporter and the daemon -----------------------------------------------------------------------------------

void addLink(Families& families, const Snapshot& snapshot) {
  using zephlinksdk::SessionStatus;
  addMetric(addFamily(families, "zephlink_up", "Whether the daemon answers."),
            snapshot.link == SessionStatus::Live ? 1 : 0);
  addStates(addFamily(families, "zephlink_exporter_link_state", "State of the exporter's link to the daemon."), "state",
            snapshot.link, zephlinksdk::sessionStatusText, static_cast<std::uint32_t>(SessionStatus::Mute) + 1);
  addMetric(addFamily(families, "zephlink_exporter_link_losses_total", "How often a working link was lost.",
                      MetricType::Counter),
            static_cast<double>(snapshot.losses));
  addMetric(addFamily(families, "zephlink_exporter_build_info", "Version of the exporter."), 1,
            {{"version", EXPORTER_VERSION}});
}

void add(Families& families, const ZephlinkSDK_VersionResult& version) {
  std::string text;
  for (const int part : {version.maj, version.min, version.bug, version.build}) text += "." + std::to_string(part);
  addMetric(addFamily(families, "zephlink_daemon_info", "Version of the daemon."), 1, {{"version", text.substr(1)}});
}

void add(Families& families, const ZephlinkSDK_StateResult& state) {
  addStates(addFamily(families, "zephlink_state", "State of the daemon."), "state", state.state, ZephlinkSDK_stateText,
            ZephlinkSDK_State_Unknown + 1);
}

void add(Families& families, const ZephlinkSDK_ConnectResult& connected) {
  const ZephlinkSDK_ServerInfo& server = connected.server;
  if (server.country[0] == '\0') return;
  addMetric(addFamily(families, "zephlink_connected_server_info", "Server that the daemon is connected to."), 1,
            {{"country", server.country},
             {"city", server.city},
             {"number", std::to_string(server.num)},
             {"data_center", server.dataCenter},
             {"private", server.isPrivate ? "true" : "false"}});
}

void add(Families& families, const ZephlinkSDK_DisconnectEventResult& event) {
  addMetric(addFamily(families, "zephlink_last_disconnect_info", "Why the last session ended."), 1,
            {{"reason", lowered(ZephlinkSDK_disconnectReasonText(event.disconnectReason))}});
}

// ---- Adapters ------------------------------------------------------------------------------------------------------

using Adapter = ZephlinkSDK_Adapter;

constexpr Field<Adapter> kAdapterFields[] = {
    {"zephlink_adapter_rate_limit_bytes_per_second", "Rate limit of the adapter.", MetricType::Gauge,
     [](const Adapter& adapter) { return orAbsent(adapter.rateLimit) / kBitsPerByte; }},
    {"zephlink_adapter_over_limit_rate_limit_bytes_per_second", "Rate limit once a usage limit is reached.",
     MetricType::Gauge, [](const Adapter& adapter) { return orAbsent(adapter.overlimitRatelimit) / kBitsPerByte; }},
    {"zephlink_adapter_usage_boost_bytes", "What was added to today's usage limit.", MetricType::Gauge,
     [](const Adapter& adapter) { return orAbsent(adapter.usageDailyBoost); }},
};

/// Adds a family with a daily and a monthly metric for each adapter.
void addUsage(Families& families, const ZephlinkSDK_AdaptersResult& record, const char* name, const char* help,
              std::int64_t Adapter::*daily, std::int64_t Adapter::*monthly) {
  MetricFamily& family = addFamily(families, name, help);
  for (std::uint32_t i = 0; i < record.adapterCount; ++i) {
    const Adapter& adapter = record.adapters[i];
    addMetric(family, orAbsent(adapter.*daily), {{"adapter", adapter.adapterID}, {"period", "day"}});
    addMetric(family, orAbsent(adapter.*monthly), {{"adapter", adapter.adapterID}, {"period", "month"}});
  }
}

void add(Families& families, const ZephlinkSDK_AdaptersResult& record) {
  Labelled<Adapter> adapters;
  for (std::uint32_t i = 0; i < record.adapterCount; ++i) {
    adapters.push_back({&record.adapters[i], {{"adapter", record.adapters[i].adapterID}}});
  }
  MetricFamily& info = addFamily(families, "zephlink_adapter_info", "Name, kind and provider of the adapter.");
  for (const auto& [adapter, labels] : adapters) {
    Labels all = with(labels, "name", adapter->name);
    all = with(std::move(all), "type", lowered(ZephlinkSDK_adapterTypeText(adapter->type)));
    addMetric(info, 1, with(std::move(all), "isp", adapter->isp));
  }
  MetricFamily& state = addFamily(families, "zephlink_adapter_state", "State of the adapter.");
  for (const auto& [adapter, labels] : adapters) {
    addStates(state, "state", adapter->state, ZephlinkSDK_adapterStateText, ZephlinkSDK_AdapterState_Connected + 1,
              labels);
  }
  constexpr std::uint32_t kPriorities = ZephlinkSDK_ConnectionPriority_Automatic + 1;
  MetricFamily& priority = addFamily(families, "zephlink_adapter_priority", "Priority that is set for the adapter.");
  for (const auto& [adapter, labels] : adapters) {
    addStates(priority, "priority", adapter->priority, ZephlinkSDK_connectionPriorityText, kPriorities, labels);
  }
  MetricFamily& working = addFamily(families, "zephlink_adapter_working_priority", "Priority in force.");
  for (const auto& [adapter, labels] : adapters) {
    addStates(working, "priority", adapter->workingPriority, ZephlinkSDK_connectionPriorityText, kPriorities, labels);
  }
  addUsage(families, record, "zephlink_adapter_usage_bytes", "Data that the adapter carried in the period.",
           &Adapter::usageDaily, &Adapter::usageMonthly);
  addUsage(families, record, "zephlink_adapter_usage_limit_bytes", "Usage limit of the adapter in the period.",
           &Adapter::usageDailyLimit, &Adapter::usageMonthlyLimit);
  addFields(families, kAdapterFields, adapters);
}

// ---- Connections ---------------------------------------------------------------------------------------------------

using Connection = ZephlinkSDK_ConnectionStatsEntry;

constexpr Field<Connection> kConnectionFields[] = {
    {"zephlink_connection_up", "Whether the connection is established.", MetricType::Gauge,
     [](const Connection& connection) { return connection.connected ? 1.0 : 0.0; }},
    {"zephlink_connection_sleeping", "Whether the connection is kept in reserve.", MetricType::Gauge,
     [](const Connection& connection) { return connection.sleeping ? 1.0 : 0.0; }},
    {"zephlink_connection_congested", "Whether the connection is congested.", MetricType::Gauge,
     [](const Connection& connection) { return connection.congested ? 1.0 : 0.0; }},
    {"zephlink_connection_receive_bytes_total", "Received data.", MetricType::Counter,
     [](const Connection& connection) { return static_cast<double>(connection.receiveBytes); }},
    {"zephlink_connection_send_bytes_total", "Sent data.", MetricType::Counter,
     [](const Connection& connection) { return static_cast<double>(connection.sendBytes); }},
    {"zephlink_connection_receive_bytes_per_second", "Present rate of reception.", MetricType::Gauge,
     [](const Connection& connection) { return static_cast<double>(connection.receiveBps) / kBitsPerByte; }},
    {"zephlink_connection_send_bytes_per_second", "Present rate of sending.", MetricType::Gauge,
     [](const Connection& connection) { return static_cast<double>(connection.sendBps) / kBitsPerByte; }},
    {"zephlink_connection_receive_capacity_bytes_per_second", "Estimated capacity of reception.", MetricType::Gauge,
     [](const Connection& connection) { return connection.receiveEstimateMbps * kBytesPerMegabit; }},
    {"zephlink_connection_send_capacity_bytes_per_second", "Estimated capacity of sending.", MetricType::Gauge,
     [](const Connection& connection) { return connection.sendEstimateMbps * kBytesPerMegabit; }},
    {"zephlink_connection_latency_seconds", "Latency.", MetricType::Gauge,
     [](const Connection& connection) { return orAbsent(connection.latencyMs) / kMsPerSecond; }},
    {"zephlink_connection_jitter_seconds", "Jitter.", MetricType::Gauge,
     [](const Connection& connection) { return orAbsent(connection.jitterMs) / kMsPerSecond; }},
    {"zephlink_connection_receive_loss_ratio", "Share of lost packets in reception.", MetricType::Gauge,
     [](const Connection& connection) { return connection.lossReceive; }},
    {"zephlink_connection_send_loss_ratio", "Share of lost packets in sending.", MetricType::Gauge,
     [](const Connection& connection) { return connection.lossSend; }},
    {"zephlink_connection_mean_opinion_score", "Estimated quality of a call over the connection, 1 to 5.",
     MetricType::Gauge, [](const Connection& connection) { return static_cast<double>(connection.mos); }},
    {"zephlink_connection_sockets", "Sockets side by side.", MetricType::Gauge,
     [](const Connection& connection) { return static_cast<double>(connection.numberOfSockets); }},
};

/// The daemon may rename a connection whenever it reconnects, so the label of a connection is its index among the
/// connections of its adapter.
Labelled<Connection> labelled(const ZephlinkSDK_ConnectionStatsResult& record) {
  std::vector<const Connection*> sorted;
  for (int i = 0; i < record.connectionCount; ++i) sorted.push_back(&record.connections[i]);
  const auto nameOf = [](const Connection* connection) {
    return std::pair<std::string, std::string>(connection->adapterID, connection->connectionID);
  };
  std::ranges::stable_sort(sorted, {}, nameOf);
  Labelled<Connection> connections;
  std::map<std::string, int> counts;
  for (const Connection* connection : sorted) {
    const int place = counts[connection->adapterID]++;
    connections.push_back({connection, {{"adapter", connection->adapterID}, {"connection", std::to_string(place)}}});
  }
  return connections;
}

void add(Families& families, const ZephlinkSDK_ConnectionStatsResult& record) {
  const Labelled<Connection> connections = labelled(record);
  MetricFamily& info = addFamily(families, "zephlink_connection_info", "Transport of the connection.");
  for (const auto& [connection, labels] : connections) {
    addMetric(info, 1, with(labels, "transport", ZephlinkSDK_transportModeText(connection->protocol)));
  }
  addFields(families, kConnectionFields, connections);
}

// ---- Sessions and streams ------------------------------------------------------------------------------------------

using Period = ZephlinkSDK_SessionStatsPeriod;

constexpr Field<Period> kPeriodFields[] = {
    {"zephlink_session_receive_bytes", "Data received in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.bytesReceived); }},
    {"zephlink_session_send_bytes", "Data sent in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.bytesSent); }},
    {"zephlink_session_encrypted_receive_bytes", "Data received with encryption in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.encryptedBytesReceived); }},
    {"zephlink_session_encrypted_send_bytes", "Data sent with encryption in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.encryptedBytesSent); }},
    {"zephlink_session_retransmitted_bytes", "Data sent once more in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.retransBytes); }},
    {"zephlink_session_max_receive_bytes_per_second", "Highest rate of reception in the period.", MetricType::Gauge,
     [](const Period& period) { return period.maxDownloadSpeed * kBytesPerMegabit; }},
    {"zephlink_session_max_send_bytes_per_second", "Highest rate of sending in the period.", MetricType::Gauge,
     [](const Period& period) { return period.maxUploadSpeed * kBytesPerMegabit; }},
    {"zephlink_session_receive_benefit_bytes_per_second", "All connections together over the fastest alone.",
     MetricType::Gauge, [](const Period& period) { return period.mbpsDownBenefit * kBytesPerMegabit; }},
    {"zephlink_session_send_benefit_bytes_per_second", "All connections together over the fastest alone.",
     MetricType::Gauge, [](const Period& period) { return period.mbpsUpBenefit * kBytesPerMegabit; }},
    {"zephlink_session_connected_seconds", "Time connected in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.totalConnectedMinutes) * kSecondsPerMinute; }},
    {"zephlink_session_sessions", "Sessions in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.numSessions); }},
    {"zephlink_session_failovers", "Times that traffic moved to another adapter in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.numFailovers); }},
    {"zephlink_session_streams", "Streams in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.totalStreams); }},
    {"zephlink_session_captive_portals", "Captive portals found in the period.", MetricType::Gauge,
     [](const Period& period) { return static_cast<double>(period.captivePortalDetections); }},
};

void add(Families& families, const ZephlinkSDK_SessionStatsResult& record) {
  Labelled<Period> periods;
  for (int i = 0; i < record.periodCount; ++i) {
    // Another client of the daemon may have requested any number of hours.
    const std::string name = ZephlinkSDK_periodText(record.periods[i].period);
    if (!name.empty()) periods.push_back({&record.periods[i], {{"period", name}}});
  }
  addFields(families, kPeriodFields, periods);
  MetricFamily& saves = addFamily(families, "zephlink_session_stream_saves",
                                  "Interruptions of streams that were prevented in the period.");
  for (const auto& [period, labels] : periods) {
    addMetric(saves, static_cast<double>(period->totalFailoverSaves), with(labels, "by", "failover"));
    addMetric(saves, static_cast<double>(period->totalSpeedModeSaves), with(labels, "by", "speed"));
    addMetric(saves, static_cast<double>(period->totalRedundantModeSaves), with(labels, "by", "redundant"));
  }
}

void add(Families& families, const ZephlinkSDK_StreamingStatsResult& record) {
  addStates(addFamily(families, "zephlink_bonding_mode", "How the tunnel uses several adapters at once."), "mode",
            record.bondingMode, ZephlinkSDK_bondingModeText, ZephlinkSDK_BondingMode_Streaming + 1);
  MetricFamily& streams = addFamily(families, "zephlink_streams", "Streams that the daemon tracks now.");
  for (std::uint32_t i = 0; i <= ZephlinkSDK_StreamHealth_Good; ++i) {
    const auto health = static_cast<ZephlinkSDK_StreamHealth>(i);
    const auto count = std::count_if(record.streams, record.streams + record.streamCount,
                                     [health](const auto& stream) { return stream.health == health; });
    addMetric(streams, static_cast<double>(count), {{"health", ZephlinkSDK_streamHealthText(health)}});
  }
  MetricFamily& problem = addFamily(families, "zephlink_streaming_problem", "Whether streams suffer from this.");
  const std::pair<const char*, bool> problems[] = {
      {"loss", record.badLoss}, {"latency", record.badLatency}, {"cpu", record.badCpu}, {"memory", record.badMemory}};
  for (const auto& [name, bad] : problems) addMetric(problem, bad ? 1 : 0, {{"problem", name}});
}

// ---- Safe browsing and network sharing -----------------------------------------------------------------------------

void add(Families& families, const ZephlinkSDK_SafeBrowsingResult& record) {
  addMetric(addFamily(families, "zephlink_safe_browsing_enabled", "Whether safe browsing is switched on."),
            record.enabled ? 1 : 0);
}

using SafeBrowsing = ZephlinkSDK_SafeBrowsingStatsResult;

constexpr Field<SafeBrowsing> kSafeBrowsingFields[] = {
    {"zephlink_safe_browsing_lookups_total", "Lookups of hosts.", MetricType::Counter,
     [](const SafeBrowsing& stats) { return static_cast<double>(stats.numLookups); }},
    {"zephlink_safe_browsing_lookup_errors_total", "Lookups that failed.", MetricType::Counter,
     [](const SafeBrowsing& stats) { return static_cast<double>(stats.numErrors); }},
    {"zephlink_safe_browsing_blocks_total", "Hosts that were blocked.", MetricType::Counter,
     [](const SafeBrowsing& stats) { return static_cast<double>(stats.numBlocks); }},
    {"zephlink_safe_browsing_block_responses_total", "Answers that report a blocked host.", MetricType::Counter,
     [](const SafeBrowsing& stats) { return static_cast<double>(stats.numBlockResponses); }},
    {"zephlink_safe_browsing_filtered_packets_total", "Packets that were filtered.", MetricType::Counter,
     [](const SafeBrowsing& stats) { return static_cast<double>(stats.numPacketsFiltered); }},
};

void add(Families& families, const SafeBrowsing& record) { addFields(families, kSafeBrowsingFields, {{&record, {}}}); }

void add(Families& families, const ZephlinkSDK_NetworkSharingAvailableSharesResult& record) {
  using Peer = ZephlinkSDK_NetworkSharingPeer;
  const std::pair<const char*, ZephlinkSDK_NetworkSharingPeerRole Peer::*> roles[] = {{"client", &Peer::peerAsClient},
                                                                                      {"host", &Peer::peerAsHost}};
  const auto countOf = [&record](auto matches) {
    return static_cast<double>(std::count_if(record.peers, record.peers + record.peerCount, matches));
  };
  MetricFamily& peers = addFamily(families, "zephlink_peers", "Peers of network sharing that the daemon knows.");
  for (const auto& [name, role] : roles) {
    for (std::uint32_t i = 0; i <= ZephlinkSDK_PeerStatus_Authenticated; ++i) {
      const auto status = static_cast<ZephlinkSDK_PeerStatus>(i);
      addMetric(peers, countOf([status, role = role](const Peer& peer) { return (peer.*role).peerStatus == status; }),
                {{"role", name}, {"status", ZephlinkSDK_peerStatusText(status)}});
    }
  }
  MetricFamily& tunnels = addFamily(families, "zephlink_peer_tunnels", "Active tunnels to peers.");
  for (const auto& [name, role] : roles) {
    addMetric(tunnels, countOf([role = role](const Peer& peer) {
                return (peer.*role).tunnelStatus == ZephlinkSDK_PeerTunnelStatus_Active;
              }),
              {{"role", name}});
  }
}

/// Prometheus rejects all metrics if one occurs twice, for example if the daemon reports two adapters with the same
/// name.
void eraseRepeated(MetricFamily& family) {
  std::set<Labels> seen;
  std::erase_if(family.metric, [&seen](const ClientMetric& metric) { return !seen.insert(metric.label).second; });
}

}  // namespace

std::vector<MetricFamily> metricsOf(const Snapshot& snapshot) {
  Families families;
  addLink(families, snapshot);
  if (snapshot.link == zephlinksdk::SessionStatus::Live) {
    const auto addIfKnown = [&families](const auto& record) {
      if (record) add(families, *record);
    };
    std::apply([&](const auto&... records) { (addIfKnown(records), ...); }, snapshot.records);
  }
  std::ranges::for_each(families, eraseRepeated);
  std::erase_if(families, [](const MetricFamily& family) { return family.metric.empty(); });
  return families;
}

std::string textOf(const std::vector<MetricFamily>& families) {
  std::ostringstream text;
  prometheus::TextSerializer().Serialize(text, families);
  return text.str();
}

}  // namespace exporter
