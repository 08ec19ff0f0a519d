// The records that cross the library's boundary: what calls return, and what they take as arguments.
//
// Every record is flat plain data, copied by value, and all zero when made by `= {}`. Texts are UTF-8, cut to their
// array less one and always terminated. Of an array with a `...Count` field only the first `...Count` entries have a
// meaning. Bases are laid out in the order in which they are named, so that fields stand in the order of reading.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "sdk/platform/addresses.h"

// ---- Bounds -------------------------------------------------------------------------------------------------------

// Entries of the arrays in records.
inline constexpr std::size_t ZephlinkSDK_MaxServers = 1024;
inline constexpr std::size_t ZephlinkSDK_MaxPublicIPs = 12;
inline constexpr std::size_t ZephlinkSDK_MaxServerDnsIPs = 3;
inline constexpr std::size_t ZephlinkSDK_MaxForwardedPorts = 20;
inline constexpr std::size_t ZephlinkSDK_MaxDownstreamSubnets = 10;
inline constexpr std::size_t ZephlinkSDK_MaxPerConnectionSettings = 25;
inline constexpr std::size_t ZephlinkSDK_MaxAdapters = 25;
inline constexpr std::size_t ZephlinkSDK_MaxConnections = 25;
inline constexpr std::size_t ZephlinkSDK_MaxStreams = 10;
inline constexpr std::size_t ZephlinkSDK_MaxSessionPeriods = 5;
inline constexpr std::size_t ZephlinkSDK_MaxDnsAddresses = 3;
inline constexpr std::size_t ZephlinkSDK_MaxCaptiveNetworks = 25;
inline constexpr std::size_t ZephlinkSDK_MaxRules = 100;
inline constexpr std::size_t ZephlinkSDK_MaxServices = 100;
inline constexpr std::size_t ZephlinkSDK_MaxServiceDomains = 12;
inline constexpr std::size_t ZephlinkSDK_MaxSpeedTestRuns = 5;
inline constexpr std::size_t ZephlinkSDK_MaxPeers = 32;

// Bytes of text fields that several records share, the terminating zero included.
inline constexpr std::size_t ZephlinkSDK_AddressSize = 46;
inline constexpr std::size_t ZephlinkSDK_AdapterTextSize = 100;
inline constexpr std::size_t ZephlinkSDK_AppNameSize = 32;
inline constexpr std::size_t ZephlinkSDK_CitySize = 20;
inline constexpr std::size_t ZephlinkSDK_CountrySize = 10;
inline constexpr std::size_t ZephlinkSDK_DirectoryTextSize = 100;
inline constexpr std::size_t ZephlinkSDK_DomainSize = 50;
inline constexpr std::size_t ZephlinkSDK_ErrorMessageSize = 200;
inline constexpr std::size_t ZephlinkSDK_PeerNameSize = 33;
inline constexpr std::size_t ZephlinkSDK_SafeBrowsingHostSize = 253;
inline constexpr std::size_t ZephlinkSDK_UuidSize = 37;

// ---- Start and common head ----------------------------------------------------------------------------------------

/// What the library is started with; ZephlinkSDK_defaultConfig fills in the defaults.
struct ZephlinkSDK_Config {
  char appName[ZephlinkSDK_AppNameSize];  ///< announced to the daemon; empty announces nothing
  char address[ZephlinkSDK_AddressSize];  ///< of the daemon, as text
  uint16_t port;                          ///< TCP port of the daemon
};

/// The common head of every record, and the whole record of a call that has no answer.
/// Test `hasError`, never `errorCode`: the immediate record of an asynchronous call carries a code that is no error.
struct ZephlinkSDK_Result {
  bool hasError;
  uint32_t errorCode;                               ///< a ZephlinkSDK_Error, or a code that the daemon sent
  char errorMessage[ZephlinkSDK_ErrorMessageSize];  ///< usually more specific than the code's own text
  uint64_t handle;                                  ///< what removeListener takes; 0 is a valid handle
};

// ---- State and version --------------------------------------------------------------------------------------------

/// The daemon's state.
enum ZephlinkSDK_State : uint32_t {
  ZephlinkSDK_State_LoggedOut = 0,
  ZephlinkSDK_State_LoggingIn = 1,
  ZephlinkSDK_State_LoggedIn = 2,
  ZephlinkSDK_State_AutoConnecting = 3,
  ZephlinkSDK_State_Connecting = 4,
  ZephlinkSDK_State_Disconnecting = 5,
  ZephlinkSDK_State_Connected = 6,
  ZephlinkSDK_State_OverLimit = 7,
  ZephlinkSDK_State_Unknown = 8,
};

/// The state of the daemon.
struct ZephlinkSDK_StateResult : ZephlinkSDK_Result {
  uint32_t state;  ///< a ZephlinkSDK_State; larger numbers of the daemon are stored as Unknown
};

/// The version of the daemon.
struct ZephlinkSDK_VersionResult : ZephlinkSDK_Result {
  uint16_t maj;
  uint16_t min;
  uint16_t bug;
  uint16_t build;
};

