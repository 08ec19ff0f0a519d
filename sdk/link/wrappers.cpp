#include "sdk/link/wrappers.h"

#include <condition_variable>
#include <utility>

#include "sdk/errors.h"
#include "sdk/link/json.h"

namespace zephlinksdk {

namespace {

constexpr const char* kSettingsError = "report_settings_error";

/// What a synchronous caller sleeps on.
struct Wait {
  std::mutex mutex;
  std::condition_variable ended;
  bool done = false;

  void end() {
    {
      const std::lock_guard lock(mutex);
      done = true;
    }
    // Behind the lock, which the caller wakes to take. The entry's handler keeps this object until then.
    ended.notify_one();
  }

  void untilEnded() {
    std::unique_lock lock(mutex);
    ended.wait(lock, [this] { return done; });
  }
};

void readSdkError(const Json::Value& error, ZephlinkSDK_Result& head) {
  const std::uint32_t code = has(error, "type") ? asUInt(member(error, "type")) : ZephlinkSDK_Error_Sdk;
  const std::string text = has(error, "msg") ? asString(member(error, "msg")) : "Error from SDK";
  setError(head, code, text.c_str());
}

/// False when the report is about another call's setting.
bool readSettingsError(const Json::Value& data, const std::string& settingName, ZephlinkSDK_Result& head) {
  if (!has(data, "setting") || asString(member(data, "setting")) != settingName || !has(data, "msg")) return false;
  readDaemonError(data, head);
  return true;
}

std::uint32_t daemonErrorCode(const Json::Value& data) {
  const std::int64_t code = asInt64(member(data, "type"));
  const bool fits = std::in_range<std::int32_t>(code) || std::in_range<std::uint32_t>(code);
  return fits ? static_cast<std::uint32_t>(code) : ZephlinkSDK_Error_None;
}

}  // namespace

bool tellsOfFailure(const Json::Value& data) { return daemonErrorCode(data) != ZephlinkSDK_Error_None; }

void readDaemonError(const Json::Value& data, ZephlinkSDK_Result& record) {
  setError(record, daemonErrorCode(data), asString(member(data, "msg")).c_str());
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

  const auto handler = [wait, result, options, parser, finish](const std::string& event, const std::string& message,
                                                               const Json::Value& root) {
    const std::lock_guard lock(result->mutex);
    if (event == WebsocketImpl::kSdkError) {
      readSdkError(root, result->head);
    } else if (event == kSettingsError && !options.settingName.empty()) {
      if (!readSettingsError(element(root, 1), options.settingName, result->head)) return false;
    } else if (!parser(event, message, root)) {
      return false;
    }
    if (options.async) return !finish() || !options.subscription;
    wait->end();
    return true;
  };

  // Before the entry stands: its callback may run at once, and finds the handle in the record.
  result->head.handle = WebsocketImpl::takeId();
  const ZephlinkSDK_Result immediate = result->head;
  channel.addEventDescription(immediate.handle, std::move(description), handler);
  if (!options.async) wait->untilEnded();
  return immediate;
}

}  // namespace zephlinksdk
