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

/// Reads an event into the record, whose mutex is held. False when the event does not end the wait.
using Parser = std::function<bool(const std::string& event, const std::string& message, const Json::Value& root)>;

/// Hands the record, whose mutex is held, to the caller's callback. False when the callback wants no more.
using Finish = std::function<bool()>;

/// Registers the entry and, in a synchronous call, waits for its end. What becomes of the call is in the record. A
/// synchronous call on a channel thread is refused with `ZephlinkSDK_Error_SyncCallInCallback`, nothing being sent.
void wsWrapper(WebsocketImpl& channel, WebsocketImpl::EventDescription description,
               const std::shared_ptr<lockedHead>& result, const WebsocketImpl::wsWrapperOptions& options,
               const Parser& parser, const Finish& finish);

/// For methods that read what the daemon keeps: with a callback they stay subscribed until it returns false.
template <class T>
void wsSubscriptionWrapper(Callback<T> callback, void* userData, WebsocketImpl& channel,
                           WebsocketImpl::EventDescription description, const std::shared_ptr<lockedResult<T>>& result,
                           const Parser& parser) {
  const Finish finish = [callback, userData, result] {
    return callback != nullptr && callback(result->record, userData);
  };
  wsWrapper(channel, std::move(description), result, {.async = callback != nullptr, .subscription = true}, parser,
            finish);
}

/// For methods that end with their first answer. `settingName` is the name under which the daemon refuses the setting
/// that the call changes, empty for any other call.
template <class T>
void wsNonSubscriptionWrapper(Callback<T> callback, void* userData, WebsocketImpl& channel,
                              WebsocketImpl::EventDescription description,
                              const std::shared_ptr<lockedResult<T>>& result, const Parser& parser,
                              const std::string& settingName = {}) {
  const Finish finish = [callback, userData, result] {
    if (callback != nullptr) callback(result->record, userData);
    return false;
  };
  wsWrapper(channel, std::move(description), result,
            {.async = callback != nullptr, .subscription = false, .settingName = settingName}, parser, finish);
}

}  // namespace zephlinksdk
