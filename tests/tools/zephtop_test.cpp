// zephtop without its screen: graphs, conversion of records, and a session that feeds the model.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>

#include "base/text.h"
#include "tests/sdk/host.h"
#include "tests/sdk/manual_clock.h"
#include "tools/zephtop/dialogs.h"
#include "tools/zephtop/graph.h"
#include "tools/zephtop/link.h"
#include "tools/zephtop/model.h"

namespace tests {
namespace {

using zephtop::GraphStyle;
using zephtop::kGap;
using zephtop::Model;
using Lines = std::vector<std::string>;

TEST(ZephtopGraph, FillsCellsFromBelow) {
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
    zephtop::Series series;
    for (const float sample : test.samples) series.push(sample);
    EXPECT_EQ(zephtop::drawGraph(series, 0, test.columns, test.rows, test.scale, test.style), test.lines);
  }
}

TEST(ZephtopGraph, ScalesFitTheLargest) {
  const float cases[][3] = {{0, 1, 1}, {1, 1, 1}, {1.1F, 1, 2}, {17, 1, 20}, {20, 1, 20}, {51, 10, 100}, {3, 10, 10}};
  for (const auto& [largest, least, scale] : cases) EXPECT_FLOAT_EQ(zephtop::scaleFor(largest, least), scale);
}

TEST(ZephtopGraph, OldSamplesAreDropped) {
  zephtop::Series series;
  for (int i = 0; i < 5000; ++i) series.push(static_cast<float>(i));
  EXPECT_EQ(series.at(0), 4999);
  EXPECT_EQ(series.at(1000), 3999);
  EXPECT_EQ(series.largest(1000, 10), 3999);
  EXPECT_EQ(series.at(4000), kGap);
  EXPECT_EQ(series.largest(0, 10), 4999);
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

TEST(ZephtopModel, CombinesTheConnectionsOfAnAdapter) {
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

  const zephtop::Adapter adapter = model.picture().adapters.at(0);
  ASSERT_TRUE(adapter.now);
  EXPECT_FLOAT_EQ(adapter.now->down, 40);
  EXPECT_FLOAT_EQ(adapter.now->up, 20);
  EXPECT_FLOAT_EQ(adapter.now->latency, 20);
  EXPECT_FLOAT_EQ(adapter.now->loss, 2);
  EXPECT_FALSE(adapter.now->asleep);
  EXPECT_FLOAT_EQ(adapter.down.at(0), 40);
}

TEST(ZephtopModel, LogsWhatChangedAndKeepsTheGraph) {
  Model model;
  model.apply(oneAdapter(ZephlinkSDK_AdapterState_Connected));
  ZephlinkSDK_ConnectionStatsResult stats{};
  stats.connectionCount = 1;
  stats.connections[0] = connectionOf("eth0", 10, 20, 0);
  model.apply(stats);
  EXPECT_TRUE(model.picture().events.empty());
  for (int i = 0; i < 2; ++i) model.apply(oneAdapter(ZephlinkSDK_AdapterState_Connecting));

  const zephtop::Picture picture = model.picture();
  ASSERT_EQ(picture.events.size(), 1U);
  EXPECT_EQ(picture.events[0].subject, "Ethernet");
  EXPECT_EQ(picture.events[0].text, "connecting, was connected");
  EXPECT_FLOAT_EQ(picture.adapters[0].down.at(0), 10);
}

TEST(ZephtopModel, ClearsTheStateOfALostDaemon) {
  using zephtop::LinkStatus;
  for (const LinkStatus gone : {LinkStatus::Quiet, LinkStatus::Unreachable, LinkStatus::Mute}) {
    SCOPED_TRACE(zephlinksdk::sessionStatusText(gone));
    Model model;
    ZephlinkSDK_StateResult state{};
    state.state = ZephlinkSDK_State_Connected;
    model.apply(state);
    model.apply(oneAdapter(ZephlinkSDK_AdapterState_Connected));
    ZephlinkSDK_ConnectionStatsResult stats{};
    stats.connectionCount = 1;
    stats.connections[0] = connectionOf("eth0", 10, 20, 0);
    model.apply(stats);
    model.setLink(LinkStatus::Live);
    EXPECT_EQ(model.picture().state, ZephlinkSDK_State_Connected);
    model.setLink(gone);
    EXPECT_FALSE(model.picture().state);
    EXPECT_FALSE(model.picture().adapters.at(0).now);
  }
}

// ---- Dialogs
// ---------------------------------------------------------------------------------------------------------

/// Two adapters and a directory.
zephtop::Picture pictureForDialogs() {
  zephtop::Picture picture;
  picture.adapters.resize(2);
  picture.adapters[1].id = "eth0";
  picture.adapters[1].name = "Ethernet";
  picture.places = std::make_shared<const std::vector<zephtop::Place>>(std::vector<zephtop::Place>{
      {"de", "", "Germany"}, {"de", "frankfurt", "Germany - Frankfurt"}, {"us", "nyc", "United States - New York"}});
  return picture;
}

/// Presses the keys with the second adapter selected. Returns the order.
std::optional<zephtop::Order> orderOf(zephtop::Dialogs& dialogs, const std::vector<int>& keys) {
  const zephtop::Picture picture = pictureForDialogs();
  for (const int key : keys) dialogs.press(key, picture, 1);
  return dialogs.takeOrder();
}

TEST(ZephtopDialogs, ReturnTheConfirmedOrder) {
  using namespace zephtop;
  const struct {
    std::vector<int> keys;
    const char* text;
  } cases[] = {
      {{'c', kEnter, 'y'}, "connect to the closest server"},
      {{'c', kDown, kEnter, 'y'}, "connect to the last server"},
      {{'c', kDown, kDown, kDown, kEnter, 'Y', 'o', 'R', kEnter, 'y'}, "connect to United States - New York"},
      {{'c', kPageDown, kEnter, 'g', 'e', 'x', kBackspace, kDown, kEnter, 'y'}, "connect to Germany - Frankfurt"},
      {{'c', kPageDown, kEnter, 'q', 'z', kEnter, 'y'}, nullptr},
      {{'d', 'y'}, "disconnect"},
      {{'m', kDown, kUp, kDown, kEnter, 'y'}, "set the mode to redundant"},
      {{'p', kPageDown, kEnter, 'y'}, "set the priority of Ethernet to never"},
      {{'d', 'n'}, nullptr},
      {{'d', kEnter}, nullptr},
      {{'d', kEscape, 'y'}, nullptr},
      {{'m', 'q', kEnter, 'y'}, nullptr},
      {{'?', 'd', 'y'}, nullptr},
  };
  for (const auto& test : cases) {
    Dialogs dialogs(false);
    const auto order = orderOf(dialogs, test.keys);
    EXPECT_EQ(order ? order->text : "none", test.text != nullptr ? test.text : "none");
    Dialogs readOnly(true);
    EXPECT_FALSE(orderOf(readOnly, test.keys));
  }
}

TEST(ZephtopDialogs, HelpOmitsChangesIfReadOnly) {
  const auto helpOf = [](bool readOnly) {
    zephtop::Dialogs dialogs(readOnly);
    dialogs.press('?', {}, 0);
    return dialogs.dialog({})->lines;
  };
  const auto naming = [](const char* word) {
    return [word](const std::string& line) { return line.find(word) != std::string::npos; };
  };
  EXPECT_TRUE(std::ranges::any_of(helpOf(false), naming("disconnect")));
  EXPECT_FALSE(std::ranges::any_of(helpOf(true), naming("connect")));
}

// ---- Amounts -------------------------------------------------------------------------------------------------------

TEST(ZephtopModel, ShowsBytesWithThreeDigits) {
  const std::pair<std::int64_t, const char*> cases[] = {{-1, "-"},
                                                        {0, "0 B"},
                                                        {999, "999 B"},
                                                        {1000, "1.00 kB"},
                                                        {12'345, "12.3 kB"},
                                                        {999'600, "1.00 MB"},
                                                        {2'130'000'000, "2.13 GB"},
                                                        {INT64_MAX, "9.22 EB"}};
  for (const auto& [bytes, text] : cases) EXPECT_EQ(zephtop::bytesText(bytes), text);
}

TEST(ZephtopModel, KeepsPeriodsThatAReportOmits) {
  Model model;
  ZephlinkSDK_SessionStatsResult record{};
  record.periodCount = 2;
  record.periods[0].period = ZephlinkSDK_Period_Day;
  record.periods[0].bytesReceived = 5;
  record.periods[1].period = ZephlinkSDK_Period_Month;
  record.periods[1].bytesReceived = 50;
  record.periods[1].bytesSent = 20;
  model.apply(record);
  record.periodCount = 1;
  record.periods[0].bytesSent = 3;
  model.apply(record);
  EXPECT_EQ(model.picture().traffic.day, 8);
  EXPECT_FALSE(model.picture().traffic.week);
  EXPECT_EQ(model.picture().traffic.month, 70);
}

TEST(ZephtopModel, EncryptionByAdapterOverridesTheTunnels) {
  Model model;
  model.apply(oneAdapter(ZephlinkSDK_AdapterState_Connected));
  ZephlinkSDK_SettingsResult record{};
  record.encrypted = true;
  record.perConnectionEncryptionCount = 1;
  zephlinksdk::copyText(record.perConnectionEncryptionSettings[0].adapterID, "eth0");
  model.apply(record);
  EXPECT_EQ(model.picture().adapters[0].encrypted, true);
  record.perConnectionEncryptionEnabled = true;
  model.apply(record);
  EXPECT_EQ(model.picture().adapters[0].encrypted, false);
}

/// Returns the picture of a model once `done` is true for it; the last one after 30 seconds.
template <class Condition>
zephtop::Picture pictureWhen(const Model& model, Condition done) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!done(model.picture()) && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return model.picture();
}

TEST(ZephtopLink, ShowsTheRecordsOfASession) {
  using zephtop::LinkStatus;
  ScriptedDaemon daemon({{"request_version_data", {kVersionReport}},
                         {"request_current_state", {stateReport(2)}},
                         {"request_networks", {event("report_networks", R"({"networks":[]})")}}});
  const auto clock = std::make_shared<ManualClock>();
  Model model;
  const zephtop::Link link(configFor(daemon.port()), model, clock);
  const auto live = [](const zephtop::Picture& now) { return now.link == LinkStatus::Live && now.state; };
  EXPECT_EQ(pictureWhen(model, live).state, ZephlinkSDK_State_LoggedIn);
  ASSERT_TRUE(daemon.waitForRequest(R"(["stat_subscribe",{"enable":true},"zephlink_sdk"])"));
  daemon.send(event("report_networkshare_auth_request", R"({"uuid":"u","display_name":"Peer"})"));
  const auto asked = [](const zephtop::Picture& now) {
    return std::ranges::any_of(now.events, [](const zephtop::Event& event) { return event.subject == "peer"; });
  };
  EXPECT_TRUE(asked(pictureWhen(model, asked)));
  daemon.socket().pauseAccepting();
  daemon.socket().drop(1);
  clock->advance(std::chrono::milliseconds(800));
  EXPECT_EQ(pictureWhen(model, [](const auto& now) { return now.link == LinkStatus::Quiet; }).link, LinkStatus::Quiet);
}

TEST(ZephtopLink, ShowsTheAnswerToAnOrder) {
  using namespace zephtop;
  ScriptedDaemon daemon(
      {{"request_version_data", {kVersionReport}},
       {"set_connection_algorithm",
        {event("report_settings_error", R"({"setting":"set_connection_algorithm","type":11,"msg":"locked"})")}},
       {"server_disconnect", {stateReport(2)}}});
  Model model;
  Link link(configFor(daemon.port()), model);
  const auto live = [](const Picture& now) { return now.link == LinkStatus::Live; };
  ASSERT_TRUE(live(pictureWhen(model, live)));
  const auto settled = [](const Picture& now) { return now.notice && !now.notice->pending; };
  Order order;
  order.kind = Order::Kind::Disconnect;
  order.text = "disconnect";
  link.perform(order);
  EXPECT_EQ(pictureWhen(model, settled).notice->text, "disconnect: done");
  order.kind = Order::Kind::SetMode;
  order.text = "set the mode";
  link.perform(order);
  EXPECT_EQ(pictureWhen(model, settled).notice->tone, Tone::Bad);
  model.clearNotice();
  EXPECT_FALSE(model.picture().notice);
}

}  // namespace
}  // namespace tests
