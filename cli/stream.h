// Streams: each event of a subscription printed as it comes, until a duration has run out.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

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

/// Around a record on standard output: `["label",` and the closing bracket with an empty line.
void openStreamRecord(const char* label);
void closeStreamRecord();

/// The error form of a stream record, on standard error.
void printStreamError(const ZephlinkSDK_Result& record);

/// The callback of a stream, whose user data is its `StreamClock`. Returns true, so that the subscription stays.
template <class Record, const char* Label, void (*Print)(const Record&)>
bool printStreamRecord(Record record, void* clock) {
  static_cast<StreamClock*>(clock)->start();
  if (record.hasError) {
    printStreamError(record);
  } else {
    openStreamRecord(Label);
    Print(record);
    closeStreamRecord();
  }
  return true;
}

}  // namespace cli
