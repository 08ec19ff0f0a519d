// The records that calls return and take as arguments, with their bounds and enumerations. C11 and C++20.
//
// Every record is plain data without pointers, copied by value, and all zero if initialized with `= {0}` (C++: `= {}`).
// Texts are UTF-8 if the daemon sends UTF-8, always terminated, and cut to whole characters that fit their array. In an
// array with a `...Count` field only the first `...Count` entries are valid.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "zephlinksdk/addresses.h"
#include "zephlinksdk/language.h"

// ---- Bounds -------------------------------------------------------------------------------------------------------

// Entries of the arrays in records.
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxServers, 1024);              ///< servers of a ZephlinkSDK_DirectoryResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxPublicIPs, 12);              ///< public addresses of a ZephlinkSDK_ServerInfo
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxServerDnsIPs, 3);            ///< DNS addresses of a ZephlinkSDK_ServerInfo
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxForwardedPorts, 20);         ///< forwarded ports of a ZephlinkSDK_SettingsResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxDownstreamSubnets, 10);      ///< downstream subnets of a ZephlinkSDK_SettingsResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxPerConnectionSettings, 25);  ///< settings by adapter of a ZephlinkSDK_SettingsResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxAdapters, 25);               ///< adapters of a ZephlinkSDK_AdaptersResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxConnections, 25);            ///< connections of a ZephlinkSDK_ConnectionStatsResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxStreams, 10);                ///< streams of a ZephlinkSDK_StreamingStatsResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxSessionPeriods, 5);          ///< periods of a ZephlinkSDK_SessionStatsResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxDnsAddresses, 3);            ///< DNS servers of a ZephlinkSDK_PrivacySettingsResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxCaptiveNetworks, 25);        ///< networks of a ZephlinkSDK_CaptivePortalCheckResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxRules, 100);                 ///< entries of each list of a ZephlinkSDK_RuleLists
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxServices, 100);              ///< services of a ZephlinkSDK_LocalProxySettingsResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxServiceDomains, 12);  ///< domains of each list of a ZephlinkSDK_LocalProxyService
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxSpeedTestRuns, 5);    ///< runs of a ZephlinkSDK_SpeedTestResult
ZEPHLINKSDK_BOUND(ZephlinkSDK_MaxPeers, 32);           ///< peers of a ZephlinkSDK_NetworkSharingAvailableSharesResult

// Sizes in bytes of text fields that several records share, including the terminating zero.
ZEPHLINKSDK_BOUND(ZephlinkSDK_AddressSize, 46);            ///< an address of IPv4 or IPv6
ZEPHLINKSDK_BOUND(ZephlinkSDK_AdapterTextSize, 100);       ///< a text about an adapter
ZEPHLINKSDK_BOUND(ZephlinkSDK_AppNameSize, 32);            ///< the name of a host application
ZEPHLINKSDK_BOUND(ZephlinkSDK_CitySize, 20);               ///< a city key
ZEPHLINKSDK_BOUND(ZephlinkSDK_CountrySize, 10);            ///< a country code
ZEPHLINKSDK_BOUND(ZephlinkSDK_DirectoryTextSize, 100);     ///< a text of the directory settings
ZEPHLINKSDK_BOUND(ZephlinkSDK_DomainSize, 50);             ///< a domain of a rule list
ZEPHLINKSDK_BOUND(ZephlinkSDK_ErrorMessageSize, 200);      ///< an error message
ZEPHLINKSDK_BOUND(ZephlinkSDK_PeerNameSize, 33);           ///< the display name of a peer
ZEPHLINKSDK_BOUND(ZephlinkSDK_SafeBrowsingHostSize, 253);  ///< a host name of safe browsing
ZEPHLINKSDK_BOUND(ZephlinkSDK_UuidSize, 37);               ///< the UUID of a peer

// ---- Start and common head ----------------------------------------------------------------------------------------

/// The configuration of an object; ZephlinkSDK_defaultConfig fills in the defaults.
typedef struct ZephlinkSDK_Config {
  char appName[ZephlinkSDK_AppNameSize];  ///< announced to the daemon; empty announces nothing
  char address[ZephlinkSDK_AddressSize];  ///< address of the daemon, as text
  uint16_t port;                          ///< TCP port of the daemon
} ZephlinkSDK_Config;

/// The fields of a ZephlinkSDK_Result. Not for use in a host.
// clang-format off
#define ZEPHLINKSDK_HEAD_FIELDS \
  /** Whether the call failed. Test this, never `errorCode`: the immediate record of an asynchronous call has a code \
      that is not an error. */ \
  bool hasError; \
  /** A ZephlinkSDK_Error, or a code from the daemon. */ \
  uint32_t errorCode; \
  /** A text, usually more specific than ZephlinkSDK_errorText of the code. */ \
  char errorMessage[ZephlinkSDK_ErrorMessageSize]; \
  /** The argument for ZephlinkSDK_removeListener. 0 is a valid handle. */ \
  uint64_t handle;
// clang-format on

/// The head of every record, and the whole record of a call that the daemon does not answer.
typedef struct ZephlinkSDK_Result {
  ZEPHLINKSDK_HEAD_FIELDS
} ZephlinkSDK_Result;

/// The first member of every other record: the fields of a ZephlinkSDK_Result, also accessible together as `head`.
// clang-format off
#define ZEPHLINKSDK_HEAD \
  ZEPHLINKSDK_EXTENSION union { \
    /** The next four fields together. */ \
    ZephlinkSDK_Result head; \
    struct { ZEPHLINKSDK_HEAD_FIELDS }; \
  }
// clang-format on

// ---- State and version --------------------------------------------------------------------------------------------

/// The daemon's state.
enum ZephlinkSDK_State ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_State_LoggedOut = 0,       ///< no account is signed in
  ZephlinkSDK_State_LoggingIn = 1,       ///< signing in
  ZephlinkSDK_State_LoggedIn = 2,        ///< signed in, without a tunnel
  ZephlinkSDK_State_AutoConnecting = 3,  ///< connecting to a server of the daemon's choice
  ZephlinkSDK_State_Connecting = 4,      ///< connecting
  ZephlinkSDK_State_Disconnecting = 5,   ///< ending the tunnel
  ZephlinkSDK_State_Connected = 6,       ///< signed in, with a tunnel
  ZephlinkSDK_State_OverLimit = 7,       ///< signed in, but the account's data allowance is used up
  ZephlinkSDK_State_Unknown = 8,         ///< any other state of the daemon
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_State);

/// The state of the daemon.
typedef struct ZephlinkSDK_StateResult {
  ZEPHLINKSDK_HEAD;
  uint32_t state;  ///< a ZephlinkSDK_State; larger numbers of the daemon are stored as Unknown
} ZephlinkSDK_StateResult;

/// The version of the daemon.
typedef struct ZephlinkSDK_VersionResult {
  ZEPHLINKSDK_HEAD;
  uint16_t maj;    ///< major version
  uint16_t min;    ///< minor version
  uint16_t bug;    ///< patch level
  uint16_t build;  ///< build number
} ZephlinkSDK_VersionResult;

