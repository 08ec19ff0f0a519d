// Streams: print each event of a subscription as it arrives, until a duration has passed.
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

/// The start of a stream: its first event of any type. Callbacks start the clock on the channel thread; the main thread
/// waits.
class StreamClock {
 public:
  /// Stores the wall-clock time of the first call, in seconds; later calls do nothing.
  void start();

  void waitForStart();

  /// Waits until `seconds` have passed since the start, counted in whole seconds. Waits forever if `seconds` is 0 or
  /// less, or if the clock is never started.
  void waitFor(std::int32_t seconds);

 private:
  bool expired(std::int32_t seconds) const;

  std::mutex mutex;
  std::condition_variable changed;
  std::int64_t startTime = 0;
};

/// Locked while a record is printed: usually by the channel thread, by the main thread if a call is refused.
extern std::mutex g_printing;

/// Prints a record of a stream to stdout, or its error, in the form for streams, to stderr. Does not throw.
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

/// The callback of a stream; its user data is the `StreamClock`. Returns true, which keeps the subscription.
template <class Record, const char* Label, auto& Print>
bool printStreamRecord(Record record, void* clock) {
  static_cast<StreamClock*>(clock)->start();
  printBlock<Record>(record, Label, Print);
  return true;
}

/// The subscriptions of a stream, which print until `close`. Allocates no memory: after a failure, no callback may
/// outlive its clock.
class Stream {
 public:
  static constexpr std::size_t kMostSubscriptions = 8;

  Stream() = default;
  ~Stream() { close(); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  /// Calls a method so that it prints what it subscribes to. A refused call never runs its callback; prints its error
  /// as the first event.
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

  /// Ends the subscriptions in the order of their opening.
  void close();

  StreamClock clock;

 private:
  std::array<std::uint64_t, kMostSubscriptions> handles{};
  std::size_t count = 0;
};

}  // namespace cli
