#include "fuzz/at_once.h"

#include <utility>

#include "cli/stream.h"
#include "fuzz/check.h"
#include "sdk/link/websocket_impl.h"
#include "zephlinksdk/zephlinksdk.h"

namespace {

std::vector<std::string> g_reports;
std::vector<std::string> g_sent;

void keepRequest(const std::string& text) {
  fuzz::check(text.ends_with("}\n") || text.ends_with("\"]\n"), "a request ends in one line feed", text);
  fuzz::check(text.find('\n') == text.size() - 1, "a request is one line", text);
  Json::Value request;
  fuzz::parseJson(text, request);
  const bool formed = request.isArray() && request.size() == 3 && request[0].isString() &&
                      (request[1].isObject() || request[1].isNull()) && request[2] == "zephlink_sdk";
  fuzz::check(formed, "a request consists of event, object or null, and source", text);
  g_sent.push_back(text);
}

}  // namespace

namespace zephlinksdk {

// Replaces the channel's function: runs the whole life of an entry, up to its time-out.
// NOLINTNEXTLINE(performance-unnecessary-value-param): the parameters are those of its declaration.
void WebsocketImpl::addEventDescription(std::uint64_t, EventDescription description, Handler handler) {
  for (const WipedText& request : description.requests) keepRequest({request.data(), request.size()});
  std::vector<std::string> names = description.listenEvents;
  for (const ExpectedEvent& expected : description.expectedEvents) names.push_back(expected.event);
  for (const std::string& report : g_reports) {
    Json::Value root(Json::arrayValue);
    fuzz::parseJson(report, root[1]);
    for (const std::string& name : names) {
      root[0] = name;
      if (handler(name, report, root)) return;
    }
  }
  if (description.expectedEvents.empty()) return;
  Json::Value timeout(Json::objectValue);
  timeout["msg"] = "Timeout";
  timeout["type"] = static_cast<Json::UInt>(ZephlinkSDK_Error_Timeout);
  handler("sdk_error", "sdk_error", timeout);
}

// Replaces the channel's function, whose queue would never be emptied.
void WebsocketImpl::send(const char*, const Json::Value&) {}

}  // namespace zephlinksdk

namespace cli {

// Replaces the program's functions: all events have arrived when these are called.
void StreamClock::waitForStart() {}
void StreamClock::waitFor(std::int32_t) {}

}  // namespace cli

namespace fuzz {

void answerWith(std::vector<std::string> reports) {
  g_reports = std::move(reports);
  g_sent.clear();
}

const std::vector<std::string>& sentRequests() { return g_sent; }

zephlinksdk::ZephlinkSDK* makeSdk() {
  ZephlinkSDK_Config config;
  ZephlinkSDK_defaultConfig(&config);
  // The discard port has no listener; the channel keeps trying until the process ends.
  config.port = 9;
  return ZephlinkSDK_create(config);
}

}  // namespace fuzz
