// A connection to the daemon as Python uses it, and what ties a call's box to it. Lifetimes are kept here, where no
// exception of Python's can come between two steps: whatever is freed first, the library never writes to a freed box.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

#include "box.h"
#include "zephlinksdk/session.hpp"

extern "C" {
#include "zephlink.h"
}

namespace zephlink {

/// An object of the library, which lives at least as long as the copies.
using Object = std::shared_ptr<ZephlinkSDK>;

/// A connection: one object of the library, or a session, which has one after the other.
class Link {
 public:
  explicit Link(const ZephlinkSDK_Config& config);
  Link(const ZephlinkSDK_Config& config, zephlinksdk::SessionOptions options);
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  /// Returns the current object. Null once the link is closed, while a session has none, and without memory.
  Object object() noexcept;

  /// Null if the link has no session, or is closed.
  std::shared_ptr<zephlinksdk::Session> session();

  void close();
  bool closed();

  /// Puts the status of the session into the box, now and after each change.
  void watch(zephlink_box* box);
  void unwatch(zephlink_box* box);

  /// Whether this is a child of the process that opened the link.
  bool forked() const { return getpid() != process; }

  void add(zephlink_box* box);
  void remove(zephlink_box* box);

 private:
  void statusChanged(zephlinksdk::SessionStatus status);

  const pid_t process = getpid();
  std::mutex mutex;
  bool isClosed = false;
  Object sdk;
  std::mutex watchersMutex;
  std::set<zephlink_box*> watchers;
  std::shared_ptr<zephlinksdk::Session> daemonSession;  // its thread uses the watchers
  // Guards the set and keeps its boxes from being freed. Locked before a box's mutex.
  std::mutex boxesMutex;
  std::set<zephlink_box*> boxes;
};

}  // namespace zephlink

struct zephlink_link {
  std::shared_ptr<zephlink::Link> link;
};

struct zephlink_box {
  zephlink_box(std::shared_ptr<zephlink::Link> ofLink, std::size_t capacity, bool once);
  ~zephlink_box();
  zephlink_box(const zephlink_box&) = delete;
  zephlink_box& operator=(const zephlink_box&) = delete;

  /// Each keeps what ends the subscription, or ends it at once if `finish` was called meanwhile.
  void started(zephlink::Object object, std::uint64_t handle) noexcept;
  void subscribed(std::shared_ptr<zephlinksdk::Session> session, std::uint64_t id) noexcept;

  /// Ends the subscription. Once it returns, the callback no longer runs.
  void finish();

  void close() {
    records.close();
    finish();
  }

  const std::shared_ptr<zephlink::Link> link;
  zephlink::Box records;

 private:
  void end();

  std::mutex mutex;
  bool finished = false;
  // Where it is registered, if anywhere, and under which number.
  zephlink::Object sdk;
  std::shared_ptr<zephlinksdk::Session> session;
  std::uint64_t number = 0;
};

namespace zephlink {

template <class Record>
bool onRecord(Record record, void* userData) {
  return static_cast<zephlink_box*>(userData)->records.put(&record, sizeof record);
}

/// The error record of a call that cannot be made now.
template <class Record>
Record notConnected() {
  Record record{};
  record.hasError = true;
  record.errorCode = ZephlinkSDK_Error_NotConnected;
  std::snprintf(record.errorMessage, sizeof record.errorMessage, "%s", ZephlinkSDK_errorText(record.errorCode));
  return record;
}

/// What prevents a call, for the caller; nothing if it can be made.
inline std::optional<int> hindrance(zephlink_box* box) {
  if (box->link->forked()) return ZEPHLINK_FORKED;
  if (!box->link->closed()) return std::nullopt;
  box->close();
  return ZEPHLINK_STARTED;
}

/// Runs `starter`, which calls a function of the library with a callback, and ties what it started to the box.
template <class Record, class Starter>
int start(zephlink_box* box, const Starter& starter) noexcept {
  if (const auto status = hindrance(box)) return *status;
  const Object sdk = box->link->object();
  const Record begun = sdk ? starter(sdk.get(), onRecord<Record>, box) : notConnected<Record>();
  if (begun.hasError) {
    box->records.put(&begun, sizeof begun);
    return ZEPHLINK_REFUSED;
  }
  box->started(sdk, begun.handle);
  return ZEPHLINK_STARTED;
}

/// The same for a function without a callback, whose record is the answer.
template <class Record, class Function>
int ask(zephlink_box* box, const Function& function) noexcept {
  if (const auto status = hindrance(box)) return *status;
  const Object sdk = box->link->object();
  const Record record = sdk ? function(sdk.get()) : notConnected<Record>();
  box->records.put(&record, sizeof record);
  return record.hasError ? ZEPHLINK_REFUSED : ZEPHLINK_STARTED;
}

/// Subscribes. In a session, the subscription outlives its objects.
template <class Record>
int subscribe(zephlink_box* box, Record (*function)(ZephlinkSDK*, zephlinksdk::Callback<Record>, void*)) noexcept {
  if (const auto status = hindrance(box)) return *status;
  const auto session = box->link->session();
  if (!session) return start<Record>(box, function);
  try {
    const auto put = [box](const Record& record) { box->records.put(&record, sizeof record); };
    box->subscribed(session, session->subscribe(function, put));
  } catch (const std::exception&) {
    box->close();
  }
  return ZEPHLINK_STARTED;
}

}  // namespace zephlink
