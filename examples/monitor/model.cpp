#include "examples/monitor/model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "l10n/location_names.h"

namespace monitor {

namespace {

constexpr std::size_t kMostEvents = 200;
constexpr std::chrono::milliseconds kSamplePeriod{1000};
// The daemon's statistics may come a little late before their absence shows.
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

const char* peerStatusWord(ZephlinkSDK_PeerStatus status) {
  constexpr const char* kWords[] = {"disconnected", "here, not authenticated", "connected"};
  return status < std::size(kWords) ? kWords[status] : "unknown";
}

std::string peerName(const ZephlinkSDK_NetworkSharingPairResult& record) {
  return record.displayName[0] != '\0' ? record.displayName : record.uuid;
}

}  // namespace

std::string stateWord(std::uint32_t state) {
  constexpr const char* kWords[] = {"logged out", "logging in",    "logged in", "auto-connecting",
                                    "connecting", "disconnecting", "connected", "over limit"};
  return state < std::size(kWords) ? kWords[state] : "unknown";
}

std::string adapterStateWord(ZephlinkSDK_AdapterState state) {
  constexpr const char* kWords[] = {"disconnected", "connecting", "connected"};
  return state < std::size(kWords) ? kWords[state] : "unknown";
}

std::string priorityWord(ZephlinkSDK_ConnectionPriority priority) {
  constexpr const char* kWords[] = {"always", "secondary", "backup", "never", "automatic"};
  return priority < std::size(kWords) ? kWords[priority] : "unknown";
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
  // The name's buffer belongs to the library: callbacks run one at a time, and nobody else here asks for a name.
  const std::string server = zephlinksdk::serverFriendlyName(record.server);
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
      adapter.down = std::move(known->down);
      adapter.up = std::move(known->up);
      adapter.latency = std::move(known->latency);
    }
    adapters.push_back(std::move(adapter));
  }
  current.adapters = std::move(adapters);
  ++changes;
}

void Model::apply(const ZephlinkSDK_ConnectionStatsResult& record) {
  const std::lock_guard lock(mutex);
  for (Adapter& adapter : current.adapters) adapter.now.reset();
  for (int i = 0; i < record.connectionCount; ++i) {
    const ZephlinkSDK_ConnectionStatsEntry& connection = record.connections[i];
    Adapter* adapter = find(connection.adapterID);
    if (adapter == nullptr || !connection.connected) continue;
    if (!adapter->now) adapter->now.emplace();
    add(connection, *adapter->now);
  }
  lastSample = Clock::now();
  pushSamples();
}

void Model::apply(const ZephlinkSDK_NetworkSharingConnectionResult& record) {
  const std::lock_guard lock(mutex);
  if (record.errorCode != ZephlinkSDK_Error_None) {
    log("peer", std::string(record.uuid) + ": " + record.errorMessage, Tone::Bad);
  } else {
    log("peer", std::string(record.uuid) + " is " + peerStatusWord(record.peerStatus));
  }
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
  if (isLost(status)) {
    current.state.reset();
    current.server.clear();
  }
  switch (status) {
    case LinkStatus::Trying:
      break;
    case LinkStatus::Live:
      log("daemon", "reports", Tone::Good);
      break;
    case LinkStatus::Quiet:
      log("daemon", "has gone quiet, asking again", Tone::Warning);
      break;
    case LinkStatus::Unreachable:
      log("daemon", "is not there, trying to connect", Tone::Bad);
      break;
    case LinkStatus::Mute:
      log("daemon", "does not answer, connecting anew", Tone::Bad);
      break;
  }
  ++changes;
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

}  // namespace monitor
