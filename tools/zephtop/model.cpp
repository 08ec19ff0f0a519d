#include "tools/zephtop/model.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

#include "zephlinksdk/words.h"

namespace zephtop {

namespace {

constexpr std::size_t kMostEvents = 200;
constexpr std::chrono::milliseconds kSamplePeriod{1000};
// How late the daemon's statistics may arrive before a gap is shown.
constexpr std::chrono::milliseconds kSampleGrace{700};
constexpr float kBitsPerMegabit = 1e6F;

Adapter adapterOf(const ZephlinkSDK_Adapter& record) {
  Adapter adapter{};
  adapter.id = record.adapterID;
  adapter.name = record.name[0] != '\0' ? record.name : record.adapterID;
  adapter.network = record.connectedNetworkName[0] != '\0' ? record.connectedNetworkName : record.isp;
  adapter.state = record.state;
  adapter.priority = record.priority;
  adapter.workingPriority = record.workingPriority;
  adapter.today = record.usageDaily;
  adapter.todayLimit = record.usageDailyLimit;
  if (adapter.todayLimit > 0) adapter.todayLimit += std::max<std::int64_t>(0, record.usageDailyBoost);
  adapter.month = record.usageMonthly;
  adapter.monthLimit = record.usageMonthlyLimit;
  adapter.rateLimit = record.rateLimit;
  adapter.overlimitRate = record.overlimitRatelimit;
  return adapter;
}

void add(const ZephlinkSDK_ConnectionStatsEntry& connection, Measurement& sum) {
  sum.down += static_cast<float>(connection.receiveBps) / kBitsPerMegabit;
  sum.up += static_cast<float>(connection.sendBps) / kBitsPerMegabit;
  sum.latency = std::max(sum.latency, static_cast<float>(connection.latencyMs));
  sum.loss = std::max(
      {sum.loss, static_cast<float>(connection.lossReceive * 100), static_cast<float>(connection.lossSend * 100)});
  sum.asleep = sum.asleep && connection.sleeping;
}

Tone toneOf(ZephlinkSDK_AdapterState state) {
  switch (state) {
    case ZephlinkSDK_AdapterState_Connected:
      return Tone::Good;
    case ZephlinkSDK_AdapterState_Connecting:
      return Tone::Warning;
    default:
      return Tone::Bad;
  }
}

/// Converts "LOGGED_IN" to "logged in".
std::string readable(std::string word) {
  for (char& letter : word) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    if (letter == '_') letter = ' ';
  }
  return word;
}

std::string peerName(const ZephlinkSDK_NetworkSharingPairResult& record) {
  return record.displayName[0] != '\0' ? record.displayName : record.uuid;
}

Place placeOf(const ZephlinkSDK_ServerInfo& server) {
  char name[100];
  ZephlinkSDK_serverName(&server, name, sizeof name);
  return {.country = (server.isPrivate ? "private" : "") + std::string(server.country),
          .city = server.city,
          .name = std::string(name) + (server.isPrivate ? " (private)" : "")};
}

}  // namespace

std::string bytesText(std::int64_t bytes) {
  if (bytes < 0) return "-";
  constexpr const char* kUnits[] = {"B", "kB", "MB", "GB", "TB", "PB", "EB"};
  auto value = static_cast<double>(bytes);
  std::size_t unit = 0;
  while (value >= 999.5 && unit + 1 < std::size(kUnits)) {
    value /= 1000;
    ++unit;
  }
  char text[32];
  std::snprintf(text, sizeof text, "%.*f %s", unit == 0 || value >= 100 ? 0 : value >= 10 ? 1 : 2, value, kUnits[unit]);
  return text;
}

std::string stateWord(std::uint32_t state) { return readable(ZephlinkSDK_stateText(state)); }

std::string adapterStateWord(ZephlinkSDK_AdapterState state) { return readable(ZephlinkSDK_adapterStateText(state)); }

std::string priorityWord(ZephlinkSDK_ConnectionPriority priority) {
  return readable(ZephlinkSDK_connectionPriorityText(priority));
}

void Model::apply(const ZephlinkSDK_StateResult& record) {
  const std::lock_guard lock(mutex);
  if (current.state == record.state) return;
  current.state = record.state;
  log("state", stateWord(record.state), record.state == ZephlinkSDK_State_Connected ? Tone::Good : Tone::Plain);
  if (record.state == ZephlinkSDK_State_Connected) return;
  for (Adapter& adapter : current.adapters) adapter.now.reset();
}

void Model::apply(const ZephlinkSDK_ConnectResult& record) {
  char name[100];
  ZephlinkSDK_serverName(&record.server, name, sizeof name);
  const std::string server = name;
  const std::lock_guard lock(mutex);
  if (std::exchange(current.server, server) == server) return;
  log("server", server.empty() ? "none" : server);
}