// ---- Servers and connecting ---------------------------------------------------------------------------------------

/// How the daemon chooses a server.
enum ZephlinkSDK_ConnectMethod : uint32_t {
  ZephlinkSDK_ConnectMethod_Closest = 0,
  ZephlinkSDK_ConnectMethod_Private = 1,
  ZephlinkSDK_ConnectMethod_Public = 2,
  ZephlinkSDK_ConnectMethod_Last = 3,
  ZephlinkSDK_ConnectMethod_P2P = 4,
  ZephlinkSDK_ConnectMethod_Auto = 5,
  ZephlinkSDK_ConnectMethod_Country = 6,
  ZephlinkSDK_ConnectMethod_Exact = 7,
  ZephlinkSDK_ConnectMethod_Proxy = 8,
  ZephlinkSDK_ConnectMethod_IgnoreLast = 9,
};

/// One server of the directory.
struct ZephlinkSDK_ServerInfo {
  char country[ZephlinkSDK_CountrySize];  ///< country code, without the prefix "private"
  char city[ZephlinkSDK_CitySize];        ///< city key, see cityName
  int32_t num;
  bool isPrivate;  ///< a server for one account or team
  bool isPremium;  ///< always equal to isPrivate
  bool torrentAllowed;
  uint16_t publicIPCount;
  char publicIP[ZephlinkSDK_MaxPublicIPs][ZephlinkSDK_AddressSize];
  uint16_t dnsIPCount;
  char dnsIP[ZephlinkSDK_MaxServerDnsIPs][ZephlinkSDK_AddressSize];
  char dataCenter[20];
};

/// The server that the daemon is connected to.
struct ZephlinkSDK_ConnectResult : ZephlinkSDK_Result {
  ZephlinkSDK_ServerInfo server;
};

/// All servers, in the daemon's order. About 750 KB: mind the stack, and copy it no more than needed.
struct ZephlinkSDK_DirectoryResult : ZephlinkSDK_Result {
  uint32_t count;
  ZephlinkSDK_ServerInfo servers[ZephlinkSDK_MaxServers];
};

/// The server that the daemon connects to by default. The last three fields belong to Country and Exact only.
struct ZephlinkSDK_ServerSettingsResult : ZephlinkSDK_Result {
  ZephlinkSDK_ConnectMethod connectMethod;
  char country[ZephlinkSDK_CountrySize];
  char city[ZephlinkSDK_CitySize];
  int32_t num;  ///< 0 for any
};

// ---- Account and directory settings -------------------------------------------------------------------------------

/// How an account is paid for.
enum ZephlinkSDK_PaymentType : uint32_t {
  ZephlinkSDK_PaymentType_Free = 0,
  ZephlinkSDK_PaymentType_Monthly = 1,
  ZephlinkSDK_PaymentType_Yearly = 2,
};

/// What the account needs next.
enum ZephlinkSDK_AccountAction : uint32_t {
  ZephlinkSDK_AccountAction_None = 0,
  ZephlinkSDK_AccountAction_RetryLogin = 1,
  ZephlinkSDK_AccountAction_ConnectInternet = 2,
};

/// A calendar day, counted as in std::tm; all zero for none.
struct ZephlinkSDK_Date {
  int32_t year;   ///< since 1900
  int32_t month;  ///< from 0
  int32_t day;    ///< of the month, from 1
};

/// The account's figures.
struct ZephlinkSDK_AccountingResult : ZephlinkSDK_Result {
  char email[250];
  bool isAutoAccount;
  int64_t bytesAvailable;
  int64_t bytesUsed;
  bool isTeam;
  int32_t minutesAvailable;
  int32_t minutesUsed;
  ZephlinkSDK_PaymentType paymentType;
  ZephlinkSDK_Date dataPeriodEnd;
  ZephlinkSDK_AccountAction action;
};

/// Where the daemon finds its directory service.
struct ZephlinkSDK_DirectorySettingsResult : ZephlinkSDK_Result {
  char domain[ZephlinkSDK_DirectoryTextSize];
  bool enableEsni;
  char gatewayUri[ZephlinkSDK_DirectoryTextSize];
};

// ---- Connection settings ------------------------------------------------------------------------------------------

/// How the tunnel uses several adapters at once.
enum ZephlinkSDK_BondingMode : uint32_t {
  ZephlinkSDK_BondingMode_Speed = 0,
  ZephlinkSDK_BondingMode_Redundant = 1,
  ZephlinkSDK_BondingMode_Streaming = 2,
};

/// What carries the tunnel. Proxy and Share occur in statistics only and cannot be set.
enum ZephlinkSDK_TransportMode : uint32_t {
  ZephlinkSDK_TransportMode_Tcp = 0,
  ZephlinkSDK_TransportMode_Udp = 1,
  ZephlinkSDK_TransportMode_Auto = 2,
  ZephlinkSDK_TransportMode_Https = 3,
  ZephlinkSDK_TransportMode_TcpMulti = 4,
  ZephlinkSDK_TransportMode_Proxy = 5,
  ZephlinkSDK_TransportMode_Share = 6,
};

