#include "sdk/link/entry_table.h"

namespace zephlinksdk {

namespace {

template <class Use>
void forEachName(const EventDescription& entry, Use use) {
  for (const std::string& name : entry.listenEvents) use(name);
  for (const ExpectedEvent& expected : entry.expectedEvents) use(expected.event);
}

bool timesOut(const EventDescription& entry) {
  return entry.timeoutMs != 0 && entry.sentAt != 0 && !entry.expectedEvents.empty();
}

}  // namespace

void EntryTable::add(std::uint64_t id, Entry entry) {
  const std::lock_guard lock(mutex);
  const std::uint64_t deadline = timesOut(*entry) ? entry->sentAt + entry->timeoutMs : 0;
  const Slot& slot = entries.emplace(id, Slot{std::move(entry), deadline}).first->second;
  try {
    forEachName(*slot.entry, [this, id](const std::string& name) { byEvent[name].insert(id); });
    if (deadline != 0) deadlines.emplace(deadline, id);
  } catch (...) {
    take(id);
    throw;
  }
}

void EntryTable::remove(std::uint64_t id, bool waitForVisit) {
  Entry removed;  // Declared before the lock: its destructor may run a caller's code and must run after unlocking.
  std::unique_lock lock(mutex);
  removed = take(id);
  if (waitForVisit) visitEnded.wait(lock, [this, id] { return !visiting || visited != id; });
}

std::uint64_t EntryTable::lastOfEvent(std::string_view event) {
  const std::lock_guard lock(mutex);
  const auto ids = byEvent.find(event);
  return ids != byEvent.end() ? *ids->second.rbegin() : 0;
}

EntryTable::Entry EntryTable::beginVisit(std::string_view event, std::uint64_t from, std::uint64_t last) {
  const std::lock_guard lock(mutex);
  const auto ids = byEvent.find(event);
  if (ids == byEvent.end()) return nullptr;
  const auto next = ids->second.lower_bound(from);
  return next != ids->second.end() && *next <= last ? beginVisit(*next) : nullptr;
}

/// Returns the overdue entry with the lowest id from `from` on. Checks all overdue entries: there are few at a time.
EntryTable::Entry EntryTable::beginVisit(std::uint64_t now, std::uint64_t from) {
  const std::lock_guard lock(mutex);
  std::optional<std::uint64_t> lowest;
  for (const auto& [deadline, id] : deadlines) {
    if (deadline >= now) break;
    if (id >= from && (!lowest || id < *lowest)) lowest = id;
  }
  return lowest ? beginVisit(*lowest) : nullptr;
}

EntryTable::Entry EntryTable::beginVisit(std::uint64_t id) {
  visited = id;
  visiting = true;
  return entries.find(id)->second.entry;
}

void EntryTable::endVisit(const Entry& entry, bool done) {
  Entry removed;
  {
    const std::lock_guard lock(mutex);
    visiting = false;
    if (done) {
      removed = take(visited);
    } else if (const auto found = entries.find(visited); found != entries.end() && !timesOut(*entry)) {
      deadlines.erase({found->second.deadline, visited});
    }
  }
  visitEnded.notify_all();
}

EntryTable::Entry EntryTable::take(std::uint64_t id) {
  const auto found = entries.find(id);
  if (found == entries.end()) return nullptr;
  unlink(id, found->second);
  Entry entry = std::move(found->second.entry);
  entries.erase(found);
  return entry;
}

void EntryTable::unlink(std::uint64_t id, const Slot& slot) {
  forEachName(*slot.entry, [this, id](const std::string& name) {
    const auto ids = byEvent.find(name);
    if (ids == byEvent.end()) return;
    ids->second.erase(id);
    if (ids->second.empty()) byEvent.erase(ids);
  });
  deadlines.erase({slot.deadline, id});
}

}  // namespace zephlinksdk
