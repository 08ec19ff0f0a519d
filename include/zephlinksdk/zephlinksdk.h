// The ZephlinkSDK library: a client of the daemon that bonds this machine's network adapters into one tunnel. For hosts
// in C11 and C++20. Include this header only; it includes the others.
//
// ZephlinkSDK_create returns an object that connects to the daemon in the background. Each function that takes the
// object performs one service of the daemon. ZephlinkSDK_destroy ends the object:
//
//     ZephlinkSDK_Config config;
//     ZephlinkSDK_defaultConfig(&config);
//     ZephlinkSDK* sdk = ZephlinkSDK_create(config);
//     ZephlinkSDK_StateResult result = ZephlinkSDK_getState(sdk, NULL, NULL);
//     if (result.hasError) fprintf(stderr, "%s\n", result.errorMessage);
//     ZephlinkSDK_destroy(sdk);
//
// Calls
//
// - Without a callback (null), a function waits for the daemon's answer and returns it: a synchronous call.
// - With a callback, a function returns at once. The returned record contains no answer: `hasError` is false,
//   `errorCode` is ZephlinkSDK_Error_AsyncCall and `handle` is the handle of the call. The callback receives the answer
//   by value. `get...` functions that "stay subscribed" run the callback for every later report of the same kind, until
//   it returns false or ZephlinkSDK_removeListener ends the subscription. All other calls end with their first answer.
// - An asynchronous call that is refused at once returns a record with `hasError` true and `handle` 0, and its callback
//   never runs. Do not pass that handle to ZephlinkSDK_removeListener: 0 is also the handle of a valid call.
// - Arguments are copied: they may be freed when the function returns. `userData` is passed to the callback unchanged.
// - Reports do not identify the request that they answer. Any report of the awaited kind ends a call, even one caused
//   by another client of the daemon: a setter's record can be older than its request.
//
// Errors
//
// - Test `hasError`, never `errorCode`: records in callbacks keep ZephlinkSDK_Error_AsyncCall as long as nothing has
//   failed.
// - A null `sdk` and a null text are refused with ZephlinkSDK_Error_InvalidArgument, unless the function's contract
//   says otherwise. An object that could not create its channel to the daemon refuses every call with
//   ZephlinkSDK_Error_Sdk. A refused call sends nothing.
// - A function that runs out of memory returns ZephlinkSDK_Error_Sdk.
// - The daemon refuses a setting with the event report_settings_error, which contains the setting's name. If that name
//   is the name of the request, the call ends with the daemon's code and text, unless the function's contract says
//   otherwise.
// - Members that a report omits read as zero, or keep the value of the subscription's previous record.
//
// Time-outs
//
// - A call fails if no event that it waits for arrives within 5 seconds, unless its contract says otherwise: with
//   ZephlinkSDK_Error_Timeout while connected, with ZephlinkSDK_Error_NotConnected while not connected.
// - The first such event cancels the time-out for good, even if it does not end the call. In particular, a call that
//   changes a setting also waits for report_settings_error: if the daemon refuses a setting of another call or client,
//   the call loses its time-out and can wait forever.
// - After a time-out, a subscription whose callback returns true continues, without a further time-out. A request that
//   was not yet written is still sent when the daemon becomes reachable.
//
// Connection
//
// - A lost connection is reopened, with several attempts a second and no limit. Each request is sent once only: after
//   the daemon restarts, subscriptions remain, but the new daemon does not know them, so they receive only what it
//   reports unasked. Only ZephlinkSDK_subscribeStats repeats its request.
// - After a close frame from the daemon the object does not reconnect: calls end with ZephlinkSDK_Error_Timeout.
//   Destroy the object and create a new one.
//
// Threads
//
// - Every function may be called from any thread, even concurrently on the same object, except as documented for
//   ZephlinkSDK_destroy and ZephlinkSDK_finish.
// - Callbacks run one at a time on the object's channel thread. While one runs, the object neither reads nor writes,
//   and no call times out. A callback must not throw and must not call ZephlinkSDK_destroy or ZephlinkSDK_finish. It
//   may make asynchronous calls; synchronous calls, on any object, are refused with
//   ZephlinkSDK_Error_SyncCallInCallback.
// - After fork() only the parent process may use an object.
#pragma once

#include <stdbool.h>
#include <stdint.h>

#include "zephlinksdk/errors.h"
#include "zephlinksdk/records.h"
#include "zephlinksdk/words.h"

#ifdef __cplusplus
namespace zephlinksdk {
class ZephlinkSDK;
}
using zephlinksdk::ZephlinkSDK;
extern "C" {
#else
/// An object of the library. Opaque.
typedef struct ZephlinkSDK ZephlinkSDK;
#endif

// ---- Callbacks -----------------------------------------------------------------------------------------------------

// Each callback receives the record, by value, and the `userData` of its call, on the channel thread. The return value
// matters for subscriptions only: true keeps the subscription, false ends it. Callbacks must not throw.

/// Receives the daemon's state.
typedef bool (*ZephlinkSDK_StateCallback)(ZephlinkSDK_StateResult record, void* userData);
/// Receives the daemon's version.
typedef bool (*ZephlinkSDK_VersionCallback)(ZephlinkSDK_VersionResult record, void* userData);
/// Receives the server of the tunnel.
typedef bool (*ZephlinkSDK_ConnectCallback)(ZephlinkSDK_ConnectResult record, void* userData);
/// Receives all servers.
typedef bool (*ZephlinkSDK_DirectoryCallback)(ZephlinkSDK_DirectoryResult record, void* userData);
/// Receives the default server.
typedef bool (*ZephlinkSDK_ServerSettingsCallback)(ZephlinkSDK_ServerSettingsResult record, void* userData);
/// Receives the account's figures.
typedef bool (*ZephlinkSDK_AccountingCallback)(ZephlinkSDK_AccountingResult record, void* userData);
/// Receives the location of the directory service.
typedef bool (*ZephlinkSDK_DirectorySettingsCallback)(ZephlinkSDK_DirectorySettingsResult record, void* userData);
/// Receives the connection settings.
typedef bool (*ZephlinkSDK_SettingsCallback)(ZephlinkSDK_SettingsResult record, void* userData);
/// Receives all adapters.
typedef bool (*ZephlinkSDK_AdaptersCallback)(ZephlinkSDK_AdaptersResult record, void* userData);
/// Receives the statistics of all connections.
typedef bool (*ZephlinkSDK_ConnectionStatsCallback)(ZephlinkSDK_ConnectionStatsResult record, void* userData);
/// Receives the statistics of all streams.
typedef bool (*ZephlinkSDK_StreamingStatsCallback)(ZephlinkSDK_StreamingStatsResult record, void* userData);
/// Receives the daemon's accounting by period.
typedef bool (*ZephlinkSDK_SessionStatsCallback)(ZephlinkSDK_SessionStatsResult record, void* userData);
/// Receives the privacy settings.
typedef bool (*ZephlinkSDK_PrivacySettingsCallback)(ZephlinkSDK_PrivacySettingsResult record, void* userData);
/// Receives the networks that have a captive portal.
typedef bool (*ZephlinkSDK_CaptivePortalCheckCallback)(ZephlinkSDK_CaptivePortalCheckResult record, void* userData);
/// Receives the adapter in login mode.
typedef bool (*ZephlinkSDK_CaptivePortalLoginCallback)(ZephlinkSDK_CaptivePortalLoginResult record, void* userData);
/// Receives the mode and the rule lists of the firewall.
typedef bool (*ZephlinkSDK_FirewallSettingsCallback)(ZephlinkSDK_FirewallSettingsResult record, void* userData);
/// Receives the rule lists of streaming.
typedef bool (*ZephlinkSDK_StreamingSettingsCallback)(ZephlinkSDK_StreamingSettingsResult record, void* userData);
/// Receives the settings of the local proxy.
typedef bool (*ZephlinkSDK_LocalProxySettingsCallback)(ZephlinkSDK_LocalProxySettingsResult record, void* userData);
/// Receives test runs.
typedef bool (*ZephlinkSDK_SpeedTestCallback)(ZephlinkSDK_SpeedTestResult record, void* userData);
/// Receives the end of the last session.
typedef bool (*ZephlinkSDK_DisconnectEventCallback)(ZephlinkSDK_DisconnectEventResult record, void* userData);
/// Receives the log settings.
typedef bool (*ZephlinkSDK_LogSettingsCallback)(ZephlinkSDK_LogSettingsResult record, void* userData);
/// Receives the ticket of a problem report.
typedef bool (*ZephlinkSDK_LogReportCallback)(ZephlinkSDK_LogReportResult record, void* userData);
/// Receives the safe-browsing settings.
typedef bool (*ZephlinkSDK_SafeBrowsingCallback)(ZephlinkSDK_SafeBrowsingResult record, void* userData);
/// Receives the counters of safe browsing.
typedef bool (*ZephlinkSDK_SafeBrowsingStatsCallback)(ZephlinkSDK_SafeBrowsingStatsResult record, void* userData);
/// Receives a lookup that failed.
typedef bool (*ZephlinkSDK_SafeBrowsingErrorCallback)(ZephlinkSDK_SafeBrowsingErrorResult record, void* userData);
/// Receives a host that was blocked or redirected.
typedef bool (*ZephlinkSDK_SafeBrowsingBlockCallback)(ZephlinkSDK_SafeBrowsingBlockResult record, void* userData);
/// Receives the network-sharing settings.
typedef bool (*ZephlinkSDK_NetworkSharingSettingsCallback)(ZephlinkSDK_NetworkSharingSettingsResult record,
                                                           void* userData);
/// Receives whether the daemon looks for peers.
typedef bool (*ZephlinkSDK_NetworkSharingDiscoveryCallback)(ZephlinkSDK_NetworkSharingDiscoveryResult record,
                                                            void* userData);
/// Receives all known peers.
typedef bool (*ZephlinkSDK_NetworkSharingAvailableSharesCallback)(
    ZephlinkSDK_NetworkSharingAvailableSharesResult record, void* userData);
/// Receives the connection to a peer.
typedef bool (*ZephlinkSDK_NetworkSharingConnectionCallback)(ZephlinkSDK_NetworkSharingConnectionResult record,
                                                             void* userData);
/// Receives an event about a peer.
typedef bool (*ZephlinkSDK_NetworkSharingPairCallback)(ZephlinkSDK_NetworkSharingPairResult record, void* userData);

// ---- Lifetime ------------------------------------------------------------------------------------------------------

/// Fills in the defaults: no application name, address 127.0.0.1, port 9330. Ignores null. Thread-safe.
void ZephlinkSDK_defaultConfig(ZephlinkSDK_Config* config);

/// Creates an object, which starts to connect to the daemon at `config.address` and `config.port`, and returns at once.
/// Returns null if the object cannot be created, for example when out of memory. A failed connection does not fail this
/// function: later calls report it with ZephlinkSDK_Error_NotConnected. If the system cannot start another thread,
/// every later call is refused with ZephlinkSDK_Error_Sdk. If the system's socket library does not start (Windows),
/// calls never end.
///
/// If `config.appName` is not empty, it is announced to the daemon once (set_app_name) and replaces the product's name
/// in translated texts of the whole process. Texts of `config` that fill their arrays need no terminator. The caller
/// destroys the object with ZephlinkSDK_destroy.
ZephlinkSDK* ZephlinkSDK_create(ZephlinkSDK_Config config);

/// Destroys an object that ZephlinkSDK_create returned; ignores null. Writes queued requests if the daemon is
/// connected, waits for a running callback, ends the object's threads and closes its connection. Pending calls and
/// subscriptions end without running their callbacks again. Takes at most 0.1 seconds, unless a callback runs longer.
///
/// REQUIRES: no other thread is in a function with this object or uses it later. Not called in a callback.
void ZephlinkSDK_destroy(ZephlinkSDK* sdk);

/// Finishes the pending work of an object in the calling thread: writes queued requests, then reads and delivers what
/// has arrived. For a process that exits right afterwards: costs less than ZephlinkSDK_destroy, since it does not wait
/// for the channel thread and frees nothing. Waits for a running callback; otherwise takes at most 0.1 seconds, or half
/// a second if a request waits for a connection that is being opened. Ignores null.
///
/// REQUIRES: no function is called with this object afterwards, including ZephlinkSDK_destroy. Not called in a
/// callback.
void ZephlinkSDK_finish(ZephlinkSDK* sdk);

/// Ends a subscription, or any pending asynchronous call, by the `handle` of the record that started it. On any thread
/// but the channel thread it waits for the callback if that is running: after it returns, the callback no longer runs.
/// In a callback it returns at once. A null `sdk` and an unknown handle do nothing.
///
/// Handles are counted from 0 across the process. The record of a refused call has handle 0 too: never pass the handle
/// of a record with `hasError` true, or of a function without a callback.
///
/// REQUIRES: the caller has not locked a mutex that the callback locks.
void ZephlinkSDK_removeListener(ZephlinkSDK* sdk, uint64_t handle);

// ---- State and version ---------------------------------------------------------------------------------------------

/// Reads the daemon's state. Sends request_current_state; answered by report_current_state. With a callback it stays
/// subscribed: every later report_current_state runs the callback until it returns false.
ZephlinkSDK_StateResult ZephlinkSDK_getState(ZephlinkSDK* sdk, ZephlinkSDK_StateCallback callback, void* userData);

/// Reads the daemon's version. Sends request_version_data; answered by report_version_data. The callback runs once.
ZephlinkSDK_VersionResult ZephlinkSDK_getVersion(ZephlinkSDK* sdk, ZephlinkSDK_VersionCallback callback,
                                                 void* userData);

// ---- Connecting ----------------------------------------------------------------------------------------------------

// All `connect...` functions send server_auto_connect with one text and end when the daemon is connected:
// report_current_state with ZephlinkSDK_State_Connected. Before that, the daemon names the server in
// report_connected_server: the record contains the last such server, and the first such report cancels the time-out of
// 60 seconds for good. report_connect_error and report_login_error end the call with the daemon's code and text. After
// a time-out the daemon may continue to connect.
//
// A country is a two-letter code, with the prefix "private" for a private server ("us", "privateus"). A city is a city
// key of the directory. Neither is checked.

/// Connects to `server`, a text in the daemon's form: a keyword ("auto", "user", "userprivate", "userpublic", "last",
/// "p2p", "ignorelast", "proxy"), or "country", "country|city" or "country|city|number". The prefix "#" on the last
/// form selects exactly this server. Sends server_auto_connect; ends with report_current_state (connected),
/// report_connect_error or report_login_error. Time-out: 60 seconds, until report_connected_server names a server. If
/// the daemon refuses server_auto_connect, the call fails with the daemon's code. Refuses a null `server` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ConnectResult ZephlinkSDK_connectCombined(ZephlinkSDK* sdk, const char* server,
                                                      ZephlinkSDK_ConnectCallback callback, void* userData);

