// The monitor's link to the daemon: the library's object and the subscriptions, kept alive over the daemon's restarts.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <vector>

#include "examples/monitor/model.h"
#include "sdk/facade.h"

namespace monitor {

/// Subscriptions outlive a lost connection, but their requests are sent only once: a daemon that was started anew knows
/// nothing of them. So the link listens for silence. When nothing has come for some seconds it subscribes anew; when
/// that is not answered either it begins again with a new object, whose queue is empty and whose connection is fresh
/// (one that a daemon has closed with a goodbye is not opened again by the object that held it).
///
/// All methods belong to one thread, which isn't the channel's.
class Link {
 public:
  /// `ofRecords` gets every record, on the channel thread. It must outlive the link.
  Link(const ZephlinkSDK_Config& config, Model& ofRecords);
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  /// Looks after the subscriptions. To be called several times a second.
  void tick();

 private:
  using Clock = std::chrono::steady_clock;

  void open();
  void close();
  void subscribe();
  void unsubscribe();
  void begin(const ZephlinkSDK_Result& call);
  void recover(std::uint32_t failure);
  void heard();

  // Callbacks; `userData` is the link.
  template <class Record>
  static bool onReport(Record record, void* userData);
  static bool onState(ZephlinkSDK_StateResult record, void* userData);
  static bool onPairRequest(ZephlinkSDK_NetworkSharingPairResult record, void* userData);
  static bool onNewPeer(ZephlinkSDK_NetworkSharingPairResult record, void* userData);

  ZephlinkSDK_Config config;
  Model& model;
  zephlinksdk::ZephlinkSDK* sdk = nullptr;
  std::vector<std::uint64_t> handles;
  Clock::time_point subscribed;
  Clock::time_point reopenAt;
  std::chrono::seconds mutePause;

  // Shared with the channel thread.
  std::atomic<Clock::time_point> lastReport{Clock::time_point{}};
  std::atomic<bool> unanswered{false};
  std::atomic<std::uint32_t> failed{ZephlinkSDK_Error_None};
};

}  // namespace monitor
