// The flat face of the library: one free function for each method of ZephlinkSDK, the handle first, then the method's
// own arguments. A null handle is refused with ZephlinkSDK_Error_InvalidArgument.
#pragma once

#include "sdk/errors.h"
#include "sdk/zephlink_sdk.h"

/// The start record's defaults: no application name, 127.0.0.1, port 9330.
void ZephlinkSDK_defaultConfig(ZephlinkSDK_Config* config);

/// Begins to connect and returns at once. Owned by the caller; null only when memory has run out.
zephlinksdk::ZephlinkSDK* ZephlinkSDK_create(ZephlinkSDK_Config config);

/// Ends and frees what `ZephlinkSDK_create` returned, after a last write of what was queued. Ignores null.
void ZephlinkSDK_destroy(zephlinksdk::ZephlinkSDK* sdk);

/// Does nothing on a null handle.
void ZephlinkSDK_removeListener(zephlinksdk::ZephlinkSDK* sdk, uint64_t handle);

namespace zephlinksdk {

template <auto Method>
struct Forward;

template <class Record, class... Arguments, Record (ZephlinkSDK::*Method)(Arguments...)>
struct Forward<Method> {
  static Record call(ZephlinkSDK* sdk, Arguments... arguments) {
    if (sdk != nullptr) return (sdk->*Method)(arguments...);
    Record record{};
    setError(record, ZephlinkSDK_Error_InvalidArgument);
    return record;
  }
};

template <auto Method>
inline constexpr auto& forward = Forward<Method>::call;

}  // namespace zephlinksdk

// ---- State and version ----
inline constexpr auto& ZephlinkSDK_getState = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getState>;
inline constexpr auto& ZephlinkSDK_getVersion = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getVersion>;

// ---- Connecting ----

// ---- Account ----

// ---- Connection settings ----

// ---- Adapters ----

// ---- Statistics ----
inline constexpr auto& ZephlinkSDK_subscribeStats = zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::subscribeStats>;

// ---- Historic and session statistics ----

// ---- Privacy, DNS and captive portal ----

// ---- Firewall ----

// ---- Streaming ----

// ---- Local proxy ----

// ---- Speed tests and disconnect reason ----

// ---- Logs, reports and daemon control ----

// ---- Safe browsing ----

// ---- Network sharing ----
inline constexpr auto& ZephlinkSDK_getNetworkSharingSettings =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getNetworkSharingSettings>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingClientEnabled =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingClientEnabled>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingHostEnabled =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingHostEnabled>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingDisplayName =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingDisplayName>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingPairRequestBehavior =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingPairRequestBehavior>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingAutoPairBehavior =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingAutoPairBehavior>;
inline constexpr auto& ZephlinkSDK_setNetworkSharingAlwaysOnDiscovery =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::setNetworkSharingAlwaysOnDiscovery>;
inline constexpr auto& ZephlinkSDK_getNetworkSharingDiscovery =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getNetworkSharingDiscovery>;
inline constexpr auto& ZephlinkSDK_startNetworkSharingDiscovery =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::startNetworkSharingDiscovery>;
inline constexpr auto& ZephlinkSDK_getNetworkSharesAvailable =
    zephlinksdk::forward<&zephlinksdk::ZephlinkSDK::getNetworkSharesAvailable>;

// ---- Network sharing peers ----