/// Connects to a server that the daemon chooses by `method`. Proxy and unlisted values count as Auto; to connect to the
/// proxy, use ZephlinkSDK_connectToProxy. Sends server_auto_connect; ends with report_current_state (connected),
/// report_connect_error or report_login_error. Time-out: 60 seconds, until report_connected_server names a server. If
/// the daemon refuses server_auto_connect, the call fails with the daemon's code. Refuses Country and Exact, which need
/// a place, with ZephlinkSDK_Error_Sdk. The callback runs once.
ZephlinkSDK_ConnectResult ZephlinkSDK_connect(ZephlinkSDK* sdk, ZephlinkSDK_ConnectMethod method,
                                              ZephlinkSDK_ConnectCallback callback, void* userData);

/// Connects to a server of `country`. Sends server_auto_connect; ends with report_current_state (connected),
/// report_connect_error or report_login_error. Time-out: 60 seconds, until report_connected_server names a server. If
/// the daemon refuses server_auto_connect, the call fails with the daemon's code. Refuses a null `country` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ConnectResult ZephlinkSDK_connectToCountry(ZephlinkSDK* sdk, const char* country,
                                                       ZephlinkSDK_ConnectCallback callback, void* userData);

/// Connects to a server of `city` in `country`. Sends server_auto_connect; ends with report_current_state (connected),
/// report_connect_error or report_login_error. Time-out: 60 seconds, until report_connected_server names a server. If
/// the daemon refuses server_auto_connect, the call fails with the daemon's code. Refuses null texts with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ConnectResult ZephlinkSDK_connectToCity(ZephlinkSDK* sdk, const char* country, const char* city,
                                                    ZephlinkSDK_ConnectCallback callback, void* userData);

/// Connects to the server `number` of `city`; the daemon may choose another server of the same place. `number` is not
/// checked. Sends server_auto_connect; ends with report_current_state (connected), report_connect_error or
/// report_login_error. Time-out: 60 seconds, until report_connected_server names a server. If the daemon refuses
/// server_auto_connect, the call fails with the daemon's code. Refuses null texts with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ConnectResult ZephlinkSDK_connectToServer(ZephlinkSDK* sdk, const char* country, const char* city,
                                                      int32_t number, ZephlinkSDK_ConnectCallback callback,
                                                      void* userData);

/// Connects to exactly the server `number` of `city`. `number` is not checked. Sends server_auto_connect; ends with
/// report_current_state (connected), report_connect_error or report_login_error. Time-out: 60 seconds, until
/// report_connected_server names a server. If the daemon refuses server_auto_connect, the call fails with the daemon's
/// code. Refuses null texts with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ConnectResult ZephlinkSDK_connectToExactServer(ZephlinkSDK* sdk, const char* country, const char* city,
                                                           int32_t number, ZephlinkSDK_ConnectCallback callback,
                                                           void* userData);

/// Connects to the proxy (the keyword "proxy"). Sends server_auto_connect; ends with report_current_state (connected),
/// report_connect_error or report_login_error. Time-out: 60 seconds, until report_connected_server names a server. If
/// the daemon refuses server_auto_connect, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_ConnectResult ZephlinkSDK_connectToProxy(ZephlinkSDK* sdk, ZephlinkSDK_ConnectCallback callback,
                                                     void* userData);

/// Connects to any server except the last one. Sends server_auto_connect; ends with report_current_state (connected),
/// report_connect_error or report_login_error. Time-out: 60 seconds, until report_connected_server names a server. If
/// the daemon refuses server_auto_connect, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_ConnectResult ZephlinkSDK_connectIgnoreLast(ZephlinkSDK* sdk, ZephlinkSDK_ConnectCallback callback,
                                                        void* userData);

/// Ends the tunnel. Sends server_disconnect; answered by report_current_state with ZephlinkSDK_State_LoggedIn or
/// ZephlinkSDK_State_LoggedOut. Neither other states nor error events end the call. Time-out: 10 seconds. The callback
/// runs once.
ZephlinkSDK_StateResult ZephlinkSDK_disconnect(ZephlinkSDK* sdk, ZephlinkSDK_StateCallback callback, void* userData);

/// Reads all servers, at most ZephlinkSDK_MaxServers. Sends request_directory; answered by report_directory. The
/// record, about 750 KB, is returned and given to the callback by value: provide a stack for several copies. With a
/// callback it stays subscribed: every later report_directory runs the callback until it returns false.
ZephlinkSDK_DirectoryResult ZephlinkSDK_getDirectory(ZephlinkSDK* sdk, ZephlinkSDK_DirectoryCallback callback,
                                                     void* userData);

