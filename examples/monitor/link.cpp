#include "examples/monitor/link.h"

#include <algorithm>
#include <future>
#include <thread>
#include <utility>

namespace monitor {

namespace {

using namespace std::chrono_literals;

/// Statistics come once a second: without any report for so long something is wrong.
constexpr auto kQuiet = 3s;
/// What was reported while the connection was away is caught up with after so long, even if nobody noticed.
constexpr auto kRefresh = 30s;
/// An object whose daemon accepts and says nothing leaves its connection to the process: not too many of them.
constexpr auto kLeastMutePause = 1s;
constexpr auto kMostMutePause = 60s;

/// Ends the object on a thread of its own and waits for that a little: one that is just connecting to a host that
/// doesn't answer would hold us up. Its callbacks must have been removed.
void destroy(zephlinksdk::ZephlinkSDK* sdk) {
  std::promise<void> done;
  const std::future<void> ended = done.get_future();
  std::thread([sdk, done = std::move(done)]() mutable {
    ZephlinkSDK_destroy(sdk);
    done.set_value();
  }).detach();
  ended.wait_for(1s);
}

}  // namespace

Link::Link(const ZephlinkSDK_Config& wanted, Model& ofRecords)
    : config(wanted), model(ofRecords), mutePause(kLeastMutePause) {
  open();
}

Link::~Link() { close(); }

void Link::tick() {
  const auto now = Clock::now();
  if (const std::uint32_t failure = failed.exchange(ZephlinkSDK_Error_None)) return recover(failure);
  if (sdk == nullptr) {
    if (now >= reopenAt) open();
    return;
  }
  const auto last = lastReport.load();
  if (last == Clock::time_point{}) return;  // the first time, or after a failure: the calls themselves tell
  const bool quiet = now - last > kQuiet;
  model.setLink(quiet ? LinkStatus::Quiet : LinkStatus::Live);
  if (!quiet) mutePause = kLeastMutePause;
  if (unanswered) return;
  const auto age = now - subscribed;
  if (age > kRefresh || (quiet && age > kQuiet)) subscribe();
}

/// The state, which every daemon reports when asked, has not come in time.
void Link::recover(std::uint32_t failure) {
  close();
  lastReport = Clock::time_point{};
  if (failure == ZephlinkSDK_Error_NotConnected) {
    model.setLink(LinkStatus::Unreachable);
    return open();
  }
  model.setLink(LinkStatus::Mute);
  reopenAt = Clock::now() + mutePause;
  mutePause = std::min<std::chrono::seconds>(2 * mutePause, kMostMutePause);
}

void Link::open() {
  sdk = ZephlinkSDK_create(config);
  subscribe();
}

void Link::close() {
  if (sdk == nullptr) return;
  unsubscribe();
  destroy(std::exchange(sdk, nullptr));
}

void Link::subscribe() {
  unsubscribe();
  subscribed = Clock::now();
  unanswered = true;
  const ZephlinkSDK_StateResult begun = ZephlinkSDK_getState(sdk, onState, this);
  if (begun.hasError) failed = begun.errorCode;
  begin(begun);
  begin(ZephlinkSDK_getConnectedServer(sdk, onReport<ZephlinkSDK_ConnectResult>, this));
  begin(ZephlinkSDK_getAdapters(sdk, onReport<ZephlinkSDK_AdaptersResult>, this));
  begin(ZephlinkSDK_getConnectionStats(sdk, onReport<ZephlinkSDK_ConnectionStatsResult>, this));
  begin(ZephlinkSDK_listenForNetworkSharePeerStatusChange(sdk, onReport<ZephlinkSDK_NetworkSharingConnectionResult>,
                                                          this));
  begin(ZephlinkSDK_listenForNetworkSharePairRequest(sdk, onPairRequest, this));
  begin(ZephlinkSDK_listenForNetworkShareNewPeerAvailable(sdk, onNewPeer, this));
  ZephlinkSDK_subscribeStats(sdk, true, 0, nullptr);
}

/// A refused call has no handle.
void Link::begin(const ZephlinkSDK_Result& call) {
  if (!call.hasError) handles.push_back(call.handle);
}

void Link::unsubscribe() {
  for (const std::uint64_t handle : handles) ZephlinkSDK_removeListener(sdk, handle);
  handles.clear();
}

void Link::heard() { lastReport = Clock::now(); }

template <class Record>
bool Link::onReport(Record record, void* userData) {
  Link& link = *static_cast<Link*>(userData);
  if (record.hasError) return true;
  link.heard();
  link.model.apply(record);
  return true;
}

bool Link::onState(ZephlinkSDK_StateResult record, void* userData) {
  Link& link = *static_cast<Link*>(userData);
  link.unanswered = false;
  if (record.hasError) link.failed = record.errorCode;
  return onReport(record, userData);
}

bool Link::onPairRequest(ZephlinkSDK_NetworkSharingPairResult record, void* userData) {
  static_cast<Link*>(userData)->model.pairRequested(record);
  return true;
}

bool Link::onNewPeer(ZephlinkSDK_NetworkSharingPairResult record, void* userData) {
  static_cast<Link*>(userData)->model.peerAppeared(record);
  return true;
}

}  // namespace monitor