/// The protocol of a port rule.
enum ZephlinkSDK_PortProtocol : uint32_t {
  ZephlinkSDK_PortProtocol_Tcp = 0,
  ZephlinkSDK_PortProtocol_Udp = 1,
};

/// One port rule.
struct ZephlinkSDK_ProtocolPortPair {
  ZephlinkSDK_PortProtocol protocol;
  uint16_t port;
  uint16_t portRangeEnd;  ///< 0 for the single port `port`
};

/// One downstream subnet. The address is text that nothing looks into.
struct ZephlinkSDK_Subnet {
  char address[ZephlinkSDK_AddressSize];
  uint8_t prefixLength;
};

/// Whether one adapter's connection is encrypted.
struct ZephlinkSDK_PerConnectionEncryption {
  char adapterID[ZephlinkSDK_AdapterTextSize];
  bool encrypted;
};

/// Whether one adapter's connection exposes the packets' DSCP marks.
struct ZephlinkSDK_PerConnectionDscpExpose {
  char adapterID[ZephlinkSDK_AdapterTextSize];
  bool exposed;
};

/// How many sockets one adapter uses side by side.
struct ZephlinkSDK_PerConnectionParallelSockets {
  char adapterID[ZephlinkSDK_AdapterTextSize];
  uint16_t sockets;
};

/// The settings of the tunnel as a whole.
struct ZephlinkSDK_SettingsResult : ZephlinkSDK_Result {
  bool jumboPackets;
  bool encrypted;
  bool allowChaChaEncryption;
  ZephlinkSDK_BondingMode bondingMode;
  bool startupConnect;
  ZephlinkSDK_TransportMode transportMode;
  uint16_t forwardedPortCount;
  ZephlinkSDK_ProtocolPortPair forwardedPorts[ZephlinkSDK_MaxForwardedPorts];
  uint16_t downstreamSubnetCount;
  ZephlinkSDK_Subnet downstreamSubnets[ZephlinkSDK_MaxDownstreamSubnets];
  bool perConnectionEncryptionEnabled;
  uint16_t perConnectionEncryptionCount;
  ZephlinkSDK_PerConnectionEncryption perConnectionEncryptionSettings[ZephlinkSDK_MaxPerConnectionSettings];
  uint16_t perConnectionDscpExposeCount;
  ZephlinkSDK_PerConnectionDscpExpose perConnectionDscpExpose[ZephlinkSDK_MaxPerConnectionSettings];
  uint16_t perConnectionParallelSocketCount;
  ZephlinkSDK_PerConnectionParallelSockets perConnectionParallelSockets[ZephlinkSDK_MaxPerConnectionSettings];
  double overflowThreshold;          ///< megabits per second
  double priorityOverflowThreshold;  ///< megabits per second
  bool packetAggregation;
  bool enableDefaultRoute;
  bool headerCompression;
  char language[3];
  bool enableAutomaticPriority;
  uint32_t ulpReportIntervalSeconds;
  uint32_t maxRedundant;           ///< connections
  uint32_t maximumConnectRetry;    ///< seconds
  uint32_t maximumTransportRetry;  ///< seconds
  char packetPoolSize[20];
  int32_t targetUploadConnections;
  int32_t targetDownloadConnections;
};

// ---- Adapters -----------------------------------------------------------------------------------------------------

/// When an adapter is used.
enum ZephlinkSDK_ConnectionPriority : uint32_t {
  ZephlinkSDK_ConnectionPriority_Always = 0,
  ZephlinkSDK_ConnectionPriority_Secondary = 1,
  ZephlinkSDK_ConnectionPriority_Backup = 2,
  ZephlinkSDK_ConnectionPriority_Never = 3,
  ZephlinkSDK_ConnectionPriority_Automatic = 4,
};

/// Whether an adapter carries one direction of the traffic.
enum ZephlinkSDK_ConnectionDirectionalMode : uint32_t {
  ZephlinkSDK_ConnectionDirectionalMode_On = 0,
  ZephlinkSDK_ConnectionDirectionalMode_StrictOff = 1,
  ZephlinkSDK_ConnectionDirectionalMode_BackupOff = 2,
};

/// The state of an adapter's connection.
enum ZephlinkSDK_AdapterState : uint32_t {
  ZephlinkSDK_AdapterState_Disconnected = 0,
  ZephlinkSDK_AdapterState_Connecting = 1,
  ZephlinkSDK_AdapterState_Connected = 2,
};

/// The kind of an adapter.
enum ZephlinkSDK_AdapterType : uint32_t {
  ZephlinkSDK_AdapterType_WiFi = 0,
  ZephlinkSDK_AdapterType_Ethernet = 1,
  ZephlinkSDK_AdapterType_Cellular = 2,
  ZephlinkSDK_AdapterType_Vpn = 3,
  ZephlinkSDK_AdapterType_Loopback = 4,
  ZephlinkSDK_AdapterType_Bluetooth = 5,
  ZephlinkSDK_AdapterType_NetworkShareClient = 6,
  ZephlinkSDK_AdapterType_NetworkShareHost = 7,
  ZephlinkSDK_AdapterType_Unknown = 8,
};