void Model::apply(const ZephlinkSDK_AdaptersResult& record) {
  const std::lock_guard lock(mutex);
  std::vector<Adapter> adapters;
  for (std::uint32_t i = 0; i < record.adapterCount; ++i) {
    Adapter adapter = adapterOf(record.adapters[i]);
    if (Adapter* known = find(adapter.id)) {
      logChange(*known, adapter);
      adapter.now = known->now;
      adapter.transport = known->transport;
      adapter.down = std::move(known->down);
      adapter.up = std::move(known->up);
      adapter.latency = std::move(known->latency);
    }
    setEncryption(adapter);
    adapters.push_back(std::move(adapter));
  }
  current.adapters = std::move(adapters);
  ++changes;
}

void Model::apply(const ZephlinkSDK_ConnectionStatsResult& record) {
  const std::lock_guard lock(mutex);
  for (Adapter& adapter : current.adapters) {
    adapter.now.reset();
    adapter.transport.clear();
  }
  for (int i = 0; i < record.connectionCount; ++i) {
    const ZephlinkSDK_ConnectionStatsEntry& connection = record.connections[i];
    Adapter* adapter = find(connection.adapterID);
    if (adapter == nullptr || !connection.connected) continue;
    if (!adapter->now) adapter->now.emplace();
    add(connection, *adapter->now);
    adapter->transport = ZephlinkSDK_transportModeText(connection.protocol);
  }
  lastSample = Clock::now();
  pushSamples();
}

void Model::apply(const ZephlinkSDK_SettingsResult& record) {
  const std::lock_guard lock(mutex);
  Settings settings{.mode = record.bondingMode,
                    .transport = record.transportMode,
                    .encrypted = record.encrypted,
                    .byAdapter = record.perConnectionEncryptionEnabled,
                    .encryptedAdapters = {}};
  for (int i = 0; i < record.perConnectionEncryptionCount; ++i) {
    const ZephlinkSDK_PerConnectionEncryption& entry = record.perConnectionEncryptionSettings[i];
    settings.encryptedAdapters.emplace_back(entry.adapterID, entry.encrypted);
  }
  if (current.settings && current.settings->mode != settings.mode) {
    log("mode", ZephlinkSDK_bondingModeText(settings.mode));
  }
  current.settings = std::move(settings);
  for (Adapter& adapter : current.adapters) setEncryption(adapter);
  ++changes;
}

void Model::apply(const ZephlinkSDK_SessionStatsResult& record) {
  const std::lock_guard lock(mutex);
  for (int i = 0; i < record.periodCount; ++i) {
    const ZephlinkSDK_SessionStatsPeriod& period = record.periods[i];
    const std::int64_t bytes = period.bytesReceived + period.bytesSent;
    if (period.period == ZephlinkSDK_Period_Day) current.traffic.day = bytes;
    if (period.period == ZephlinkSDK_Period_Week) current.traffic.week = bytes;
    if (period.period == ZephlinkSDK_Period_Month) current.traffic.month = bytes;
  }
  ++changes;
}

void Model::apply(const ZephlinkSDK_NetworkSharingAvailableSharesResult& record) {
  const std::lock_guard lock(mutex);
  Peers peers{.connected = 0, .known = record.peerCount};
  for (int i = 0; i < record.peerCount; ++i) {
    const ZephlinkSDK_NetworkSharingPeer& peer = record.peers[i];
    const bool connected = peer.peerAsClient.peerStatus == ZephlinkSDK_PeerStatus_Authenticated ||
                           peer.peerAsHost.peerStatus == ZephlinkSDK_PeerStatus_Authenticated;
    peers.connected += connected ? 1 : 0;
  }
  current.peers = peers;
  ++changes;
}

void Model::apply(const ZephlinkSDK_NetworkSharingConnectionResult& record) {
  const std::lock_guard lock(mutex);
  if (record.errorCode != ZephlinkSDK_Error_None) {
    log("peer", std::string(record.uuid) + ": " + record.errorMessage, Tone::Bad);
  } else {
    log("peer", std::string(record.uuid) + " is " + readable(ZephlinkSDK_peerStatusText(record.peerStatus)));
  }
}

void Model::apply(const ZephlinkSDK_DirectoryResult& record) {
  auto places = std::make_shared<std::vector<Place>>();
  for (std::uint32_t i = 0; i < record.count; ++i) {
    ZephlinkSDK_ServerInfo server = record.servers[i];
    server.num = 0;
    places->push_back(placeOf(server));
    server.city[0] = '\0';
    places->push_back(placeOf(server));
  }
  std::sort(places->begin(), places->end(),
            [](const Place& left, const Place& right) { return left.name < right.name; });
  places->erase(std::unique(places->begin(), places->end(),
                            [](const Place& left, const Place& right) { return left.name == right.name; }),
                places->end());
  const std::lock_guard lock(mutex);
  current.places = std::move(places);
  ++changes;
}

