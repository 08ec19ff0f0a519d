// Privacy switches, the tunnel's DNS servers, and captive portals.
#include <algorithm>

#include "sdk/link/call.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

namespace {

constexpr const char* kReport = "report_privacy_settings";

// Longer than usual, since the daemon checks every network.
constexpr std::uint64_t kCaptiveCheckTimeoutMs = 30000;

void readPrivacySettings(const Json::Value& data, ZephlinkSDK_PrivacySettingsResult& record) {
  readMember(data, "killswitch", record.killswitch);
  readMember(data, "dnsleak", record.dnsleak);
  readMember(data, "ipleak", record.ipleak);
  readTexts(member(data, "dns_addresses"), record.dnsAddresses, record.dnsAddressCount);
  readMember(data, "do_not_store_credentials", record.doNotStoreCredentials);
  readMember(data, "request_to_disable_doh", record.requestToDisableDoH);
  readMember(data, "api_protection", record.apiProtection);
}

void readCaptiveNetworks(const Json::Value& data, ZephlinkSDK_CaptivePortalCheckResult& record) {
  readTexts(member(data, "networks"), record.networks, record.networkCount);
}

void readCaptiveLogin(const Json::Value& data, ZephlinkSDK_CaptivePortalLoginResult& record) {
  readMember(data, "enabled", record.enabled);
  readMember(data, "network", record.adapterID);
}

using PrivacyCallback = ZephlinkSDK::PrivacyCallback;

ZephlinkSDK_PrivacySettingsResult change(const Channel& channel, const char* request, Members members,
                                         PrivacyCallback callback, void* userData) {
  return changeSetting(channel, request, members, kReport, readPrivacySettings, callback, userData);
}

}  // namespace

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK::getPrivacySettings(PrivacyCallback callback, void* userData) {
  return subscribe(channel, "request_privacy_settings", kReport, readPrivacySettings, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK::setKillswitch(bool enable, PrivacyCallback callback, void* userData) {
  return change(channel, "set_privacy_killswitch", {{"killswitch", enable}}, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK::setDNSLeakProtection(bool enable, PrivacyCallback callback,
                                                                    void* userData) {
  return change(channel, "set_privacy_dnsleak", {{"dnsleak", enable}}, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK::setIPLeakProtection(bool enable, PrivacyCallback callback,
                                                                   void* userData) {
  return change(channel, "set_privacy_ipleak", {{"ipleak", enable}}, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK::setRequestToDisableDoH(bool enable, PrivacyCallback callback,
                                                                      void* userData) {
  return change(channel, "set_request_to_disable_doh", {{"request_to_disable_doh", enable}}, callback, userData);
}

ZephlinkSDK_PrivacySettingsResult ZephlinkSDK::setDNSServers(std::uint16_t count,
                                                             const char (*addresses)[ZephlinkSDK_AddressSize],
                                                             PrivacyCallback callback, void* userData) {
  if (count > 0 && addresses == nullptr) {
    return refused<ZephlinkSDK_PrivacySettingsResult>(ZephlinkSDK_Error_InvalidArgument);
  }
  Json::Value list(Json::arrayValue);
  const std::size_t sent = std::min<std::size_t>(count, ZephlinkSDK_MaxDnsAddresses);
  for (std::size_t i = 0; i < sent; ++i) list.append(textOf(addresses[i]));
  return change(channel, "set_dns_servers", {{"dns_addresses", list}}, callback, userData);
}

ZephlinkSDK_CaptivePortalCheckResult ZephlinkSDK::checkForCaptivePortals(
    Callback<ZephlinkSDK_CaptivePortalCheckResult> callback, void* userData) {
  return ask(channel,
             {.requests = {"check_captive_networks"},
              .reports = {{"report_captive_networks", readCaptiveNetworks}},
              .timeoutMs = kCaptiveCheckTimeoutMs},
             callback, userData);
}

ZephlinkSDK_CaptivePortalLoginResult ZephlinkSDK::setCaptivePortalLoginMode(
    bool enable, const char* adapterID, Callback<ZephlinkSDK_CaptivePortalLoginResult> callback, void* userData) {
  if (enable && adapterID == nullptr) {
    return refused<ZephlinkSDK_CaptivePortalLoginResult>(ZephlinkSDK_Error_InvalidArgument);
  }
  constexpr char name[] = "set_cplogin_enable";
  const Request request = adapterID != nullptr ? Request(name, {{"enable", enable}, {"network", adapterID}})
                                               : Request(name, {{"enable", enable}});
  return ask(channel, {.requests = {request}, .reports = {{"report_cplogin_network", readCaptiveLogin}}}, callback,
             userData);
}

}  // namespace zephlinksdk