/// One network adapter. A rate or a limit that the daemon does not give is -1.
struct ZephlinkSDK_Adapter {
  char adapterID[ZephlinkSDK_AdapterTextSize];
  char name[ZephlinkSDK_AdapterTextSize];  ///< translated
  char description[ZephlinkSDK_AdapterTextSize];
  ZephlinkSDK_AdapterState state;
  ZephlinkSDK_AdapterType type;
  ZephlinkSDK_ConnectionPriority priority;
  char connectedNetworkName[ZephlinkSDK_AdapterTextSize];
  char connectedNetworkBSSID[ZephlinkSDK_AdapterTextSize];
  int64_t rateLimit;                               ///< bits per second
  int64_t usageMonthly;                            ///< bytes
  int64_t usageDaily;                              ///< bytes
  int64_t usageMonthlyLimit;                       ///< bytes
  int64_t usageMonthlyResetDay;                    ///< day of the month; 0 for the last 30 days
  int64_t usageDailyLimit;                         ///< bytes
  int64_t usageDailyBoost;                         ///< bytes
  int64_t overlimitRatelimit;                      ///< bits per second
  ZephlinkSDK_ConnectionPriority workingPriority;  ///< the priority in force
  char isp[ZephlinkSDK_AdapterTextSize];
  ZephlinkSDK_ConnectionDirectionalMode directionalUpload;
  ZephlinkSDK_ConnectionDirectionalMode directionalDownload;
};

/// All adapters, in the daemon's order.
struct ZephlinkSDK_AdaptersResult : ZephlinkSDK_Result {
  uint32_t adapterCount;
  ZephlinkSDK_Adapter adapters[ZephlinkSDK_MaxAdapters];
};

// ---- Live statistics ----------------------------------------------------------------------------------------------

/// One connection of one adapter.
struct ZephlinkSDK_ConnectionStatsEntry {
  int64_t inFlight;
  int64_t inFlightWindow;
  bool connected;
  bool sleeping;
  char adapterID[ZephlinkSDK_AdapterTextSize];
  char connectionID[ZephlinkSDK_AdapterTextSize];
  char localIp[ZephlinkSDK_AddressSize];
  double lossReceive;
  double lossSend;
  int64_t latencyMs;
  char privateIp[ZephlinkSDK_AddressSize];
  ZephlinkSDK_TransportMode protocol;
  uint32_t numberOfSockets;
  char remoteIp[ZephlinkSDK_AddressSize];
  int64_t totalBps;            ///< bits per second
  int64_t sendBps;             ///< bits per second
  int64_t receiveBps;          ///< bits per second
  double sendEstimateMbps;     ///< megabits per second
  double receiveEstimateMbps;  ///< megabits per second
  int32_t jitterMs;            ///< -1 when not measured
  float mos;                   ///< mean opinion score
  uint64_t sendBytes;
  uint64_t receiveBytes;
  bool congested;
};

/// The statistics of all connections at one moment.
struct ZephlinkSDK_ConnectionStatsResult : ZephlinkSDK_Result {
  uint64_t time;  ///< the daemon's time stamp, passed on unchanged
  uint16_t connectionCount;
  ZephlinkSDK_ConnectionStatsEntry connections[ZephlinkSDK_MaxConnections];
};

/// How well a stream runs.
enum ZephlinkSDK_StreamHealth : uint32_t {
  ZephlinkSDK_StreamHealth_Stopped = 0,
  ZephlinkSDK_StreamHealth_Poor = 1,
  ZephlinkSDK_StreamHealth_Good = 2,
};

/// One stream that the daemon tracks. Units of times and speeds are the daemon's.
struct ZephlinkSDK_StreamStatsEntry {
  bool active;
  uint64_t duration;
  uint64_t id;
  uint64_t groupId;
  uint64_t startTime;
  double uploadSpeed;
  double downloadSpeed;
  double averageUploadSpeed;
  double averageDownloadSpeed;
  uint64_t redundantModeSaves;
  uint64_t speedModeSaves;
  uint64_t failoverSaves;
  char name[50];
  ZephlinkSDK_StreamHealth health;
  char remoteIp[ZephlinkSDK_AddressSize];
  uint16_t remotePort;
  char protocol[32];
  char domain[256];
};

/// The statistics of all tracked streams.
struct ZephlinkSDK_StreamingStatsResult : ZephlinkSDK_Result {
  ZephlinkSDK_BondingMode bondingMode;
  uint32_t streamCount;
  ZephlinkSDK_StreamStatsEntry streams[ZephlinkSDK_MaxStreams];
  bool badLoss;
  bool badLatency;
  bool badCpu;
  bool badMemory;
};

// ---- Session statistics -------------------------------------------------------------------------------------------

