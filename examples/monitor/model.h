// What the monitor knows: the records of the library's callbacks, kept as the view wants them.
#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "examples/monitor/graph.h"
#include "sdk/facade.h"

namespace monitor {

/// How things stand between the monitor and the daemon.
enum class LinkStatus {
  Trying,       ///< nothing heard yet
  Live,         ///< reports come
  Quiet,        ///< none has come for some seconds
  Unreachable,  ///< no daemon listens
  Mute,         ///< a daemon listens and does not answer
};

/// Whether what was reported before may hold no longer.
constexpr bool isLost(LinkStatus status) { return status == LinkStatus::Unreachable || status == LinkStatus::Mute; }

enum class Tone { Plain, Good, Warning, Bad };

struct Event {
  std::time_t time;
  std::string subject;
  std::string text;
  Tone tone;
};

/// What the connections of one adapter carry together, and the worst latency and loss among them.
struct Measurement {
  float down = 0;     ///< Mbit/s
  float up = 0;       ///< Mbit/s
  float latency = 0;  ///< ms
  float loss = 0;     ///< percent
  bool asleep = true;
};

struct Adapter {
  std::string id;
  std::string name;
  std::string network;  ///< what it is connected to, as far as the daemon knows
  ZephlinkSDK_AdapterState state;
  ZephlinkSDK_ConnectionPriority priority;
  ZephlinkSDK_ConnectionPriority workingPriority;
  std::optional<Measurement> now;
  Series down;
  Series up;
  Series latency;
};

/// All that is shown, as a copy.
struct Picture {
  LinkStatus link = LinkStatus::Trying;
  std::optional<std::uint32_t> state;  ///< none while it is not known
  std::string server;                  ///< empty without one
  std::vector<Adapter> adapters;
  std::deque<Event> events;  ///< the newest first
};

std::string stateWord(std::uint32_t state);
std::string adapterStateWord(ZephlinkSDK_AdapterState state);
std::string priorityWord(ZephlinkSDK_ConnectionPriority priority);

/// Takes records from the channel thread and gives pictures to the thread of the view.
class Model {
 public:
  void apply(const ZephlinkSDK_StateResult& record);
  void apply(const ZephlinkSDK_ConnectResult& record);
  void apply(const ZephlinkSDK_AdaptersResult& record);
  void apply(const ZephlinkSDK_ConnectionStatsResult& record);
  void apply(const ZephlinkSDK_NetworkSharingConnectionResult& record);
  void pairRequested(const ZephlinkSDK_NetworkSharingPairResult& record);
  void peerAppeared(const ZephlinkSDK_NetworkSharingPairResult& record);

  void setLink(LinkStatus status);
  void clearEvents();

  /// Lets the graphs run on while no statistics come. To be called several times a second.
  void passTime();

  /// Counts up with every change.
  std::uint64_t revision() const;
  Picture picture() const;

 private:
  using Clock = std::chrono::steady_clock;

  void log(const std::string& subject, const std::string& text, Tone tone = Tone::Plain);
  void logChange(const Adapter& before, const Adapter& after);
  Adapter* find(const std::string& id);
  void pushSamples();

  mutable std::mutex mutex;
  Picture current;
  std::uint64_t changes = 0;
  Clock::time_point lastSample = Clock::now();
};

}  // namespace monitor
