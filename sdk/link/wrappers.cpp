#include "sdk/link/wrappers.h"

#include <condition_variable>
#include <exception>
#include <utility>

#include "sdk/errors.h"
#include "sdk/link/json.h"

namespace zephlinksdk {

namespace {

constexpr const char* kSettingsError = "report_settings_error";

/// The wait of a synchronous caller.
struct Wait {
  std::mutex mutex;
  std::condition_variable ended;
  bool done = false;

  void end() {
    {
      const std::lock_guard lock(mutex);
      done = true;
    }
    // Notify after unlocking: the waiter needs the mutex. The entry's handler keeps this object until then.
    ended.notify_one();
  }

  void untilEnded() {
    std::unique_lock lock(mutex);
    ended.wait(lock, [this] { return done; });
  }
};

/// Allocates memory only for the text of an error that has one.
void readSdkError(const Json::Value& error, ZephlinkSDK_Result& head) {
  const std::uint32_t code = has(error, "type") ? asUInt(member(error, "type")) : ZephlinkSDK_Error_Sdk;
  if (has(error, "msg")) {
    setError(head, code, asString(member(error, "msg")).c_str());
  } else {
    setError(head, code, "Error from SDK");
  }
}

/// Returns false if the report concerns the setting of another call.
bool readSettingsError(const Json::Value& data, const std::string& settingName, ZephlinkSDK_Result& head) {
  if (!has(data, "setting") || asString(member(data, "setting")) != settingName || !has(data, "msg")) return false;
  readDaemonError(data, head);
  return true;
}

/// An exception from a callback ends its subscription: it must not leave the channel thread.
bool finishSafely(const Finish& finish) {
  try {
    return finish();
  } catch (...) {
    return false;
  }
}

std::uint32_t daemonErrorCode(const Json::Value& data) {
  const std::int64_t code = asInt64(member(data, "type"));
  const bool fits = std::in_range<std::int32_t>(code) || std::in_range<std::uint32_t>(code);
  return fits ? static_cast<std::uint32_t>(code) : ZephlinkSDK_Error_None;
}

}  // namespace

bool reportsFailure(const Json::Value& data) { return daemonErrorCode(data) != ZephlinkSDK_Error_None; }

void readDaemonError(const Json::Value& data, ZephlinkSDK_Result& head) {
  setError(head, daemonErrorCode(data), asString(member(data, "msg")).c_str());
}

ZephlinkSDK_Result wsWrapper(WebsocketImpl& channel, WebsocketImpl::EventDescription description,
                             const std::shared_ptr<lockedHead>& result, const WebsocketImpl::wsWrapperOptions& options,
                             const Parser& parser, const Finish& finish) {
  const auto wait = std::make_shared<Wait>();
  {
    const std::lock_guard lock(result->mutex);
    result->head.hasError = false;
    result->head.errorCode = ZephlinkSDK_Error_None;
    if (!options.async && WebsocketImpl::onChannelThread()) {
      setError(result->head, ZephlinkSDK_Error_SyncCallInCallback);
      return result->head;
    }
    if (options.async) {
      setError(result->head, ZephlinkSDK_Error_AsyncCall);
      result->head.hasError = false;
    }
  }
  if (!options.settingName.empty()) WebsocketImpl::addExpectedEvent(description, kSettingsError);

  // REQUIRES: the record's mutex is locked. Returns false if the event does not end the wait.
  const auto read = [result, options, parser](const std::string& event, const std::string& message,
                                              const Json::Value& root) {
    if (event == WebsocketImpl::kSdkError) {
      readSdkError(root, result->head);
      return true;
    }
    if (event == kSettingsError && !options.settingName.empty()) {
      return readSettingsError(element(root, 1), options.settingName, result->head);
    }
    return parser(event, message, root);
  };
  const auto handler = [wait, result, options, read, finish](const std::string& event, const std::string& message,
                                                             const Json::Value& root) {
    const std::lock_guard lock(result->mutex);
    try {
      if (!read(event, message, root)) return false;
    } catch (const std::exception&) {
      // Out of memory: a partially read record must not look complete.
      setError(result->head, ZephlinkSDK_Error_Sdk);
    }
    if (options.async) return !finishSafely(finish) || !options.subscription;
    wait->end();
    return true;
  };

  // Set the handle before registering: the callback may run at once and finds it in the record.
  result->head.handle = WebsocketImpl::takeId();
  const ZephlinkSDK_Result immediate = result->head;
  channel.addEventDescription(immediate.handle, std::move(description), handler);
  if (!options.async) wait->untilEnded();
  return immediate;
}

}  // namespace zephlinksdk