/// Reads the server of the tunnel; the fields are empty without one. Sends request_connected_server; answered by
/// report_connected_server. With a callback it stays subscribed: every later report_connected_server runs the callback
/// until it returns false.
ZephlinkSDK_ConnectResult ZephlinkSDK_getConnectedServer(ZephlinkSDK* sdk, ZephlinkSDK_ConnectCallback callback,
                                                         void* userData);

/// Reads the server that the daemon connects to by default. Sends request_server_settings; answered by
/// report_server_settings. The fields country, city and num are valid for Country and Exact only; otherwise they are
/// empty or those of the previous record. With a callback it stays subscribed: every later report_server_settings runs
/// the callback until it returns false.
ZephlinkSDK_ServerSettingsResult ZephlinkSDK_getServerSettings(ZephlinkSDK* sdk,
                                                               ZephlinkSDK_ServerSettingsCallback callback,
                                                               void* userData);

/// Sets the default server in the daemon's form. `mode` is "user", "userprivate", "userpublic", "p2p", "proxy",
/// "country" or "exact"; `country` is the place for the last two ("country", "country|city" or "country|city|number")
/// and empty otherwise. Neither is checked. Sends set_server_connectbest; answered by report_server_settings. If the
/// daemon refuses set_server_connectbest, the call fails with the daemon's code. Refuses null texts with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodCombined(ZephlinkSDK* sdk, const char* mode,
                                                                      const char* country,
                                                                      ZephlinkSDK_ServerSettingsCallback callback,
                                                                      void* userData);

/// Sets the default to a server that the daemon chooses by `method`: Closest, Private, Public, P2P or Proxy. Sends
/// set_server_connectbest; answered by report_server_settings. If the daemon refuses set_server_connectbest, the call
/// fails with the daemon's code. Refuses every other method with ZephlinkSDK_Error_InvalidArgument. The callback runs
/// once.
ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethod(ZephlinkSDK* sdk, ZephlinkSDK_ConnectMethod method,
                                                              ZephlinkSDK_ServerSettingsCallback callback,
                                                              void* userData);

/// Sets the default to a server of `country`. Sends set_server_connectbest; answered by report_server_settings. If the
/// daemon refuses set_server_connectbest, the call fails with the daemon's code. Refuses a null `country` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodCountry(ZephlinkSDK* sdk, const char* country,
                                                                     ZephlinkSDK_ServerSettingsCallback callback,
                                                                     void* userData);

/// Sets the default to a server of `city` in `country`. Sends set_server_connectbest; answered by
/// report_server_settings. If the daemon refuses set_server_connectbest, the call fails with the daemon's code. Refuses
/// null texts with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodCity(ZephlinkSDK* sdk, const char* country,
                                                                  const char* city,
                                                                  ZephlinkSDK_ServerSettingsCallback callback,
                                                                  void* userData);

/// Sets the default to the server `number` of `city`; the daemon may choose another server of the same place. `number`
/// is not checked. Sends set_server_connectbest; answered by report_server_settings. If the daemon refuses
/// set_server_connectbest, the call fails with the daemon's code. Refuses null texts with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodServer(ZephlinkSDK* sdk, const char* country,
                                                                    const char* city, int32_t number,
                                                                    ZephlinkSDK_ServerSettingsCallback callback,
                                                                    void* userData);

/// Sets the default to exactly the server `number` of `city`. `number` is not checked. Sends set_server_connectbest;
/// answered by report_server_settings. If the daemon refuses set_server_connectbest, the call fails with the daemon's
/// code. Refuses null texts with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_ServerSettingsResult ZephlinkSDK_setConnectMethodExactServer(ZephlinkSDK* sdk, const char* country,
                                                                         const char* city, int32_t number,
                                                                         ZephlinkSDK_ServerSettingsCallback callback,
                                                                         void* userData);

// ---- Account -------------------------------------------------------------------------------------------------------

// The functions that sign in end with the first of the states LoggedIn, Connected and OverLimit, or with
// report_login_error, which contains the daemon's code and text. Other states do not end them and do not cancel the
// time-out. After a time-out the daemon may continue to sign in.

/// Signs in with a user name and a password. Sends login; answered by report_current_state (LoggedIn, Connected or
/// OverLimit) or report_login_error. Time-out: 60 seconds. Refuses null texts with ZephlinkSDK_Error_InvalidArgument;
/// empty ones are sent. The callback runs once.
ZephlinkSDK_StateResult ZephlinkSDK_login(ZephlinkSDK* sdk, const char* username, const char* password,
                                          ZephlinkSDK_StateCallback callback, void* userData);

/// Signs in with an OAuth access token. Sends login_oauth; answered by report_current_state (LoggedIn, Connected or
/// OverLimit) or report_login_error. Time-out: 60 seconds. Refuses a null `token` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_StateResult ZephlinkSDK_loginOAuth(ZephlinkSDK* sdk, const char* token, ZephlinkSDK_StateCallback callback,
                                               void* userData);

/// Gives a new OAuth access token to an established session. Sends update_oauth; answered by report_current_state
/// (LoggedIn, Connected or OverLimit) or report_login_error. Time-out: 60 seconds. Refuses a null `token` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_StateResult ZephlinkSDK_refreshOAuthToken(ZephlinkSDK* sdk, const char* token,
                                                      ZephlinkSDK_StateCallback callback, void* userData);

/// Allows the device's automatic account and signs in to it. Sends allow_auto_account, then login_auto; answered by
/// report_current_state (LoggedIn, Connected or OverLimit) or report_login_error. Time-out: 60 seconds. The callback
/// runs once.
ZephlinkSDK_StateResult ZephlinkSDK_loginAutoAccount(ZephlinkSDK* sdk, ZephlinkSDK_StateCallback callback,
                                                     void* userData);

/// Signs out. Sends logout, then request_current_state; answered by report_current_state with
/// ZephlinkSDK_State_LoggedOut, at once if the daemon is already signed out. Other states and report_login_error do not
/// end the call. The callback runs once.
ZephlinkSDK_StateResult ZephlinkSDK_logout(ZephlinkSDK* sdk, ZephlinkSDK_StateCallback callback, void* userData);

/// Reads the account's email, payment and usage figures. Sends request_accounting_data; answered by
/// report_accounting_data. With a callback it stays subscribed: every later report_accounting_data runs the callback
/// until it returns false.
ZephlinkSDK_AccountingResult ZephlinkSDK_getAccountingData(ZephlinkSDK* sdk, ZephlinkSDK_AccountingCallback callback,
                                                           void* userData);

/// Reads the location of the daemon's directory service. Sends request_directory_url; answered by
/// report_directory_settings. With a callback it stays subscribed: every later report_directory_settings runs the
/// callback until it returns false.
ZephlinkSDK_DirectorySettingsResult ZephlinkSDK_getDirectorySettings(ZephlinkSDK* sdk,
                                                                     ZephlinkSDK_DirectorySettingsCallback callback,
                                                                     void* userData);

/// Sets the domain of the directory service. Sends set_directory_domain, without a value if `domain` is null; answered
/// by report_directory_settings. The text is not checked. If the daemon refuses the request, the call times out. The
/// callback runs once.
ZephlinkSDK_DirectorySettingsResult ZephlinkSDK_setDirectoryDomain(ZephlinkSDK* sdk, const char* domain,
                                                                   ZephlinkSDK_DirectorySettingsCallback callback,
                                                                   void* userData);

/// Sets the URI of the directory gateway. Sends set_directory_gateway_uri, without a value if `uri` is null; answered
/// by report_directory_settings. The text is not checked. If the daemon refuses the request, the call times out. The
/// callback runs once.
ZephlinkSDK_DirectorySettingsResult ZephlinkSDK_setDirectoryGatewayURI(ZephlinkSDK* sdk, const char* uri,
                                                                       ZephlinkSDK_DirectorySettingsCallback callback,
                                                                       void* userData);

/// Changes nothing: ignores `enabled` and reads the settings as ZephlinkSDK_getDirectorySettings does. Sends
/// request_directory_url; answered by report_directory_settings. With a callback it stays subscribed: every later
/// report_directory_settings runs the callback until it returns false.
ZephlinkSDK_DirectorySettingsResult ZephlinkSDK_setEnableEsni(ZephlinkSDK* sdk, bool enabled,
                                                              ZephlinkSDK_DirectorySettingsCallback callback,
                                                              void* userData);

// ---- Connection settings -------------------------------------------------------------------------------------------

// The settings of the whole tunnel. Every function returns all of them.

/// Reads the connection settings. Sends request_connection_settings; answered by report_connection_settings. With a
/// callback it stays subscribed: every later report_connection_settings runs the callback until it returns false.
ZephlinkSDK_SettingsResult ZephlinkSDK_getSettings(ZephlinkSDK* sdk, ZephlinkSDK_SettingsCallback callback,
                                                   void* userData);

/// Switches encryption of the whole tunnel on or off. Sends set_encryption_enabled; answered by
/// report_connection_settings. If the daemon refuses set_encryption_enabled, the call fails with the daemon's code. The
/// callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setTunnelEncrypted(ZephlinkSDK* sdk, bool enable,
                                                          ZephlinkSDK_SettingsCallback callback, void* userData);

/// Switches encryption of one adapter's connection on or off. Sends set_encryption_enabled; answered by
/// report_connection_settings. If the daemon refuses set_encryption_enabled, the call fails with the daemon's code.
/// Refuses a null `adapterID` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setConnectionEncryption(ZephlinkSDK* sdk, const char* adapterID, bool enable,
                                                               ZephlinkSDK_SettingsCallback callback, void* userData);

/// Switches jumbo packets on or off. Sends set_dev_jumbo_packets; answered by report_connection_settings. If the daemon
/// refuses set_dev_jumbo_packets, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setJumboPackets(ZephlinkSDK* sdk, bool enable,
                                                       ZephlinkSDK_SettingsCallback callback, void* userData);

