// The client library: class ZephlinkSDK, one method for each service of the daemon.
//
// Every method has the same last two arguments, a callback and user data for it. Without a callback (null) it waits for
// the daemon's answer and returns it. With one it returns at once: the record says ZephlinkSDK_Error_AsyncCall and
// carries the `handle`, and the callback gets the answer by value, on the channel thread. What becomes of a call stands
// in the head of its record: test `hasError`.
//
// - `get...` reads what the daemon keeps and, with a callback, stays subscribed: every later report of the same kind
//   reaches the callback until it returns false or `removeListener` is called. Fields that a report leaves out may keep
//   the value of the one before.
// - `set...` and all others end with their first answer. The daemon refuses a setting with a code and a text of its
// own.
// - `listenFor...` sends nothing and hears of every later event; it needs a callback.
//
// A call ends within its time-out, 5 seconds unless its comment says otherwise, counted until the first event that
// concerns it. A null text is refused with ZephlinkSDK_Error_InvalidArgument.
//
// Threads: methods may be called from any thread. Callbacks run one after the other on the channel thread and hold up
// all else there while they run; they may make calls with a callback, while one without is refused with
// ZephlinkSDK_Error_SyncCallInCallback.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>

#include "sdk/callback.h"
#include "sdk/errors.h"
#include "sdk/results.h"

namespace zephlinksdk {

class WebsocketImpl;

class ZephlinkSDK {
 public:
  /// Begins to connect and returns without waiting for the daemon. Never fails: what cannot be shows in the calls.
  explicit ZephlinkSDK(const ZephlinkSDK_Config& config);

  /// Ends all threads after a last write of what was queued. Calls still waiting get no answer; no other thread may
  /// be inside a method.
  ~ZephlinkSDK();
  ZephlinkSDK(const ZephlinkSDK&) = delete;
  ZephlinkSDK& operator=(const ZephlinkSDK&) = delete;

  /// Ends a subscription or any waiting asynchronous call, by the `handle` of the record that started it. An unknown
  /// handle does nothing. Once it returns on another thread than the channel's the callback no longer runs.
  void removeListener(std::uint64_t handle);

  // ---- State and version (sdk/families/state.cpp) ----

  /// The daemon's state. Event: report_current_state.
  ZephlinkSDK_StateResult getState(Callback<ZephlinkSDK_StateResult> callback, void* userData);

  /// The daemon's version. Event: report_version_data.
  ZephlinkSDK_VersionResult getVersion(Callback<ZephlinkSDK_VersionResult> callback, void* userData);

  // ---- Connecting (sdk/families/connecting.cpp) ----

  // ---- Account (sdk/families/account.cpp) ----

  // ---- Connection settings (sdk/families/settings.cpp) ----

  // ---- Adapters (sdk/families/adapters.cpp) ----

  // ---- Statistics (sdk/families/statistics.cpp) ----

  /// Asks the daemon to send statistics, or to stop. While they are on the request is repeated every 45 seconds.
  /// `periods` (hours, at most 5 are sent) chooses the periods of the session statistics; the repetition names none.
  ZephlinkSDK_Result subscribeStats(bool enable, std::uint8_t periodCount, const unsigned int* periods);

  // ---- Historic and session statistics (sdk/families/history.cpp) ----

  // ---- Privacy, DNS and captive portal (sdk/families/privacy.cpp) ----

  // ---- Firewall (sdk/families/firewall.cpp) ----

  // ---- Streaming (sdk/families/streaming.cpp) ----

  // ---- Local proxy (sdk/families/local_proxy.cpp) ----

  // ---- Speed tests and disconnect reason (sdk/families/speed_tests.cpp) ----

  // ---- Logs, reports and daemon control (sdk/families/logs.cpp) ----

  // ---- Safe browsing (sdk/families/safe_browsing.cpp) ----

  // ---- Network sharing (sdk/families/network_sharing.cpp) ----

  /// This machine's settings. Event: report_networksharing_settings, which answers the setters below too.
  ZephlinkSDK_NetworkSharingSettingsResult getNetworkSharingSettings(
      Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);

  /// Whether this machine uses the shares of others.
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingClientEnabled(
      bool enabled, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);

  /// Always refused with ZephlinkSDK_Error_NotSupported, at once and without a callback: nothing is sent.
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingHostEnabled(
      bool enabled, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);

  /// The name that peers see. The daemon refuses one that it does not like.
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingDisplayName(
      const char* name, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);

  /// What becomes of a peer that asks to pair. A value that is none is refused with ZephlinkSDK_Error_InvalidArgument.
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingPairRequestBehavior(
      ZephlinkSDK_NetworkSharingPairRequestBehavior behavior,
      Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);

  /// Which peers are paired unasked. A value that is none is refused with ZephlinkSDK_Error_InvalidArgument.
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingAutoPairBehavior(
      ZephlinkSDK_NetworkSharingAutoPairBehavior behavior, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback,
      void* userData);

  /// Whether the daemon looks for peers all the time.
  ZephlinkSDK_NetworkSharingSettingsResult setNetworkSharingAlwaysOnDiscovery(
      bool enabled, Callback<ZephlinkSDK_NetworkSharingSettingsResult> callback, void* userData);

  /// Whether the daemon looks for peers now. Event: report_networksharing_discovery.
  ZephlinkSDK_NetworkSharingDiscoveryResult getNetworkSharingDiscovery(
      Callback<ZephlinkSDK_NetworkSharingDiscoveryResult> callback, void* userData);

  /// Looks for peers for a while of the daemon's choice. Event: report_networksharing_discovery.
  ZephlinkSDK_NetworkSharingDiscoveryResult startNetworkSharingDiscovery(
      Callback<ZephlinkSDK_NetworkSharingDiscoveryResult> callback, void* userData);

  /// The peers that the daemon knows, at most ZephlinkSDK_MaxPeers of them. Event:
  /// report_networksharing_sharesavailable.
  ZephlinkSDK_NetworkSharingAvailableSharesResult getNetworkSharesAvailable(
      Callback<ZephlinkSDK_NetworkSharingAvailableSharesResult> callback, void* userData);

  // ---- Network sharing peers (sdk/families/peers.cpp) ----

 private:
  void keepAlive();

  char appName[ZephlinkSDK_AppNameSize] = "";
  bool statsEnabled = false;
  bool running = false;
  std::thread keepAliveThread;
  // Guards statsEnabled and running.
  std::recursive_mutex mutex;
  std::condition_variable_any stopping;
  // Ends first: its callbacks may still use all of the above.
  std::unique_ptr<WebsocketImpl> channel;
};

}  // namespace zephlinksdk