// ---- Servers and connecting ---------------------------------------------------------------------------------------

/// How the daemon chooses a server.
enum ZephlinkSDK_ConnectMethod ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_ConnectMethod_Closest = 0,     ///< the closest server
  ZephlinkSDK_ConnectMethod_Private = 1,     ///< a private server
  ZephlinkSDK_ConnectMethod_Public = 2,      ///< a public server
  ZephlinkSDK_ConnectMethod_Last = 3,        ///< the server of the last session
  ZephlinkSDK_ConnectMethod_P2P = 4,         ///< a server that allows torrents
  ZephlinkSDK_ConnectMethod_Auto = 5,        ///< the daemon's own choice
  ZephlinkSDK_ConnectMethod_Country = 6,     ///< a server of a country or city
  ZephlinkSDK_ConnectMethod_Exact = 7,       ///< exactly the given server
  ZephlinkSDK_ConnectMethod_Proxy = 8,       ///< the proxy
  ZephlinkSDK_ConnectMethod_IgnoreLast = 9,  ///< any server except that of the last session
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_ConnectMethod);

/// One server of the directory.
typedef struct ZephlinkSDK_ServerInfo {
  char country[ZephlinkSDK_CountrySize];  ///< country code, without the prefix "private"
  char city[ZephlinkSDK_CitySize];        ///< city key, see ZephlinkSDK_cityName
  int32_t num;                            ///< number of the server within its city
  bool isPrivate;                         ///< a server for one account or team
  bool isPremium;                         ///< always equal to `isPrivate`
  bool torrentAllowed;                    ///< whether torrents may use it
  uint16_t publicIPCount;                 ///< entries in `publicIP`
  /// Public addresses, as text.
  char publicIP[ZephlinkSDK_MaxPublicIPs][ZephlinkSDK_AddressSize];
  uint16_t dnsIPCount;  ///< entries in `dnsIP`
  /// Addresses of its DNS servers, as text.
  char dnsIP[ZephlinkSDK_MaxServerDnsIPs][ZephlinkSDK_AddressSize];
  char dataCenter[20];  ///< name of the data center
} ZephlinkSDK_ServerInfo;

/// The server that the daemon is connected to.
typedef struct ZephlinkSDK_ConnectResult {
  ZEPHLINKSDK_HEAD;
  ZephlinkSDK_ServerInfo server;  ///< the server; empty without a tunnel
} ZephlinkSDK_ConnectResult;

/// All servers, in the daemon's order. About 750 KB: provide enough stack, and avoid copies.
typedef struct ZephlinkSDK_DirectoryResult {
  ZEPHLINKSDK_HEAD;
  uint32_t count;                                          ///< entries in `servers`
  ZephlinkSDK_ServerInfo servers[ZephlinkSDK_MaxServers];  ///< the servers
} ZephlinkSDK_DirectoryResult;

/// The server that the daemon connects to by default. The last three fields are used with Country and Exact only.
typedef struct ZephlinkSDK_ServerSettingsResult {
  ZEPHLINKSDK_HEAD;
  ZephlinkSDK_ConnectMethod connectMethod;  ///< how the daemon chooses
  char country[ZephlinkSDK_CountrySize];    ///< country code, with the prefix "private" for a private server
  char city[ZephlinkSDK_CitySize];          ///< city key; empty for any
  int32_t num;                              ///< 0 for any
} ZephlinkSDK_ServerSettingsResult;

// ---- Account and directory settings -------------------------------------------------------------------------------

/// How an account is paid.
enum ZephlinkSDK_PaymentType ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_PaymentType_Free = 0,     ///< free of charge
  ZephlinkSDK_PaymentType_Monthly = 1,  ///< paid monthly
  ZephlinkSDK_PaymentType_Yearly = 2,   ///< paid yearly
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_PaymentType);

/// The action that the account needs next.
enum ZephlinkSDK_AccountAction ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_AccountAction_None = 0,             ///< nothing
  ZephlinkSDK_AccountAction_RetryLogin = 1,       ///< sign in again
  ZephlinkSDK_AccountAction_ConnectInternet = 2,  ///< connect this machine to the internet, then sign in again
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_AccountAction);

/// A calendar date, with the fields of std::tm; all zero if there is no date.
typedef struct ZephlinkSDK_Date {
  int32_t year;   ///< years since 1900
  int32_t month;  ///< month, from 0
  int32_t day;    ///< day of the month, from 1
} ZephlinkSDK_Date;

/// The account's payment and usage figures.
typedef struct ZephlinkSDK_AccountingResult {
  ZEPHLINKSDK_HEAD;
  char email[250];                      ///< name of the account
  bool isAutoAccount;                   ///< the device's automatic account
  int64_t bytesAvailable;               ///< data available in this period, in bytes
  int64_t bytesUsed;                    ///< data used in this period, in bytes
  bool isTeam;                          ///< a team's account
  int32_t minutesAvailable;             ///< time available in this period, in minutes
  int32_t minutesUsed;                  ///< time used in this period, in minutes
  ZephlinkSDK_PaymentType paymentType;  ///< how the account is paid
  ZephlinkSDK_Date dataPeriodEnd;       ///< last day of this period
  ZephlinkSDK_AccountAction action;     ///< the action that the account needs next
} ZephlinkSDK_AccountingResult;

/// The location of the daemon's directory service.
typedef struct ZephlinkSDK_DirectorySettingsResult {
  ZEPHLINKSDK_HEAD;
  char domain[ZephlinkSDK_DirectoryTextSize];      ///< domain of the service
  bool enableEsni;                                 ///< whether the daemon uses ESNI to reach it
  char gatewayUri[ZephlinkSDK_DirectoryTextSize];  ///< URI of its gateway
} ZephlinkSDK_DirectorySettingsResult;

// ---- Connection settings ------------------------------------------------------------------------------------------

/// How the tunnel uses several adapters at once.
enum ZephlinkSDK_BondingMode ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_BondingMode_Speed = 0,      ///< combines the speed of the adapters
  ZephlinkSDK_BondingMode_Redundant = 1,  ///< sends the same packets over several adapters
  ZephlinkSDK_BondingMode_Streaming = 2,  ///< favors streams
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_BondingMode);

/// The transport of the tunnel. Proxy and Share occur in statistics only and cannot be set.
enum ZephlinkSDK_TransportMode ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_TransportMode_Tcp = 0,       ///< TCP
  ZephlinkSDK_TransportMode_Udp = 1,       ///< UDP
  ZephlinkSDK_TransportMode_Auto = 2,      ///< the daemon's own choice
  ZephlinkSDK_TransportMode_Https = 3,     ///< HTTPS
  ZephlinkSDK_TransportMode_TcpMulti = 4,  ///< TCP over several connections
  ZephlinkSDK_TransportMode_Proxy = 5,     ///< the proxy; statistics only
  ZephlinkSDK_TransportMode_Share = 6,     ///< network sharing; statistics only
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_TransportMode);

