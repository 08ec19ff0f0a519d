// The table of waiting entries: who waits for which event, and until when.
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

/// A report that answers a request: its name and, where not every such report will do, the members that must be there
/// with an equal value (null: with any value).
struct ExpectedEvent {
  std::string event;
  std::vector<Json::Value> members;
};

/// One waiting entry of the table.
struct EventDescription {
  static constexpr std::uint64_t kDefaultTimeoutMs = 5000;

  /// Called on the channel thread with the event's name, the whole message and, if some entry asked for it, its parsed
  /// form. True removes the entry. Does not throw.
  using Handler = std::function<bool(const std::string& event, const std::string& message, const Json::Value& root)>;

  /// An entry without any does not time out.
  std::vector<ExpectedEvent> expectedEvents;
  /// Delivered without a filter.
  std::vector<std::string> listenEvents;
  /// Finished texts, sent in order after the entry is added.
  std::vector<WipedText> requests;
  Handler handler;
  /// Monotonic milliseconds; 0 when no time-out is pending.
  std::uint64_t sentAt = 0;
  /// Does not ask for the message to be parsed.
  bool rawOnly = false;
  /// 0: never.
  std::uint64_t timeoutMs = kDefaultTimeoutMs;
  bool delivered = false;
  /// An event that the handler refuses leaves the time-out running, where it otherwise ends it.
  bool keepsTimeout = false;
};

/// Entries by id, with an index by the names of their events and one by the ends of their time-outs: an event costs
/// what its own entries cost.
///
/// The lock is not held while an entry is visited. One thread visits entries; any thread adds and removes them.
class EntryTable {
 public:
  using Entry = std::shared_ptr<EventDescription>;

  /// Adds an entry, whose time-out begins at its `sentAt`. Throws std::bad_alloc, and then changes nothing.
  void add(std::uint64_t id, Entry entry);

  /// Removes an entry; an unknown id does nothing. With `waitForVisit`, returns only when no visit of it is under way.
  void remove(std::uint64_t id, bool waitForVisit);

  /// Calls `visit` with each entry that waits for the event, in ascending order of ids, and removes those for which it
  /// returns true. Entries that are added meanwhile are not visited. A `visit` that sets `sentAt` to 0 ends the
  /// time-out. It may add and remove any entry.
  template <class Visit>
  void forEachOfEvent(std::string_view event, Visit visit) {
    const std::uint64_t last = lastOfEvent(event);
    for (std::uint64_t from = 0; const Entry entry = beginVisit(event, from, last); from = visited + 1) {
      endVisit(entry, visit(*entry));
    }
  }

  /// Does the same with each entry whose time-out has passed at `now`, in monotonic milliseconds.
  template <class Visit>
  void forEachOverdue(std::uint64_t now, Visit visit) {
    for (std::uint64_t from = 0; const Entry entry = beginVisit(now, from); from = visited + 1) {
      endVisit(entry, visit(*entry));
    }
  }

  /// Does the same with each entry that has a time-out.
  template <class Visit>
  void forEachPending(Visit visit) {
    forEachOverdue(std::numeric_limits<std::uint64_t>::max(), visit);
  }

 private:
  struct Slot {
    Entry entry;
    // Monotonic milliseconds; 0 without a time-out.
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
  // The entry that is visited, or was visited last.
  std::uint64_t visited = 0;
  bool visiting = false;
  std::condition_variable visitEnded;
};

}  // namespace zephlinksdk
