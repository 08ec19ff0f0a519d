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