/// The protocol of a port rule.
enum ZephlinkSDK_PortProtocol ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_PortProtocol_Tcp = 0,  ///< TCP
  ZephlinkSDK_PortProtocol_Udp = 1,  ///< UDP
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_PortProtocol);

/// One port rule.
typedef struct ZephlinkSDK_ProtocolPortPair {
  ZephlinkSDK_PortProtocol protocol;  ///< protocol of the port
  uint16_t port;                      ///< the port, or the first of a range
  uint16_t portRangeEnd;              ///< last port of the range; 0 for the single port `port`
} ZephlinkSDK_ProtocolPortPair;

/// One downstream subnet. The address is not checked.
typedef struct ZephlinkSDK_Subnet {
  char address[ZephlinkSDK_AddressSize];  ///< network address, as text
  uint8_t prefixLength;                   ///< length of the network prefix, in bits
} ZephlinkSDK_Subnet;

/// The encryption setting of one adapter.
typedef struct ZephlinkSDK_PerConnectionEncryption {
  char adapterID[ZephlinkSDK_AdapterTextSize];  ///< `adapterID` of a ZephlinkSDK_Adapter
  bool encrypted;                               ///< whether it is encrypted
} ZephlinkSDK_PerConnectionEncryption;

/// The DSCP setting of one adapter.
typedef struct ZephlinkSDK_PerConnectionDscpExpose {
  char adapterID[ZephlinkSDK_AdapterTextSize];  ///< `adapterID` of a ZephlinkSDK_Adapter
  bool exposed;                                 ///< whether the packets' DSCP marks are exposed
} ZephlinkSDK_PerConnectionDscpExpose;

/// The number of parallel sockets of one adapter.
typedef struct ZephlinkSDK_PerConnectionParallelSockets {
  char adapterID[ZephlinkSDK_AdapterTextSize];  ///< `adapterID` of a ZephlinkSDK_Adapter
  uint16_t sockets;                             ///< number of sockets
} ZephlinkSDK_PerConnectionParallelSockets;

/// The settings of the whole tunnel.
typedef struct ZephlinkSDK_SettingsResult {
  ZEPHLINKSDK_HEAD;
  bool jumboPackets;                        ///< jumbo packets
  bool encrypted;                           ///< encryption of the whole tunnel
  bool allowChaChaEncryption;               ///< whether the daemon may use ChaCha encryption
  ZephlinkSDK_BondingMode bondingMode;      ///< how the tunnel uses several adapters
  bool startupConnect;                      ///< connect when the daemon starts
  ZephlinkSDK_TransportMode transportMode;  ///< the transport of the tunnel; never Proxy or Share
  uint16_t forwardedPortCount;              ///< entries in `forwardedPorts`
  /// Ports forwarded to this machine; no ranges.
  ZephlinkSDK_ProtocolPortPair forwardedPorts[ZephlinkSDK_MaxForwardedPorts];
  uint16_t downstreamSubnetCount;  ///< entries in `downstreamSubnets`
  /// Subnets reached through this machine.
  ZephlinkSDK_Subnet downstreamSubnets[ZephlinkSDK_MaxDownstreamSubnets];
  bool perConnectionEncryptionEnabled;    ///< whether the next list applies; if false, the list is empty
  uint16_t perConnectionEncryptionCount;  ///< entries in `perConnectionEncryptionSettings`
  /// Encryption by adapter, ordered by adapter ID.
  ZephlinkSDK_PerConnectionEncryption perConnectionEncryptionSettings[ZephlinkSDK_MaxPerConnectionSettings];
  uint16_t perConnectionDscpExposeCount;  ///< entries in `perConnectionDscpExpose`
  /// DSCP marks by adapter, ordered by adapter ID.
  ZephlinkSDK_PerConnectionDscpExpose perConnectionDscpExpose[ZephlinkSDK_MaxPerConnectionSettings];
  uint16_t perConnectionParallelSocketCount;  ///< entries in `perConnectionParallelSockets`
  /// Sockets by adapter, ordered by adapter ID.
  ZephlinkSDK_PerConnectionParallelSockets perConnectionParallelSockets[ZephlinkSDK_MaxPerConnectionSettings];
  double overflowThreshold;           ///< megabits per second
  double priorityOverflowThreshold;   ///< megabits per second
  bool packetAggregation;             ///< packet aggregation
  bool enableDefaultRoute;            ///< the tunnel becomes the machine's default route
  bool headerCompression;             ///< header compression
  char language[3];                   ///< two-letter code of the daemon's language
  bool enableAutomaticPriority;       ///< the daemon changes priorities automatically
  uint32_t ulpReportIntervalSeconds;  ///< interval of the daemon's ULP reports
  uint32_t maxRedundant;              ///< largest number of connections that carry the same packet
  uint32_t maximumConnectRetry;       ///< retry limit for connecting, in seconds
  uint32_t maximumTransportRetry;     ///< retry limit for a transport, in seconds
  char packetPoolSize[20];            ///< size of the packet pool; the daemon defines the text
  int32_t targetUploadConnections;    ///< target number of connections for uploads; the daemon defines its meaning
  int32_t targetDownloadConnections;  ///< target number of connections for downloads
} ZephlinkSDK_SettingsResult;

// ---- Adapters -----------------------------------------------------------------------------------------------------

/// When an adapter is used.
enum ZephlinkSDK_ConnectionPriority ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_ConnectionPriority_Always = 0,     ///< always used
  ZephlinkSDK_ConnectionPriority_Secondary = 1,  ///< used when the others are slower than the overflow threshold
  ZephlinkSDK_ConnectionPriority_Backup = 2,     ///< used when no other is connected
  ZephlinkSDK_ConnectionPriority_Never = 3,      ///< never used
  ZephlinkSDK_ConnectionPriority_Automatic = 4,  ///< chosen by the daemon, see `workingPriority`
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_ConnectionPriority);

/// Whether an adapter carries one direction of the traffic.
enum ZephlinkSDK_ConnectionDirectionalMode ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_ConnectionDirectionalMode_On = 0,         ///< carries it
  ZephlinkSDK_ConnectionDirectionalMode_StrictOff = 1,  ///< never carries it
  ZephlinkSDK_ConnectionDirectionalMode_BackupOff = 2,  ///< carries it as a backup only
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_ConnectionDirectionalMode);

/// The state of an adapter's connection.
enum ZephlinkSDK_AdapterState ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_AdapterState_Disconnected = 0,  ///< not connected
  ZephlinkSDK_AdapterState_Connecting = 1,    ///< connecting
  ZephlinkSDK_AdapterState_Connected = 2,     ///< connected
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_AdapterState);

