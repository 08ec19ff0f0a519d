// The state of zephtop: the records of the library's callbacks, in the form that the view needs.
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

/// Returns whether earlier reports may be outdated.
constexpr bool isStale(LinkStatus status) { return status != LinkStatus::Live; }

enum class Tone { Plain, Good, Warning, Bad };

struct Event {
  std::time_t time;
  std::string subject;
  std::string text;
  Tone tone;
};

/// The total traffic of an adapter's connections, with the worst latency and loss among them.
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
  std::string network;  ///< the network that it is connected to, if known
  ZephlinkSDK_AdapterState state;
  ZephlinkSDK_ConnectionPriority priority;
  ZephlinkSDK_ConnectionPriority workingPriority;
  std::string transport;          ///< transport of its connections; empty without connections
  std::optional<bool> encrypted;  ///< empty until the settings are known
  // In bytes and bits per second; -1 for values that the daemon omits.
  std::int64_t today = -1;
  std::int64_t todayLimit = -1;  ///< including the boost
  std::int64_t month = -1;
  std::int64_t monthLimit = -1;
  std::int64_t rateLimit = -1;
  std::int64_t overlimitRate = -1;  ///< applies when a limit is exceeded
  std::optional<Measurement> now;
  Series down;
  Series up;
  Series latency;
};

/// The displayed settings.
struct Settings {
  ZephlinkSDK_BondingMode mode;
  ZephlinkSDK_TransportMode transport;
  bool encrypted;
  bool byAdapter;  ///< encryption is set per adapter
  std::vector<std::pair<std::string, bool>> encryptedAdapters;
};

/// Bytes in both directions; empty until the daemon has reported the period.
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
  std::string country;  ///< in the form that the connect functions take
  std::string city;     ///< empty for any city
  std::string name;
};

/// The outcome of the latest order.
struct Notice {
  std::string text;
  Tone tone;
  bool pending;  ///< the daemon has not answered yet
};

/// A copy of all displayed data.
struct Picture {
  LinkStatus link = LinkStatus::Connecting;
  std::optional<std::uint32_t> state;  ///< empty until it is known
  std::string server;                  ///< empty without a server
  std::optional<Settings> settings;
  Traffic traffic;
  std::optional<Peers> peers;
  std::vector<Adapter> adapters;
  std::deque<Event> events;                          ///< newest first
  std::shared_ptr<const std::vector<Place>> places;  ///< null until the directory is known
  std::optional<Notice> notice;
};

/// Formats a size as "2.13 GB", with decimal units; "-" for a negative number.
std::string bytesText(std::int64_t bytes);

std::string stateWord(std::uint32_t state);
std::string adapterStateWord(ZephlinkSDK_AdapterState state);
std::string priorityWord(ZephlinkSDK_ConnectionPriority priority);

/// Receives records on the channel thread and provides pictures to the view's thread. Thread-safe.
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

  /// Records that an order was sent; `text` is the order's text.
  void ordered(const std::string& text);
  /// Records the answer to an order. An empty `error` means success.
  void answered(const std::string& text, const std::string& error);
  /// Removes the notice of an order that is not pending.
  void clearNotice();

  void setLink(LinkStatus status);
  LinkStatus link() const;
  void clearEvents();

  /// Advances the graphs while no statistics arrive. Call several times a second.
  void passTime();

  /// Returns a counter that every change increments.
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
