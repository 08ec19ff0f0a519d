// The call frame: turns a description of what is sent and awaited into a waiting entry and a result record.
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

/// The result record of a call while an entry can still write to it. `head` is the record's own.
struct lockedHead {
  explicit lockedHead(ZephlinkSDK_Result& ofRecord) : head(ofRecord) {}
  lockedHead(const lockedHead&) = delete;
  lockedHead& operator=(const lockedHead&) = delete;

  std::mutex mutex;
  ZephlinkSDK_Result& head;
};

/// A record on the heap, all zero. Its unused pages are never touched: a directory has room for a thousand servers.
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

/// How many bytes of a record have a meaning.
template <class T>
std::size_t usedSize(const T&) {
  return sizeof(T);
}
inline std::size_t usedSize(const ZephlinkSDK_DirectoryResult& record) {
  return offsetof(ZephlinkSDK_DirectoryResult, servers) + record.count * sizeof(ZephlinkSDK_ServerInfo);
}

/// Owned by the method, the entry's handler and its parser together; all zero at creation.
template <class T>
struct lockedResult : lockedHead {
  lockedResult() : lockedResult(zeroedRecord<T>()) {}

  /// The record as a caller gets it. Entries of an array beyond its count are not copied where that would cost much.
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

/// Whether a report tells of a failure: a `type` other than 0 that fits 32 bits, with a sign or without.
bool tellsOfFailure(const Json::Value& data);

/// Puts a failure that the daemon reports, `type` and `msg`, into the head. Of a code below zero the same 32 bits are
/// taken without the sign.
void readDaemonError(const Json::Value& data, ZephlinkSDK_Result& head);

/// Reads an event into the record, whose mutex is held. False when the event does not end the wait.
using Parser = std::function<bool(const std::string& event, const std::string& message, const Json::Value& root)>;

/// Hands the record, whose mutex is held, to the caller's callback. False when the callback wants no more.
using Finish = std::function<bool()>;

/// Registers the entry and, in a synchronous call, waits for its end. What becomes of the call is in the record. A
/// synchronous call on a channel thread is refused with `ZephlinkSDK_Error_SyncCallInCallback`, nothing being sent.
/// Returns the head as it was before the entry stood: an asynchronous call's, whatever has come in the meantime.
ZephlinkSDK_Result wsWrapper(WebsocketImpl& channel, WebsocketImpl::EventDescription description,
                             const std::shared_ptr<lockedHead>& result, const WebsocketImpl::wsWrapperOptions& options,
                             const Parser& parser, const Finish& finish);

/// The record that an asynchronous call returns: its head and nothing else.
template <class T>
T immediateRecord(const ZephlinkSDK_Result& head) {
  T record{};
  headOf(record) = head;
  return record;
}

/// For methods that read what the daemon keeps: with a callback they stay subscribed until it returns false.
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
/// that the call changes, empty for any other call.
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
