// How a method of the library is declared: what it sends, which reports answer it and how each is read. The frame does
// the rest, so a method is a row of a table:
//
//   return changeSetting(channel, "set_packet_aggregation", {{"enable", enable}}, "report_connection_settings",
//                        readSettings, callback, userData);
#pragma once

#include <json/json.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "sdk/errors.h"
#include "sdk/link/json.h"
#include "sdk/link/wrappers.h"
#include "sdk/results.h"

namespace zephlinksdk {

using Channel = std::unique_ptr<WebsocketImpl>;

/// A member of a request or of a filter. A null text stays without a value and makes the request one that is refused
/// with `ZephlinkSDK_Error_InvalidArgument`.
struct Member {
  template <class Value>
  Member(const char* memberName, const Value& memberValue) : name(memberName), value(memberValue) {}
  Member(const char* memberName, const char* text)
      : name(memberName), value(text != nullptr ? Json::Value(text) : Json::Value()), valid(text != nullptr) {}

  const char* name;
  Json::Value value;
  bool valid = true;
};

using Members = std::initializer_list<Member>;

Json::Value toObject(Members members);

/// A request's event and its members; none at all leave the text without an object.
struct Request {
  Request(const char* name) : event(name) {}
  Request(const char* name, Members list);

  const char* event;
  Json::Value members;
  bool valid = true;
};

/// Reads a report's members into a record. A plain reader takes what comes; one that returns a bool refuses the event
/// by false, and the wait goes on. Never throws.
template <class Record>
class Reader {
 public:
  template <class Read>
  requires std::is_invocable_v<Read, const Json::Value&, Record&> Reader(Read read) {
    if constexpr (std::is_void_v<std::invoke_result_t<Read, const Json::Value&, Record&>>) {
      function = [read](const Json::Value& data, Record& record) {
        read(data, record);
        return true;
      };
    } else {
      function = read;
    }
  }

  bool operator()(const Json::Value& data, Record& record) const { return function(data, record); }

 private:
  std::function<bool(const Json::Value&, Record&)> function;
};

/// A report that answers a call and, where not every such report will do, the members that it must hold: a filter's
/// values have the type that the parser gives (an `int` for a number; null asks only that the member is there).
template <class Record>
struct Report {
  Report(const char* name, Reader<Record> reader) : event(name), read(std::move(reader)) {}
  Report(const char* name, Reader<Record> reader, Members wanted)
      : event(name), read(std::move(reader)), filter(toObject(wanted)) {}

  const char* event;
  Reader<Record> read;
  Json::Value filter;
};

/// A method, declared. Fields that are left out have the common value. Reports of one name share one reader.
template <class Record>
struct Call {
  std::vector<Request> requests;
  std::vector<Report<Record>> reports;
  /// Milliseconds.
  std::uint64_t timeoutMs = WebsocketImpl::kDefaultTimeoutMs;
  /// The name under which a refused setting is reported; empty where the call changes none.
  const char* settingName = "";
  /// An event that is refused leaves the time-out running; otherwise the first event of any kind ends it.
  bool keepsTimeout = false;
};

namespace detail {

WebsocketImpl::EventDescription describe(const std::vector<Request>& requests, std::uint64_t timeoutMs,
                                         bool keepsTimeout);
bool allValid(const std::vector<Request>& requests);

/// The parser of a call: the first report of the event's name reads it. Only the error flag of the head is cleared.
template <class Record>
Parser parserOf(std::vector<Report<Record>> reports, const std::shared_ptr<lockedResult<Record>>& result) {
  return [reports = std::move(reports), result](const std::string& event, const std::string&, const Json::Value& root) {
    for (const Report<Record>& report : reports) {
      if (event != report.event) continue;
      result->record.hasError = false;
      return report.read(element(root, 1), result->record);
    }
    return false;
  };
}

/// What all forms of a call share; `wrap` is one of the two wrappers.
template <class Record, class Wrap>
Record perform(const Channel& channel, Call<Record> call, Wrap wrap) {
  if (!channel) return refused<Record>(ZephlinkSDK_Error_Sdk);
  if (!allValid(call.requests)) return refused<Record>(ZephlinkSDK_Error_InvalidArgument);
  const auto result = std::make_shared<lockedResult<Record>>();
  auto description = describe(call.requests, call.timeoutMs, call.keepsTimeout);
  for (const Report<Record>& report : call.reports) {
    if (report.filter.isNull()) {
      WebsocketImpl::addExpectedEvent(description, report.event);
    } else {
      WebsocketImpl::addExpectedEvent(description, report.event, report.filter);
    }
  }
  return wrap(std::move(description), result, parserOf(std::move(call.reports), result));
}

}  // namespace detail

/// A call that ends with its first answer.
template <class Record>
Record ask(const Channel& channel, Call<std::type_identity_t<Record>> call, Callback<Record> callback, void* userData) {
  const char* settingName = call.settingName;
  return detail::perform(channel, std::move(call), [&](auto description, const auto& result, const Parser& parser) {
    return wsNonSubscriptionWrapper(callback, userData, *channel, std::move(description), result, parser, settingName);
  });
}

/// A call that reads what the daemon keeps and, with a callback, goes on hearing of it.
template <class Record>
Record subscribe(const Channel& channel, const char* request, const char* report,
                 Reader<std::type_identity_t<Record>> reader, Callback<Record> callback, void* userData) {
  return detail::perform<Record>(channel, {.requests = {request}, .reports = {{report, std::move(reader)}}},
                                 [&](auto description, const auto& result, const Parser& parser) {
                                   return wsSubscriptionWrapper(callback, userData, *channel, std::move(description),
                                                                result, parser);
                                 });
}

/// A call that changes a setting: the daemon refuses it under the name of the request.
template <class Record>
Record changeSetting(const Channel& channel, const char* request, Members members, const char* report,
                     Reader<std::type_identity_t<Record>> reader, Callback<Record> callback, void* userData) {
  return ask(channel,
             {.requests = {{request, members}}, .reports = {{report, std::move(reader)}}, .settingName = request},
             callback, userData);
}

/// A subscription that sends nothing and waits for ever. Refused with `ZephlinkSDK_Error_CallbackRequired` without a
/// callback.
template <class Record>
Record listenFor(const Channel& channel, const char* report, Reader<std::type_identity_t<Record>> reader,
                 Callback<Record> callback, void* userData) {
  if (callback == nullptr) return refused<Record>(ZephlinkSDK_Error_CallbackRequired);
  if (!channel) return refused<Record>(ZephlinkSDK_Error_Sdk);
  const auto result = std::make_shared<lockedResult<Record>>();
  WebsocketImpl::EventDescription description;
  WebsocketImpl::addListenEvent(description, report);
  std::vector<Report<Record>> reports{{report, std::move(reader)}};
  return wsSubscriptionWrapper(callback, userData, *channel, std::move(description), result,
                               detail::parserOf(std::move(reports), result));
}

}  // namespace zephlinksdk
