// The rule lists of the traffic that the daemon treats as streaming.
#include "sdk/families/rule_lists.h"
#include "sdk/link/call.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

using Record = ZephlinkSDK_StreamingSettingsResult;

constexpr const char* kReport = "report_streaming_settings";

void readStreaming(const Json::Value& data, Record& record) { readRuleLists(data, record.lists); }

Record change(const Channel& channel, const char* request, const Member& setting, Callback<Record> callback,
              void* userData) {
  return changeSetting(channel, request, {setting}, kReport, readStreaming, callback, userData);
}

}  // namespace

Record ZephlinkSDK::getStreamingSettings(Callback<Record> callback, void* userData) {
  return subscribe(channel, "request_streaming_settings", kReport, readStreaming, callback, userData);
}

Record ZephlinkSDK::setStreamingDomains(std::uint16_t count, const char (*domains)[ZephlinkSDK_DomainSize],
                                        Callback<Record> callback, void* userData) {
  return change(channel, "set_streaming_domains", ruleListMember("domains", count, domains), callback, userData);
}

Record ZephlinkSDK::setStreamingIPv4(std::uint16_t count, const in_addr* addresses, Callback<Record> callback,
                                     void* userData) {
  return change(channel, "set_streaming_ipv4", ruleListMember("ipv4", count, addresses), callback, userData);
}

Record ZephlinkSDK::setStreamingIPv6(std::uint16_t count, const in6_addr* addresses, Callback<Record> callback,
                                     void* userData) {
  return change(channel, "set_streaming_ipv6", ruleListMember("ipv6", count, addresses), callback, userData);
}

Record ZephlinkSDK::setStreamingPorts(std::uint16_t count, const ZephlinkSDK_ProtocolPortPair* rules,
                                      Callback<Record> callback, void* userData) {
  return change(channel, "set_streaming_ports", ruleListMember("ports", count, rules), callback, userData);
}

}  // namespace zephlinksdk
