// Streams: each event of a subscription printed as it comes, until a duration has run out.
#pragma once

#include <condition_variable>
#include <cstdint>
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

/// Makes what is printed while it stands a record of a stream: an array of the label and the record, and an empty line.
/// It goes out whole, before the next event is looked at.
OutputBlock streamBlock(std::FILE* stream, const char* label);

/// The callback of a stream, whose user data is its `StreamClock`. An error has a form of its own, on standard error.
/// Returns true, so that the subscription stays.
template <class Record, const char* Label, void (*Print)(const Record&)>
bool printStreamRecord(Record record, void* clock) {
  static_cast<StreamClock*>(clock)->start();
  if (record.hasError) {
    const OutputBlock block = streamBlock(stderr, "error");
    printError(record);
  } else {
    const OutputBlock block = streamBlock(stdout, Label);
    Print(record);
  }
  return true;
}

/// Calls a method so that it prints what it subscribes to. Returns the handle. A call that is refused calls nobody
/// back: its error stands for the first event.
template <const char* Label, auto Print, class Record>
std::uint64_t openStream(Record (&method)(zephlinksdk::ZephlinkSDK*, zephlinksdk::Callback<Record>, void*),
                         StreamClock& clock) {
  const Record record = method(g_sdk, printStreamRecord<Record, Label, Print>, &clock);
  if (record.hasError) printStreamRecord<Record, Label, Print>(record, &clock);
  return record.handle;
}

}  // namespace cli
