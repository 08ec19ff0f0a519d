// The traffic through the simulated tunnel: throughput, latency and loss of each adapter's connection, changing
// smoothly from tick to tick, with occasional outages.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "simulator/world.h"

namespace zephsim {

/// Returns a random number from `low` to `high`.
using Random = std::function<double(double low, double high)>;

/// The tunnel's connection over one adapter. Speeds are in megabits per second, times in milliseconds, losses are
/// fractions of 1.
struct Flow {
  std::string adapter;
  double downLimit, upLimit;
  double baseLatency;
  double down = 0, up = 0;
  double latency = 0, jitter = 0, loss = 0;
  std::uint64_t received = 0, sent = 0;  ///< bytes of the session
  int outage = 0;                        ///< remaining ticks
  bool connected = false;
  bool sleeping = false;  ///< kept in reserve

  bool carries() const { return connected && !sleeping; }
};

/// Bytes of a session.
struct Volume {
  std::uint64_t received = 0, sent = 0;
};

class Traffic {
 public:
  explicit Traffic(Random numbers);

  /// Resets the session; keeps the history.
  void restart();
  /// Simulates `seconds` of an established tunnel: updates the adapters' usage, and their states during outages.
  /// Returns whether the state of an adapter has changed.
  bool tick(World& world, double seconds, std::uint64_t now);
  /// Simulates time without a tunnel: outages end. Returns the same as `tick`.
  bool rest(World& world);

  /// Returns the connections as in `report_connection_stats`; `now` is in milliseconds on the monotonic clock.
  Json::Value connectionStats(const World& world, std::uint64_t now) const;
  /// Returns the samples since `since`, in their packed form.
  Json::Value history(std::uint64_t since) const;

  Volume sessionVolume() const;
  double totalDown() const;
  double totalUp() const;
  double fastestDown() const;
  double fastestUp() const;
  double worstLoss() const;
  int carrying() const;
  std::uint64_t failovers() const { return failoverCount; }
  double maxDown() const { return peakDown; }
  double maxUp() const { return peakUp; }

 private:
  double sum(double Flow::*field) const;
  double most(double Flow::*field) const;
  void move(Flow& flow, const Json::Value& adapter);
  bool endOutage(Flow& flow, Json::Value& adapter);
  bool updateOutage(Flow& flow, Json::Value& adapter);
  void setReserves(World& world);
  void remember(const World& world, std::uint64_t now);

  Random random;
  std::vector<Flow> flows;
  std::deque<Json::Value> samples;
  std::uint64_t failoverCount = 0;
  double peakDown = 0, peakUp = 0;
};

}  // namespace zephsim
