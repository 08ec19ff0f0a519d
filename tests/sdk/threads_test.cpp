// Many threads using one object, callbacks that make calls, and objects that are created and destroyed. ThreadSanitizer
// detects the errors.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/sdk/host.h"

namespace tests {
namespace {

/// ZEPHCTL_ROUNDS sets the length of the loops: see scripts/threads.
int rounds(int otherwise) {
  const char* text = std::getenv("ZEPHCTL_ROUNDS");
  return text != nullptr ? std::atoi(text) : otherwise;
}

TEST(Threads, CallersOnManyThreadsGetTheirOwnAnswers) {
  Host host(statesAndVersion({6}));
  const int perThread = rounds(200) / 8;
  std::atomic<int> right{0};
  onThreads(8, [&](int thread) {
    for (int n = 0; n < perThread; ++n) {
      const bool good = (thread + n) % 2 == 0 ? ZephlinkSDK_getState(host.sdk, nullptr, nullptr).state == 6
                                              : ZephlinkSDK_getVersion(host.sdk, nullptr, nullptr).build == 4;
      right += good ? 1 : 0;
    }
  });
  EXPECT_EQ(right, 8 * perThread);
}

/// Makes a call from each callback until `left` is used up.
struct Chain {
  zephlinksdk::ZephlinkSDK* sdk;
  std::atomic<int> left;
  Collector<ZephlinkSDK_VersionResult> done;

  static bool next(ZephlinkSDK_VersionResult record, void* userData) {
    auto* chain = static_cast<Chain*>(userData);
    if (--chain->left > 0) {
      ZephlinkSDK_getVersion(chain->sdk, next, chain);
    } else {
      Collector<ZephlinkSDK_VersionResult>::collect(record, &chain->done);
    }
    return false;
  }
};

TEST(Threads, CallbacksRegisterMoreCalls) {
  Chain chain{nullptr, rounds(200), {}};
  Host host(statesAndVersion({}));
  chain.sdk = host.sdk;
  ZephlinkSDK_getVersion(host.sdk, Chain::next, &chain);
  ASSERT_TRUE(chain.done.waitFor(1));
  EXPECT_EQ(chain.done.all()[0].build, 4);
}

/// After its removal, a callback's user data belongs to the caller again: this one detects later accesses.
struct Owned {
  std::atomic<bool> mine{false};
  std::atomic<int>* touched;

  static bool onRecord(ZephlinkSDK_StateResult, void* userData) {
    auto* owned = static_cast<Owned*>(userData);
    if (owned->mine) ++*owned->touched;
    return true;
  }
};

TEST(Threads, ListenersAreRemovedFromOtherThreadsDuringDelivery) {
  Host host(statesAndVersion({6}));
  std::atomic<bool> over{false};
  std::thread flood([&] {
    while (!over) {
      host.daemon.send(stateReport(1));
      ZephlinkSDK_getState(host.sdk, nullptr, nullptr);  // the next report comes after this one
    }
  });
  std::atomic<int> touched{0};
  onThreads(4, [&, perThread = rounds(200) / 4](int) {
    for (int n = 0; n < perThread; ++n) {
      Owned owned;
      owned.touched = &touched;
      const auto handle = ZephlinkSDK_getState(host.sdk, Owned::onRecord, &owned).handle;
      if (n % 2 == 0) std::this_thread::yield();
      ZephlinkSDK_removeListener(host.sdk, handle);
      owned.mine = true;
    }
  });
  over = true;
  flood.join();
  EXPECT_EQ(touched, 0);
}

TEST(Threads, StartAndShutdownRace) {
  ScriptedDaemon daemon(statesAndVersion({}));
  const int wanted = rounds(200);
  std::atomic<int> next{0};
  std::atomic<int> wrong{0};
  onThreads(4, [&](int) {
    for (int n = next++; n < wanted; n = next++) {
      Collector<ZephlinkSDK_VersionResult> versions;  // outlives the object that calls it
      const Sdk sdk = connectTo(daemon.port());
      if (n % 4 == 1) ZephlinkSDK_getVersion(sdk.get(), versions.collect, &versions);
      if (n % 4 == 2) ZephlinkSDK_subscribeStats(sdk.get(), true, 0, nullptr);
      if (n % 4 == 3 && ZephlinkSDK_getVersion(sdk.get(), nullptr, nullptr).build != 4) ++wrong;
    }
  });
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace tests