/// The periods that have a name; any other number of hours is a period too.
enum ZephlinkSDK_Period : uint32_t {
  ZephlinkSDK_Period_Current = 0,
  ZephlinkSDK_Period_Day = 24,
  ZephlinkSDK_Period_Week = 168,
  ZephlinkSDK_Period_Month = 720,
  ZephlinkSDK_Period_Total = 4294967295,
};

/// The daemon's accounting over one period. Speeds and benefits are in megabits per second.
struct ZephlinkSDK_SessionStatsPeriod {
  uint32_t period;  ///< hours, see ZephlinkSDK_Period
  int64_t bytesReceived;
  int64_t bytesSent;
  int64_t encryptedBytesReceived;
  int64_t encryptedBytesSent;
  double maxDownloadSpeed;
  double maxUploadSpeed;
  int32_t daysSinceFirst;
  int64_t numFailovers;
  int64_t numSessions;
  int64_t retransBytes;
  int64_t periodStartTime;
  int64_t totalConnectedMinutes;
  double mbpsDownBenefit;  ///< all connections together over the fastest alone
  double mbpsUpBenefit;    ///< all connections together over the fastest alone
  uint64_t tunPacketsIn;
  uint64_t tunPacketsOut;
  uint64_t tunBytesIn;
  uint64_t tunBytesOut;
  uint64_t tunBufferWaits;
  uint64_t tunPacketWaits;
  uint64_t tunReadQueue;
  uint64_t tunDroppedIncoming;
  uint64_t handlerPacketsIn;
  uint64_t handlerPacketsOut;
  uint64_t handlerBytesIn;
  uint64_t handlerBytesOut;
  uint64_t handlerRetries;
  uint64_t captivePortalDetections;
  uint64_t captivePortalSuccesses;
  uint64_t totalFailoverSaves;
  uint64_t totalSpeedModeSaves;
  uint64_t totalRedundantModeSaves;
  uint64_t totalStreams;
  uint64_t uniqueSaves;
};

/// The accounting over the periods that were subscribed to.
struct ZephlinkSDK_SessionStatsResult : ZephlinkSDK_Result {
  uint8_t periodCount;
  ZephlinkSDK_SessionStatsPeriod periods[ZephlinkSDK_MaxSessionPeriods];
};

// ---- Privacy and captive portals ----------------------------------------------------------------------------------

/// The privacy switches and the DNS servers of the tunnel.
struct ZephlinkSDK_PrivacySettingsResult : ZephlinkSDK_Result {
  bool killswitch;
  bool dnsleak;  ///< protection against DNS leaks
  bool ipleak;   ///< protection against IP leaks
  uint16_t dnsAddressCount;
  char dnsAddresses[ZephlinkSDK_MaxDnsAddresses][ZephlinkSDK_AddressSize];
  bool doNotStoreCredentials;
  bool requestToDisableDoH;
  bool apiProtection;
};

/// The networks behind a captive portal, each an adapter's network as text.
struct ZephlinkSDK_CaptivePortalCheckResult : ZephlinkSDK_Result {
  uint32_t networkCount;
  char networks[ZephlinkSDK_MaxCaptiveNetworks][ZephlinkSDK_AdapterTextSize];
};

/// The adapter whose captive portal is being logged in to.
struct ZephlinkSDK_CaptivePortalLoginResult : ZephlinkSDK_Result {
  bool enabled;
  char adapterID[ZephlinkSDK_AdapterTextSize];
};

// ---- Rule lists: firewall, streaming, local proxy -----------------------------------------------------------------

/// The four rule lists that the three families have alike.
struct ZephlinkSDK_RuleLists {
  uint16_t domainCount;
  char domains[ZephlinkSDK_MaxRules][ZephlinkSDK_DomainSize];
  uint16_t ipv4Count;
  in_addr ipv4[ZephlinkSDK_MaxRules];
  uint16_t ipv6Count;
  in6_addr ipv6[ZephlinkSDK_MaxRules];
  uint16_t portCount;
  ZephlinkSDK_ProtocolPortPair ports[ZephlinkSDK_MaxRules];
};

/// What the firewall's rules mean.
enum ZephlinkSDK_FirewallMode : uint32_t {
  ZephlinkSDK_FirewallMode_Off = 0,
  ZephlinkSDK_FirewallMode_AllowList = 1,
  ZephlinkSDK_FirewallMode_DenyList = 2,
};

/// The field of the firewall that stands in front of its lists.
struct ZephlinkSDK_FirewallSwitches {
  ZephlinkSDK_FirewallMode mode;
};

/// The firewall: `mode`, then the lists.
struct ZephlinkSDK_FirewallSettingsResult : ZephlinkSDK_Result, ZephlinkSDK_FirewallSwitches, ZephlinkSDK_RuleLists {};

/// The traffic that the daemon treats as streaming.
struct ZephlinkSDK_StreamingSettingsResult : ZephlinkSDK_Result, ZephlinkSDK_RuleLists {};

/// What the local proxy's rules mean; numbered apart from ZephlinkSDK_FirewallMode, without an "off".
enum ZephlinkSDK_LocalProxyMatchMode : uint32_t {
  ZephlinkSDK_LocalProxyMatchMode_AllowList = 0,
  ZephlinkSDK_LocalProxyMatchMode_DenyList = 1,
};

