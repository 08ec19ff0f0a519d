// The exporter: the text generated from records, and the program with a daemon, a port and a user.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <prometheus/metric_family.h>

#include <boost/asio/ip/tcp.hpp>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "tests/ports.h"
#include "tests/process.h"
#include "tests/sdk/host.h"
#include "tools/exporter/metrics.h"

namespace tests {
namespace {

using exporter::Snapshot;
using testing::HasSubstr;
using testing::Not;
using zephlinksdk::SessionStatus;

/// Must not become a label: names of networks and peers, addresses, hosts.
constexpr const char* kSecret = "do-not-show";

template <class Record>
Record& recordOf(Snapshot& snapshot) {
  return std::get<std::optional<Record>>(snapshot.records).emplace();
}

void fillAdapters(Snapshot& snapshot) {
  auto& record = recordOf<ZephlinkSDK_AdaptersResult>(snapshot);
  record.adapterCount = 1;
  ZephlinkSDK_Adapter& adapter = record.adapters[0];
  std::strcpy(adapter.adapterID, "wlan0");
  std::strcpy(adapter.name, "Wi-\"Fi\"");
  std::strcpy(adapter.isp, "Example Cable");
  for (char* text : {adapter.connectedNetworkName, adapter.connectedNetworkBSSID, adapter.description}) {
    std::strcpy(text, kSecret);
  }
  adapter.state = ZephlinkSDK_AdapterState_Connected;
  adapter.type = ZephlinkSDK_AdapterType_WiFi;
  adapter.priority = ZephlinkSDK_ConnectionPriority_Automatic;
  adapter.workingPriority = ZephlinkSDK_ConnectionPriority_Backup;
  adapter.rateLimit = 8'000'000;
  adapter.overlimitRatelimit = 800;
  adapter.usageDaily = 5;
  adapter.usageMonthly = 7;
  adapter.usageDailyLimit = -1;
  adapter.usageMonthlyLimit = 70;
  adapter.usageDailyBoost = 3;
}

void fillConnections(Snapshot& snapshot) {
  auto& record = recordOf<ZephlinkSDK_ConnectionStatsResult>(snapshot);
  record.connectionCount = 2;
  for (int i = 0; i < 2; ++i) {
    ZephlinkSDK_ConnectionStatsEntry& connection = record.connections[i];
    std::strcpy(connection.adapterID, "wlan0");
    std::strcpy(connection.connectionID, i == 0 ? "z-do-not-show" : "a-do-not-show");
    for (char* text : {connection.localIp, connection.remoteIp, connection.privateIp}) std::strcpy(text, kSecret);
  }
  ZephlinkSDK_ConnectionStatsEntry& second = record.connections[0];  // sorts after the other name
  second.connected = true;
  second.receiveBytes = 1'000'000'000'001;
  second.receiveBps = 80;
  second.sendEstimateMbps = 8;
  second.latencyMs = 25;
  second.jitterMs = -1;
  second.lossSend = 0.25;
  second.mos = 4.5F;
  second.numberOfSockets = 2;
  second.protocol = ZephlinkSDK_TransportMode_TcpMulti;
}

void fillPeriods(Snapshot& snapshot) {
  auto& record = recordOf<ZephlinkSDK_SessionStatsResult>(snapshot);
  record.periodCount = 2;
  record.periods[0].period = ZephlinkSDK_Period_Total;
  record.periods[0].bytesReceived = 10;
  record.periods[0].maxUploadSpeed = 8;
  record.periods[0].totalConnectedMinutes = 2;
  record.periods[0].totalFailoverSaves = 4;
  record.periods[1].period = 12;
}

void fillStreams(Snapshot& snapshot) {
  auto& record = recordOf<ZephlinkSDK_StreamingStatsResult>(snapshot);
  record.bondingMode = ZephlinkSDK_BondingMode_Redundant;
  record.streamCount = 2;
  record.badLoss = true;
  for (ZephlinkSDK_StreamStatsEntry& stream : record.streams) {
    stream.health = ZephlinkSDK_StreamHealth_Poor;
    for (char* text : {stream.domain, stream.name, stream.remoteIp}) std::strcpy(text, kSecret);
  }
}

void fillPeers(Snapshot& snapshot) {
  auto& record = recordOf<ZephlinkSDK_NetworkSharingAvailableSharesResult>(snapshot);
  record.peerCount = 1;
  ZephlinkSDK_NetworkSharingPeer& peer = record.peers[0];
  for (char* text : {peer.displayName, peer.uuid}) std::strcpy(text, kSecret);
  peer.peerAsHost.peerStatus = ZephlinkSDK_PeerStatus_Authenticated;
  peer.peerAsHost.tunnelStatus = ZephlinkSDK_PeerTunnelStatus_Active;
}

/// Returns a snapshot in which every family has a metric.
Snapshot fullSnapshot() {
  Snapshot snapshot;
  snapshot.link = SessionStatus::Live;
  snapshot.losses = 3;
  recordOf<ZephlinkSDK_VersionResult>(snapshot).maj = 14;
  recordOf<ZephlinkSDK_StateResult>(snapshot).state = ZephlinkSDK_State_LoggedIn;
  ZephlinkSDK_ServerInfo& server = recordOf<ZephlinkSDK_ConnectResult>(snapshot).server;
  std::strcpy(server.country, "us");
  std::strcpy(server.city, "nyc");
  server.num = 7;
  server.publicIPCount = 1;
  std::strcpy(server.publicIP[0], kSecret);
  fillAdapters(snapshot);
  fillConnections(snapshot);
  fillPeriods(snapshot);
  fillStreams(snapshot);
  recordOf<ZephlinkSDK_SafeBrowsingResult>(snapshot).enabled = true;
  recordOf<ZephlinkSDK_SafeBrowsingStatsResult>(snapshot).numLookups = 11;
  recordOf<ZephlinkSDK_DisconnectEventResult>(snapshot).disconnectReason = ZephlinkSDK_DisconnectReason_OverQuota;
  fillPeers(snapshot);
  return snapshot;
}

std::string textOf(const Snapshot& snapshot) { return exporter::textOf(exporter::metricsOf(snapshot)); }

std::set<std::string> namesOf(const Snapshot& snapshot) {
  std::set<std::string> names;
  for (const auto& family : exporter::metricsOf(snapshot)) names.insert(family.name);
  return names;
}

TEST(ExporterMetrics, AreInBaseUnitsWithBoundedLabels) {
  const std::string text = "\n" + textOf(fullSnapshot());
  const char* lines[] = {
      R"(zephlink_up 1)",
      R"(zephlink_exporter_link_losses_total 3)",
      R"(zephlink_daemon_info{version="14.0.0.0"} 1)",
      R"(zephlink_state{state="logged_in"} 1)",
      R"(zephlink_state{state="connected"} 0)",
      R"(zephlink_connected_server_info{country="us",city="nyc",number="7",data_center="",private="false"} 1)",
      R"(zephlink_adapter_info{adapter="wlan0",name="Wi-\"Fi\"",type="wi-fi",isp="Example Cable"} 1)",
      R"(zephlink_adapter_state{adapter="wlan0",state="connected"} 1)",
      R"(zephlink_adapter_priority{adapter="wlan0",priority="automatic"} 1)",
      R"(zephlink_adapter_working_priority{adapter="wlan0",priority="backup"} 1)",
      R"(zephlink_adapter_rate_limit_bytes_per_second{adapter="wlan0"} 1000000)",
      R"(zephlink_adapter_over_limit_rate_limit_bytes_per_second{adapter="wlan0"} 100)",
      R"(zephlink_adapter_usage_bytes{adapter="wlan0",period="day"} 5)",
      R"(zephlink_adapter_usage_limit_bytes{adapter="wlan0",period="month"} 70)",
      R"(zephlink_connection_info{adapter="wlan0",connection="1",transport="tcp-multi"} 1)",
      R"(zephlink_connection_up{adapter="wlan0",connection="0"} 0)",
      R"(zephlink_connection_receive_bytes_total{adapter="wlan0",connection="1"} 1000000000001)",
      R"(zephlink_connection_receive_bytes_per_second{adapter="wlan0",connection="1"} 10)",
      R"(zephlink_connection_send_capacity_bytes_per_second{adapter="wlan0",connection="1"} 1000000)",
      R"(zephlink_connection_latency_seconds{adapter="wlan0",connection="1"} 0.025)",
      R"(zephlink_connection_jitter_seconds{adapter="wlan0",connection="0"} 0)",
      R"(zephlink_connection_send_loss_ratio{adapter="wlan0",connection="1"} 0.25)",
      R"(zephlink_connection_mean_opinion_score{adapter="wlan0",connection="1"} 4.5)",
      R"(zephlink_connection_sockets{adapter="wlan0",connection="1"} 2)",
      R"(zephlink_session_receive_bytes{period="total"} 10)",
      R"(zephlink_session_max_send_bytes_per_second{period="total"} 1000000)",
      R"(zephlink_session_connected_seconds{period="total"} 120)",
      R"(zephlink_session_stream_saves{period="total",by="failover"} 4)",
      R"(zephlink_bonding_mode{mode="redundant"} 1)",
      R"(zephlink_streams{health="poor"} 2)",
      R"(zephlink_streaming_problem{problem="loss"} 1)",
      R"(zephlink_safe_browsing_enabled 1)",
      R"(zephlink_safe_browsing_lookups_total 11)",
      R"(zephlink_last_disconnect_info{reason="overquota"} 1)",
      R"(zephlink_peers{role="host",status="authenticated"} 1)",
      R"(zephlink_peer_tunnels{role="host"} 1)",
  };
  for (const char* line : lines) EXPECT_THAT(text, HasSubstr(std::string("\n") + line + "\n"));
  // Omitted: a daily limit and the jitter of the second connection, and a period without a name.
  EXPECT_THAT(text, Not(HasSubstr(R"(usage_limit_bytes{adapter="wlan0",period="day"})")));
  EXPECT_THAT(text, Not(HasSubstr(R"(jitter_seconds{adapter="wlan0",connection="1"})")));
  EXPECT_THAT(text, Not(HasSubstr(R"(period="")")));
  EXPECT_THAT(text, Not(HasSubstr(R"(period="12)")));
  EXPECT_THAT(text, Not(HasSubstr(kSecret)));
}

TEST(ExporterMetrics, OmitOldValuesWithoutADaemon) {
  Snapshot snapshot = fullSnapshot();
  using enum SessionStatus;
  for (const SessionStatus link : {Connecting, Quiet, Unreachable, Mute}) {
    snapshot.link = link;
    EXPECT_EQ(namesOf(snapshot),
              (std::set<std::string>{"zephlink_up", "zephlink_exporter_link_state",
                                     "zephlink_exporter_link_losses_total", "zephlink_exporter_build_info"}));
    EXPECT_THAT(textOf(snapshot), HasSubstr("\nzephlink_up 0\n"));
  }
}

TEST(ExporterMetrics, OccurOnce) {
  Snapshot snapshot = fullSnapshot();
  auto& adapters = *std::get<std::optional<ZephlinkSDK_AdaptersResult>>(snapshot.records);
  adapters.adapters[1] = adapters.adapters[0];
  adapters.adapterCount = 2;
  for (const auto& family : exporter::metricsOf(snapshot)) {
    std::set<std::vector<prometheus::ClientMetric::Label>> labels;
    for (const auto& metric : family.metric) EXPECT_TRUE(labels.insert(metric.label).second) << family.name;
  }
}

/// Returns the metric names in the first column of the page's tables.
std::set<std::string> documentedNames() {
  std::ifstream page(EXPORTER_PAGE);
  std::set<std::string> names;
  const std::regex row("^\\| `(zephlink_[a-z_]+)`");
  for (std::string line; std::getline(page, line);) {
    std::smatch found;
    if (std::regex_search(line, found, row)) names.insert(found[1]);
  }
  return names;
}

TEST(ExporterMetrics, AreDocumented) { EXPECT_EQ(namesOf(fullSnapshot()), documentedNames()); }

// ---- The program ---------------------------------------------------------------------------------------------------

std::vector<std::string> exporterWith(std::vector<std::string> words) {
  words.insert(words.begin(), EXPORTER_PATH);
  return words;
}

std::string endpoint(std::uint16_t port) { return "127.0.0.1:" + std::to_string(port); }

TEST(Exporter, PrintsOnce) {
  ScriptedDaemon daemon(statesAndVersion({6}));
  const ProgramRun run = Process(exporterWith({"--daemon", endpoint(daemon.port()), "--once"})).finish();
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, HasSubstr("\nzephlink_up 1\n"));
  EXPECT_THAT(run.out, HasSubstr("\nzephlink_state{state=\"connected\"} 1\n"));
  EXPECT_EQ(run.err, "");
}

TEST(Exporter, ReportsAMissingDaemon) {
  const ClosedPort port;
  const ProgramRun run = Process(exporterWith({"--daemon", endpoint(port.number()), "--once"})).finish();
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, HasSubstr("\nzephlink_up 0\n"));
  EXPECT_EQ(run.err, "zephlink-exporter: no daemon answers at " + endpoint(port.number()) + "\n");
}

