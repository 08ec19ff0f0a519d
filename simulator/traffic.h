// What flows through the simulated tunnel: throughput, latency and loss of each adapter's connection, moving smoothly
// from tick to tick, with an outage now and then.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "simulator/world.h"

namespace zephsim {

/// A number from `low` to `high`, at random.
using Random = std::function<double(double low, double high)>;

/// The connection that the tunnel has over one adapter. Speeds are in megabits per second, times in milliseconds,
/// losses are fractions of 1.
struct Flow {
  std::string adapter;
  double downLimit, upLimit;
  double baseLatency;
  double down = 0, up = 0;
  double latency = 0, jitter = 0, loss = 0;
  std::uint64_t received = 0, sent = 0;  ///< bytes of the session
  int outage = 0;                        ///< ticks that it still lasts
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

  /// Forgets the session; its history stays.
  void restart();
  /// Lets `seconds` pass over a tunnel that is up. Adapters get their usage, and the state that an outage gives them;
  /// returns whether the state of one changed.
  bool tick(World& world, double seconds, std::uint64_t now);
  /// Time without a tunnel: outages end. Returns as `tick`.
  bool rest(World& world);

  /// The connections as `report_connection_stats` says them; `now` is in milliseconds on the monotonic clock.
  Json::Value connectionStats(const World& world, std::uint64_t now) const;
  /// The samples since then, in their packed form.
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
