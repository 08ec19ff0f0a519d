#include "cli/families/statistics.h"

#include <gtest/gtest.h>

namespace {

TEST(ConnectionStats, BriefEntriesShowTheEssentials) {
  ZephlinkSDK_ConnectionStatsResult record{};
  record.connectionCount = 2;
  const Json::Value shown = cli::toJson(record, true);
  ASSERT_EQ(shown["connections"].size(), 2U);
  EXPECT_EQ(shown["connections"][1].getMemberNames(),
            (std::vector<std::string>{"adapterID", "connected", "connectionID", "inFlight", "inFlightWindow",
                                      "latencyMs", "lossReceive", "lossSend", "sleeping", "totalBps"}));
  EXPECT_EQ(cli::toJson(record, false)["connections"][0].size(), 24U);
}

}  // namespace
