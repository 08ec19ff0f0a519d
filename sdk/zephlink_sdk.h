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

  // Every way of connecting has a time-out of 60 seconds, counted until the daemon names the server, and ends once the
  // daemon is connected. Servers that it names before (event: report_connected_server) are kept in the record, which
  // then holds the last. Events: report_current_state, report_connect_error, report_login_error. After a time-out the
  // daemon may go on connecting.
  //
  // Countries are two-letter codes, with "private" in front for a private server; cities are the directory's keys.

  /// Connects to what `server` names in the daemon's own words.
  ZephlinkSDK_ConnectResult connectCombined(const char* server, Callback<ZephlinkSDK_ConnectResult> callback,
                                            void* userData);

  /// Connects to the server that the daemon chooses. Country and Exact, which need a place, are refused with
  /// ZephlinkSDK_Error_Sdk; Proxy is taken for Auto, see `connectToProxy`.
  ZephlinkSDK_ConnectResult connect(ZephlinkSDK_ConnectMethod method, Callback<ZephlinkSDK_ConnectResult> callback,
                                    void* userData);

  ZephlinkSDK_ConnectResult connectToCountry(const char* country, Callback<ZephlinkSDK_ConnectResult> callback,
                                             void* userData);
  ZephlinkSDK_ConnectResult connectToCity(const char* country, const char* city,
                                          Callback<ZephlinkSDK_ConnectResult> callback, void* userData);

  /// The daemon may choose another server of the place; `connectToExactServer` connects to this one or fails.
  ZephlinkSDK_ConnectResult connectToServer(const char* country, const char* city, std::int32_t number,
                                            Callback<ZephlinkSDK_ConnectResult> callback, void* userData);
  ZephlinkSDK_ConnectResult connectToExactServer(const char* country, const char* city, std::int32_t number,
                                                 Callback<ZephlinkSDK_ConnectResult> callback, void* userData);

  ZephlinkSDK_ConnectResult connectToProxy(Callback<ZephlinkSDK_ConnectResult> callback, void* userData);

  /// Connects to any server but the last one.
  ZephlinkSDK_ConnectResult connectIgnoreLast(Callback<ZephlinkSDK_ConnectResult> callback, void* userData);

  /// Ends the tunnel, and on the state LoggedIn or LoggedOut; time-out 10 seconds. Event: report_current_state.
  ZephlinkSDK_StateResult disconnect(Callback<ZephlinkSDK_StateResult> callback, void* userData);

  /// All servers, at most 1024. Event: report_directory.
  ZephlinkSDK_DirectoryResult getDirectory(Callback<ZephlinkSDK_DirectoryResult> callback, void* userData);

  /// The server of the tunnel; empty without one. Event: report_connected_server.
  ZephlinkSDK_ConnectResult getConnectedServer(Callback<ZephlinkSDK_ConnectResult> callback, void* userData);

  // The server that the daemon connects to by default. Event of all: report_server_settings.

  ZephlinkSDK_ServerSettingsResult getServerSettings(Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                     void* userData);

  /// `mode` and `country` are the daemon's own words.
  ZephlinkSDK_ServerSettingsResult setConnectMethodCombined(const char* mode, const char* country,
                                                            Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                            void* userData);

  /// Closest, Private, Public, P2P or Proxy; any other is refused with ZephlinkSDK_Error_InvalidArgument.
  ZephlinkSDK_ServerSettingsResult setConnectMethod(ZephlinkSDK_ConnectMethod method,
                                                    Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                    void* userData);

  ZephlinkSDK_ServerSettingsResult setConnectMethodCountry(const char* country,
                                                           Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                           void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethodCity(const char* country, const char* city,
                                                        Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                        void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethodServer(const char* country, const char* city, std::int32_t number,
                                                          Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                          void* userData);
  ZephlinkSDK_ServerSettingsResult setConnectMethodExactServer(const char* country, const char* city,
                                                               std::int32_t number,
                                                               Callback<ZephlinkSDK_ServerSettingsResult> callback,
                                                               void* userData);

  // ---- Account (sdk/families/account.cpp) ----

  // Signing in has a time-out of 60 seconds and ends on the first of the states LoggedIn, Connected and OverLimit.
  // Events of all forms: report_current_state, report_login_error. After a time-out the daemon may go on signing in.

  ZephlinkSDK_StateResult login(const char* username, const char* password, Callback<ZephlinkSDK_StateResult> callback,
                                void* userData);
  ZephlinkSDK_StateResult loginOAuth(const char* token, Callback<ZephlinkSDK_StateResult> callback, void* userData);

  /// Hands a new token to a session that stands.
  ZephlinkSDK_StateResult refreshOAuthToken(const char* token, Callback<ZephlinkSDK_StateResult> callback,
                                            void* userData);

  /// Allows the device's automatic account and signs in to it.
  ZephlinkSDK_StateResult loginAutoAccount(Callback<ZephlinkSDK_StateResult> callback, void* userData);

  /// Ends on the state LoggedOut, at once if the daemon is there already. Event: report_current_state.
  ZephlinkSDK_StateResult logout(Callback<ZephlinkSDK_StateResult> callback, void* userData);

  /// The account's figures. Event: report_accounting_data.
  ZephlinkSDK_AccountingResult getAccountingData(Callback<ZephlinkSDK_AccountingResult> callback, void* userData);

  /// Where the daemon finds its directory. Event: report_directory_settings.
  ZephlinkSDK_DirectorySettingsResult getDirectorySettings(Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                           void* userData);

  /// Null names none: the daemon is asked for the setting without a value. Event: report_directory_settings.
  ZephlinkSDK_DirectorySettingsResult setDirectoryDomain(const char* domain,
                                                         Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                         void* userData);
  ZephlinkSDK_DirectorySettingsResult setDirectoryGatewayURI(const char* uri,
                                                             Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                             void* userData);

  /// Changes nothing, whatever `enabled` says: a `getDirectorySettings` under another name.
  ZephlinkSDK_DirectorySettingsResult setEnableEsni(bool enabled,
                                                    Callback<ZephlinkSDK_DirectorySettingsResult> callback,
                                                    void* userData);

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

  /// The firewall's mode and rule lists. Event: report_firewall_settings, which answers its setters too.
  ZephlinkSDK_FirewallSettingsResult getFirewallSettings(Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                         void* userData);

  ZephlinkSDK_FirewallSettingsResult setFirewallMode(ZephlinkSDK_FirewallMode mode,
                                                     Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                     void* userData);

  /// Replace one whole list, as the list setters of all families do: by the first ZephlinkSDK_MaxRules of `count`
  /// entries, in their order, doubles included. A count of 0 empties the list. Null entries with a count above 0 are
  /// refused with ZephlinkSDK_Error_InvalidArgument.
  ZephlinkSDK_FirewallSettingsResult setFirewallDomains(unsigned short count,
                                                        const char (*domains)[ZephlinkSDK_DomainSize],
                                                        Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                        void* userData);
  ZephlinkSDK_FirewallSettingsResult setFirewallIPv4(unsigned short count, const in_addr* addresses,
                                                     Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                     void* userData);
  ZephlinkSDK_FirewallSettingsResult setFirewallIPv6(unsigned short count, const in6_addr* addresses,
                                                     Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                     void* userData);
  ZephlinkSDK_FirewallSettingsResult setFirewallPorts(unsigned short count, const ZephlinkSDK_ProtocolPortPair* rules,
                                                      Callback<ZephlinkSDK_FirewallSettingsResult> callback,
                                                      void* userData);

  // ---- Streaming (sdk/families/streaming.cpp) ----

  /// The rule lists of the traffic that counts as streaming. Event: report_streaming_settings, which answers its
  /// setters too.
  ZephlinkSDK_StreamingSettingsResult getStreamingSettings(Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                           void* userData);

  /// Replace one whole list, see setFirewallDomains.
  ZephlinkSDK_StreamingSettingsResult setStreamingDomains(unsigned short count,
                                                          const char (*domains)[ZephlinkSDK_DomainSize],
                                                          Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                          void* userData);
  ZephlinkSDK_StreamingSettingsResult setStreamingIPv4(unsigned short count, const in_addr* addresses,
                                                       Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                       void* userData);
  ZephlinkSDK_StreamingSettingsResult setStreamingIPv6(unsigned short count, const in6_addr* addresses,
                                                       Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                       void* userData);
  ZephlinkSDK_StreamingSettingsResult setStreamingPorts(unsigned short count, const ZephlinkSDK_ProtocolPortPair* rules,
                                                        Callback<ZephlinkSDK_StreamingSettingsResult> callback,
                                                        void* userData);

  // ---- Local proxy (sdk/families/local_proxy.cpp) ----

  /// The proxy's switches, rule lists and watched services. Event: report_localproxy_settings, which answers its
  /// setters too.
  ZephlinkSDK_LocalProxySettingsResult getLocalProxySettings(Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                             void* userData);

  ZephlinkSDK_LocalProxySettingsResult setLocalProxyEnabled(bool enable,
                                                            Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                            void* userData);

  /// Replace one whole list, see setFirewallDomains. The port list is refused under the firewall's name,
  /// set_firewall_ports.
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyDomains(unsigned short count,
                                                            const char (*domains)[ZephlinkSDK_DomainSize],
                                                            Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                            void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyIPv4(unsigned short count, const in_addr* addresses,
                                                         Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                         void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyIPv6(unsigned short count, const in6_addr* addresses,
                                                         Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                         void* userData);
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyPorts(unsigned short count,
                                                          const ZephlinkSDK_ProtocolPortPair* rules,
                                                          Callback<ZephlinkSDK_LocalProxySettingsResult> callback,
                                                          void* userData);

  /// The master switch of the watch list.
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyGlobalDomainWatchlistEnable(
      bool enable, Callback<ZephlinkSDK_LocalProxySettingsResult> callback, void* userData);

  /// The switch of one service. The title is not checked: one that the daemon lacks changes nothing. No refusal ends
  /// this call.
  ZephlinkSDK_LocalProxySettingsResult setLocalProxyDomainWatchlistEnable(
      const char* title, bool enable, Callback<ZephlinkSDK_LocalProxySettingsResult> callback, void* userData);

  // ---- Speed tests and disconnect reason (sdk/families/speed_tests.cpp) ----

  /// The runs that the daemon keeps, the first ZephlinkSDK_MaxSpeedTestRuns of them in its order. Event:
  /// report_speedtest_results.
  ZephlinkSDK_SpeedTestResult getSpeedTestResults(Callback<ZephlinkSDK_SpeedTestResult> callback, void* userData);

  /// Runs a test and returns it alone, as the newest of the runs in the report; no run when none of them is dated. A
  /// run that failed is no error of the call. Ends within 60 seconds; the daemon's test goes on beyond. Event:
  /// report_speedtest_results, which any other end of a test sends too.
  ZephlinkSDK_SpeedTestResult startSpeedTest(Callback<ZephlinkSDK_SpeedTestResult> callback, void* userData);

  /// The same for a stream test. Ends within 200 seconds.
  ZephlinkSDK_SpeedTestResult startStreamTest(Callback<ZephlinkSDK_SpeedTestResult> callback, void* userData);

  /// Why the last session ended. Event: report_disconnect_reason.
  ZephlinkSDK_DisconnectEventResult getLastDisconnectEvent(Callback<ZephlinkSDK_DisconnectEventResult> callback,
                                                           void* userData);

  // ---- Logs, reports and daemon control (sdk/families/logs.cpp) ----

  /// The daemon's log files. Event: report_log_settings, which answers the setter too.
  ZephlinkSDK_LogSettingsResult getLogSettings(Callback<ZephlinkSDK_LogSettingsResult> callback, void* userData);

  ZephlinkSDK_LogSettingsResult setDaemonLogSettings(ZephlinkSDK_DaemonLogSettings settings,
                                                     Callback<ZephlinkSDK_LogSettingsResult> callback, void* userData);

  /// Sends a problem report with a file, whose path (UTF-8) the daemon gets absolute and with links resolved. An empty
  /// `email` and a file that is not there are refused with ZephlinkSDK_Error_InvalidArgument; a file system that cannot
  /// tell is ZephlinkSDK_Error_Sdk with its own text. Ends within 60 seconds. Event: report_log_result.
  ZephlinkSDK_LogReportResult sendLogReport(const char* email, const char* message, const char* filepath,
                                            Callback<ZephlinkSDK_LogReportResult> callback, void* userData);

  /// Nothing answers these two: they succeed at once, also when the daemon is down, and are sent as soon as it is
  /// there.
  ZephlinkSDK_Result eraseLogs();
  ZephlinkSDK_Result exitDaemon();

  // ---- Safe browsing (sdk/families/safe_browsing.cpp) ----

  // A service that cannot be reached is no error of a call: look at `connectFailed`. The configuration and the token
  // are the service's own texts. Event where none is named: report_safe_browsing_settings.

  /// Hands the service its configuration and connects to it. Event: also report_safe_browsing_connect_error.
  ZephlinkSDK_SafeBrowsingResult initSafeBrowsing(const char* config, Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                  void* userData);

  /// Keeps a configuration. The daemon refuses it under the name of the call above.
  ZephlinkSDK_SafeBrowsingResult setSafeBrowsingConfig(const char* config,
                                                       Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                       void* userData);

  /// Switches lookups on or off.
  ZephlinkSDK_SafeBrowsingResult setSafeBrowsingEnabled(bool enabled, Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                        void* userData);

  /// How much the service logs. A value that is none is refused with ZephlinkSDK_Error_InvalidArgument.
  ZephlinkSDK_SafeBrowsingResult setSafeBrowsingLogLevel(ZephlinkSDK_SafeBrowsingLogLevel level,
                                                         Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                         void* userData);

  /// How the current network is treated. A value that is none is refused with ZephlinkSDK_Error_InvalidArgument.
  ZephlinkSDK_SafeBrowsingResult setSafeBrowsingSafeNetworkOverride(
      ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride, Callback<ZephlinkSDK_SafeBrowsingResult> callback,
      void* userData);

  /// Hands the service a new token. Ends when the service is initialized. Event: also
  /// report_safe_browsing_connect_error.
  ZephlinkSDK_SafeBrowsingResult refreshSafeBrowsingToken(const char* token,
                                                          Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                          void* userData);

  /// Reports the current network as the home network; what `delay` and `timeout` count is the daemon's to say. Ends
  /// as the call above does, and is refused under its name. The arguments stand behind the user data.
  ZephlinkSDK_SafeBrowsingResult reportSafeBrowsingHomeNetwork(Callback<ZephlinkSDK_SafeBrowsingResult> callback,
                                                               void* userData, std::uint32_t retries,
                                                               std::uint64_t delay, std::uint64_t timeout);

  /// The settings.
  ZephlinkSDK_SafeBrowsingResult getSafeBrowsing(Callback<ZephlinkSDK_SafeBrowsingResult> callback, void* userData);

  /// The counters. Event: report_safe_browsing_stats.
  ZephlinkSDK_SafeBrowsingStatsResult getSafeBrowsingStats(Callback<ZephlinkSDK_SafeBrowsingStatsResult> callback,
                                                           void* userData);

  /// Every lookup that fails. Event: report_safe_browsing_lookup_error.
  ZephlinkSDK_SafeBrowsingErrorResult listenForSafeBrowsingError(Callback<ZephlinkSDK_SafeBrowsingErrorResult> callback,
                                                                 void* userData);

  /// Every host that is blocked or redirected. Event: report_safe_browsing_block.
  ZephlinkSDK_SafeBrowsingBlockResult listenForSafeBrowsingBlock(Callback<ZephlinkSDK_SafeBrowsingBlockResult> callback,
                                                                 void* userData);

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

  // A peer is named by its uuid. Events that do not end one of the first four calls leave its time-out running.

  /// Connects to the host that a connect code names. Ends when the peer is authenticated, or with the daemon's code
  /// and text when an event tells of a failure. A code that does not read is refused with
  /// ZephlinkSDK_Error_InvalidArgument. Event: report_networksharing_peer_status_change of that host, or of none.
  ZephlinkSDK_NetworkSharingConnectionResult connectToNetworkShareViaConnectCode(
      const char* code, Callback<ZephlinkSDK_NetworkSharingConnectionResult> callback, void* userData);

  /// The same for a peer that is known, within 60 seconds. Event: report_networksharing_peer_status_change of that
  /// peer.
  ZephlinkSDK_NetworkSharingConnectionResult reconnectToNetworkShare(
      const char* uuid, Callback<ZephlinkSDK_NetworkSharingConnectionResult> callback, void* userData);

  /// Asks a peer to pair and waits for its answer, up to 70 seconds. Ends with an error of the daemon's code and text
  /// when an event of the peer's status tells of a failure. Events: report_networksharing_peer_pair_change or
  /// report_networksharing_peer_status_change of that peer.
  ZephlinkSDK_NetworkSharingPairResult requestNetworkSharingPair(
      const char* uuid, Callback<ZephlinkSDK_NetworkSharingPairResult> callback, void* userData);

  /// Answers a peer that has asked to pair. Ends in the same way.
  ZephlinkSDK_NetworkSharingPairResult allowNetworkSharingPair(const char* uuid, bool allow,
                                                               Callback<ZephlinkSDK_NetworkSharingPairResult> callback,
                                                               void* userData);

  /// Undoes a pairing. Event: report_networksharing_peer_pair_change of any peer.
  ZephlinkSDK_NetworkSharingPairResult unpairNetworkSharingPeer(const char* uuid,
                                                                Callback<ZephlinkSDK_NetworkSharingPairResult> callback,
                                                                void* userData);

  /// Whether the daemon connects to the peer again by itself. Event: report_networksharing_sharesavailable, which
  /// answers the next two as well.
  ZephlinkSDK_NetworkSharingAvailableSharesResult setNetworkSharingPeerAutoReconnect(
      const char* uuid, bool enabled, Callback<ZephlinkSDK_NetworkSharingAvailableSharesResult> callback,
      void* userData);

  /// Whether the peer may be this machine's host.
  ZephlinkSDK_NetworkSharingAvailableSharesResult setNetworkSharingPeerAllowAsHost(
      const char* uuid, bool allow, Callback<ZephlinkSDK_NetworkSharingAvailableSharesResult> callback, void* userData);

  /// Whether the peer may be a client of this machine.
  ZephlinkSDK_NetworkSharingAvailableSharesResult setNetworkSharingPeerAllowAsClient(
      const char* uuid, bool allow, Callback<ZephlinkSDK_NetworkSharingAvailableSharesResult> callback, void* userData);

  /// Every change of a peer's status. A failure shows in `errorCode` and `errorMessage` alone: `hasError` stays false.
  /// Event: report_networksharing_peer_status_change.
  ZephlinkSDK_NetworkSharingConnectionResult listenForNetworkSharePeerStatusChange(
      Callback<ZephlinkSDK_NetworkSharingConnectionResult> callback, void* userData);

  /// Every peer that asks to pair. Event: report_networkshare_auth_request.
  ZephlinkSDK_NetworkSharingPairResult listenForNetworkSharePairRequest(
      Callback<ZephlinkSDK_NetworkSharingPairResult> callback, void* userData);

  /// Every peer that shows up. Event: report_networksharing_new_peer_available.
  ZephlinkSDK_NetworkSharingPairResult listenForNetworkShareNewPeerAvailable(
      Callback<ZephlinkSDK_NetworkSharingPairResult> callback, void* userData);

 private:
  void keepAlive();
  bool startKeepAlive();

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