/// The type of an adapter.
enum ZephlinkSDK_AdapterType ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_AdapterType_WiFi = 0,                ///< Wi-Fi
  ZephlinkSDK_AdapterType_Ethernet = 1,            ///< Ethernet
  ZephlinkSDK_AdapterType_Cellular = 2,            ///< a cellular modem
  ZephlinkSDK_AdapterType_Vpn = 3,                 ///< another tunnel
  ZephlinkSDK_AdapterType_Loopback = 4,            ///< the loopback interface
  ZephlinkSDK_AdapterType_Bluetooth = 5,           ///< Bluetooth
  ZephlinkSDK_AdapterType_NetworkShareClient = 6,  ///< network sharing, the client's side
  ZephlinkSDK_AdapterType_NetworkShareHost = 7,    ///< network sharing, the host's side
  ZephlinkSDK_AdapterType_Unknown = 8,             ///< any other type
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_AdapterType);

/// One network adapter. Rates and limits that the daemon omits are -1.
typedef struct ZephlinkSDK_Adapter {
  char adapterID[ZephlinkSDK_AdapterTextSize];                ///< identifies the adapter in calls and reports
  char name[ZephlinkSDK_AdapterTextSize];                     ///< translated
  char description[ZephlinkSDK_AdapterTextSize];              ///< the system's description
  ZephlinkSDK_AdapterState state;                             ///< state of its connection
  ZephlinkSDK_AdapterType type;                               ///< its type
  ZephlinkSDK_ConnectionPriority priority;                    ///< the priority that was set
  char connectedNetworkName[ZephlinkSDK_AdapterTextSize];     ///< name of its network (SSID); empty without one
  char connectedNetworkBSSID[ZephlinkSDK_AdapterTextSize];    ///< BSSID of its network; empty without one
  int64_t rateLimit;                                          ///< in bits per second
  int64_t usageMonthly;                                       ///< in bytes
  int64_t usageDaily;                                         ///< in bytes
  int64_t usageMonthlyLimit;                                  ///< in bytes
  int64_t usageMonthlyResetDay;                               ///< day of the month; 0 for the last 30 days
  int64_t usageDailyLimit;                                    ///< in bytes
  int64_t usageDailyBoost;                                    ///< in bytes
  int64_t overlimitRatelimit;                                 ///< rate over the data limit, in bits per second
  ZephlinkSDK_ConnectionPriority workingPriority;             ///< the priority that applies now
  char isp[ZephlinkSDK_AdapterTextSize];                      ///< name of its internet provider
  ZephlinkSDK_ConnectionDirectionalMode directionalUpload;    ///< whether it carries uploads
  ZephlinkSDK_ConnectionDirectionalMode directionalDownload;  ///< whether it carries downloads
} ZephlinkSDK_Adapter;

/// All adapters, in the daemon's order.
typedef struct ZephlinkSDK_AdaptersResult {
  ZEPHLINKSDK_HEAD;
  uint32_t adapterCount;                                  ///< entries in `adapters`
  ZephlinkSDK_Adapter adapters[ZephlinkSDK_MaxAdapters];  ///< the adapters
} ZephlinkSDK_AdaptersResult;

// ---- Live statistics ----------------------------------------------------------------------------------------------

/// One connection of one adapter.
typedef struct ZephlinkSDK_ConnectionStatsEntry {
  int64_t inFlight;                                ///< bytes sent but not yet acknowledged
  int64_t inFlightWindow;                          ///< limit of `inFlight`, in bytes
  bool connected;                                  ///< whether it is connected
  bool sleeping;                                   ///< connected, but not used now
  char adapterID[ZephlinkSDK_AdapterTextSize];     ///< `adapterID` of its ZephlinkSDK_Adapter
  char connectionID[ZephlinkSDK_AdapterTextSize];  ///< identifies the connection
  char localIp[ZephlinkSDK_AddressSize];           ///< this machine's address, as text
  double lossReceive;                              ///< loss of received packets; the daemon defines the scale
  double lossSend;                                 ///< loss of sent packets; the daemon defines the scale
  int64_t latencyMs;                               ///< in milliseconds
  char privateIp[ZephlinkSDK_AddressSize];         ///< address within the tunnel, as text
  ZephlinkSDK_TransportMode protocol;              ///< transport of the connection
  uint32_t numberOfSockets;                        ///< number of parallel sockets
  char remoteIp[ZephlinkSDK_AddressSize];          ///< the server's address, as text
  int64_t totalBps;                                ///< in bits per second
  int64_t sendBps;                                 ///< in bits per second
  int64_t receiveBps;                              ///< in bits per second
  double sendEstimateMbps;                         ///< in megabits per second
  double receiveEstimateMbps;                      ///< in megabits per second
  int32_t jitterMs;                                ///< in milliseconds; -1 if not measured
  float mos;                                       ///< mean opinion score
  uint64_t sendBytes;                              ///< bytes sent
  uint64_t receiveBytes;                           ///< bytes received
  bool congested;                                  ///< whether it is congested
} ZephlinkSDK_ConnectionStatsEntry;

/// The statistics of all connections at one moment.
typedef struct ZephlinkSDK_ConnectionStatsResult {
  ZEPHLINKSDK_HEAD;
  uint64_t time;             ///< the daemon's time stamp, unchanged
  uint16_t connectionCount;  ///< entries in `connections`
  /// The connections.
  ZephlinkSDK_ConnectionStatsEntry connections[ZephlinkSDK_MaxConnections];
} ZephlinkSDK_ConnectionStatsResult;

/// The quality of a stream.
enum ZephlinkSDK_StreamHealth ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_StreamHealth_Stopped = 0,  ///< stopped, or an unlisted value
  ZephlinkSDK_StreamHealth_Poor = 1,     ///< poor
  ZephlinkSDK_StreamHealth_Good = 2,     ///< good
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_StreamHealth);

/// One stream that the daemon tracks. The daemon defines the units of times and speeds.
typedef struct ZephlinkSDK_StreamStatsEntry {
  bool active;                             ///< whether the stream is running now
  uint64_t duration;                       ///< how long the stream has been running
  uint64_t id;                             ///< identifies the stream
  uint64_t groupId;                        ///< identifies the group of the stream
  uint64_t startTime;                      ///< when the stream started
  double uploadSpeed;                      ///< current upload speed
  double downloadSpeed;                    ///< current download speed
  double averageUploadSpeed;               ///< mean upload speed
  double averageDownloadSpeed;             ///< mean download speed
  uint64_t redundantModeSaves;             ///< how often redundant mode saved the stream
  uint64_t speedModeSaves;                 ///< how often speed mode saved the stream
  uint64_t failoverSaves;                  ///< how often a failover saved the stream
  char name[50];                           ///< name of the stream or its service
  ZephlinkSDK_StreamHealth health;         ///< quality of the stream
  char remoteIp[ZephlinkSDK_AddressSize];  ///< remote address, as text
  uint16_t remotePort;                     ///< remote port
  char protocol[32];                       ///< protocol; the daemon defines the text
  char domain[256];                        ///< remote host name
} ZephlinkSDK_StreamStatsEntry;