/// Switches packet aggregation on or off. Sends set_packet_aggregation; answered by report_connection_settings. If the
/// daemon refuses set_packet_aggregation, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setPacketAggregation(ZephlinkSDK* sdk, bool enable,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData);

/// Switches header compression on or off. Sends set_header_compression; answered by report_connection_settings. If the
/// daemon refuses set_header_compression, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setHeaderCompression(ZephlinkSDK* sdk, bool enable,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData);

/// Sets whether the daemon connects when it starts. Sends set_startup_connect; answered by report_connection_settings.
/// If the daemon refuses set_startup_connect, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setStartupConnect(ZephlinkSDK* sdk, bool enable,
                                                         ZephlinkSDK_SettingsCallback callback, void* userData);

/// Sets whether the tunnel becomes the machine's default route. Sends set_connection_enable_default_route; answered by
/// report_connection_settings. If the daemon refuses set_connection_enable_default_route, the call fails with the
/// daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setEnableDefaultRoute(ZephlinkSDK* sdk, bool enable,
                                                             ZephlinkSDK_SettingsCallback callback, void* userData);

/// Sets how the tunnel uses several adapters at once. Sends set_connection_algorithm; answered by
/// report_connection_settings. If the daemon refuses set_connection_algorithm, the call fails with the daemon's code.
/// Refuses an unlisted mode with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setMode(ZephlinkSDK* sdk, ZephlinkSDK_BondingMode mode,
                                               ZephlinkSDK_SettingsCallback callback, void* userData);

/// Sets the transport of the tunnel. Unlisted values are sent as Auto. Sends set_connection_transport; answered by
/// report_connection_settings. If the daemon refuses set_connection_transport, the call fails with the daemon's code.
/// Refuses Proxy and Share, which cannot be set, with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setConnectionTransportMode(ZephlinkSDK* sdk, ZephlinkSDK_TransportMode mode,
                                                                  ZephlinkSDK_SettingsCallback callback,
                                                                  void* userData);

/// Sets the largest number of connections that may carry the same packet. The number is not checked. Sends
/// set_max_redundant_sends; answered by report_connection_settings. If the daemon refuses set_max_redundant_sends, the
/// call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setMaxRedundantSends(ZephlinkSDK* sdk, uint32_t connections,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData);

/// Sets the speed, in megabits per second, below which secondary adapters are used too. The number is not checked.
/// Sends set_overflow_threshold; answered by report_connection_settings. If the daemon refuses set_overflow_threshold,
/// the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setOverflowThreshold(ZephlinkSDK* sdk, double mbps,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData);

/// Sets the speed, in megabits per second, below which secondary adapters are used too for prioritized traffic. The
/// number is not checked. Sends set_priority_overflow_threshold; answered by report_connection_settings. If the daemon
/// refuses set_priority_overflow_threshold, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setPriorityOverflowThreshold(ZephlinkSDK* sdk, double mbps,
                                                                    ZephlinkSDK_SettingsCallback callback,
                                                                    void* userData);

/// Sets the target number of connections for each direction. The daemon defines their meaning; negative numbers are
/// sent too. Sends set_target_num_connections; answered by report_connection_settings. If the daemon refuses
/// set_target_num_connections, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setTargetNumberOfConnections(ZephlinkSDK* sdk, int32_t upload, int32_t download,
                                                                    ZephlinkSDK_SettingsCallback callback,
                                                                    void* userData);

/// Sets the retry limit for connecting, in seconds. The number is not checked. Sends set_maximum_connect_retry;
/// answered by report_connection_settings. If the daemon refuses set_maximum_connect_retry, the call fails with the
/// daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setMaximumConnectRetry(ZephlinkSDK* sdk, uint32_t seconds,
                                                              ZephlinkSDK_SettingsCallback callback, void* userData);

/// Sets the retry limit for a transport, in seconds. The number is not checked. Sends set_maximum_transport_retry;
/// answered by report_connection_settings. If the daemon refuses set_maximum_transport_retry, the call fails with the
/// daemon's code. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setMaximumTransportRetry(ZephlinkSDK* sdk, uint32_t seconds,
                                                                ZephlinkSDK_SettingsCallback callback, void* userData);

/// Replaces all forwarded ports by the first ZephlinkSDK_MaxForwardedPorts (20) of `count` rules; 0 removes all. Rules
/// with port 0 or with a `portRangeEnd` are skipped, but count towards the limit; an unlisted protocol is omitted.
/// Sends set_connection_forward_ports; answered by report_connection_settings. If the daemon refuses
/// set_connection_forward_ports, the call fails with the daemon's code. Refuses null `rules` with a count above 0 with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setForwardPorts(ZephlinkSDK* sdk, uint16_t count,
                                                       const ZephlinkSDK_ProtocolPortPair* rules,
                                                       ZephlinkSDK_SettingsCallback callback, void* userData);

/// Replaces all downstream subnets by the first ZephlinkSDK_MaxDownstreamSubnets (10) of `count`; 0 removes all.
/// Addresses and prefix lengths are not checked. Sends set_downstream_subnets; answered by report_connection_settings.
/// If the daemon refuses set_downstream_subnets, the call fails with the daemon's code. Refuses null `subnets` with a
/// count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_SettingsResult ZephlinkSDK_setDownstreamSubnets(ZephlinkSDK* sdk, uint16_t count,
                                                            const ZephlinkSDK_Subnet* subnets,
                                                            ZephlinkSDK_SettingsCallback callback, void* userData);

// ---- Adapters ------------------------------------------------------------------------------------------------------

// The network adapters that the daemon bonds. `adapterID` is the `adapterID` of a ZephlinkSDK_Adapter; it is not
// checked. Every function returns all adapters, at most ZephlinkSDK_MaxAdapters.

/// Reads all adapters with their state, priority, limits and usage. Sends request_networks; answered by
/// report_networks. With a callback it stays subscribed: every later report_networks runs the callback until it returns
/// false.
ZephlinkSDK_AdaptersResult ZephlinkSDK_getAdapters(ZephlinkSDK* sdk, ZephlinkSDK_AdaptersCallback callback,
                                                   void* userData);

/// Sets when an adapter is used. Sends set_network_priority; answered by report_networks. If the daemon refuses
/// set_network_priority, the call fails with the daemon's code. Refuses a null `adapterID` and an unlisted `priority`
/// with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_setConnectionPriorities(ZephlinkSDK* sdk, const char* adapterID,
                                                               ZephlinkSDK_ConnectionPriority priority,
                                                               ZephlinkSDK_AdaptersCallback callback, void* userData);

/// Sets whether an adapter carries uploads and downloads. Unlisted values are sent as On. Sends
/// set_network_directional_modes; answered by report_networks. If the daemon refuses set_network_directional_modes, the
/// call fails with the daemon's code. Refuses a null `adapterID` with ZephlinkSDK_Error_InvalidArgument. The callback
/// runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_setConnectionDirectionalMode(ZephlinkSDK* sdk, const char* adapterID,
                                                                    ZephlinkSDK_ConnectionDirectionalMode upload,
                                                                    ZephlinkSDK_ConnectionDirectionalMode download,
                                                                    ZephlinkSDK_AdaptersCallback callback,
                                                                    void* userData);

/// Limits the rate of an adapter, in bits per second; 0 removes the limit. Negative numbers are sent too. Sends
/// set_network_ratelimit; answered by report_networks. If the daemon refuses set_network_ratelimit, the call fails with
/// the daemon's code. Refuses a null `adapterID` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_setConnectionRateLimit(ZephlinkSDK* sdk, const char* adapterID, int64_t bps,
                                                              ZephlinkSDK_AdaptersCallback callback, void* userData);

/// Removes the rate limit of an adapter. Sends set_network_ratelimit; answered by report_networks. If the daemon
/// refuses set_network_ratelimit, the call fails with the daemon's code. Refuses a null `adapterID` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_clearConnectionRateLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                ZephlinkSDK_AdaptersCallback callback, void* userData);

/// Limits the monthly data of an adapter, in bytes; 0 removes the limit. The usage counter restarts on day `resetDay`
/// of the month; with 0, the usage of the last 30 days counts. The numbers are not checked. Sends set_network_limit;
/// answered by report_networks. If the daemon refuses set_network_limit, the call fails with the daemon's code. Refuses
/// a null `adapterID` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_setAdapterMonthlyDataLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                  int64_t bytes, int64_t resetDay,
                                                                  ZephlinkSDK_AdaptersCallback callback,
                                                                  void* userData);

/// Removes the monthly data limit of an adapter and sets the reset day to 0 (the last 30 days count). Sends
/// set_network_limit; answered by report_networks. If the daemon refuses set_network_limit, the call fails with the
/// daemon's code. Refuses a null `adapterID` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_clearAdapterMonthlyDataLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                    ZephlinkSDK_AdaptersCallback callback,
                                                                    void* userData);

/// Limits the daily data of an adapter, in bytes; 0 removes the limit. Negative numbers are sent too. Sends
/// set_network_daily_limit; answered by report_networks. If the daemon refuses set_network_daily_limit, the call fails
/// with the daemon's code. Refuses a null `adapterID` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_setAdapterDailyDataLimit(ZephlinkSDK* sdk, const char* adapterID, int64_t bytes,
                                                                ZephlinkSDK_AdaptersCallback callback, void* userData);

/// Removes the daily data limit of an adapter. Sends set_network_daily_limit; answered by report_networks. If the
/// daemon refuses set_network_daily_limit, the call fails with the daemon's code. Refuses a null `adapterID` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_clearAdapterDailyDataLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                  ZephlinkSDK_AdaptersCallback callback,
                                                                  void* userData);

