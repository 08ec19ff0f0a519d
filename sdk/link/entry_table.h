// The table of waiting entries, with their events and time-outs.
#pragma once

#include <json/json.h>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/wipe.h"

namespace zephlinksdk {

/// A report that answers a request: its name and, unless any such report will do, the members that must have an equal
/// value (null: any value).
struct ExpectedEvent {
  std::string event;
  std::vector<Json::Value> members;
};

/// One waiting entry of the table.
struct EventDescription {
  static constexpr std::uint64_t kDefaultTimeoutMs = 5000;

  /// Called on the channel thread with the event's name, the whole message and, if an entry requires it, the parsed
  /// message. Returns true to remove the entry. Does not throw.
  using Handler = std::function<bool(const std::string& event, const std::string& message, const Json::Value& root)>;

  /// An entry with an empty list does not time out.
  std::vector<ExpectedEvent> expectedEvents;
  /// Delivered without a filter.
  std::vector<std::string> listenEvents;
  /// Complete texts, sent in order after the entry is added.
  std::vector<WipedText> requests;
  Handler handler;
  /// In monotonic milliseconds; 0 if no time-out is pending.
  std::uint64_t sentAt = 0;
  /// Does not require the message to be parsed.
  bool rawOnly = false;
  /// In milliseconds; 0: no time-out.
  std::uint64_t timeoutMs = kDefaultTimeoutMs;
  bool delivered = false;
  /// An event that the handler rejects does not cancel the time-out; otherwise it does.
  bool keepsTimeout = false;
};

/// Entries by id, indexed by event name and by deadline: the cost of an event depends on its own entries only.
///
/// The table is not locked while an entry is visited. One thread visits entries; any thread adds and removes them.
class EntryTable {
 public:
  using Entry = std::shared_ptr<EventDescription>;

  /// Adds an entry; its time-out starts at its `sentAt`. If it throws std::bad_alloc, the table is unchanged.
  void add(std::uint64_t id, Entry entry);

  /// Removes an entry; ignores an unknown id. With `waitForVisit`, waits until no visit of the entry is running.
  void remove(std::uint64_t id, bool waitForVisit);

  /// Calls `visit` with each entry that waits for the event, in ascending order of ids, and removes those for which it
  /// returns true. Skips entries added in the meantime. A `visit` that sets `sentAt` to 0 cancels the time-out. It may
  /// add and remove any entry.
  template <class Visit>
  void forEachOfEvent(std::string_view event, Visit visit) {
    const std::uint64_t last = lastOfEvent(event);
    for (std::uint64_t from = 0; const Entry entry = beginVisit(event, from, last); from = visited + 1) {
      endVisit(entry, visit(*entry));
    }
  }

  /// Like forEachOfEvent, for each entry whose time-out has passed at `now`, in monotonic milliseconds.
  template <class Visit>
  void forEachOverdue(std::uint64_t now, Visit visit) {
    for (std::uint64_t from = 0; const Entry entry = beginVisit(now, from); from = visited + 1) {
      endVisit(entry, visit(*entry));
    }
  }

  /// Like forEachOfEvent, for each entry that has a time-out.
  template <class Visit>
  void forEachPending(Visit visit) {
    forEachOverdue(std::numeric_limits<std::uint64_t>::max(), visit);
  }

 private:
  struct Slot {
    Entry entry;
    // In monotonic milliseconds; 0 without a time-out.
    std::uint64_t deadline = 0;
  };
  using Ids = std::set<std::uint64_t>;

  std::uint64_t lastOfEvent(std::string_view event);
  Entry beginVisit(std::string_view event, std::uint64_t from, std::uint64_t last);
  Entry beginVisit(std::uint64_t now, std::uint64_t from);
  Entry beginVisit(std::uint64_t id);
  void endVisit(const Entry& entry, bool done);
  Entry take(std::uint64_t id);
  void unlink(std::uint64_t id, const Slot& slot);

  std::mutex mutex;
  std::map<std::uint64_t, Slot> entries;
  std::map<std::string, Ids, std::less<>> byEvent;
  std::set<std::pair<std::uint64_t, std::uint64_t>> deadlines;
  // The entry of the current or last visit.
  std::uint64_t visited = 0;
  bool visiting = false;
  std::condition_variable visitEnded;
};

}  // namespace zephlinksdk
