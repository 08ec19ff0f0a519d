// A bounded queue of records between the library's channel thread and Python. No Python runs on the channel thread: a
// callback copies its record into a box and returns, so neither the interpreter's lock nor its end can block it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>

namespace zephlink {

struct Free {
  void operator()(void* memory) const;
};
/// A copy of a record, from malloc.
using Item = std::unique_ptr<void, Free>;

/// Thread-safe.
class Box {
 public:
  /// Keeps at most `capacity` records. With `once` it takes a single one and ends the subscription with it. Throws
  /// std::system_error if the system has no descriptor left.
  Box(std::size_t capacity, bool once);
  ~Box();
  Box(const Box&) = delete;
  Box& operator=(const Box&) = delete;

  /// Appends a copy of a record; in a full box the oldest is dropped. Returns whether the box wants more.
  bool put(const void* record, std::size_t size) noexcept;

  /// Returns the oldest record, null if there is none.
  Item take();

  /// Waits until there is a record or the box is closed, at most `milliseconds`. Returns early, with false, when a
  /// signal interrupts it.
  bool wait(int milliseconds);

  /// Drops all records, takes no more, and ends all waits for good.
  void close();

  bool closed();

  /// How many records were dropped in favour of newer ones, or for want of memory.
  std::uint64_t dropped();

  /// A descriptor that is readable while `wait` would return true. The box keeps it.
  int descriptor() const { return event; }

 private:
  void signal() const;

  const std::size_t capacity;
  const bool once;
  const int event;
  std::mutex mutex;
  std::deque<Item> items;
  std::uint64_t droppedCount = 0;
  bool isClosed = false;
};

}  // namespace zephlink
