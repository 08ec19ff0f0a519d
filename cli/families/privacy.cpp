// Privacy switches, the tunnel's DNS servers, and captive portals.
#include <algorithm>

#include "base/text.h"
#include "cli/families/families.h"
#include "cli/handlers.h"

namespace cli {

namespace {

Json::Value textToJson(const char* text) { return text; }

void printPrivacy(const ZephlinkSDK_PrivacySettingsResult& record) {
  Json::Value value(Json::objectValue);
  value["killswitch"] = record.killswitch;
  value["dnsleak"] = record.dnsleak;
  value["ipleak"] = record.ipleak;
  value["requestToDisableDoH"] = record.requestToDisableDoH;
  value["dnsAddresses"] = toJsonArray(record.dnsAddresses, record.dnsAddressCount, textToJson);
  writeJson(stdout, value);
}

void printCaptiveNetworks(const ZephlinkSDK_CaptivePortalCheckResult& record) {
  writeJson(stdout, toJsonArray(record.networks, record.networkCount, textToJson));
}

void printCaptiveLogin(const ZephlinkSDK_CaptivePortalLoginResult& record) {
  Json::Value value(Json::objectValue);
  value["enabled"] = record.enabled;
  value["adapterID"] = record.adapterID;
  writeJson(stdout, value);
}

/// All errors are Missing here, including invalid values and too many arguments.
template <auto& Method>
int changeSwitch(Arguments arguments, const char* usage) {
  const auto on = arguments.size() == 1 ? valueOf<parseSwitch>(arguments[0]) : std::nullopt;
  return on ? finish(call<Method>(*on), printPrivacy) : missing(usage);
}

/// Unlike the other switches, this one ignores arguments after its value.
int changeKillswitch(Arguments arguments, const char* usage) {
  return changeSwitch<ZephlinkSDK_setKillswitch>(arguments.first(std::min<std::size_t>(arguments.size(), 1)), usage);
}

constexpr Action kPrivacyRows[] = {
    {"requestToDisableDoH", "privacy requestToDisableDoH <on|off>", changeSwitch<ZephlinkSDK_setRequestToDisableDoH>},
    {"killswitch", "privacy killswitch <on|off>", changeKillswitch},
    {"dnsleak", "privacy dnsleak <on|off>", changeSwitch<ZephlinkSDK_setDNSLeakProtection>},
    {"ipleak", "privacy ipleak <on|off>", changeSwitch<ZephlinkSDK_setIPLeakProtection>},
};

/// Enabling requires an adapter; disabling accepts none. REQUIRES: an argument.
int captiveLogin(Arguments arguments, const char* usage) {
  const auto on = valueOf<parseSwitch>(arguments[0]);
  if (!on) return invalid(usage);
  if (*on && arguments.size() == 1) return missing(usage);
  if (arguments.size() > (*on ? 2U : 1U)) return invalid(usage);
  const char* adapterID = *on ? arguments[1] : nullptr;
  return finish(call<ZephlinkSDK_setCaptivePortalLoginMode>(*on, adapterID), printCaptiveLogin);
}

constexpr Action kCaptivePortalRows[] = {
    {"check", "captiveportal check", exactly<0, perform<ZephlinkSDK_checkForCaptivePortals, printCaptiveNetworks>>},
    {"login", "captiveportal login <on|off> <adapter id>", atLeast<1, captiveLogin>},
};

/// Ignores addresses that do not fit into the request.
int setDnsServers(Arguments arguments, const char*) {
  char addresses[ZephlinkSDK_MaxDnsAddresses][ZephlinkSDK_AddressSize];
  const std::size_t count = std::min(arguments.size(), ZephlinkSDK_MaxDnsAddresses);
  for (std::size_t i = 0; i < count; ++i) zephlinksdk::copyText(addresses[i], arguments[i]);
  return finish(call<ZephlinkSDK_setDNSServers>(static_cast<std::uint16_t>(count), addresses), printPrivacy);
}

constexpr Action kRows[] = {
    {"privacy", "privacy <dnsleak|ipleak|killswitch|requestToDisableDoH>", nullptr, &rows<kPrivacyRows>},
    {"dns", "dns <ip address> ...", setDnsServers},
    {"captiveportal", "captiveportal check|login", nullptr, &rows<kCaptivePortalRows>},
};

constexpr Action kShowRows[] = {
    {"privacy", nullptr, exactly<0, perform<ZephlinkSDK_getPrivacySettings, printPrivacy>>},
};

}  // namespace

constinit const families::Family families::privacy{kRows, kShowRows};

}  // namespace cli
