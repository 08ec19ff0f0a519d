// What zephtop knows: the records of the library's callbacks, kept as the view wants them.
#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/zephtop/graph.h"
#include "zephlinksdk/session.hpp"
#include "zephlinksdk/zephlinksdk.h"

namespace zephtop {

using LinkStatus = zephlinksdk::SessionStatus;

/// Whether earlier reports may be out of date.
constexpr bool isStale(LinkStatus status) { return status != LinkStatus::Live; }

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
  std::string transport;          ///< what carries its connections; empty without one
  std::optional<bool> encrypted;  ///< none while the settings are not known
  // Bytes, and bits per second; -1 for what the daemon does not give.
  std::int64_t today = -1;
  std::int64_t todayLimit = -1;  ///< the boost included
  std::int64_t month = -1;
  std::int64_t monthLimit = -1;
  std::int64_t rateLimit = -1;
  std::int64_t overlimitRate = -1;  ///< in force when a limit is exceeded
  std::optional<Measurement> now;
  Series down;
  Series up;
  Series latency;
};

/// The settings that are shown.
struct Settings {
  ZephlinkSDK_BondingMode mode;
  ZephlinkSDK_TransportMode transport;
  bool encrypted;
  bool byAdapter;  ///< encryption is set for each adapter
  std::vector<std::pair<std::string, bool>> encryptedAdapters;
};

/// Bytes both ways; none while the daemon has not reported the period.
struct Traffic {
  std::optional<std::int64_t> day;
  std::optional<std::int64_t> week;
  std::optional<std::int64_t> month;
};

struct Peers {
  int connected;
  int known;
};

/// A country or city of the directory.
struct Place {
  std::string country;  ///< as the connect functions take it
  std::string city;     ///< empty for any
  std::string name;
};

/// What has become of the latest order.
struct Notice {
  std::string text;
  Tone tone;
  bool pending;  ///< the daemon has not answered yet
};

/// All that is shown, as a copy.
struct Picture {
  LinkStatus link = LinkStatus::Connecting;
  std::optional<std::uint32_t> state;  ///< none while it is not known
  std::string server;                  ///< empty without one
  std::optional<Settings> settings;
  Traffic traffic;
  std::optional<Peers> peers;
  std::vector<Adapter> adapters;
  std::deque<Event> events;                          ///< the newest first
  std::shared_ptr<const std::vector<Place>> places;  ///< null while the directory is not known
  std::optional<Notice> notice;
};

/// "2.13 GB", with decimal units; "-" for a negative number.
std::string bytesText(std::int64_t bytes);

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
  void apply(const ZephlinkSDK_SettingsResult& record);
  void apply(const ZephlinkSDK_SessionStatsResult& record);
  void apply(const ZephlinkSDK_NetworkSharingAvailableSharesResult& record);
  void apply(const ZephlinkSDK_NetworkSharingConnectionResult& record);
  void pairRequested(const ZephlinkSDK_NetworkSharingPairResult& record);
  void peerAppeared(const ZephlinkSDK_NetworkSharingPairResult& record);

  void apply(const ZephlinkSDK_DirectoryResult& record);

  /// An order was sent; `text` is the order's.
  void ordered(const std::string& text);
  /// Its answer. An empty `error` is a success.
  void answered(const std::string& text, const std::string& error);
  /// Removes the notice of an order that is no longer pending.
  void clearNotice();

  void setLink(LinkStatus status);
  LinkStatus link() const;
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
  void setEncryption(Adapter& adapter) const;

  mutable std::mutex mutex;
  Picture current;
  std::uint64_t changes = 0;
  Clock::time_point lastSample = Clock::now();
};

}  // namespace zephtop
