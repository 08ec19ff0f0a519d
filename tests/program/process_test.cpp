// Tests are independent: no process of one outlives it.
#include "tests/process.h"

#include <gtest/gtest.h>

#include <set>

#include "simulator/ws_server.h"
#include "tests/ports.h"

namespace tests {
namespace {

TEST(Process, EndsWithTheTestThatStartedIt) {
  Watched<int> connections;
  zephsim::WsServer daemon(nextPort(), {.onOpen = [&](auto) { connections.change([](int& count) { ++count; }); },
                                        .onClose = [&](auto) { connections.change([](int& count) { --count; }); }});
  daemon.start();
  Process holder({HOLDER_PATH, std::to_string(daemon.port())});
  ASSERT_TRUE(connections.waitUntil([](int count) { return count == 1; }));
  holder.kill();  // it cannot end its child
  EXPECT_TRUE(connections.waitUntil([](int count) { return count == 0; }));
  daemon.stop();
}

}  // namespace
}  // namespace tests