/// The statistics of all tracked streams.
typedef struct ZephlinkSDK_StreamingStatsResult {
  ZEPHLINKSDK_HEAD;
  ZephlinkSDK_BondingMode bondingMode;                           ///< the current bonding mode
  uint32_t streamCount;                                          ///< entries in `streams`
  ZephlinkSDK_StreamStatsEntry streams[ZephlinkSDK_MaxStreams];  ///< the streams
  bool badLoss;                                                  ///< packet loss impairs the streams
  bool badLatency;                                               ///< latency impairs the streams
  bool badCpu;                                                   ///< CPU load impairs the streams
  bool badMemory;                                                ///< memory shortage impairs the streams
} ZephlinkSDK_StreamingStatsResult;

// ---- Session statistics -------------------------------------------------------------------------------------------

/// The named periods. Any other number of hours is a valid period too.
enum ZephlinkSDK_Period ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_Period_Current = 0,  ///< the current session
  ZephlinkSDK_Period_Day = 24,     ///< the last day
  ZephlinkSDK_Period_Week = 168,   ///< the last 7 days
  ZephlinkSDK_Period_Month = 720,  ///< the last 30 days
#ifdef __cplusplus
  ZephlinkSDK_Period_Total = 4294967295,  ///< everything that the daemon has counted
#endif
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_Period);

#ifndef __cplusplus
// In C an enumerator is an int, which cannot have this value.
#define ZephlinkSDK_Period_Total ((ZephlinkSDK_Period)UINT32_MAX)
#endif

/// The daemon's accounting over one period. Speeds and benefits are in megabits per second.
typedef struct ZephlinkSDK_SessionStatsPeriod {
  uint32_t period;                   ///< hours, see ZephlinkSDK_Period
  int64_t bytesReceived;             ///< bytes received
  int64_t bytesSent;                 ///< bytes sent
  int64_t encryptedBytesReceived;    ///< encrypted bytes received
  int64_t encryptedBytesSent;        ///< encrypted bytes sent
  double maxDownloadSpeed;           ///< highest download speed
  double maxUploadSpeed;             ///< highest upload speed
  int32_t daysSinceFirst;            ///< days since the first session
  int64_t numFailovers;              ///< how often another adapter took over
  int64_t numSessions;               ///< sessions
  int64_t retransBytes;              ///< bytes retransmitted
  int64_t periodStartTime;           ///< start of the period; the daemon defines the format
  int64_t totalConnectedMinutes;     ///< minutes with a tunnel
  double mbpsDownBenefit;            ///< gain of all connections together over the fastest alone
  double mbpsUpBenefit;              ///< gain of all connections together over the fastest alone
  uint64_t tunPacketsIn;             ///< packets into the tunnel's interface
  uint64_t tunPacketsOut;            ///< packets out of the tunnel's interface
  uint64_t tunBytesIn;               ///< bytes into the tunnel's interface
  uint64_t tunBytesOut;              ///< bytes out of the tunnel's interface
  uint64_t tunBufferWaits;           ///< waits for a buffer
  uint64_t tunPacketWaits;           ///< waits for a packet
  uint64_t tunReadQueue;             ///< the read queue; the daemon defines the unit
  uint64_t tunDroppedIncoming;       ///< incoming packets dropped
  uint64_t handlerPacketsIn;         ///< packets into the packet handler
  uint64_t handlerPacketsOut;        ///< packets out of the packet handler
  uint64_t handlerBytesIn;           ///< bytes into the packet handler
  uint64_t handlerBytesOut;          ///< bytes out of the packet handler
  uint64_t handlerRetries;           ///< retries of the packet handler
  uint64_t captivePortalDetections;  ///< captive portals found
  uint64_t captivePortalSuccesses;   ///< captive portals passed
  uint64_t totalFailoverSaves;       ///< streams saved by a failover
  uint64_t totalSpeedModeSaves;      ///< streams saved by speed mode
  uint64_t totalRedundantModeSaves;  ///< streams saved by redundant mode
  uint64_t totalStreams;             ///< streams
  uint64_t uniqueSaves;              ///< saves, as the daemon counts unique ones
} ZephlinkSDK_SessionStatsPeriod;

/// The accounting over the subscribed periods.
typedef struct ZephlinkSDK_SessionStatsResult {
  ZEPHLINKSDK_HEAD;
  uint8_t periodCount;  ///< entries in `periods`
  /// The periods, ordered by their number of hours as text.
  ZephlinkSDK_SessionStatsPeriod periods[ZephlinkSDK_MaxSessionPeriods];
} ZephlinkSDK_SessionStatsResult;

// ---- Privacy and captive portals ----------------------------------------------------------------------------------

/// The privacy switches and the DNS servers of the tunnel.
typedef struct ZephlinkSDK_PrivacySettingsResult {
  ZEPHLINKSDK_HEAD;
  bool killswitch;           ///< blocks all other traffic while the tunnel is down
  bool dnsleak;              ///< protection against DNS leaks
  bool ipleak;               ///< protection against IP leaks
  uint16_t dnsAddressCount;  ///< entries in `dnsAddresses`
  /// DNS servers of the tunnel, as text.
  char dnsAddresses[ZephlinkSDK_MaxDnsAddresses][ZephlinkSDK_AddressSize];
  bool doNotStoreCredentials;  ///< the daemon does not store the account's credentials
  bool requestToDisableDoH;    ///< programs are asked not to use DNS over HTTPS
  bool apiProtection;          ///< protection of the daemon's API
} ZephlinkSDK_PrivacySettingsResult;

/// The networks that have a captive portal, each an adapter's network as text.
typedef struct ZephlinkSDK_CaptivePortalCheckResult {
  ZEPHLINKSDK_HEAD;
  uint32_t networkCount;  ///< entries in `networks`
  /// The networks.
  char networks[ZephlinkSDK_MaxCaptiveNetworks][ZephlinkSDK_AdapterTextSize];
} ZephlinkSDK_CaptivePortalCheckResult;

/// The adapter in login mode for its captive portal.
typedef struct ZephlinkSDK_CaptivePortalLoginResult {
  ZEPHLINKSDK_HEAD;
  bool enabled;                                 ///< whether the login mode is on
  char adapterID[ZephlinkSDK_AdapterTextSize];  ///< `adapterID` of its ZephlinkSDK_Adapter; empty if there is no
                                                ///< adapter
} ZephlinkSDK_CaptivePortalLoginResult;

// ---- Rule lists: firewall, streaming, local proxy -----------------------------------------------------------------