/// One service of the local proxy's watch list.
struct ZephlinkSDK_LocalProxyService {
  char title[30];
  bool enabled;
  uint16_t watchedDomainCount;
  char watchedDomains[ZephlinkSDK_MaxServiceDomains][ZephlinkSDK_DomainSize];
  uint16_t proxiedDomainCount;
  char proxiedDomains[ZephlinkSDK_MaxServiceDomains][ZephlinkSDK_DomainSize];
};

/// The fields of the local proxy that stand in front of its lists.
struct ZephlinkSDK_LocalProxySwitches {
  bool enabled;
  bool watchlistEnabled;
  ZephlinkSDK_LocalProxyMatchMode matchMode;
};

/// The traffic that goes past the tunnel: the switches, the lists, then the services. About 130 KB.
struct ZephlinkSDK_LocalProxySettingsResult : ZephlinkSDK_Result,
                                              ZephlinkSDK_LocalProxySwitches,
                                              ZephlinkSDK_RuleLists {
  uint16_t serviceCount;
  ZephlinkSDK_LocalProxyService services[ZephlinkSDK_MaxServices];
};

// ---- Speed tests and disconnect reason ----------------------------------------------------------------------------

/// The kind of a test run.
enum ZephlinkSDK_SpeedTestType : uint32_t {
  ZephlinkSDK_SpeedTestType_Speed = 0,
  ZephlinkSDK_SpeedTestType_Streaming = 1,
};

/// One test run. Units of speeds, latency and jitter are the daemon's.
struct ZephlinkSDK_SpeedTestRun {
  int64_t time;  ///< seconds since the epoch; 0 when unknown
  char country[ZephlinkSDK_CountrySize];
  char city[ZephlinkSDK_CitySize];
  uint16_t numConnections;
  double downloadSpeed;
  double uploadSpeed;
  bool isError;  ///< the run failed; `errorMessage` says why, and the measurements mean nothing
  char errorMessage[ZephlinkSDK_ErrorMessageSize];
  ZephlinkSDK_SpeedTestType type;
  char resolution[6];  ///< this field and fps, jitter, loss: Streaming only
  uint16_t fps;
  uint16_t jitter;
  uint16_t latency;
  double loss;
};

/// Past test runs, or the one that has just ended.
struct ZephlinkSDK_SpeedTestResult : ZephlinkSDK_Result {
  uint16_t runCount;
  ZephlinkSDK_SpeedTestRun runs[ZephlinkSDK_MaxSpeedTestRuns];
};

/// Why a session ended.
enum ZephlinkSDK_DisconnectReason : uint32_t {
  ZephlinkSDK_DisconnectReason_Unknown = 0,
  ZephlinkSDK_DisconnectReason_Connectivity = 1,
  ZephlinkSDK_DisconnectReason_Airplane = 2,
  ZephlinkSDK_DisconnectReason_Reboot = 3,
  ZephlinkSDK_DisconnectReason_Update = 4,
  ZephlinkSDK_DisconnectReason_Crash = 5,
  ZephlinkSDK_DisconnectReason_Sleep = 6,
  ZephlinkSDK_DisconnectReason_UserInitiated = 7,
  ZephlinkSDK_DisconnectReason_Torrent = 8,
  ZephlinkSDK_DisconnectReason_ServiceStop = 9,
  ZephlinkSDK_DisconnectReason_StartTimeout = 10,
  ZephlinkSDK_DisconnectReason_InactiveTimeout = 11,
  ZephlinkSDK_DisconnectReason_SettingChangeReconnect = 12,
  ZephlinkSDK_DisconnectReason_DnsTimeout = 13,
  ZephlinkSDK_DisconnectReason_TunnelTimeout = 14,
  ZephlinkSDK_DisconnectReason_OverQuota = 15,
  ZephlinkSDK_DisconnectReason_SafeNetwork = 16,
  ZephlinkSDK_DisconnectReason_None = 17,
};

/// The end of the last session. The form of both times is the daemon's.
struct ZephlinkSDK_DisconnectEventResult : ZephlinkSDK_Result {
  ZephlinkSDK_DisconnectReason disconnectReason;
  int64_t sessionEnd;
  int64_t sessionLength;
};

// ---- Daemon logs --------------------------------------------------------------------------------------------------

/// How much the daemon logs.
enum ZephlinkSDK_DaemonLogLevel : uint32_t {
  ZephlinkSDK_DaemonLogLevel_Verbose = 0,
  ZephlinkSDK_DaemonLogLevel_Info = 1,
  ZephlinkSDK_DaemonLogLevel_Warn = 2,
  ZephlinkSDK_DaemonLogLevel_Error = 3,
};

/// The daemon's log files; also the argument of setDaemonLogSettings. Nothing checks the numbers.
struct ZephlinkSDK_DaemonLogSettings {
  int32_t fileSize;
  int32_t filesPerDaemon;
  int32_t totalFiles;
  ZephlinkSDK_DaemonLogLevel logLevel;
};

