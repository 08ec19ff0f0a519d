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
  // Event of all: report_connection_settings.

  using SettingsCallback = Callback<ZephlinkSDK_SettingsResult>;

  ZephlinkSDK_SettingsResult getSettings(SettingsCallback callback, void* userData);

  /// Of the tunnel as a whole.
  ZephlinkSDK_SettingsResult setTunnelEncrypted(bool enable, SettingsCallback callback, void* userData);

  /// Of one adapter's connection.
  ZephlinkSDK_SettingsResult setConnectionEncryption(const char* adapterID, bool enable, SettingsCallback callback,
                                                     void* userData);

  ZephlinkSDK_SettingsResult setJumboPackets(bool enable, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setPacketAggregation(bool enable, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setHeaderCompression(bool enable, SettingsCallback callback, void* userData);

  /// Whether the daemon connects as soon as it starts.
  ZephlinkSDK_SettingsResult setStartupConnect(bool enable, SettingsCallback callback, void* userData);

  /// Whether the tunnel takes the machine's default route.
  ZephlinkSDK_SettingsResult setEnableDefaultRoute(bool enable, SettingsCallback callback, void* userData);

  ZephlinkSDK_SettingsResult setMode(ZephlinkSDK_BondingMode mode, SettingsCallback callback, void* userData);

  /// Proxy and Share cannot be set and are refused with ZephlinkSDK_Error_InvalidArgument.
  ZephlinkSDK_SettingsResult setConnectionTransportMode(ZephlinkSDK_TransportMode mode, SettingsCallback callback,
                                                        void* userData);

  /// At most so many connections carry the same packet.
  ZephlinkSDK_SettingsResult setMaxRedundantSends(unsigned int connections, SettingsCallback callback, void* userData);

  /// The speed under which secondary adapters join in, in megabits per second.
  ZephlinkSDK_SettingsResult setOverflowThreshold(double mbps, SettingsCallback callback, void* userData);

  /// The same for traffic that goes first.
  ZephlinkSDK_SettingsResult setPriorityOverflowThreshold(double mbps, SettingsCallback callback, void* userData);

  /// Of any sign: the daemon says what the numbers mean.
  ZephlinkSDK_SettingsResult setTargetNumberOfConnections(int upload, int download, SettingsCallback callback,
                                                          void* userData);

  /// Seconds.
  ZephlinkSDK_SettingsResult setMaximumConnectRetry(unsigned int seconds, SettingsCallback callback, void* userData);
  ZephlinkSDK_SettingsResult setMaximumTransportRetry(unsigned int seconds, SettingsCallback callback, void* userData);

  /// Replaces all forwarded ports; the first 20 rules count. Rules of port 0 and those with a range are passed over.
  ZephlinkSDK_SettingsResult setForwardPorts(unsigned short count, const ZephlinkSDK_ProtocolPortPair* rules,
                                             SettingsCallback callback, void* userData);

  /// Replaces all downstream subnets; the first 10 count.
  ZephlinkSDK_SettingsResult setDownstreamSubnets(unsigned short count, const ZephlinkSDK_Subnet* subnets,
                                                  SettingsCallback callback, void* userData);

  // ---- Adapters (sdk/families/adapters.cpp) ----
  // Event of all: report_networks, with every adapter.

  using AdaptersCallback = Callback<ZephlinkSDK_AdaptersResult>;

  ZephlinkSDK_AdaptersResult getAdapters(AdaptersCallback callback, void* userData);

  /// A number that is no priority is refused with ZephlinkSDK_Error_InvalidArgument.
  ZephlinkSDK_AdaptersResult setConnectionPriorities(const char* adapterID, ZephlinkSDK_ConnectionPriority priority,
                                                     AdaptersCallback callback, void* userData);

  ZephlinkSDK_AdaptersResult setConnectionDirectionalMode(const char* adapterID,
                                                          ZephlinkSDK_ConnectionDirectionalMode upload,
                                                          ZephlinkSDK_ConnectionDirectionalMode download,
                                                          AdaptersCallback callback, void* userData);

  /// Bits per second; 0 and the form without a number lift the limit.
  ZephlinkSDK_AdaptersResult setConnectionRateLimit(const char* adapterID, std::int64_t bps, AdaptersCallback callback,
                                                    void* userData);
  ZephlinkSDK_AdaptersResult setConnectionRateLimit(const char* adapterID, AdaptersCallback callback, void* userData);

  /// Bytes; 0 and the form without numbers lift the limit. Usage starts anew on `resetDay` of the month, or counts the
  /// last 30 days where that is 0.
  ZephlinkSDK_AdaptersResult setAdapterMonthlyDataLimit(const char* adapterID, std::int64_t bytes,
                                                        std::int64_t resetDay, AdaptersCallback callback,
                                                        void* userData);
  ZephlinkSDK_AdaptersResult setAdapterMonthlyDataLimit(const char* adapterID, AdaptersCallback callback,
                                                        void* userData);

  /// Bytes; 0 and the form without a number lift the limit.
  ZephlinkSDK_AdaptersResult setAdapterDailyDataLimit(const char* adapterID, std::int64_t bytes,
                                                      AdaptersCallback callback, void* userData);
  ZephlinkSDK_AdaptersResult setAdapterDailyDataLimit(const char* adapterID, AdaptersCallback callback, void* userData);

  /// Adds to what the adapter may use today, in bytes. The daemon refuses it under no name: this call never ends with
  /// an error of a setting.
  ZephlinkSDK_AdaptersResult addAdapterDailyDataLimitBoost(const char* adapterID, std::int64_t bytes,
                                                           AdaptersCallback callback, void* userData);

  /// The rate beyond a data limit, in bits per second; 0 stops using the adapter there.
  ZephlinkSDK_AdaptersResult setAdapterOverlimitRatelimit(const char* adapterID, std::int64_t bps,
                                                          AdaptersCallback callback, void* userData);

  /// Sets the usage counters to 0. Like the boost it never ends with an error of a setting.
  ZephlinkSDK_AdaptersResult resetAdapterUsage(const char* adapterID, AdaptersCallback callback, void* userData);

  // ---- Statistics (sdk/families/statistics.cpp) ----

  /// Speed, loss and latency of each connection. Event: report_connection_stats.
  ZephlinkSDK_ConnectionStatsResult getConnectionStats(Callback<ZephlinkSDK_ConnectionStatsResult> callback,
                                                       void* userData);

  /// The streams that the daemon tracks. Event: report_streaming_stats.
  ZephlinkSDK_StreamingStatsResult getStreamingStats(Callback<ZephlinkSDK_StreamingStatsResult> callback,
                                                     void* userData);

  /// Asks the daemon to send statistics, or to stop. While they are on the request is repeated every 45 seconds.
  /// `periods` (hours, at most 5 are sent) chooses the periods of the session statistics; the repetition names none.
  ZephlinkSDK_Result subscribeStats(bool enable, std::uint8_t periodCount, const unsigned int* periods);

  // ---- Historic and session statistics (sdk/families/history.cpp) ----

  /// The connection statistics of the last five minutes. The one report holds many samples: the callback, which is
  /// needed, gets each of them in turn whatever it returns, and then the last one once more as the end of the call; of
  /// a report without samples it gets one empty record. A sample that cannot be read ends the report with
  /// ZephlinkSDK_Error_Sdk. Event: report_historic_connection_stats.
  ZephlinkSDK_ConnectionStatsResult getHistoricConnectionStats(Callback<ZephlinkSDK_ConnectionStatsResult> callback,
                                                               void* userData);

  /// The accounting over the periods that `subscribeStats` chose, or that the daemon chooses. A period whose name is no
  /// number makes the record an error, ZephlinkSDK_Error_Sdk. Event: report_session_stats.
  ZephlinkSDK_SessionStatsResult getSessionStats(Callback<ZephlinkSDK_SessionStatsResult> callback, void* userData);

  // ---- Privacy, DNS and captive portal (sdk/families/privacy.cpp) ----
  // Event of all but the captive portals: report_privacy_settings.

  using PrivacyCallback = Callback<ZephlinkSDK_PrivacySettingsResult>;

  ZephlinkSDK_PrivacySettingsResult getPrivacySettings(PrivacyCallback callback, void* userData);

  /// Whether nothing leaves this machine while the tunnel is down.
  ZephlinkSDK_PrivacySettingsResult setKillswitch(bool enable, PrivacyCallback callback, void* userData);

  ZephlinkSDK_PrivacySettingsResult setDNSLeakProtection(bool enable, PrivacyCallback callback, void* userData);
  ZephlinkSDK_PrivacySettingsResult setIPLeakProtection(bool enable, PrivacyCallback callback, void* userData);

  /// Whether programs are asked to do without DNS over HTTPS.
  ZephlinkSDK_PrivacySettingsResult setRequestToDisableDoH(bool enable, PrivacyCallback callback, void* userData);

  /// Replaces the tunnel's DNS servers; the first 3 addresses count. Nothing looks into them.
  ZephlinkSDK_PrivacySettingsResult setDNSServers(unsigned short count,
                                                  const char (*addresses)[ZephlinkSDK_AddressSize],
                                                  PrivacyCallback callback, void* userData);

  /// Looks for networks behind a captive portal. Time-out: 30 seconds. Event: report_captive_networks.
  ZephlinkSDK_CaptivePortalCheckResult checkForCaptivePortals(Callback<ZephlinkSDK_CaptivePortalCheckResult> callback,
                                                              void* userData);

  /// Lets a captive portal's page be reached through one adapter. Enabling needs its ID and is refused without one
  /// (ZephlinkSDK_Error_InvalidArgument); disabling takes null for all. Event: report_cplogin_network.
  ZephlinkSDK_CaptivePortalLoginResult setCaptivePortalLoginMode(
      bool enable, const char* adapterID, Callback<ZephlinkSDK_CaptivePortalLoginResult> callback, void* userData);

  // ---- Firewall (sdk/families/firewall.cpp) ----

  // ---- Streaming (sdk/families/streaming.cpp) ----

  // ---- Local proxy (sdk/families/local_proxy.cpp) ----

  // ---- Speed tests and disconnect reason (sdk/families/speed_tests.cpp) ----

  // ---- Logs, reports and daemon control (sdk/families/logs.cpp) ----

  // ---- Safe browsing (sdk/families/safe_browsing.cpp) ----

  // ---- Network sharing (sdk/families/network_sharing.cpp) ----

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