/// The fields of a ZephlinkSDK_RuleLists. Not for use in a host.
// clang-format off
#define ZEPHLINKSDK_RULE_LIST_FIELDS \
  /** Entries in `domains`. */ \
  uint16_t domainCount; \
  /** Domains. */ \
  char domains[ZephlinkSDK_MaxRules][ZephlinkSDK_DomainSize]; \
  /** Entries in `ipv4`. */ \
  uint16_t ipv4Count; \
  /** IPv4 addresses, in network byte order. */ \
  struct in_addr ipv4[ZephlinkSDK_MaxRules]; \
  /** Entries in `ipv6`. */ \
  uint16_t ipv6Count; \
  /** IPv6 addresses, in network byte order. */ \
  struct in6_addr ipv6[ZephlinkSDK_MaxRules]; \
  /** Entries in `ports`. */ \
  uint16_t portCount; \
  /** Ports and ranges of ports. */ \
  ZephlinkSDK_ProtocolPortPair ports[ZephlinkSDK_MaxRules];
// clang-format on

/// The four rule lists of the firewall, streaming and the local proxy, each with its number of entries.
typedef struct ZephlinkSDK_RuleLists {
  ZEPHLINKSDK_RULE_LIST_FIELDS
} ZephlinkSDK_RuleLists;

/// The rule lists of a record: the fields of a ZephlinkSDK_RuleLists, also accessible together as `lists`.
// clang-format off
#define ZEPHLINKSDK_RULE_LISTS \
  ZEPHLINKSDK_EXTENSION union { \
    /** The next eight fields together. */ \
    ZephlinkSDK_RuleLists lists; \
    struct { ZEPHLINKSDK_RULE_LIST_FIELDS }; \
  }
// clang-format on

/// The effect of the firewall's rules.
enum ZephlinkSDK_FirewallMode ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_FirewallMode_Off = 0,        ///< no effect: the firewall is off
  ZephlinkSDK_FirewallMode_AllowList = 1,  ///< only matching traffic is allowed
  ZephlinkSDK_FirewallMode_DenyList = 2,   ///< matching traffic is denied
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_FirewallMode);

/// The firewall: its mode and its rule lists.
typedef struct ZephlinkSDK_FirewallSettingsResult {
  ZEPHLINKSDK_HEAD;
  ZephlinkSDK_FirewallMode mode;  ///< the effect of the rules
  ZEPHLINKSDK_RULE_LISTS;
} ZephlinkSDK_FirewallSettingsResult;

/// The rule lists of the traffic that the daemon treats as streaming.
typedef struct ZephlinkSDK_StreamingSettingsResult {
  ZEPHLINKSDK_HEAD;
  ZEPHLINKSDK_RULE_LISTS;
} ZephlinkSDK_StreamingSettingsResult;

/// The effect of the local proxy's rules. The values differ from those of ZephlinkSDK_FirewallMode: there is no "off".
enum ZephlinkSDK_LocalProxyMatchMode ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_LocalProxyMatchMode_AllowList = 0,  ///< the rules allow
  ZephlinkSDK_LocalProxyMatchMode_DenyList = 1,   ///< the rules deny
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_LocalProxyMatchMode);

/// One service of the local proxy's watch list.
typedef struct ZephlinkSDK_LocalProxyService {
  char title[30];               ///< name of the service, the argument for
                                ///< ZephlinkSDK_setLocalProxyDomainWatchlistEnable
  bool enabled;                 ///< whether the service is watched
  uint16_t watchedDomainCount;  ///< entries in `watchedDomains`
  /// Domains that are watched.
  char watchedDomains[ZephlinkSDK_MaxServiceDomains][ZephlinkSDK_DomainSize];
  uint16_t proxiedDomainCount;  ///< entries in `proxiedDomains`
  /// Domains that are proxied.
  char proxiedDomains[ZephlinkSDK_MaxServiceDomains][ZephlinkSDK_DomainSize];
} ZephlinkSDK_LocalProxyService;

/// The traffic that bypasses the tunnel: the switches, the rule lists and the watched services. About 130 KB.
typedef struct ZephlinkSDK_LocalProxySettingsResult {
  ZEPHLINKSDK_HEAD;
  bool enabled;                               ///< whether the proxy is on
  bool watchlistEnabled;                      ///< whether the watch list is on
  ZephlinkSDK_LocalProxyMatchMode matchMode;  ///< the effect of the rules
  ZEPHLINKSDK_RULE_LISTS;
  uint16_t serviceCount;                                            ///< entries in `services`
  ZephlinkSDK_LocalProxyService services[ZephlinkSDK_MaxServices];  ///< the watch list
} ZephlinkSDK_LocalProxySettingsResult;

// ---- Speed tests and disconnect reason ----------------------------------------------------------------------------

/// The type of a test run.
enum ZephlinkSDK_SpeedTestType ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_SpeedTestType_Speed = 0,      ///< a speed test
  ZephlinkSDK_SpeedTestType_Streaming = 1,  ///< a stream test
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_SpeedTestType);

/// One test run. The daemon defines the units of speeds, latency and jitter.
typedef struct ZephlinkSDK_SpeedTestRun {
  int64_t time;                           ///< seconds since the epoch; 0 if unknown
  char country[ZephlinkSDK_CountrySize];  ///< country code of the server
  char city[ZephlinkSDK_CitySize];        ///< city key of the server
  uint16_t numConnections;                ///< number of connections used
  double downloadSpeed;                   ///< download speed
  double uploadSpeed;                     ///< upload speed
  bool isError;                           ///< the run failed: see `errorMessage`; the measurements are invalid
  char errorMessage[ZephlinkSDK_ErrorMessageSize];  ///< why the run failed
  ZephlinkSDK_SpeedTestType type;                   ///< the type of the run
  char resolution[6];                               ///< video resolution; Streaming only
  uint16_t fps;                                     ///< frames per second; Streaming only
  uint16_t jitter;                                  ///< Streaming only
  uint16_t latency;                                 ///< measured by both kinds
  double loss;                                      ///< Streaming only
} ZephlinkSDK_SpeedTestRun;

/// Past test runs, or the run that has just ended.
typedef struct ZephlinkSDK_SpeedTestResult {
  ZEPHLINKSDK_HEAD;
  uint16_t runCount;                                            ///< entries in `runs`
  ZephlinkSDK_SpeedTestRun runs[ZephlinkSDK_MaxSpeedTestRuns];  ///< the runs
} ZephlinkSDK_SpeedTestResult;

