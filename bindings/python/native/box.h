// A bounded queue of records between the library's channel thread and Python. No Python runs on the channel thread: a
// callback copies its record into a box and returns, so neither the interpreter's lock nor its shutdown can block the
// channel.
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
/// A copy of a record, allocated with malloc.
using Item = std::unique_ptr<void, Free>;

/// Thread-safe.
class Box {
 public:
  /// Keeps at most `capacity` records. With `once`, accepts a single record and then ends the subscription. Throws
  /// std::system_error if the system has no descriptor left.
  Box(std::size_t capacity, bool once);
  ~Box();
  Box(const Box&) = delete;
  Box& operator=(const Box&) = delete;

  /// Appends a copy of a record; drops the oldest if the box is full. Returns whether the subscription continues.
  bool put(const void* record, std::size_t size) noexcept;

  /// Removes and returns the oldest record; null if there is none.
  Item take();

  /// Waits until there is a record or the box is closed, at most `milliseconds`. Returns false early if a signal
  /// interrupts it.
  bool wait(int milliseconds);

  /// Drops all records, accepts no more, and ends all waits permanently.
  void close();

  bool closed();

  /// Returns the number of records dropped because the box was full or memory ran out.
  std::uint64_t dropped();

  /// Returns a descriptor that is readable while `wait` would return true. The box owns it.
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
