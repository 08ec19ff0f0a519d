// The monitor without its screen: what its graphs look like, what it makes of records, and how it gets back to a daemon
// that forgot it.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>

#include "examples/monitor/graph.h"
#include "examples/monitor/link.h"
#include "examples/monitor/model.h"
#include "sdk/text.h"
#include "tests/sdk/host.h"

namespace tests {
namespace {

using monitor::GraphStyle;
using monitor::kGap;
using monitor::Model;
using Lines = std::vector<std::string>;

TEST(MonitorGraph, FillsCellsFromBelow) {
  struct Case {
    std::vector<float> samples;
    int columns, rows;
    float scale;
    GraphStyle style;
    Lines lines;
  };
  const Case cases[] = {
      {{1, 2, 3, 4}, 2, 1, 4, GraphStyle::Braille, {"⣠⣾"}},
      {{3, 8}, 1, 2, 8, GraphStyle::Braille, {"⢸", "⣾"}},
      {{5, 4}, 2, 1, 4, GraphStyle::Braille, {"⠀⣿"}},
      {{0, kGap}, 1, 1, 4, GraphStyle::Braille, {"⡀"}},
      {{kGap, 1, 2, 3, 4}, 5, 1, 4, GraphStyle::Ascii, {" .:|#"}},
      {{2, 8}, 3, 2, 8, GraphStyle::Ascii, {"  #", " :#"}},
      {{9, 9, 1}, 2, 1, 4, GraphStyle::Ascii, {"#."}},
  };
  for (const Case& test : cases) {
    monitor::Series series;
    for (const float sample : test.samples) series.push(sample);
    EXPECT_EQ(monitor::drawGraph(series, test.columns, test.rows, test.scale, test.style), test.lines);
  }
}

TEST(MonitorGraph, ScalesHoldTheLargest) {
  const float cases[][3] = {{0, 1, 1}, {1, 1, 1}, {1.1F, 1, 2}, {17, 1, 20}, {20, 1, 20}, {51, 10, 100}, {3, 10, 10}};
  for (const auto& [largest, least, scale] : cases) EXPECT_FLOAT_EQ(monitor::scaleFor(largest, least), scale);
}

TEST(MonitorGraph, OldSamplesFallOut) {
  monitor::Series series;
  for (int i = 0; i < 5000; ++i) series.push(static_cast<float>(i));
  EXPECT_EQ(series.at(0), 4999);
  EXPECT_EQ(series.at(1000), 3999);
  EXPECT_EQ(series.at(4000), kGap);
  EXPECT_EQ(series.largest(10), 4999);
}

ZephlinkSDK_AdaptersResult oneAdapter(ZephlinkSDK_AdapterState state) {
  ZephlinkSDK_AdaptersResult record{};
  record.adapterCount = 1;
  zephlinksdk::copyText(record.adapters[0].adapterID, "eth0");
  zephlinksdk::copyText(record.adapters[0].name, "Ethernet");
  record.adapters[0].state = state;
  return record;
}

ZephlinkSDK_ConnectionStatsEntry connectionOf(const char* adapterID, int64_t mbps, int64_t latencyMs, double loss) {
  ZephlinkSDK_ConnectionStatsEntry entry{};
  zephlinksdk::copyText(entry.adapterID, adapterID);
  entry.connected = true;
  entry.receiveBps = mbps * 1'000'000;
  entry.sendBps = entry.receiveBps / 2;
  entry.latencyMs = latencyMs;
  entry.lossReceive = loss;
  return entry;
}

TEST(MonitorModel, PutsTheConnectionsOfAnAdapterTogether) {
  Model model;
  model.apply(oneAdapter(ZephlinkSDK_AdapterState_Connected));
  ZephlinkSDK_ConnectionStatsResult stats{};
  stats.connectionCount = 4;
  stats.connections[0] = connectionOf("eth0", 10, 20, 0.01);
  stats.connections[1] = connectionOf("eth0", 30, 5, 0.02);
  stats.connections[1].sleeping = true;
  stats.connections[2] = connectionOf("eth0", 500, 500, 0.5);
  stats.connections[2].connected = false;
  stats.connections[3] = connectionOf("wlan0", 70, 7, 0.7);
  model.apply(stats);

  const monitor::Adapter adapter = model.picture().adapters.at(0);
  ASSERT_TRUE(adapter.now);
  EXPECT_FLOAT_EQ(adapter.now->down, 40);
  EXPECT_FLOAT_EQ(adapter.now->up, 20);
  EXPECT_FLOAT_EQ(adapter.now->latency, 20);
  EXPECT_FLOAT_EQ(adapter.now->loss, 2);
  EXPECT_FALSE(adapter.now->asleep);
  EXPECT_FLOAT_EQ(adapter.down.at(0), 40);
}

TEST(MonitorModel, LogsWhatChangedAndKeepsTheGraph) {
  Model model;
  model.apply(oneAdapter(ZephlinkSDK_AdapterState_Connected));
  ZephlinkSDK_ConnectionStatsResult stats{};
  stats.connectionCount = 1;
  stats.connections[0] = connectionOf("eth0", 10, 20, 0);
  model.apply(stats);
  EXPECT_TRUE(model.picture().events.empty());
  for (int i = 0; i < 2; ++i) model.apply(oneAdapter(ZephlinkSDK_AdapterState_Connecting));

  const monitor::Picture picture = model.picture();
  ASSERT_EQ(picture.events.size(), 1U);
  EXPECT_EQ(picture.events[0].subject, "Ethernet");
  EXPECT_EQ(picture.events[0].text, "connecting, was connected");
  EXPECT_FLOAT_EQ(picture.adapters[0].down.at(0), 10);
}

TEST(MonitorModel, KnowsNoStateWithoutADaemon) {
  Model model;
  ZephlinkSDK_StateResult state{};
  state.state = ZephlinkSDK_State_Connected;
  model.apply(state);
  model.setLink(monitor::LinkStatus::Quiet);
  EXPECT_EQ(model.picture().state, ZephlinkSDK_State_Connected);
  model.setLink(monitor::LinkStatus::Unreachable);
  EXPECT_FALSE(model.picture().state);
}

/// Looks after the link until `done`; false after 30 seconds.
template <class Condition>
bool tickUntil(monitor::Link& link, Condition done) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) return false;
    link.tick();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

const Answers kState = {{"request_current_state", {event("report_current_state", R"({"state":2})")}}};

auto timesAsked(ScriptedDaemon& daemon) {
  const auto heard = daemon.heard();
  return std::count_if(heard.begin(), heard.end(),
                       [](const std::string& text) { return text.starts_with("[\"request_current_state\""); });
}

TEST(MonitorLink, SubscribesAnewWhenNothingComes) {
  ScriptedDaemon daemon(kState);
  Model model;
  monitor::Link link(configFor(daemon.port()), model);
  ASSERT_TRUE(tickUntil(link, [&] { return timesAsked(daemon) == 1 && model.picture().state; }));
  daemon.socket().drop(1);
  ASSERT_TRUE(tickUntil(link, [&] { return timesAsked(daemon) == 2; }));
  ASSERT_TRUE(tickUntil(link, [&] { return model.picture().link == monitor::LinkStatus::Live; }));
}

TEST(MonitorLink, ConnectsAnewAfterAGoodbye) {
  ScriptedDaemon daemon(kState);
  Model model;
  monitor::Link link(configFor(daemon.port()), model);
  ASSERT_TRUE(tickUntil(link, [&] { return timesAsked(daemon) == 1 && model.picture().state; }));
  daemon.socket().close(1);
  ASSERT_TRUE(tickUntil(link, [&] { return model.picture().link == monitor::LinkStatus::Mute; }));
  EXPECT_FALSE(model.picture().state);
  ASSERT_TRUE(tickUntil(link, [&] { return model.picture().link == monitor::LinkStatus::Live; }));
  EXPECT_EQ(model.picture().state, ZephlinkSDK_State_LoggedIn);
  EXPECT_TRUE(daemon.waitForConnections(2));
}

TEST(MonitorLink, QueuesNoMoreWhileNobodyListens) {
  ScriptedDaemon daemon(kState);
  Model model;
  daemon.socket().pauseAccepting();
  std::promise<void> paused;
  daemon.socket().post([&paused] { paused.set_value(); });
  paused.get_future().wait();
  monitor::Link link(configFor(daemon.port()), model);
  ASSERT_TRUE(tickUntil(link, [&] { return model.picture().link == monitor::LinkStatus::Unreachable; }));
  daemon.socket().resumeAccepting();
  ASSERT_TRUE(tickUntil(link, [&] { return model.picture().link == monitor::LinkStatus::Live; }));
  EXPECT_EQ(timesAsked(daemon), 1);
}

}  // namespace
}  // namespace tests
