// A value that one thread changes while others wait for a condition on it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace tests {

/// How long a test waits for an expected event.
inline constexpr std::chrono::milliseconds kPatience{30000};

template <class Value>
class Watched {
 public:
  template <class Change>
  void change(Change apply) {
    const std::lock_guard lock(mutex);
    apply(value);
    changed.notify_all();
  }

  /// Waits until `condition` is true for the value; returns false after `patience`.
  template <class Condition>
  bool waitUntil(Condition condition, std::chrono::milliseconds patience = kPatience) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, patience, [&] { return condition(value); });
  }

  Value get() {
    const std::lock_guard lock(mutex);
    return value;
  }

 private:
  std::mutex mutex;
  std::condition_variable changed;
  Value value{};
};

}  // namespace tests
