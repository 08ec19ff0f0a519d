// The call frame: turns a description of what is sent and awaited into a waiting entry and a result record.
#pragma once

#include <json/json.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "sdk/callback.h"
#include "sdk/link/websocket_impl.h"
#include "sdk/results.h"

namespace zephlinksdk {

/// The result record of a call while an entry can still write to it. `head` is the record's own.
struct lockedHead {
  explicit lockedHead(ZephlinkSDK_Result& ofRecord) : head(ofRecord) {}
  lockedHead(const lockedHead&) = delete;
  lockedHead& operator=(const lockedHead&) = delete;

  std::mutex mutex;
  ZephlinkSDK_Result& head;
};

/// Owned by the method, the entry's handler and its parser together; all zero at creation.
template <class T>
struct lockedResult : lockedHead {
  lockedResult() : lockedHead(record) {}

  T copy() {
    const std::lock_guard lock(mutex);
    return record;
  }

  T record{};
};

/// Whether a report tells of a failure: a `type` other than 0 that fits 32 bits, with a sign or without.
bool tellsOfFailure(const Json::Value& data);

/// Puts a failure that the daemon reports, `type` and `msg`, into the head. Of a code below zero the same 32 bits are
/// taken without the sign.
void readDaemonError(const Json::Value& data, ZephlinkSDK_Result& record);

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
  static_cast<ZephlinkSDK_Result&>(record) = head;
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