TEST(Exporter, ReportsUnusableArguments) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--bogus"}, "unknown option --bogus"},
      {{"--daemon"}, "--daemon needs an argument"},
      {{"--daemon", "localhost"}, "\"localhost\" is not HOST:PORT"},
      {{"--daemon", "h:0"}, "\"h:0\" is not HOST:PORT"},
      {{"--listen", ":1"}, "\":1\" is not HOST:PORT"},
      {{"--listen", "h:65536"}, "\"h:65536\" is not HOST:PORT"},
      {{"--listen", "h:1x"}, "\"h:1x\" is not HOST:PORT"},
      {{"--once", "more"}, "unexpected argument more"},
  };
  for (const auto& [words, message] : cases) {
    const ProgramRun run = Process(exporterWith(words)).finish();
    EXPECT_EQ(run.status, 2) << message;
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(run.err.starts_with("zephlink-exporter: " + message + "\nUsage: ")) << run.err;
  }
  const ScriptedDaemon other;
  const ProgramRun run = Process(exporterWith({"--listen", endpoint(other.port())})).finish();
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("zephlink-exporter: cannot listen on " + endpoint(other.port()) + "\n"));
}

/// Returns the answer to a GET as soon as it contains this text; the last answer after 30 seconds.
std::string get(std::uint16_t port, const std::string& path, const std::string& wanted) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (true) {
    boost::asio::ip::tcp::iostream connection("127.0.0.1", std::to_string(port));
    connection << "GET " << path << " HTTP/1.0\r\n\r\n" << std::flush;
    std::ostringstream answer;
    answer << connection.rdbuf();
    if (answer.str().find(wanted) != std::string::npos || std::chrono::steady_clock::now() > end) return answer.str();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

TEST(Exporter, ServesWhatTheDaemonReports) {
  auto daemon = std::make_unique<ScriptedDaemon>(statesAndVersion({6}));
  const std::uint16_t port = nextPort();
  const Process program(exporterWith({"--daemon", endpoint(daemon->port()), "--listen", endpoint(port)}));
  EXPECT_THAT(get(port, "/-/healthy", "200 OK"), HasSubstr("200 OK"));
  EXPECT_THAT(get(port, "/metrics", "\nzephlink_up 1\n"), HasSubstr("\nzephlink_up 1\n"));
  EXPECT_THAT(get(port, "/etc/passwd", "404"), HasSubstr("404"));
  daemon.reset();
  const std::string without = get(port, "/metrics", "\nzephlink_up 0\n");
  EXPECT_THAT(without, HasSubstr("\nzephlink_exporter_link_losses_total 1\n"));
  EXPECT_THAT(without, Not(HasSubstr("zephlink_state")));
  EXPECT_THAT(get(port, "/-/healthy", "200 OK"), HasSubstr("200 OK"));
}

}  // namespace
}  // namespace tests