/// The log settings in force.
struct ZephlinkSDK_LogSettingsResult : ZephlinkSDK_Result {
  ZephlinkSDK_DaemonLogSettings daemon;
};

/// A problem report that was taken.
struct ZephlinkSDK_LogReportResult : ZephlinkSDK_Result {
  char ticketId[32];
};

// ---- Safe browsing ------------------------------------------------------------------------------------------------

/// How much the safe-browsing service logs; numbered apart from ZephlinkSDK_DaemonLogLevel.
enum ZephlinkSDK_SafeBrowsingLogLevel : uint32_t {
  ZephlinkSDK_SafeBrowsingLogLevel_Debug = 0,
  ZephlinkSDK_SafeBrowsingLogLevel_Info = 1,
  ZephlinkSDK_SafeBrowsingLogLevel_Error = 2,
  ZephlinkSDK_SafeBrowsingLogLevel_Trace = 3,
  ZephlinkSDK_SafeBrowsingLogLevel_Warning = 4,
};

/// How the current network is treated, whatever the service thinks of it.
enum ZephlinkSDK_SafeBrowsingSafeNetworkOverride : uint32_t {
  ZephlinkSDK_SafeBrowsingSafeNetworkOverride_None = 0,
  ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Unsafe = 1,
  ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Safe = 2,
};

/// The safe-browsing settings, or why the service could not connect (which is no error of the call).
struct ZephlinkSDK_SafeBrowsingResult : ZephlinkSDK_Result {
  bool connectFailed;    ///< the next two fields tell why; the settings are as they were
  int32_t connectError;  ///< the daemon's code
  char connectErrorMessage[ZephlinkSDK_ErrorMessageSize];
  bool initialized;
  bool configSet;
  bool enabled;
  ZephlinkSDK_SafeBrowsingLogLevel logLevel;
  ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride;
};

/// The counters of safe browsing.
struct ZephlinkSDK_SafeBrowsingStatsResult : ZephlinkSDK_Result {
  uint32_t min;
  uint32_t max;
  uint32_t average;
  uint32_t numErrors;
  uint32_t numBlocks;
  double failureRate;
  uint32_t numBlockResponses;
  uint64_t numLookups;
  uint64_t numPacketsFiltered;
};

/// A lookup that failed.
struct ZephlinkSDK_SafeBrowsingErrorResult : ZephlinkSDK_Result {
  int32_t error;  ///< the daemon's code
  char message[ZephlinkSDK_ErrorMessageSize];
  char host[ZephlinkSDK_SafeBrowsingHostSize];
};

/// A host that was blocked or redirected.
struct ZephlinkSDK_SafeBrowsingBlockResult : ZephlinkSDK_Result {
  bool redirected;
  char host[ZephlinkSDK_SafeBrowsingHostSize];
};

// ---- Network sharing ----------------------------------------------------------------------------------------------

/// What the daemon does when a peer asks to pair.
enum ZephlinkSDK_NetworkSharingPairRequestBehavior : uint32_t {
  ZephlinkSDK_NetworkSharingPairRequestBehavior_Ask = 0,
  ZephlinkSDK_NetworkSharingPairRequestBehavior_Accept = 1,
  ZephlinkSDK_NetworkSharingPairRequestBehavior_Reject = 2,
};

/// Which peers the daemon pairs with by itself.
enum ZephlinkSDK_NetworkSharingAutoPairBehavior : uint32_t {
  ZephlinkSDK_NetworkSharingAutoPairBehavior_Manual = 0,
  ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUser = 1,
  ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUserTeam = 2,
};

/// How far a peer has come.
enum ZephlinkSDK_PeerStatus : uint32_t {
  ZephlinkSDK_PeerStatus_Disconnected = 0,
  ZephlinkSDK_PeerStatus_Unauthenticated = 1,
  ZephlinkSDK_PeerStatus_Authenticated = 2,
};

/// The tunnel between this machine and a peer.
enum ZephlinkSDK_PeerTunnelStatus : uint32_t {
  ZephlinkSDK_PeerTunnelStatus_Inactive = 0,
  ZephlinkSDK_PeerTunnelStatus_Active = 1,
  ZephlinkSDK_PeerTunnelStatus_DisabledOnClient = 2,
  ZephlinkSDK_PeerTunnelStatus_DisabledOnHost = 3,
  ZephlinkSDK_PeerTunnelStatus_NoNetworks = 4,
  ZephlinkSDK_PeerTunnelStatus_Error = 5,
  ZephlinkSDK_PeerTunnelStatus_NotAuthenticated = 6,
  ZephlinkSDK_PeerTunnelStatus_NetworksOverLimit = 7,
  ZephlinkSDK_PeerTunnelStatus_HostNotConnected = 8,
  ZephlinkSDK_PeerTunnelStatus_Paused = 9,
};

/// The side of network sharing that a peer takes.
enum ZephlinkSDK_PeerRole : uint32_t {
  ZephlinkSDK_PeerRole_Client = 0,
  ZephlinkSDK_PeerRole_Host = 1,
};

