// The declaration of a library method: what it sends, which reports answer it and how each report is read. The call
// frame does the rest, so a method is a row of a table:
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
#include "zephlinksdk/records.h"

namespace zephlinksdk {

using Channel = std::unique_ptr<WebsocketImpl>;

/// A member of a request or of a filter. A null text makes the call fail with `ZephlinkSDK_Error_InvalidArgument`.
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

/// A request's event and its members; without members the text has no object. The texts may be secrets: copies share
/// the members, and freed memory is wiped.
struct Request {
  Request(const char* name) : event(name) {}
  /// Wipes the texts of `list`.
  Request(const char* name, Members list);

  const char* event;
  std::shared_ptr<const Json::Value> members;
  bool valid = true;
};

/// A report that answers a call, independent of its record type.
struct AnyReport {
  const char* event;
  /// Reads the report's members into the record that starts with this head. Returns false if the event does not end the
  /// wait. Does not throw.
  std::function<bool(const Json::Value& data, ZephlinkSDK_Result& head)> read;
  /// The members that the report must have; null matches any report. Values have the type that the parser returns
  /// (`int` for a number); null requires only that the member exists.
  Json::Value filter;
};

/// The same for one record type; nothing else of a call is a template. A reader takes the record or its head. A reader
/// that returns void accepts every event.
template <class Record>
struct Report : AnyReport {
  template <class Read>
  Report(const char* name, Read reader) : AnyReport{name, erased(reader), {}} {}
  template <class Read>
  Report(const char* name, Read reader, Members wanted) : AnyReport{name, erased(reader), toObject(wanted)} {}

 private:
  template <class Read>
  static auto erased(Read reader) {
    return [reader](const Json::Value& data, ZephlinkSDK_Result& head) {
      if constexpr (std::is_invocable_v<Read, const Json::Value&, ZephlinkSDK_Result&>) {
        return taken(reader, data, head);
      } else {
        // The head is the record's first member.
        return taken(reader, data, reinterpret_cast<Record&>(head));
      }
    };
  }

  template <class Read, class Target>
  static bool taken(const Read& reader, const Json::Value& data, Target& target) {
    if constexpr (std::is_void_v<std::invoke_result_t<Read, const Json::Value&, Target&>>) {
      reader(data, target);
      return true;
    } else {
      return reader(data, target);
    }
  }
};

using Reports = std::vector<AnyReport>;

/// Reports of one record type, as a list in braces.
template <class Record>
struct ReportsOf : Reports {
  ReportsOf(std::initializer_list<Report<Record>> list) : Reports(list.begin(), list.end()) {}
};

/// The declaration of a method. Omitted fields have the usual value. Reports with the same name share one reader.
template <class Record>
struct Call {
  std::vector<Request> requests;
  ReportsOf<Record> reports;
  /// In milliseconds.
  std::uint64_t timeoutMs = WebsocketImpl::kDefaultTimeoutMs;
  /// The name under which the daemon refuses the setting; empty if the call changes no setting.
  const char* settingName = "";
  /// An event that the reader rejects does not cancel the time-out; otherwise the first event of any kind cancels it.
  bool keepsTimeout = false;
};

namespace detail {

/// Returns the reason to refuse a call before sending anything, or ZephlinkSDK_Error_None.
std::uint32_t refusal(const Channel& channel, const std::vector<Request>& requests);

/// Builds the texts of the requests, then wipes the requests' members.
WebsocketImpl::EventDescription describe(const std::vector<Request>& requests, const Reports& reports,
                                         std::uint64_t timeoutMs, bool keepsTimeout);

/// Returns the parser of a call, which uses the first report with the event's name. It clears only the error flag of
/// the head.
Parser parserOf(Reports reports, std::shared_ptr<lockedHead> result);

}  // namespace detail

/// Makes a call that ends with its first answer.
template <class Record>
Record ask(const Channel& channel, Call<std::type_identity_t<Record>> call, Callback<Record> callback, void* userData) {
  if (const std::uint32_t code = detail::refusal(channel, call.requests)) return refused<Record>(code);
  const auto result = std::make_shared<lockedResult<Record>>();
  auto description = detail::describe(call.requests, call.reports, call.timeoutMs, call.keepsTimeout);
  return wsNonSubscriptionWrapper(callback, userData, *channel, std::move(description), result,
                                  detail::parserOf(std::move(call.reports), result), call.settingName);
}

/// Makes a call that reads a value of the daemon and, with a callback, stays subscribed.
template <class Record, class Read>
Record subscribe(const Channel& channel, const char* request, const char* report, Read reader,
                 Callback<Record> callback, void* userData) {
  if (!channel) return refused<Record>(ZephlinkSDK_Error_Sdk);
  const auto result = std::make_shared<lockedResult<Record>>();
  Reports reports{Report<Record>(report, reader)};
  auto description = detail::describe({request}, reports, WebsocketImpl::kDefaultTimeoutMs, false);
  return wsSubscriptionWrapper(callback, userData, *channel, std::move(description), result,
                               detail::parserOf(std::move(reports), result));
}

/// Makes a call that changes a setting; the daemon refuses it under the name of the request.
template <class Record, class Read>
Record changeSetting(const Channel& channel, const char* request, Members members, const char* report, Read reader,
                     Callback<Record> callback, void* userData) {
  return ask(channel, {.requests = {{request, members}}, .reports = {{report, reader}}, .settingName = request},
             callback, userData);
}

/// Subscribes without sending anything and without a time-out. Fails with ZephlinkSDK_Error_CallbackRequired if
/// `callback` is null.
template <class Record, class Read>
Record listenFor(const Channel& channel, const char* report, Read reader, Callback<Record> callback, void* userData) {
  if (callback == nullptr) return refused<Record>(ZephlinkSDK_Error_CallbackRequired);
  if (!channel) return refused<Record>(ZephlinkSDK_Error_Sdk);
  const auto result = std::make_shared<lockedResult<Record>>();
  WebsocketImpl::EventDescription description;
  WebsocketImpl::addListenEvent(description, report);
  return wsSubscriptionWrapper(callback, userData, *channel, std::move(description), result,
                               detail::parserOf({Report<Record>(report, reader)}, result));
}

}  // namespace zephlinksdk
