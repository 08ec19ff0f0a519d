// A session's clock controlled by a test: a minute passes at once.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "tests/watched.h"
#include "zephlinksdk/session.hpp"

namespace tests {

class ManualClock : public zephlinksdk::SessionClock {
 public:
  time_point now() override {
    const std::lock_guard lock(mutex);
    return time;
  }

  void sleepUntil(time_point deadline) override {
    std::unique_lock lock(mutex);
    wakesAt = deadline;
    asleep = true;
    changed.notify_all();
    changed.wait(lock, [&] { return woken || time >= deadline; });
    asleep = woken = false;
  }

  void wake() override {
    const std::lock_guard lock(mutex);
    woken = true;
    changed.notify_all();
  }

  void advance(std::chrono::milliseconds forward) {
    const std::lock_guard lock(mutex);
    time += forward;
    changed.notify_all();
  }

  /// Waits until the session sleeps for exactly this time; returns false after 30 seconds.
  bool waitForSleep(std::chrono::milliseconds length) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, kPatience, [&] { return asleep && !woken && wakesAt - time == length; });
  }

 private:
  std::mutex mutex;
  std::condition_variable changed;
  time_point time = std::chrono::steady_clock::now();
  time_point wakesAt{};
  bool asleep = false;
  bool woken = false;
};

}  // namespace tests
