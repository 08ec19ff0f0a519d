// Many threads at one object, callbacks that make calls, and objects that come and go. What this finds it finds under
// ThreadSanitizer.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#ifndef _WIN32
#include <sys/resource.h>
#endif

#include "tests/sdk/host.h"

namespace tests {
namespace {

std::string stateReport(int state) {
  return event("report_current_state", "{\"state\":" + std::to_string(state) + "}");
}

const std::string kVersion = event("report_version_data", R"({"maj":1,"min":2,"bug":3,"build":4})");
const std::string kNetworks = event("report_networks", R"([{"guid":"wlan0","name":"Wi-Fi"}])");

Answers answers() {
  return {{"request_current_state", {stateReport(6)}},
          {"request_version_data", {kVersion}},
          {"request_networks", {kNetworks}}};
}

/// ZEPHCTL_ROUNDS makes the loops longer: scripts/threads.
int rounds(int otherwise) {
  const char* text = std::getenv("ZEPHCTL_ROUNDS");
  return text != nullptr ? std::atoi(text) : otherwise;
}

/// Each object leaves its socket to the process: a loop needs room for as many, on both sides, in this one process.
int roundsWithDescriptors(int otherwise) {
  const int wanted = rounds(otherwise);
#ifdef _WIN32
  return wanted;
#else
  rlimit limit{};
  ::getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_NOFILE, &limit);
  const auto room = static_cast<int>(std::min<rlim_t>(limit.rlim_cur, 1000000)) / 2 - 100;
  EXPECT_GE(room, wanted) << "the system allows too few open files for that many rounds";
  return std::min(wanted, room);
#endif
}

TEST(Threads, CallersOnManyThreadsGetTheirOwnAnswers) {
  ScriptedDaemon daemon(answers());
  const Sdk sdk = connectTo(daemon.port());
  const int perThread = rounds(200) / 8;
  std::atomic<int> right{0};
  std::vector<std::thread> callers;
  for (int i = 0; i < 8; ++i) {
    callers.emplace_back([&, i] {
      for (int n = 0; n < perThread; ++n) {
        if ((i + n) % 2 == 0) {
          right += ZephlinkSDK_getState(sdk.get(), nullptr, nullptr).state == ZephlinkSDK_State_Connected ? 1 : 0;
        } else {
          right += ZephlinkSDK_getVersion(sdk.get(), nullptr, nullptr).build == 4 ? 1 : 0;
        }
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
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
  ScriptedDaemon daemon(answers());
  const Sdk sdk = connectTo(daemon.port());
  Chain chain{sdk.get(), rounds(200), {}};
  ZephlinkSDK_getVersion(sdk.get(), Chain::next, &chain);
  ASSERT_TRUE(chain.done.waitFor(1));
  EXPECT_EQ(chain.done.all()[0].build, 4);
}

/// Behind its removal a callback's user data is the caller's again: this one tells whether it was touched since.
struct Owned {
  std::atomic<bool> mine{false};
  std::atomic<int>* touched;

  static bool hear(ZephlinkSDK_StateResult, void* userData) {
    auto* owned = static_cast<Owned*>(userData);
    if (owned->mine) ++*owned->touched;
    return true;
  }
};

TEST(Threads, ListenersAreRemovedFromOtherThreadsDuringDelivery) {
  ScriptedDaemon daemon(answers());
  const Sdk sdk = connectTo(daemon.port());
  std::atomic<bool> over{false};
  std::thread flood([&] {
    while (!over) {
      daemon.send(stateReport(1));
      ZephlinkSDK_getState(sdk.get(), nullptr, nullptr);  // the next report once this one has come
    }
  });
  std::atomic<int> touched{0};
  const int perThread = rounds(200) / 4;
  std::vector<std::thread> removers;
  for (int i = 0; i < 4; ++i) {
    removers.emplace_back([&] {
      for (int n = 0; n < perThread; ++n) {
        Owned owned;
        owned.touched = &touched;
        const auto handle = ZephlinkSDK_getState(sdk.get(), Owned::hear, &owned).handle;
        if (n % 2 == 0) std::this_thread::yield();
        ZephlinkSDK_removeListener(sdk.get(), handle);
        owned.mine = true;
      }
    });
  }
  for (std::thread& remover : removers) remover.join();
  over = true;
  flood.join();
  EXPECT_EQ(touched, 0);
}

TEST(Threads, StartAndShutdownRace) {
  ScriptedDaemon daemon(answers());
  const int wanted = roundsWithDescriptors(200);
  std::atomic<int> next{0};
  std::atomic<int> wrong{0};
  std::vector<std::thread> makers;
  for (int i = 0; i < 4; ++i) {
    makers.emplace_back([&] {
      for (int n = next++; n < wanted; n = next++) {
        Collector<ZephlinkSDK_VersionResult> versions;  // outlives the object that calls it
        const Sdk sdk = connectTo(daemon.port());
        switch (n % 4) {
          case 0:
            break;
          case 1:
            ZephlinkSDK_getVersion(sdk.get(), Collector<ZephlinkSDK_VersionResult>::collect, &versions);
            break;
          case 2:
            ZephlinkSDK_subscribeStats(sdk.get(), true, 0, nullptr);
            break;
          default:
            if (ZephlinkSDK_getVersion(sdk.get(), nullptr, nullptr).build != 4) ++wrong;
        }
      }
    });
  }
  for (std::thread& maker : makers) maker.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace tests