/// Raises today's data limit of an adapter by `bytes`, which is not checked. Sends add_net_daily_limit_boost; answered
/// by report_networks. If the daemon refuses the request, the call times out. Refuses a null `adapterID` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_addAdapterDailyDataLimitBoost(ZephlinkSDK* sdk, const char* adapterID,
                                                                     int64_t bytes,
                                                                     ZephlinkSDK_AdaptersCallback callback,
                                                                     void* userData);

/// Sets the rate of an adapter that is over its data limit, in bits per second; 0 stops using the adapter once over its
/// limit. Negative numbers are sent too. Sends set_network_overlimit_rate; answered by report_networks. If the daemon
/// refuses set_network_overlimit_rate, the call fails with the daemon's code. Refuses a null `adapterID` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_setAdapterOverlimitRatelimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                    int64_t bps, ZephlinkSDK_AdaptersCallback callback,
                                                                    void* userData);

/// Resets the usage counters of an adapter to 0. Sends reset_network_usage; answered by report_networks. If the daemon
/// refuses the request, the call times out. Refuses a null `adapterID` with ZephlinkSDK_Error_InvalidArgument. The
/// callback runs once.
ZephlinkSDK_AdaptersResult ZephlinkSDK_resetAdapterUsage(ZephlinkSDK* sdk, const char* adapterID,
                                                         ZephlinkSDK_AdaptersCallback callback, void* userData);

// ---- Statistics ----------------------------------------------------------------------------------------------------

/// Reads speed, loss and latency of each connection, at most ZephlinkSDK_MaxConnections. Sends
/// request_connection_stats; answered by report_connection_stats. With a callback it stays subscribed: every later
/// report_connection_stats runs the callback until it returns false.
ZephlinkSDK_ConnectionStatsResult ZephlinkSDK_getConnectionStats(ZephlinkSDK* sdk,
                                                                 ZephlinkSDK_ConnectionStatsCallback callback,
                                                                 void* userData);

/// Reads the streams that the daemon tracks, at most ZephlinkSDK_MaxStreams. Sends request_streaming_stats; answered by
/// report_streaming_stats. With a callback it stays subscribed: every later report_streaming_stats runs the callback
/// until it returns false.
ZephlinkSDK_StreamingStatsResult ZephlinkSDK_getStreamingStats(ZephlinkSDK* sdk,
                                                               ZephlinkSDK_StreamingStatsCallback callback,
                                                               void* userData);

/// Asks the daemon to start or stop sending statistics; subscriptions of the `get...Stats` functions receive them.
/// `periods` selects the periods of the session statistics, in hours (see ZephlinkSDK_Period): the first
/// ZephlinkSDK_MaxSessionPeriods (5) are sent, and none if `enable` is false.
///
/// Sends stat_subscribe, which the daemon does not answer: returns success at once, even while not connected. While
/// enabled, a thread repeats the request every 45 seconds, the first time at once, without periods. Refuses null
/// `periods` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. Returns ZephlinkSDK_Error_Sdk if that thread
/// cannot be started: the request was sent, but is not repeated. `handle` has no meaning.
ZephlinkSDK_Result ZephlinkSDK_subscribeStats(ZephlinkSDK* sdk, bool enable, uint8_t periodCount,
                                              const uint32_t* periods);

// ---- Historic and session statistics -------------------------------------------------------------------------------

/// Reads the connection statistics of the last five minutes. Sends request_historic_connection_stats; answered by one
/// report_historic_connection_stats with many samples. Refuses a null callback with ZephlinkSDK_Error_CallbackRequired.
///
/// The callback gets each sample in turn, whatever it returns, and then the last one again as the end of the call: one
/// record more than there are samples, and one empty record if there are no samples. A sample that cannot be read ends
/// the report: the last record then is an error, ZephlinkSDK_Error_Sdk. An error of the call runs the callback once.
ZephlinkSDK_ConnectionStatsResult ZephlinkSDK_getHistoricConnectionStats(ZephlinkSDK* sdk,
                                                                         ZephlinkSDK_ConnectionStatsCallback callback,
                                                                         void* userData);

/// Reads the daemon's accounting over the periods that ZephlinkSDK_subscribeStats selected, or that the daemon chooses;
/// at most ZephlinkSDK_MaxSessionPeriods. Sends request_session_stats; answered by report_session_stats. If the name of
/// a period is not a number of hours, the record is an error, ZephlinkSDK_Error_Sdk; the periods before it are valid.
/// With a callback it stays subscribed: every later report_session_stats runs the callback until it returns false.
ZephlinkSDK_SessionStatsResult ZephlinkSDK_getSessionStats(ZephlinkSDK* sdk, ZephlinkSDK_SessionStatsCallback callback,
                                                           void* userData);

// ---- Privacy, DNS and captive portal -------------------------------------------------------------------------------

/// Reads the privacy switches and the DNS servers of the tunnel. Sends request_privacy_settings; answered by
/// report_privacy_settings. With a callback it stays subscribed: every later report_privacy_settings runs the callback
/// until it returns false.
ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_getPrivacySettings(ZephlinkSDK* sdk,
                                                                 ZephlinkSDK_PrivacySettingsCallback callback,
                                                                 void* userData);

/// Sets whether the daemon blocks all other traffic while the tunnel is down. Sends set_privacy_killswitch; answered by
/// report_privacy_settings. If the daemon refuses set_privacy_killswitch, the call fails with the daemon's code. The
/// callback runs once.
ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setKillswitch(ZephlinkSDK* sdk, bool enable,
                                                            ZephlinkSDK_PrivacySettingsCallback callback,
                                                            void* userData);

/// Switches the protection against DNS leaks on or off. Sends set_privacy_dnsleak; answered by report_privacy_settings.
/// If the daemon refuses set_privacy_dnsleak, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setDNSLeakProtection(ZephlinkSDK* sdk, bool enable,
                                                                   ZephlinkSDK_PrivacySettingsCallback callback,
                                                                   void* userData);

/// Switches the protection against IP leaks on or off. Sends set_privacy_ipleak; answered by report_privacy_settings.
/// If the daemon refuses set_privacy_ipleak, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setIPLeakProtection(ZephlinkSDK* sdk, bool enable,
                                                                  ZephlinkSDK_PrivacySettingsCallback callback,
                                                                  void* userData);

/// Sets whether programs are asked not to use DNS over HTTPS. Sends set_request_to_disable_doh; answered by
/// report_privacy_settings. If the daemon refuses set_request_to_disable_doh, the call fails with the daemon's code.
/// The callback runs once.
ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setRequestToDisableDoH(ZephlinkSDK* sdk, bool enable,
                                                                     ZephlinkSDK_PrivacySettingsCallback callback,
                                                                     void* userData);

/// Replaces the DNS servers of the tunnel by the first ZephlinkSDK_MaxDnsAddresses (3) of `count` addresses; 0 removes
/// all. The texts are not checked; one that fills its array needs no terminator. Sends set_dns_servers; answered by
/// report_privacy_settings. If the daemon refuses set_dns_servers, the call fails with the daemon's code. Refuses null
/// `addresses` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_PrivacySettingsResult ZephlinkSDK_setDNSServers(ZephlinkSDK* sdk, uint16_t count,
                                                            const char (*addresses)[ZephlinkSDK_AddressSize],
                                                            ZephlinkSDK_PrivacySettingsCallback callback,
                                                            void* userData);

/// Checks all networks for captive portals and returns those that have one, at most ZephlinkSDK_MaxCaptiveNetworks.
/// Sends check_captive_networks; answered by report_captive_networks. Time-out: 30 seconds. The callback runs once.
ZephlinkSDK_CaptivePortalCheckResult ZephlinkSDK_checkForCaptivePortals(ZephlinkSDK* sdk,
                                                                        ZephlinkSDK_CaptivePortalCheckCallback callback,
                                                                        void* userData);

/// Makes the login page of a captive portal reachable through one adapter, or ends that mode. Sends set_cplogin_enable;
/// answered by report_cplogin_network. `adapterID` may be null to disable the mode for all adapters; when enabling it,
/// null is refused with ZephlinkSDK_Error_InvalidArgument. If the daemon refuses the request, the call times out. The
/// callback runs once.
ZephlinkSDK_CaptivePortalLoginResult ZephlinkSDK_setCaptivePortalLoginMode(
    ZephlinkSDK* sdk, bool enable, const char* adapterID, ZephlinkSDK_CaptivePortalLoginCallback callback,
    void* userData);

// ---- Firewall ------------------------------------------------------------------------------------------------------

/// Reads the firewall's mode and rule lists. Sends request_firewall_settings; answered by report_firewall_settings.
/// With a callback it stays subscribed: every later report_firewall_settings runs the callback until it returns false.
ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_getFirewallSettings(ZephlinkSDK* sdk,
                                                                   ZephlinkSDK_FirewallSettingsCallback callback,
                                                                   void* userData);

/// Sets whether the firewall's rules allow or deny, or switches the firewall off. For an unlisted value the invalid
/// text "Unknown mode" is sent. Sends set_firewall_mode; answered by report_firewall_settings. If the daemon refuses
/// set_firewall_mode, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallMode(ZephlinkSDK* sdk, ZephlinkSDK_FirewallMode mode,
                                                               ZephlinkSDK_FirewallSettingsCallback callback,
                                                               void* userData);

/// Replaces the firewall's domain list by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their order; 0
/// empties it. The texts are not checked; one that fills its array needs no terminator. Sends set_firewall_domains;
/// answered by report_firewall_settings. If the daemon refuses set_firewall_domains, the call fails with the daemon's
/// code. Refuses null `domains` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallDomains(ZephlinkSDK* sdk, uint16_t count,
                                                                  const char (*domains)[ZephlinkSDK_DomainSize],
                                                                  ZephlinkSDK_FirewallSettingsCallback callback,
                                                                  void* userData);