/// Why a session ended.
enum ZephlinkSDK_DisconnectReason ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_DisconnectReason_Unknown = 0,                  ///< unknown, or an unlisted reason
  ZephlinkSDK_DisconnectReason_Connectivity = 1,             ///< connectivity was lost
  ZephlinkSDK_DisconnectReason_Airplane = 2,                 ///< airplane mode
  ZephlinkSDK_DisconnectReason_Reboot = 3,                   ///< the machine restarted
  ZephlinkSDK_DisconnectReason_Update = 4,                   ///< the daemon was updated
  ZephlinkSDK_DisconnectReason_Crash = 5,                    ///< the daemon crashed
  ZephlinkSDK_DisconnectReason_Sleep = 6,                    ///< the machine went to sleep
  ZephlinkSDK_DisconnectReason_UserInitiated = 7,            ///< the user ended it
  ZephlinkSDK_DisconnectReason_Torrent = 8,                  ///< torrents were used
  ZephlinkSDK_DisconnectReason_ServiceStop = 9,              ///< the daemon was stopped
  ZephlinkSDK_DisconnectReason_StartTimeout = 10,            ///< the start took too long
  ZephlinkSDK_DisconnectReason_InactiveTimeout = 11,         ///< nothing was sent for too long
  ZephlinkSDK_DisconnectReason_SettingChangeReconnect = 12,  ///< a changed setting required a new session
  ZephlinkSDK_DisconnectReason_DnsTimeout = 13,              ///< DNS did not respond in time
  ZephlinkSDK_DisconnectReason_TunnelTimeout = 14,           ///< the tunnel did not respond in time
  ZephlinkSDK_DisconnectReason_OverQuota = 15,               ///< the account's data was used up
  ZephlinkSDK_DisconnectReason_SafeNetwork = 16,             ///< the network is safe without a tunnel
  ZephlinkSDK_DisconnectReason_None = 17,                    ///< no session has ended
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_DisconnectReason);

/// The end of the last session. The daemon defines the format of both times.
typedef struct ZephlinkSDK_DisconnectEventResult {
  ZEPHLINKSDK_HEAD;
  ZephlinkSDK_DisconnectReason disconnectReason;  ///< why it ended
  int64_t sessionEnd;                             ///< when it ended
  int64_t sessionLength;                          ///< how long it lasted
} ZephlinkSDK_DisconnectEventResult;

// ---- Daemon logs --------------------------------------------------------------------------------------------------

/// How much the daemon logs.
enum ZephlinkSDK_DaemonLogLevel ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_DaemonLogLevel_Verbose = 0,  ///< everything
  ZephlinkSDK_DaemonLogLevel_Info = 1,     ///< from information up
  ZephlinkSDK_DaemonLogLevel_Warn = 2,     ///< from warnings up
  ZephlinkSDK_DaemonLogLevel_Error = 3,    ///< errors only
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_DaemonLogLevel);

/// The settings of the daemon's log files, also the argument for ZephlinkSDK_setDaemonLogSettings. The numbers are not
/// checked.
typedef struct ZephlinkSDK_DaemonLogSettings {
  int32_t fileSize;                     ///< largest size of one file; the daemon defines the unit
  int32_t filesPerDaemon;               ///< number of files kept for one daemon
  int32_t totalFiles;                   ///< number of files kept in total
  ZephlinkSDK_DaemonLogLevel logLevel;  ///< how much is logged
} ZephlinkSDK_DaemonLogSettings;

/// The current log settings.
typedef struct ZephlinkSDK_LogSettingsResult {
  ZEPHLINKSDK_HEAD;
  ZephlinkSDK_DaemonLogSettings daemon;  ///< the settings
} ZephlinkSDK_LogSettingsResult;

/// A problem report that was accepted.
typedef struct ZephlinkSDK_LogReportResult {
  ZEPHLINKSDK_HEAD;
  char ticketId[32];  ///< the ticket of the report
} ZephlinkSDK_LogReportResult;

// ---- Safe browsing ------------------------------------------------------------------------------------------------

/// How much the safe-browsing service logs. The values differ from those of ZephlinkSDK_DaemonLogLevel.
enum ZephlinkSDK_SafeBrowsingLogLevel ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_SafeBrowsingLogLevel_Debug = 0,    ///< from debugging up
  ZephlinkSDK_SafeBrowsingLogLevel_Info = 1,     ///< from information up
  ZephlinkSDK_SafeBrowsingLogLevel_Error = 2,    ///< errors only
  ZephlinkSDK_SafeBrowsingLogLevel_Trace = 3,    ///< everything
  ZephlinkSDK_SafeBrowsingLogLevel_Warning = 4,  ///< from warnings up
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_SafeBrowsingLogLevel);

/// How the current network is treated, regardless of the service's own classification.
enum ZephlinkSDK_SafeBrowsingSafeNetworkOverride ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_SafeBrowsingSafeNetworkOverride_None = 0,    ///< as the service classifies it
  ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Unsafe = 1,  ///< as unsafe
  ZephlinkSDK_SafeBrowsingSafeNetworkOverride_Safe = 2,    ///< as safe
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_SafeBrowsingSafeNetworkOverride);

/// The safe-browsing settings, or the reason why the service could not connect (which does not fail the call).
typedef struct ZephlinkSDK_SafeBrowsingResult {
  ZEPHLINKSDK_HEAD;
  bool connectFailed;    ///< the service could not connect: see the next two fields; the other settings are unchanged
  int32_t connectError;  ///< the daemon's code
  char connectErrorMessage[ZephlinkSDK_ErrorMessageSize];       ///< the daemon's text
  bool initialized;                                             ///< the service has been initialized
  bool configSet;                                               ///< a configuration is stored
  bool enabled;                                                 ///< lookups are on
  ZephlinkSDK_SafeBrowsingLogLevel logLevel;                    ///< how much the service logs
  ZephlinkSDK_SafeBrowsingSafeNetworkOverride networkOverride;  ///< how the current network is treated
} ZephlinkSDK_SafeBrowsingResult;

/// The counters of safe browsing.
typedef struct ZephlinkSDK_SafeBrowsingStatsResult {
  ZEPHLINKSDK_HEAD;
  uint32_t min;                 ///< minimum; the daemon defines the quantity
  uint32_t max;                 ///< maximum of the same quantity
  uint32_t average;             ///< average of the same quantity
  uint32_t numErrors;           ///< lookups that failed
  uint32_t numBlocks;           ///< lookups of blocked hosts
  double failureRate;           ///< share of failed lookups; the daemon defines the scale
  uint32_t numBlockResponses;   ///< responses that block
  uint64_t numLookups;          ///< lookups
  uint64_t numPacketsFiltered;  ///< packets filtered
} ZephlinkSDK_SafeBrowsingStatsResult;

/// A lookup that failed.
typedef struct ZephlinkSDK_SafeBrowsingErrorResult {
  ZEPHLINKSDK_HEAD;
  int32_t error;                                ///< the daemon's code
  char message[ZephlinkSDK_ErrorMessageSize];   ///< the daemon's text
  char host[ZephlinkSDK_SafeBrowsingHostSize];  ///< the host that was looked up
} ZephlinkSDK_SafeBrowsingErrorResult;

/// A host that was blocked or redirected.
typedef struct ZephlinkSDK_SafeBrowsingBlockResult {
  ZEPHLINKSDK_HEAD;
  bool redirected;                              ///< redirected; otherwise blocked
  char host[ZephlinkSDK_SafeBrowsingHostSize];  ///< the host
} ZephlinkSDK_SafeBrowsingBlockResult;

// ---- Network sharing ----------------------------------------------------------------------------------------------