/// The network-sharing settings of this machine.
struct ZephlinkSDK_NetworkSharingSettingsResult : ZephlinkSDK_Result {
  bool clientEnabled;
  bool hostEnabled;
  char hostConnectCode[129];  ///< what a client needs to connect to this host
  char displayName[ZephlinkSDK_PeerNameSize];
  ZephlinkSDK_NetworkSharingPairRequestBehavior pairRequestBehavior;
  bool sameUserAutoPair;  ///< autoPairBehavior is not Manual
  bool alwaysOnDiscovery;
  ZephlinkSDK_NetworkSharingAutoPairBehavior autoPairBehavior;
};

/// Whether the daemon looks for peers.
struct ZephlinkSDK_NetworkSharingDiscoveryResult : ZephlinkSDK_Result {
  bool discoveryActive;
};

/// A peer's state in one role; all zero for a role that it does not have. The unit of usage is the daemon's.
struct ZephlinkSDK_NetworkSharingPeerRole {
  ZephlinkSDK_PeerStatus peerStatus;
  ZephlinkSDK_PeerTunnelStatus tunnelStatus;
  bool allowed;
  uint64_t usageToday;
  uint64_t usageWeek;
  uint64_t usageMonth;
  uint64_t usageTotal;
};

/// One peer that the daemon knows.
struct ZephlinkSDK_NetworkSharingPeer {
  char uuid[ZephlinkSDK_UuidSize];
  bool autoReconnect;
  bool haveAuthToken;
  bool supportsHost;
  char displayName[ZephlinkSDK_PeerNameSize];
  ZephlinkSDK_NetworkSharingPeerRole peerAsClient;
  ZephlinkSDK_NetworkSharingPeerRole peerAsHost;
};

/// All peers that the daemon knows.
struct ZephlinkSDK_NetworkSharingAvailableSharesResult : ZephlinkSDK_Result {
  uint16_t peerCount;
  ZephlinkSDK_NetworkSharingPeer peers[ZephlinkSDK_MaxPeers];
};

/// The state of the connection to one peer.
struct ZephlinkSDK_NetworkSharingConnectionResult : ZephlinkSDK_Result {
  ZephlinkSDK_PeerRole role;  ///< of the peer
  char uuid[ZephlinkSDK_UuidSize];
  ZephlinkSDK_PeerStatus peerStatus;
  ZephlinkSDK_PeerTunnelStatus tunnelStatus;
};

/// A peer that has shown up, asks to pair, or was paired or unpaired.
struct ZephlinkSDK_NetworkSharingPairResult : ZephlinkSDK_Result {
  char uuid[ZephlinkSDK_UuidSize];
  char displayName[ZephlinkSDK_PeerNameSize];
  bool haveAuthToken;
};

// ---- What every record promises -----------------------------------------------------------------------------------

namespace zephlinksdk {

template <typename... Records>
inline constexpr bool kPlainRecords = (... && (std::is_trivial_v<Records> && std::is_aggregate_v<Records> &&
                                               std::is_base_of_v<ZephlinkSDK_Result, Records>));

static_assert(
    kPlainRecords<ZephlinkSDK_Result, ZephlinkSDK_StateResult, ZephlinkSDK_VersionResult, ZephlinkSDK_ConnectResult,
                  ZephlinkSDK_DirectoryResult, ZephlinkSDK_ServerSettingsResult, ZephlinkSDK_AccountingResult,
                  ZephlinkSDK_DirectorySettingsResult, ZephlinkSDK_SettingsResult, ZephlinkSDK_AdaptersResult,
                  ZephlinkSDK_ConnectionStatsResult, ZephlinkSDK_StreamingStatsResult, ZephlinkSDK_SessionStatsResult,
                  ZephlinkSDK_PrivacySettingsResult, ZephlinkSDK_CaptivePortalCheckResult,
                  ZephlinkSDK_CaptivePortalLoginResult, ZephlinkSDK_FirewallSettingsResult,
                  ZephlinkSDK_StreamingSettingsResult, ZephlinkSDK_LocalProxySettingsResult,
                  ZephlinkSDK_SpeedTestResult, ZephlinkSDK_DisconnectEventResult, ZephlinkSDK_LogSettingsResult,
                  ZephlinkSDK_LogReportResult, ZephlinkSDK_SafeBrowsingResult, ZephlinkSDK_SafeBrowsingStatsResult,
                  ZephlinkSDK_SafeBrowsingErrorResult, ZephlinkSDK_SafeBrowsingBlockResult,
                  ZephlinkSDK_NetworkSharingSettingsResult, ZephlinkSDK_NetworkSharingDiscoveryResult,
                  ZephlinkSDK_NetworkSharingAvailableSharesResult, ZephlinkSDK_NetworkSharingConnectionResult,
                  ZephlinkSDK_NetworkSharingPairResult>,
    "records are plain data that a host may copy byte by byte");

}  // namespace zephlinksdk
