// The call frame: turns the description of a call into a waiting entry and a result record.
#pragma once

#include <json/json.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <utility>

#include "sdk/errors.h"
#include "sdk/link/websocket_impl.h"
#include "zephlinksdk/zephlinksdk.h"

namespace zephlinksdk {

/// The result record of a call while an entry can still write to it. `head` refers to the record's head.
struct lockedHead {
  explicit lockedHead(ZephlinkSDK_Result& recordHead) : head(recordHead) {}
  lockedHead(const lockedHead&) = delete;
  lockedHead& operator=(const lockedHead&) = delete;

  std::mutex mutex;
  ZephlinkSDK_Result& head;
};

/// A record on the heap, all zero. Unused pages are never touched, for example those of a directory with few of its
/// 1024 servers.
template <class T>
struct FreeRecord {
  void operator()(T* record) const { std::free(record); }
};
template <class T>
using HeapRecord = std::unique_ptr<T, FreeRecord<T>>;

template <class T>
HeapRecord<T> zeroedRecord() {
  HeapRecord<T> record(static_cast<T*>(std::calloc(1, sizeof(T))));
  if (record == nullptr) throw std::bad_alloc();
  return record;
}

/// Returns the number of bytes of a record that are in use.
template <class T>
std::size_t usedSize(const T&) {
  return sizeof(T);
}
inline std::size_t usedSize(const ZephlinkSDK_DirectoryResult& record) {
  return offsetof(ZephlinkSDK_DirectoryResult, servers) + record.count * sizeof(ZephlinkSDK_ServerInfo);
}

/// Shared by the method, the entry's handler and its parser; all zero at creation.
template <class T>
struct lockedResult : lockedHead {
  lockedResult() : lockedResult(zeroedRecord<T>()) {}

  /// Returns a copy for the caller. Unused entries of large arrays are not copied.
  T copy() {
    const std::lock_guard lock(mutex);
    T copied;
    std::memcpy(&copied, storage.get(), usedSize(*storage));
    return copied;
  }

  const HeapRecord<T> storage;
  T& record;

 private:
  explicit lockedResult(HeapRecord<T> zeroed)
      : lockedHead(headOf(*zeroed)), storage(std::move(zeroed)), record(*storage) {}
};

/// Returns whether a report contains a failure: a `type` other than 0 that fits 32 bits, signed or unsigned.
bool reportsFailure(const Json::Value& data);

/// Stores the daemon's failure, `type` and `msg`, in the head. A negative code is converted to unsigned.
void readDaemonError(const Json::Value& data, ZephlinkSDK_Result& head);

/// Reads an event into the record, whose mutex is locked. Returns false if the event does not end the wait.
using Parser = std::function<bool(const std::string& event, const std::string& message, const Json::Value& root)>;

/// Passes the record, whose mutex is locked, to the caller's callback. Returns false if the callback ends its
/// subscription.
using Finish = std::function<bool()>;

/// Registers the entry and, in a synchronous call, waits for its end. The record contains the outcome. Refuses a
/// synchronous call on a channel thread with `ZephlinkSDK_Error_SyncCallInCallback`, without sending anything. Returns
/// the head as copied before registration, for the immediate record of an asynchronous call.
ZephlinkSDK_Result wsWrapper(WebsocketImpl& channel, WebsocketImpl::EventDescription description,
                             const std::shared_ptr<lockedHead>& result, const WebsocketImpl::wsWrapperOptions& options,
                             const Parser& parser, const Finish& finish);

/// Returns the immediate record of an asynchronous call: only its head is set.
template <class T>
T immediateRecord(const ZephlinkSDK_Result& head) {
  T record{};
  headOf(record) = head;
  return record;
}

/// For methods that read a value of the daemon: with a callback they stay subscribed until it returns false.
template <class T>
T wsSubscriptionWrapper(Callback<T> callback, void* userData, WebsocketImpl& channel,
                        WebsocketImpl::EventDescription description, const std::shared_ptr<lockedResult<T>>& result,
                        const Parser& parser) {
  const Finish finish = [callback, userData, result] {
    return callback != nullptr && callback(result->record, userData);
  };
  const ZephlinkSDK_Result immediate = wsWrapper(channel, std::move(description), result,
                                                 {.async = callback != nullptr, .subscription = true}, parser, finish);
  return callback != nullptr ? immediateRecord<T>(immediate) : result->copy();
}

/// For methods that end with their first answer. `settingName` is the name under which the daemon refuses the setting
/// that the call changes; empty for other calls.
template <class T>
T wsNonSubscriptionWrapper(Callback<T> callback, void* userData, WebsocketImpl& channel,
                           WebsocketImpl::EventDescription description, const std::shared_ptr<lockedResult<T>>& result,
                           const Parser& parser, const std::string& settingName = {}) {
  const Finish finish = [callback, userData, result] {
    if (callback != nullptr) callback(result->record, userData);
    return false;
  };
  const ZephlinkSDK_Result immediate =
      wsWrapper(channel, std::move(description), result,
                {.async = callback != nullptr, .subscription = false, .settingName = settingName}, parser, finish);
  return callback != nullptr ? immediateRecord<T>(immediate) : result->copy();
}

}  // namespace zephlinksdk