/// Replaces the firewall's list of IPv4 addresses by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their
/// order; 0 empties it. Addresses are in network byte order. Sends set_firewall_ipv4; answered by
/// report_firewall_settings. If the daemon refuses set_firewall_ipv4, the call fails with the daemon's code. Refuses
/// null `addresses` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallIPv4(ZephlinkSDK* sdk, uint16_t count,
                                                               const struct in_addr* addresses,
                                                               ZephlinkSDK_FirewallSettingsCallback callback,
                                                               void* userData);

/// Replaces the firewall's list of IPv6 addresses by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their
/// order; 0 empties it. Addresses are in network byte order. Sends set_firewall_ipv6; answered by
/// report_firewall_settings. If the daemon refuses set_firewall_ipv6, the call fails with the daemon's code. Refuses
/// null `addresses` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallIPv6(ZephlinkSDK* sdk, uint16_t count,
                                                               const struct in6_addr* addresses,
                                                               ZephlinkSDK_FirewallSettingsCallback callback,
                                                               void* userData);

/// Replaces the firewall's port list by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their order; 0
/// empties it. Ports and ranges are not checked; an unlisted protocol is omitted. Sends set_firewall_ports; answered by
/// report_firewall_settings. If the daemon refuses set_firewall_ports, the call fails with the daemon's code. Refuses
/// null `rules` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_FirewallSettingsResult ZephlinkSDK_setFirewallPorts(ZephlinkSDK* sdk, uint16_t count,
                                                                const ZephlinkSDK_ProtocolPortPair* rules,
                                                                ZephlinkSDK_FirewallSettingsCallback callback,
                                                                void* userData);

// ---- Streaming -----------------------------------------------------------------------------------------------------

// The rule lists of the traffic that the daemon treats as streaming.

/// Reads the rule lists of the traffic that counts as streaming. Sends request_streaming_settings; answered by
/// report_streaming_settings. With a callback it stays subscribed: every later report_streaming_settings runs the
/// callback until it returns false.
ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_getStreamingSettings(ZephlinkSDK* sdk,
                                                                     ZephlinkSDK_StreamingSettingsCallback callback,
                                                                     void* userData);

/// Replaces the streaming domain list by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their order; 0
/// empties it. The texts are not checked; one that fills its array needs no terminator. Sends set_streaming_domains;
/// answered by report_streaming_settings. If the daemon refuses set_streaming_domains, the call fails with the daemon's
/// code. Refuses null `domains` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_setStreamingDomains(ZephlinkSDK* sdk, uint16_t count,
                                                                    const char (*domains)[ZephlinkSDK_DomainSize],
                                                                    ZephlinkSDK_StreamingSettingsCallback callback,
                                                                    void* userData);

/// Replaces the streaming list of IPv4 addresses by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their
/// order; 0 empties it. Addresses are in network byte order. Sends set_streaming_ipv4; answered by
/// report_streaming_settings. If the daemon refuses set_streaming_ipv4, the call fails with the daemon's code. Refuses
/// null `addresses` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_setStreamingIPv4(ZephlinkSDK* sdk, uint16_t count,
                                                                 const struct in_addr* addresses,
                                                                 ZephlinkSDK_StreamingSettingsCallback callback,
                                                                 void* userData);

/// Replaces the streaming list of IPv6 addresses by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their
/// order; 0 empties it. Addresses are in network byte order. Sends set_streaming_ipv6; answered by
/// report_streaming_settings. If the daemon refuses set_streaming_ipv6, the call fails with the daemon's code. Refuses
/// null `addresses` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_setStreamingIPv6(ZephlinkSDK* sdk, uint16_t count,
                                                                 const struct in6_addr* addresses,
                                                                 ZephlinkSDK_StreamingSettingsCallback callback,
                                                                 void* userData);

/// Replaces the streaming port list by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their order; 0
/// empties it. Ports and ranges are not checked; an unlisted protocol is omitted. Sends set_streaming_ports; answered
/// by report_streaming_settings. If the daemon refuses set_streaming_ports, the call fails with the daemon's code.
/// Refuses null `rules` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_StreamingSettingsResult ZephlinkSDK_setStreamingPorts(ZephlinkSDK* sdk, uint16_t count,
                                                                  const ZephlinkSDK_ProtocolPortPair* rules,
                                                                  ZephlinkSDK_StreamingSettingsCallback callback,
                                                                  void* userData);

// ---- Local proxy ---------------------------------------------------------------------------------------------------

// The traffic that bypasses the tunnel through a proxy in the daemon. Records are about 130 KB, by value.

/// Reads the proxy's switches, rule lists and watched services, at most ZephlinkSDK_MaxServices of these. Sends
/// request_localproxy_settings; answered by report_localproxy_settings. With a callback it stays subscribed: every
/// later report_localproxy_settings runs the callback until it returns false.
ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_getLocalProxySettings(ZephlinkSDK* sdk,
                                                                       ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                       void* userData);

/// Switches the local proxy on or off. Sends set_localproxy_enabled; answered by report_localproxy_settings. If the
/// daemon refuses set_localproxy_enabled, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyEnabled(ZephlinkSDK* sdk, bool enable,
                                                                      ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                      void* userData);

/// Replaces the local proxy's domain list by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their order; 0
/// empties it. The texts are not checked; one that fills its array needs no terminator. Sends set_localproxy_domains;
/// answered by report_localproxy_settings. If the daemon refuses set_localproxy_domains, the call fails with the
/// daemon's code. Refuses null `domains` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs
/// once.
ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyDomains(ZephlinkSDK* sdk, uint16_t count,
                                                                      const char (*domains)[ZephlinkSDK_DomainSize],
                                                                      ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                      void* userData);

/// Replaces the local proxy's list of IPv4 addresses by the first ZephlinkSDK_MaxRules (100) of `count` entries, in
/// their order; 0 empties it. Addresses are in network byte order. Sends set_localproxy_ipv4; answered by
/// report_localproxy_settings. If the daemon refuses set_localproxy_ipv4, the call fails with the daemon's code.
/// Refuses null `addresses` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyIPv4(ZephlinkSDK* sdk, uint16_t count,
                                                                   const struct in_addr* addresses,
                                                                   ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                   void* userData);

/// Replaces the local proxy's list of IPv6 addresses by the first ZephlinkSDK_MaxRules (100) of `count` entries, in
/// their order; 0 empties it. Addresses are in network byte order. Sends set_localproxy_ipv6; answered by
/// report_localproxy_settings. If the daemon refuses set_localproxy_ipv6, the call fails with the daemon's code.
/// Refuses null `addresses` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyIPv6(ZephlinkSDK* sdk, uint16_t count,
                                                                   const struct in6_addr* addresses,
                                                                   ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                   void* userData);

/// Replaces the local proxy's port list by the first ZephlinkSDK_MaxRules (100) of `count` entries, in their order; 0
/// empties it. Ports and ranges are not checked; an unlisted protocol is omitted. Sends set_localproxy_ports; answered
/// by report_localproxy_settings. Only a refusal reported under the name set_firewall_ports ends the call with the
/// daemon's code, even if it concerns the firewall; after a refusal reported as set_localproxy_ports the call times
/// out. Refuses null `rules` with a count above 0 with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyPorts(ZephlinkSDK* sdk, uint16_t count,
                                                                    const ZephlinkSDK_ProtocolPortPair* rules,
                                                                    ZephlinkSDK_LocalProxySettingsCallback callback,
                                                                    void* userData);

/// Switches the whole watch list on or off. Sends set_localproxy_bypass; answered by report_localproxy_settings. If the
/// daemon refuses set_localproxy_bypass, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyGlobalDomainWatchlistEnable(
    ZephlinkSDK* sdk, bool enable, ZephlinkSDK_LocalProxySettingsCallback callback, void* userData);

/// Switches the service `title` of the watch list on or off. Sends set_localproxy_domainwatchlist_enable; answered by
/// report_localproxy_settings. The title is not checked: an unknown one changes nothing. Refuses a null `title` with
/// ZephlinkSDK_Error_InvalidArgument. If the daemon refuses the request, the call times out. The callback runs once.
ZephlinkSDK_LocalProxySettingsResult ZephlinkSDK_setLocalProxyDomainWatchlistEnable(
    ZephlinkSDK* sdk, const char* title, bool enable, ZephlinkSDK_LocalProxySettingsCallback callback, void* userData);

// ---- Speed tests and disconnect reason -----------------------------------------------------------------------------

/// Reads the first ZephlinkSDK_MaxSpeedTestRuns of the test runs that the daemon keeps, in the daemon's order. Sends
/// request_speedtest_results; answered by report_speedtest_results. With a callback it stays subscribed: every later
/// report_speedtest_results runs the callback until it returns false.
ZephlinkSDK_SpeedTestResult ZephlinkSDK_getSpeedTestResults(ZephlinkSDK* sdk, ZephlinkSDK_SpeedTestCallback callback,
                                                            void* userData);

/// Runs a speed test and returns its run: the newest of the report, or none (`runCount` 0) if no run has a valid time.
/// A failed run does not fail the call: test the run's `isError`. Sends speedtest; answered by
/// report_speedtest_results, even one for another test that ends first. Time-out: 60 seconds; the daemon's test then
/// continues. The callback runs once.
ZephlinkSDK_SpeedTestResult ZephlinkSDK_startSpeedTest(ZephlinkSDK* sdk, ZephlinkSDK_SpeedTestCallback callback,
                                                       void* userData);

/// Runs a stream test and returns its run: the newest of the report, or none (`runCount` 0) if no run has a valid time.
/// A failed run does not fail the call: test the run's `isError`. Sends streamtest; answered by
/// report_speedtest_results, even one for another test that ends first. Time-out: 200 seconds; the daemon's test then
/// continues. The callback runs once.
ZephlinkSDK_SpeedTestResult ZephlinkSDK_startStreamTest(ZephlinkSDK* sdk, ZephlinkSDK_SpeedTestCallback callback,
                                                        void* userData);

