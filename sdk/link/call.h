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
#include "zephlinksdk/records.h"

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

/// A request's event and its members; none at all leave the text without an object. Its texts may be secrets: copies
/// share the members, and nothing of them stays in freed memory.
struct Request {
  Request(const char* name) : event(name) {}
  /// Wipes the texts of `list`.
  Request(const char* name, Members list);

  const char* event;
  std::shared_ptr<const Json::Value> members;
  bool valid = true;
};

/// A report that answers a call, without the type of its record.
struct AnyReport {
  const char* event;
  /// Reads the report's members into the record that begins with this head. False refuses the event: the wait goes on.
  /// Does not throw.
  std::function<bool(const Json::Value& data, ZephlinkSDK_Result& head)> read;
  /// The members that the report must have; null for any report. Values have the type that the parser gives (an `int`
  /// for a number; null requires only that the member is there).
  Json::Value filter;
};

/// The same for one type of record: nothing else of a call is a template. A reader takes the record or its head; one
/// that returns nothing takes every event.
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

/// Reports of one type of record, as a list in braces.
template <class Record>
struct ReportsOf : Reports {
  ReportsOf(std::initializer_list<Report<Record>> list) : Reports(list.begin(), list.end()) {}
};

/// A method, declared. Fields that are left out have the common value. Reports of one name share one reader.
template <class Record>
struct Call {
  std::vector<Request> requests;
  ReportsOf<Record> reports;
  /// Milliseconds.
  std::uint64_t timeoutMs = WebsocketImpl::kDefaultTimeoutMs;
  /// The name under which a refused setting is reported; empty where the call changes none.
  const char* settingName = "";
  /// An event that is refused leaves the time-out running; otherwise the first event of any kind ends it.
  bool keepsTimeout = false;
};

namespace detail {

/// Returns why a call is refused before anything is sent; ZephlinkSDK_Error_None if it is not.
std::uint32_t refusal(const Channel& channel, const std::vector<Request>& requests);

/// Wipes the members of the requests once their texts are written.
WebsocketImpl::EventDescription describe(const std::vector<Request>& requests, const Reports& reports,
                                         std::uint64_t timeoutMs, bool keepsTimeout);

/// The parser of a call: the first report of the event's name reads it. Clears only the error flag of the head.
Parser parserOf(Reports reports, std::shared_ptr<lockedHead> result);

}  // namespace detail

/// A call that ends with its first answer.
template <class Record>
Record ask(const Channel& channel, Call<std::type_identity_t<Record>> call, Callback<Record> callback, void* userData) {
  if (const std::uint32_t code = detail::refusal(channel, call.requests)) return refused<Record>(code);
  const auto result = std::make_shared<lockedResult<Record>>();
  auto description = detail::describe(call.requests, call.reports, call.timeoutMs, call.keepsTimeout);
  return wsNonSubscriptionWrapper(callback, userData, *channel, std::move(description), result,
                                  detail::parserOf(std::move(call.reports), result), call.settingName);
}

/// A call that reads what the daemon keeps and, with a callback, stays subscribed.
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

/// A call that changes a setting: the daemon refuses it under the name of the request.
template <class Record, class Read>
Record changeSetting(const Channel& channel, const char* request, Members members, const char* report, Read reader,
                     Callback<Record> callback, void* userData) {
  return ask(channel, {.requests = {{request, members}}, .reports = {{report, reader}}, .settingName = request},
             callback, userData);
}

/// A subscription that sends nothing and does not time out. Refused with ZephlinkSDK_Error_CallbackRequired without a
/// callback.
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
