// Peers that accept a connection and send nothing, and callbacks of two objects that call each other: calls still time
// out and objects can be destroyed.
#include <gtest/gtest.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <utility>

#include "sdk/link/websocket_impl.h"
#include "tests/sdk/host.h"
#include "tests/sdk/raw_server.h"

namespace tests {
namespace {

using namespace std::chrono_literals;

std::chrono::milliseconds timeOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

TEST(SilentPeer, LetsCallsTimeOut) {
  const SilentPeer peer;
  const Sdk sdk = connectTo(peer.port());
  ZephlinkSDK_StateResult record{};
  const auto elapsed = timeOf([&] { record = ZephlinkSDK_getState(sdk.get(), nullptr, nullptr); });
  EXPECT_EQ(record.errorCode, ZephlinkSDK_Error_NotConnected);
  EXPECT_STREQ(record.errorMessage, "Unable to connect");
  EXPECT_GE(elapsed, 5s);
  EXPECT_LT(elapsed, 7s);
}

TEST(SilentPeer, DoesNotDelayDestruction) {
  const SilentPeer peer;
  for (int i = 0; i < 5; ++i) {
    Sdk sdk = connectTo(peer.port());
    EXPECT_FALSE(ZephlinkSDK_exitDaemon(sdk.get()).hasError);
    EXPECT_LT(timeOf([&] { sdk.reset(); }), 1s) << "waits for the peer";
  }
}

/// The client waits for a peer that sends its answer byte by byte, but not for one that stops within it.
TEST(SilentPeer, MayResumeItsAnswer) {
  std::promise<void> timedOut;
  RawServer server([&](RawConnection& connection) {
    readRequest(connection);
    connection << "HTTP/1.1 101 Switch" << std::flush;
    timedOut.get_future().wait();
    connection << "ing Protocols\r\n\r\n" << std::flush;
    readAll(connection);
  });
  {
    const Sdk sdk = connectTo(server.port());
    EXPECT_EQ(ZephlinkSDK_getState(sdk.get(), nullptr, nullptr).errorCode, ZephlinkSDK_Error_NotConnected);
    timedOut.set_value();
    // From here on the link is usable, although the peer does not answer.
    EXPECT_EQ(ZephlinkSDK_getState(sdk.get(), nullptr, nullptr).errorCode, ZephlinkSDK_Error_Timeout);
  }
}

/// Each callback registers and removes at the other object, while the other's callback does the same.
TEST(TwoObjects, MayCallEachOtherFromTheirCallbacks) {
  Host one(statesAndVersion(std::vector<int>(200, 1)));
  Host two(statesAndVersion(std::vector<int>(200, 2)));
  Collector<ZephlinkSDK_StateResult> ofOne;
  Collector<ZephlinkSDK_StateResult> ofTwo;
  Collector<ZephlinkSDK_VersionResult> versions;
  const auto callOther = [&](Host& other) {
    return [&versions, &other](const ZephlinkSDK_StateResult&) {
      const auto handle = ZephlinkSDK_getVersion(other.sdk, versions.collect, &versions).handle;
      ZephlinkSDK_removeListener(other.sdk, handle);
      return true;
    };
  };
  ofOne.answer = callOther(two);
  ofTwo.answer = callOther(one);
  ZephlinkSDK_getState(one.sdk, ofOne.collect, &ofOne);
  ZephlinkSDK_getState(two.sdk, ofTwo.collect, &ofTwo);
  EXPECT_TRUE(ofOne.waitFor(200));
  EXPECT_TRUE(ofTwo.waitFor(200));
}

/// A callback that does not return blocks its own object only: other threads can register and remove entries.
TEST(TwoObjects, RegisterWhileACallbackRuns) {
  Host host(statesAndVersion({1}));
  Collector<ZephlinkSDK_StateResult> states;
  Collector<ZephlinkSDK_VersionResult> versions;
  std::promise<void> begun;
  std::promise<void> registered;
  states.answer = [&](const ZephlinkSDK_StateResult&) {
    begun.set_value();
    return registered.get_future().wait_for(20s) == std::future_status::ready;
  };
  ZephlinkSDK_getState(host.sdk, states.collect, &states);
  begun.get_future().wait();
  const auto handle = ZephlinkSDK_getVersion(host.sdk, versions.collect, &versions).handle;
  ZephlinkSDK_removeListener(host.sdk, handle + 1000);
  registered.set_value();
  EXPECT_TRUE(states.waitFor(1));
  EXPECT_TRUE(versions.waitFor(1));
}

TEST(Removal, WaitsForTheCallbackThatItRemoves) {
  Host host(statesAndVersion({1}));
  Collector<ZephlinkSDK_StateResult> states;
  std::promise<void> begun;
  std::atomic<bool> ended{false};
  states.answer = [&](const ZephlinkSDK_StateResult&) {
    begun.set_value();
    for (int i = 0; i < 1000; ++i) std::this_thread::yield();
    ended = true;
    return true;
  };
  const auto handle = ZephlinkSDK_getState(host.sdk, states.collect, &states).handle;
  begun.get_future().wait();
  ZephlinkSDK_removeListener(host.sdk, handle);
  EXPECT_TRUE(ended);
}

}  // namespace
}  // namespace tests