/// Reads the reason why the last session ended. Sends request_disconnect_reason; answered by report_disconnect_reason.
/// With a callback it stays subscribed: every later report_disconnect_reason runs the callback until it returns false.
ZephlinkSDK_DisconnectEventResult ZephlinkSDK_getLastDisconnectEvent(ZephlinkSDK* sdk,
                                                                     ZephlinkSDK_DisconnectEventCallback callback,
                                                                     void* userData);

// ---- Logs, reports and daemon control ------------------------------------------------------------------------------

/// Reads the settings of the daemon's log files. Sends request_log_settings; answered by report_log_settings. With a
/// callback it stays subscribed: every later report_log_settings runs the callback until it returns false.
ZephlinkSDK_LogSettingsResult ZephlinkSDK_getLogSettings(ZephlinkSDK* sdk, ZephlinkSDK_LogSettingsCallback callback,
                                                         void* userData);

/// Replaces the settings of the daemon's log files. The numbers are not checked. Sends set_daemon_log_settings;
/// answered by report_log_settings. If the daemon refuses set_daemon_log_settings, the call fails with the daemon's
/// code. Refuses an unlisted level with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_LogSettingsResult ZephlinkSDK_setDaemonLogSettings(ZephlinkSDK* sdk, ZephlinkSDK_DaemonLogSettings settings,
                                                               ZephlinkSDK_LogSettingsCallback callback,
                                                               void* userData);

/// Sends a problem report with a file; the record has the ticket. `filepath` is UTF-8; the daemon, which reads the
/// file, receives the absolute path with symbolic links resolved. Sends send_log_report; answered by report_log_result,
/// which ends the call with the daemon's code if the report was not accepted. Time-out: 60 seconds. The callback runs
/// once.
///
/// Refuses null arguments, an empty `email` or `filepath` and a file that does not exist with
/// ZephlinkSDK_Error_InvalidArgument. A path that the system cannot examine is refused with ZephlinkSDK_Error_Sdk and
/// the system's text.
ZephlinkSDK_LogReportResult ZephlinkSDK_sendLogReport(ZephlinkSDK* sdk, const char* email, const char* message,
                                                      const char* filepath, ZephlinkSDK_LogReportCallback callback,
                                                      void* userData);

/// Erases all log files of the daemon. Sends erase_all_log_files, which the daemon does not answer: returns success at
/// once, even while not connected; the request is sent when the daemon becomes reachable. `handle` has no meaning.
ZephlinkSDK_Result ZephlinkSDK_eraseLogs(ZephlinkSDK* sdk);

/// Shuts the daemon down. Sends exit, which the daemon does not answer: returns success at once, even while not
/// connected; the request is sent when the daemon becomes reachable. `handle` has no meaning.
ZephlinkSDK_Result ZephlinkSDK_exitDaemon(ZephlinkSDK* sdk);

// ---- Safe browsing -------------------------------------------------------------------------------------------------

// Configuration and token are texts of the service and are not checked. If the service cannot connect, the call does
// not fail: test `connectFailed`.

/// Sets the configuration of the service and connects it. Sends initialize_safe_browsing; answered by
/// report_safe_browsing_settings or report_safe_browsing_connect_error (`connectFailed`). If the daemon refuses
/// initialize_safe_browsing, the call fails with the daemon's code. Refuses a null `config` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_initSafeBrowsing(ZephlinkSDK* sdk, const char* config,
                                                            ZephlinkSDK_SafeBrowsingCallback callback, void* userData);

/// Stores a configuration. Sends set_safe_browsing_config; answered by report_safe_browsing_settings. Only a refusal
/// reported as initialize_safe_browsing ends the call with the daemon's code; one reported as set_safe_browsing_config
/// cancels the time-out instead, and the call waits for the next report without limit. Refuses a null `config` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_setSafeBrowsingConfig(ZephlinkSDK* sdk, const char* config,
                                                                 ZephlinkSDK_SafeBrowsingCallback callback,
                                                                 void* userData);

/// Switches lookups on or off. Sends enable_safe_browsing; answered by report_safe_browsing_settings. If the daemon
/// refuses enable_safe_browsing, the call fails with the daemon's code. The callback runs once.
ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_setSafeBrowsingEnabled(ZephlinkSDK* sdk, bool enabled,
                                                                  ZephlinkSDK_SafeBrowsingCallback callback,
                                                                  void* userData);

/// Sets how much the service logs. Sends set_safe_browsing_log_level; answered by report_safe_browsing_settings.
/// Refuses an unlisted level with ZephlinkSDK_Error_InvalidArgument. If the daemon refuses the request, the call times
/// out. The callback runs once.
ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_setSafeBrowsingLogLevel(ZephlinkSDK* sdk,
                                                                   ZephlinkSDK_SafeBrowsingLogLevel level,
                                                                   ZephlinkSDK_SafeBrowsingCallback callback,
                                                                   void* userData);

/// Sets how the current network is treated. Sends set_safe_browsing_safe_network_override; answered by
/// report_safe_browsing_settings. Refuses an unlisted value with ZephlinkSDK_Error_InvalidArgument. If the daemon
/// refuses the request, the call times out. The callback runs once.
ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_setSafeBrowsingSafeNetworkOverride(
    ZephlinkSDK* sdk, ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride,
    ZephlinkSDK_SafeBrowsingCallback callback, void* userData);

/// Replaces the token of the service. Sends safe_browsing_token_refresh; answered by report_safe_browsing_settings with
/// `initialized` true or by report_safe_browsing_connect_error (`connectFailed`). Settings that are not initialized do
/// not end the call. If the daemon refuses safe_browsing_token_refresh, the call fails with the daemon's code. Refuses
/// a null `token` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_refreshSafeBrowsingToken(ZephlinkSDK* sdk, const char* token,
                                                                    ZephlinkSDK_SafeBrowsingCallback callback,
                                                                    void* userData);

/// Reports the current network as the home network. The daemon defines the units of `delay` and `timeout`; the numbers
/// follow `userData`. Sends safe_browsing_report_home_network; answered by report_safe_browsing_settings with
/// `initialized` true or by report_safe_browsing_connect_error (`connectFailed`). Only a refusal reported as
/// safe_browsing_token_refresh ends the call with the daemon's code; one reported as safe_browsing_report_home_network
/// cancels the time-out instead, and the call waits for the next answer without limit. The callback runs once.
ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_reportSafeBrowsingHomeNetwork(ZephlinkSDK* sdk,
                                                                         ZephlinkSDK_SafeBrowsingCallback callback,
                                                                         void* userData, uint32_t retries,
                                                                         uint64_t delay, uint64_t timeout);

/// Reads the settings of safe browsing. Sends request_safe_browsing_settings; answered by
/// report_safe_browsing_settings. With a callback it stays subscribed: every later report_safe_browsing_settings runs
/// the callback until it returns false.
ZephlinkSDK_SafeBrowsingResult ZephlinkSDK_getSafeBrowsing(ZephlinkSDK* sdk, ZephlinkSDK_SafeBrowsingCallback callback,
                                                           void* userData);

/// Reads the counters of safe browsing. Sends request_safe_browsing_stats; answered by report_safe_browsing_stats. With
/// a callback it stays subscribed: every later report_safe_browsing_stats runs the callback until it returns false.
ZephlinkSDK_SafeBrowsingStatsResult ZephlinkSDK_getSafeBrowsingStats(ZephlinkSDK* sdk,
                                                                     ZephlinkSDK_SafeBrowsingStatsCallback callback,
                                                                     void* userData);

/// Subscribes to lookups that fail. Sends nothing and has no time-out: every report_safe_browsing_lookup_error runs the
/// callback until it returns false. Refuses a null callback with ZephlinkSDK_Error_CallbackRequired.
ZephlinkSDK_SafeBrowsingErrorResult ZephlinkSDK_listenForSafeBrowsingError(
    ZephlinkSDK* sdk, ZephlinkSDK_SafeBrowsingErrorCallback callback, void* userData);

/// Subscribes to hosts that are blocked or redirected. Sends nothing and has no time-out: every
/// report_safe_browsing_block runs the callback until it returns false. Refuses a null callback with
/// ZephlinkSDK_Error_CallbackRequired.
ZephlinkSDK_SafeBrowsingBlockResult ZephlinkSDK_listenForSafeBrowsingBlock(
    ZephlinkSDK* sdk, ZephlinkSDK_SafeBrowsingBlockCallback callback, void* userData);

// ---- Network sharing -----------------------------------------------------------------------------------------------

/// Reads the network-sharing settings of this machine. Sends request_networksharing_settings; answered by
/// report_networksharing_settings. With a callback it stays subscribed: every later report_networksharing_settings runs
/// the callback until it returns false.
ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_getNetworkSharingSettings(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData);

/// Sets whether this machine uses the shares of peers. Sends set_networksharing_client_enabled; answered by
/// report_networksharing_settings. If the daemon refuses set_networksharing_client_enabled, the call fails with the
/// daemon's code. The callback runs once.
ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingClientEnabled(
    ZephlinkSDK* sdk, bool enabled, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData);

/// Always refused with ZephlinkSDK_Error_NotSupported, at once: no platform supports it yet. Sends nothing; the
/// callback never runs.
ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingHostEnabled(
    ZephlinkSDK* sdk, bool enabled, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData);

/// Sets the name that peers see. The daemon checks it. Sends set_networksharing_display_name; answered by
/// report_networksharing_settings. If the daemon refuses set_networksharing_display_name, the call fails with the
/// daemon's code. Refuses a null `name` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingDisplayName(
    ZephlinkSDK* sdk, const char* name, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData);