/// What the daemon does when a peer asks to pair.
enum ZephlinkSDK_NetworkSharingPairRequestBehavior ZEPHLINKSDK_UINT32 {
  /// Asks the user, see ZephlinkSDK_listenForNetworkSharePairRequest.
  ZephlinkSDK_NetworkSharingPairRequestBehavior_Ask = 0,
  ZephlinkSDK_NetworkSharingPairRequestBehavior_Accept = 1,  ///< accepts
  ZephlinkSDK_NetworkSharingPairRequestBehavior_Reject = 2,  ///< rejects
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_NetworkSharingPairRequestBehavior);

/// Which peers the daemon pairs with automatically.
enum ZephlinkSDK_NetworkSharingAutoPairBehavior ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_NetworkSharingAutoPairBehavior_Manual = 0,        ///< no peers
  ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUser = 1,      ///< peers of the same user
  ZephlinkSDK_NetworkSharingAutoPairBehavior_AutoUserTeam = 2,  ///< peers of the same user or team
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_NetworkSharingAutoPairBehavior);

/// The authentication status of a peer.
enum ZephlinkSDK_PeerStatus ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_PeerStatus_Disconnected = 0,     ///< not connected
  ZephlinkSDK_PeerStatus_Unauthenticated = 1,  ///< connected, not yet authenticated
  ZephlinkSDK_PeerStatus_Authenticated = 2,    ///< connected and authenticated
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_PeerStatus);

/// The status of the tunnel between this machine and a peer.
enum ZephlinkSDK_PeerTunnelStatus ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_PeerTunnelStatus_Inactive = 0,           ///< no traffic
  ZephlinkSDK_PeerTunnelStatus_Active = 1,             ///< carries traffic
  ZephlinkSDK_PeerTunnelStatus_DisabledOnClient = 2,   ///< switched off at the client
  ZephlinkSDK_PeerTunnelStatus_DisabledOnHost = 3,     ///< switched off at the host
  ZephlinkSDK_PeerTunnelStatus_NoNetworks = 4,         ///< no networks available
  ZephlinkSDK_PeerTunnelStatus_Error = 5,              ///< failed
  ZephlinkSDK_PeerTunnelStatus_NotAuthenticated = 6,   ///< the peer is not authenticated
  ZephlinkSDK_PeerTunnelStatus_NetworksOverLimit = 7,  ///< the networks are over their limits
  ZephlinkSDK_PeerTunnelStatus_HostNotConnected = 8,   ///< the host has no tunnel
  ZephlinkSDK_PeerTunnelStatus_Paused = 9,             ///< paused
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_PeerTunnelStatus);

/// The role of a peer in network sharing.
enum ZephlinkSDK_PeerRole ZEPHLINKSDK_UINT32 {
  ZephlinkSDK_PeerRole_Client = 0,  ///< uses the networks of a host
  ZephlinkSDK_PeerRole_Host = 1,    ///< shares its networks
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_PeerRole);

/// The network-sharing settings of this machine.
typedef struct ZephlinkSDK_NetworkSharingSettingsResult {
  ZEPHLINKSDK_HEAD;
  bool clientEnabled;                          ///< whether this machine uses the shares of peers
  bool hostEnabled;                            ///< whether this machine shares its networks
  char hostConnectCode[129];                   ///< the code that a client needs to connect to this host
  char displayName[ZephlinkSDK_PeerNameSize];  ///< the name that peers see
  /// What the daemon does when a peer asks to pair.
  ZephlinkSDK_NetworkSharingPairRequestBehavior pairRequestBehavior;
  bool sameUserAutoPair;                                        ///< whether `autoPairBehavior` is not Manual
  bool alwaysOnDiscovery;                                       ///< whether the daemon looks for peers all the time
  ZephlinkSDK_NetworkSharingAutoPairBehavior autoPairBehavior;  ///< which peers the daemon pairs with automatically
} ZephlinkSDK_NetworkSharingSettingsResult;

/// Whether the daemon looks for peers.
typedef struct ZephlinkSDK_NetworkSharingDiscoveryResult {
  ZEPHLINKSDK_HEAD;
  bool discoveryActive;  ///< whether the daemon is looking for peers now
} ZephlinkSDK_NetworkSharingDiscoveryResult;

/// A peer's state in one role; all zero if it does not have that role. The daemon defines the unit of usage.
typedef struct ZephlinkSDK_NetworkSharingPeerRole {
  ZephlinkSDK_PeerStatus peerStatus;          ///< authentication status of the peer
  ZephlinkSDK_PeerTunnelStatus tunnelStatus;  ///< status of its tunnel
  bool allowed;                               ///< whether the peer may take this role
  uint64_t usageToday;                        ///< usage of today
  uint64_t usageWeek;                         ///< usage of this week
  uint64_t usageMonth;                        ///< usage of this month
  uint64_t usageTotal;                        ///< total usage
} ZephlinkSDK_NetworkSharingPeerRole;

/// One peer that the daemon knows.
typedef struct ZephlinkSDK_NetworkSharingPeer {
  char uuid[ZephlinkSDK_UuidSize];                  ///< identifies the peer
  bool autoReconnect;                               ///< whether the daemon reconnects to it automatically
  bool haveAuthToken;                               ///< whether the daemon has a token for it, for example after
                                                    ///< pairing
  bool supportsHost;                                ///< whether it can share its networks
  char displayName[ZephlinkSDK_PeerNameSize];       ///< the name that the peer shows
  ZephlinkSDK_NetworkSharingPeerRole peerAsClient;  ///< its state as a client
  ZephlinkSDK_NetworkSharingPeerRole peerAsHost;    ///< its state as a host
} ZephlinkSDK_NetworkSharingPeer;

/// All peers that the daemon knows.
typedef struct ZephlinkSDK_NetworkSharingAvailableSharesResult {
  ZEPHLINKSDK_HEAD;
  uint16_t peerCount;                                          ///< entries in `peers`
  ZephlinkSDK_NetworkSharingPeer peers[ZephlinkSDK_MaxPeers];  ///< the peers
} ZephlinkSDK_NetworkSharingAvailableSharesResult;

/// The state of the connection to one peer.
typedef struct ZephlinkSDK_NetworkSharingConnectionResult {
  ZEPHLINKSDK_HEAD;
  ZephlinkSDK_PeerRole role;                  ///< role of the peer
  char uuid[ZephlinkSDK_UuidSize];            ///< identifies the peer
  ZephlinkSDK_PeerStatus peerStatus;          ///< authentication status of the peer
  ZephlinkSDK_PeerTunnelStatus tunnelStatus;  ///< status of its tunnel
} ZephlinkSDK_NetworkSharingConnectionResult;

/// A peer that has appeared, asks to pair, or was paired or unpaired.
typedef struct ZephlinkSDK_NetworkSharingPairResult {
  ZEPHLINKSDK_HEAD;
  char uuid[ZephlinkSDK_UuidSize];             ///< identifies the peer
  char displayName[ZephlinkSDK_PeerNameSize];  ///< the name that the peer shows
  bool haveAuthToken;                          ///< whether the daemon has a token for it, for example after pairing
} ZephlinkSDK_NetworkSharingPairResult;