void Model::ordered(const std::string& text) {
  const std::lock_guard lock(mutex);
  current.notice = {text + ": waiting for the daemon", Tone::Warning, true};
  ++changes;
}

void Model::answered(const std::string& text, const std::string& error) {
  const std::lock_guard lock(mutex);
  const Tone tone = error.empty() ? Tone::Good : Tone::Bad;
  const std::string outcome = error.empty() ? text + ": done" : text + ": " + error;
  current.notice = {outcome, tone, false};
  log("order", outcome, tone);
}

void Model::clearNotice() {
  const std::lock_guard lock(mutex);
  if (!current.notice || current.notice->pending) return;
  current.notice.reset();
  ++changes;
}

void Model::pairRequested(const ZephlinkSDK_NetworkSharingPairResult& record) {
  const std::lock_guard lock(mutex);
  log("peer", peerName(record) + " asks to pair", Tone::Warning);
}

void Model::peerAppeared(const ZephlinkSDK_NetworkSharingPairResult& record) {
  const std::lock_guard lock(mutex);
  log("peer", peerName(record) + " showed up");
}

void Model::setLink(LinkStatus status) {
  const std::lock_guard lock(mutex);
  if (std::exchange(current.link, status) == status) return;
  if (isStale(status)) {
    current.state.reset();
    current.server.clear();
    if (current.notice && current.notice->pending) {
      current.notice = {current.notice->text + ": the connection was lost", Tone::Bad, false};
    }
    current.settings.reset();
    current.traffic = {};
    current.peers.reset();
    for (Adapter& adapter : current.adapters) {
      adapter.now.reset();
      adapter.transport.clear();
      adapter.encrypted.reset();
    }
  }
  switch (status) {
    case LinkStatus::Connecting:
      break;
    case LinkStatus::Live:
      log("daemon", "reports", Tone::Good);
      break;
    case LinkStatus::Quiet:
      log("daemon", "connection lost, reconnecting", Tone::Bad);
      break;
    case LinkStatus::Unreachable:
      log("daemon", "unreachable, trying to connect", Tone::Bad);
      break;
    case LinkStatus::Mute:
      log("daemon", "does not answer, reconnecting", Tone::Bad);
      break;
  }
  ++changes;
}

LinkStatus Model::link() const {
  const std::lock_guard lock(mutex);
  return current.link;
}

void Model::clearEvents() {
  const std::lock_guard lock(mutex);
  current.events.clear();
  ++changes;
}

void Model::passTime() {
  const std::lock_guard lock(mutex);
  if (Clock::now() - lastSample < kSamplePeriod + kSampleGrace) return;
  lastSample += kSamplePeriod;
  for (Adapter& adapter : current.adapters) adapter.now.reset();
  pushSamples();
}

std::uint64_t Model::revision() const {
  const std::lock_guard lock(mutex);
  return changes;
}

Picture Model::picture() const {
  const std::lock_guard lock(mutex);
  return current;
}

void Model::log(const std::string& subject, const std::string& text, Tone tone) {
  current.events.push_front({std::time(nullptr), subject, text, tone});
  if (current.events.size() > kMostEvents) current.events.pop_back();
  ++changes;
}

void Model::logChange(const Adapter& before, const Adapter& after) {
  if (before.state != after.state) {
    log(after.name, adapterStateWord(after.state) + ", was " + adapterStateWord(before.state), toneOf(after.state));
  }
  if (before.priority != after.priority) {
    log(after.name, "priority " + priorityWord(after.priority) + ", was " + priorityWord(before.priority));
  }
}

void Model::setEncryption(Adapter& adapter) const {
  if (!current.settings) return;
  const Settings& settings = *current.settings;
  adapter.encrypted = settings.encrypted;
  if (!settings.byAdapter) return;
  for (const auto& [id, encrypted] : settings.encryptedAdapters) {
    if (id == adapter.id) adapter.encrypted = encrypted;
  }
}

Adapter* Model::find(const std::string& id) {
  const auto found = std::find_if(current.adapters.begin(), current.adapters.end(),
                                  [&id](const Adapter& adapter) { return adapter.id == id; });
  return found != current.adapters.end() ? &*found : nullptr;
}

void Model::pushSamples() {
  for (Adapter& adapter : current.adapters) {
    adapter.down.push(adapter.now ? adapter.now->down : kGap);
    adapter.up.push(adapter.now ? adapter.now->up : kGap);
    adapter.latency.push(adapter.now ? adapter.now->latency : kGap);
  }
  ++changes;
}

}  // namespace zephtop
