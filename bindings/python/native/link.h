// A connection to the daemon for Python, and the association of a call with its box. Lifetimes are managed here, where
// no Python exception can interrupt: in whatever order objects are freed, the library never writes to a freed box.
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

/// An object of the library, which exists as long as any copy of the pointer.
using Object = std::shared_ptr<ZephlinkSDK>;

/// A connection: one object of the library, or a session with successive objects.
class Link {
 public:
  explicit Link(const ZephlinkSDK_Config& config);
  Link(const ZephlinkSDK_Config& config, zephlinksdk::SessionOptions options);
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  /// Returns the current object. Null once the link is closed, while a session has no object, and when out of memory.
  Object object() noexcept;

  /// Returns null if the link has no session, or is closed.
  std::shared_ptr<zephlinksdk::Session> session();

  void close();
  bool closed();

  /// Puts the session's status into the box, now and after each change.
  void watch(zephlink_box* box);
  void unwatch(zephlink_box* box);

  /// Returns whether this is a child of the process that opened the link.
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
  // Guards the set and prevents its boxes from being freed. Locked before a box's mutex.
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

  /// Each stores the data that ends the subscription, or ends it at once if `finish` was called in the meantime.
  void started(zephlink::Object object, std::uint64_t handle) noexcept;
  void subscribed(std::shared_ptr<zephlinksdk::Session> session, std::uint64_t id) noexcept;

  /// Ends the subscription. After it returns, the callback no longer runs.
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
  // The object or session at which the box is registered, if any, and the handle or id.
  zephlink::Object sdk;
  std::shared_ptr<zephlinksdk::Session> session;
  std::uint64_t number = 0;
};

namespace zephlink {

template <class Record>
bool onRecord(Record record, void* userData) {
  return static_cast<zephlink_box*>(userData)->records.put(&record, sizeof record);
}

/// Returns the error record of a call that cannot be made now.
template <class Record>
Record notConnected() {
  Record record{};
  record.hasError = true;
  record.errorCode = ZephlinkSDK_Error_NotConnected;
  std::snprintf(record.errorMessage, sizeof record.errorMessage, "%s", ZephlinkSDK_errorText(record.errorCode));
  return record;
}

/// Returns the status that prevents a call; nothing if the call can be made.
inline std::optional<int> startError(zephlink_box* box) {
  if (box->link->forked()) return ZEPHLINK_FORKED;
  if (!box->link->closed()) return std::nullopt;
  box->close();
  return ZEPHLINK_STARTED;
}

/// Runs `starter`, which calls a function of the library with a callback, and associates the call with the box.
template <class Record, class Starter>
int start(zephlink_box* box, const Starter& starter) noexcept {
  if (const auto status = startError(box)) return *status;
  const Object sdk = box->link->object();
  const Record begun = sdk ? starter(sdk.get(), onRecord<Record>, box) : notConnected<Record>();
  if (begun.hasError) {
    box->records.put(&begun, sizeof begun);
    return ZEPHLINK_REFUSED;
  }
  box->started(sdk, begun.handle);
  return ZEPHLINK_STARTED;
}

/// Like `start`, for a function without a callback: its record is the answer.
template <class Record, class Function>
int ask(zephlink_box* box, const Function& function) noexcept {
  if (const auto status = startError(box)) return *status;
  const Object sdk = box->link->object();
  const Record record = sdk ? function(sdk.get()) : notConnected<Record>();
  box->records.put(&record, sizeof record);
  return record.hasError ? ZEPHLINK_REFUSED : ZEPHLINK_STARTED;
}

/// Subscribes. With a session, the subscription survives its objects.
template <class Record>
int subscribe(zephlink_box* box, Record (*function)(ZephlinkSDK*, zephlinksdk::Callback<Record>, void*)) noexcept {
  if (const auto status = startError(box)) return *status;
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
