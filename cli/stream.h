// Streams: each event of a subscription printed as it comes, until a duration has run out.
#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>

#include "cli/actions.h"
#include "cli/output.h"

namespace cli {

/// When a stream began: at its first event of any kind. Callbacks start it on the channel thread, the main thread
/// waits.
class StreamClock {
 public:
  /// Wall-clock seconds of the first call; later calls do nothing.
  void start();

  void waitForStart();

  /// Waits until `seconds` have passed since the start, counted in whole seconds; without end when `seconds` is 0 or
  /// less, and when nothing ever starts the clock.
  void waitFor(std::int32_t seconds);

 private:
  bool expired(std::int32_t seconds) const;

  std::mutex mutex;
  std::condition_variable changed;
  std::int64_t startTime = 0;
};

/// Locked while a record is printed: mostly by the channel thread, by the main thread when a call is refused.
extern std::mutex g_printing;

/// Prints a record of a stream, or its error, which has its own form, on standard error. Does not throw.
template <class Record>
void printBlock(const Record& record, const char* label, void (*print)(const Record&)) {
  const std::lock_guard lock(g_printing);
  try {
    openBlock(record.hasError ? "error" : label);
    if (record.hasError) {
      printError(record);
    } else {
      print(record);
    }
    closeBlock(record.hasError ? stderr : stdout);
  } catch (const std::exception&) {
    printNoMemoryBlock();
  }
}

/// The callback of a stream, whose user data is its `StreamClock`. Returns true, so that the subscription stays.
template <class Record, const char* Label, auto& Print>
bool printStreamRecord(Record record, void* clock) {
  static_cast<StreamClock*>(clock)->start();
  printBlock<Record>(record, Label, Print);
  return true;
}

/// The subscriptions of a stream, which print until `close`. Needs no memory: a failure must not leave callbacks whose
/// clock is gone.
class Stream {
 public:
  static constexpr std::size_t kMostSubscriptions = 8;

  Stream() = default;
  ~Stream() { close(); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  /// Calls a method so that it prints what it subscribes to. A refused call never runs its callback: its error is
  /// printed as the first event.
  template <const char* Label, auto& Print, auto& Method>
  void open() {
    using Record = decltype(call<Method>());
    const Record record = Method(g_sdk, printStreamRecord<Record, Label, Print>, &clock);
    if (record.hasError) {
      printStreamRecord<Record, Label, Print>(record, &clock);
    } else {
      handles[count++] = record.handle;
    }
  }

  /// Prints the error of a call that has no callback, as an event.
  void report(const ZephlinkSDK_Result& record);

  /// Ends the subscriptions in the order in which they were opened.
  void close();

  StreamClock clock;

 private:
  std::array<std::uint64_t, kMostSubscriptions> handles{};
  std::size_t count = 0;
};

}  // namespace cli