/// Sets what the daemon does when a peer asks to pair. Sends set_networksharing_pair_request_behavior; answered by
/// report_networksharing_settings. If the daemon refuses set_networksharing_pair_request_behavior, the call fails with
/// the daemon's code. Refuses an unlisted value with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingPairRequestBehavior(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingPairRequestBehavior behavior,
    ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData);

/// Sets which peers the daemon pairs with automatically. Sends set_networksharing_auto_pair_behavior; answered by
/// report_networksharing_settings. If the daemon refuses set_networksharing_auto_pair_behavior, the call fails with the
/// daemon's code. Refuses an unlisted value with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingAutoPairBehavior(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingAutoPairBehavior behavior,
    ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData);

/// Sets whether the daemon looks for peers all the time. Sends set_networksharing_always_on_discovery; answered by
/// report_networksharing_settings. If the daemon refuses set_networksharing_always_on_discovery, the call fails with
/// the daemon's code. The callback runs once.
ZephlinkSDK_NetworkSharingSettingsResult ZephlinkSDK_setNetworkSharingAlwaysOnDiscovery(
    ZephlinkSDK* sdk, bool enabled, ZephlinkSDK_NetworkSharingSettingsCallback callback, void* userData);

/// Reads whether the daemon is looking for peers now. Sends get_networksharing_discovery; answered by
/// report_networksharing_discovery. With a callback it stays subscribed: every later report_networksharing_discovery
/// runs the callback until it returns false.
ZephlinkSDK_NetworkSharingDiscoveryResult ZephlinkSDK_getNetworkSharingDiscovery(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingDiscoveryCallback callback, void* userData);

/// Looks for peers, for a time that the daemon chooses. Sends start_networksharing_discovery; answered by
/// report_networksharing_discovery. The call does not wait for peers: see
/// ZephlinkSDK_listenForNetworkShareNewPeerAvailable. The callback runs once.
ZephlinkSDK_NetworkSharingDiscoveryResult ZephlinkSDK_startNetworkSharingDiscovery(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingDiscoveryCallback callback, void* userData);

/// Reads the peers that the daemon knows, at most ZephlinkSDK_MaxPeers. Sends request_networksharing_sharesavailable;
/// answered by report_networksharing_sharesavailable. With a callback it stays subscribed: every later
/// report_networksharing_sharesavailable runs the callback until it returns false.
ZephlinkSDK_NetworkSharingAvailableSharesResult ZephlinkSDK_getNetworkSharesAvailable(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingAvailableSharesCallback callback, void* userData);

// ---- Network sharing peers -----------------------------------------------------------------------------------------

// A peer is named by its `uuid`, as in ZephlinkSDK_NetworkSharingPeer; an unknown one is not refused. No
// report_settings_error ends a call of this family.

/// Connects to the host that a connect code names. Sends connect_to_networkshare_connectcode; answered by
/// report_networksharing_peer_status_change of that host or without a uuid: the call ends when the peer is
/// authenticated, or with the daemon's code and text when the event reports an error. Other changes neither end it nor
/// cancel its time-out. Refuses null and a code that is not Base64 of a JSON object with the member "u" with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingConnectionResult ZephlinkSDK_connectToNetworkShareViaConnectCode(
    ZephlinkSDK* sdk, const char* code, ZephlinkSDK_NetworkSharingConnectionCallback callback, void* userData);

/// Reconnects to a known peer. Sends reconnect_to_networkshare; answered by report_networksharing_peer_status_change of
/// that peer: the call ends when the peer is authenticated, or with the daemon's code and text when the event reports
/// an error. Other changes neither end it nor cancel its time-out. Time-out: 60 seconds. Refuses a null `uuid` with
/// ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingConnectionResult ZephlinkSDK_reconnectToNetworkShare(
    ZephlinkSDK* sdk, const char* uuid, ZephlinkSDK_NetworkSharingConnectionCallback callback, void* userData);

/// Asks a peer to pair and waits for its answer. Sends request_networksharing_pair; answered by
/// report_networksharing_peer_pair_change of that peer. A report_networksharing_peer_status_change of that peer ends
/// the call with the daemon's code and text if it reports an error; otherwise the time-out continues. Time-out: 70
/// seconds. Refuses a null `uuid` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_requestNetworkSharingPair(
    ZephlinkSDK* sdk, const char* uuid, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData);

/// Answers a peer that has asked to pair: accepts with true, rejects with false. Sends allow_networksharing_pair;
/// answered by report_networksharing_peer_pair_change of that peer. A report_networksharing_peer_status_change of that
/// peer ends the call with the daemon's code and text if it reports an error; otherwise the time-out continues. Refuses
/// a null `uuid` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_allowNetworkSharingPair(
    ZephlinkSDK* sdk, const char* uuid, bool allow, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData);

/// Ends a pairing. Sends unpair_networksharing_peer; answered by report_networksharing_peer_pair_change of any peer:
/// compare the record's `uuid`. Refuses a null `uuid` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_unpairNetworkSharingPeer(
    ZephlinkSDK* sdk, const char* uuid, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData);

/// Sets whether the daemon reconnects to a peer automatically. Sends set_networksharing_peer_auto_reconnect; answered
/// by report_networksharing_sharesavailable with all peers. If the daemon refuses the request, the call times out.
/// Refuses a null `uuid` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingAvailableSharesResult ZephlinkSDK_setNetworkSharingPeerAutoReconnect(
    ZephlinkSDK* sdk, const char* uuid, bool enabled, ZephlinkSDK_NetworkSharingAvailableSharesCallback callback,
    void* userData);

/// Sets whether a peer may be this machine's host. Sends set_networksharing_peer_allow_as_host; answered by
/// report_networksharing_sharesavailable with all peers. If the daemon refuses the request, the call times out. Refuses
/// a null `uuid` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingAvailableSharesResult ZephlinkSDK_setNetworkSharingPeerAllowAsHost(
    ZephlinkSDK* sdk, const char* uuid, bool allow, ZephlinkSDK_NetworkSharingAvailableSharesCallback callback,
    void* userData);

/// Sets whether a peer may be a client of this machine. Sends set_networksharing_peer_allow_as_client; answered by
/// report_networksharing_sharesavailable with all peers. If the daemon refuses the request, the call times out. Refuses
/// a null `uuid` with ZephlinkSDK_Error_InvalidArgument. The callback runs once.
ZephlinkSDK_NetworkSharingAvailableSharesResult ZephlinkSDK_setNetworkSharingPeerAllowAsClient(
    ZephlinkSDK* sdk, const char* uuid, bool allow, ZephlinkSDK_NetworkSharingAvailableSharesCallback callback,
    void* userData);

/// Subscribes to changes of the peers' status. Sends nothing and has no time-out: every
/// report_networksharing_peer_status_change runs the callback until it returns false. A reported failure sets
/// `errorCode` and `errorMessage` only: `hasError` stays false. Refuses a null callback with
/// ZephlinkSDK_Error_CallbackRequired.
ZephlinkSDK_NetworkSharingConnectionResult ZephlinkSDK_listenForNetworkSharePeerStatusChange(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingConnectionCallback callback, void* userData);

/// Subscribes to peers that ask to pair; answer with ZephlinkSDK_allowNetworkSharingPair. Sends nothing and has no
/// time-out: every report_networkshare_auth_request runs the callback until it returns false. Refuses a null callback
/// with ZephlinkSDK_Error_CallbackRequired.
ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_listenForNetworkSharePairRequest(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData);

/// Subscribes to peers that appear. Sends nothing and has no time-out: every report_networksharing_new_peer_available
/// runs the callback until it returns false. Refuses a null callback with ZephlinkSDK_Error_CallbackRequired.
ZephlinkSDK_NetworkSharingPairResult ZephlinkSDK_listenForNetworkShareNewPeerAvailable(
    ZephlinkSDK* sdk, ZephlinkSDK_NetworkSharingPairCallback callback, void* userData);

#ifdef __cplusplus
}  // extern "C"

// ---- C++ only ------------------------------------------------------------------------------------------------------

namespace zephlinksdk {

/// The callback type of a record: Callback<ZephlinkSDK_StateResult> is ZephlinkSDK_StateCallback.
template <class Record>
using Callback = bool (*)(Record, void*);

}  // namespace zephlinksdk

/// Removes the rate limit of the adapter `adapterID`: another name of ZephlinkSDK_clearConnectionRateLimit, with the
/// same contract.
inline ZephlinkSDK_AdaptersResult ZephlinkSDK_setConnectionRateLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                     ZephlinkSDK_AdaptersCallback callback,
                                                                     void* userData) {
  return ZephlinkSDK_clearConnectionRateLimit(sdk, adapterID, callback, userData);
}

/// Removes the monthly data limit of the adapter `adapterID`: another name of ZephlinkSDK_clearAdapterMonthlyDataLimit,
/// with the same contract.
inline ZephlinkSDK_AdaptersResult ZephlinkSDK_setAdapterMonthlyDataLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                         ZephlinkSDK_AdaptersCallback callback,
                                                                         void* userData) {
  return ZephlinkSDK_clearAdapterMonthlyDataLimit(sdk, adapterID, callback, userData);
}

/// Removes the daily data limit of the adapter `adapterID`: another name of ZephlinkSDK_clearAdapterDailyDataLimit,
/// with the same contract.
inline ZephlinkSDK_AdaptersResult ZephlinkSDK_setAdapterDailyDataLimit(ZephlinkSDK* sdk, const char* adapterID,
                                                                       ZephlinkSDK_AdaptersCallback callback,
                                                                       void* userData) {
  return ZephlinkSDK_clearAdapterDailyDataLimit(sdk, adapterID, callback, userData);
}
#endif
