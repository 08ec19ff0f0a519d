// Privacy switches, the tunnel's DNS servers, and captive portals.
#include <algorithm>

#include "cli/families/handlers.h"
#include "cli/usage.h"
#include "sdk/text.h"

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

/// Every fault of a value is Missing here.
template <class Method>
int changeSwitch(Words words, const char* usage, Method& method) {
  const auto on = words.size() == 1 ? parseOnOff(words[0]) : std::nullopt;
  if (!on) return missing(usage);
  return finish(call(method, *on), printPrivacy);
}

int requestToDisableDoH(Words words) {
  return changeSwitch(words, usage::privacyRequestToDisableDoH, ZephlinkSDK_setRequestToDisableDoH);
}

int killswitch(Words words) {
  // The one switch that words may follow.
  return changeSwitch(words.first(std::min<std::size_t>(words.size(), 1)), usage::privacyKillswitch,
                      ZephlinkSDK_setKillswitch);
}

int dnsLeak(Words words) { return changeSwitch(words, usage::privacyDnsleak, ZephlinkSDK_setDNSLeakProtection); }

int ipLeak(Words words) { return changeSwitch(words, usage::privacyIpleak, ZephlinkSDK_setIPLeakProtection); }

constexpr Action kPrivacyActions[] = {
    {"requestToDisableDoH", requestToDisableDoH},
    {"killswitch", killswitch},
    {"dnsleak", dnsLeak},
    {"ipleak", ipLeak},
};

int captiveCheck(Words words) {
  if (!words.empty()) return invalid(usage::captiveportalCheck);
  return finish(call(ZephlinkSDK_checkForCaptivePortals), printCaptiveNetworks);
}

int captiveLogin(Words words) {
  if (words.empty()) return missing(usage::captiveportalLogin);
  const auto on = parseOnOff(words[0]);
  if (!on) return invalid(usage::captiveportalLogin);
  if (*on && words.size() == 1) return missing(usage::captiveportalLogin);
  // An adapter is named to enable and only then.
  if (words.size() > (*on ? 2U : 1U)) return invalid(usage::captiveportalLogin);
  const char* adapterID = *on ? words[1] : nullptr;
  return finish(call(ZephlinkSDK_setCaptivePortalLoginMode, *on, adapterID), printCaptiveLogin);
}

constexpr Action kCaptivePortalActions[] = {
    {"check", captiveCheck},
    {"login", captiveLogin},
};

}  // namespace

int privacy(Words words) { return dispatchWord(kPrivacyActions, words, usage::privacy); }

int captivePortal(Words words) { return dispatchWord(kCaptivePortalActions, words, usage::captiveportal); }

int dns(Words words) {
  char addresses[ZephlinkSDK_MaxDnsAddresses][ZephlinkSDK_AddressSize];
  const std::size_t count = std::min(words.size(), ZephlinkSDK_MaxDnsAddresses);
  for (std::size_t i = 0; i < count; ++i) zephlinksdk::copyText(addresses[i], words[i]);
  return finish(call(ZephlinkSDK_setDNSServers, static_cast<unsigned short>(count), addresses), printPrivacy);
}

int showPrivacy(Words) { return finish(call(ZephlinkSDK_getPrivacySettings), printPrivacy); }

}  // namespace cli
