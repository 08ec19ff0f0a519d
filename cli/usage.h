// Every usage text of the program, once. A fault names one of them; the general usage lists those of them that users
// are told about.
#pragma once

#include <cstdio>

namespace cli {

/// Writes the program's name and version and the list of its actions.
void printUsage(std::FILE* stream);

namespace usage {

// The program itself
inline constexpr char state[] = "state";
inline constexpr char version[] = "version";

// Servers and connecting
inline constexpr char connect[] =
    "connect [ closest | public | private | p2p | <country> [<city> [<number>]] | last | <tag> ]";
inline constexpr char connectmethod[] =
    "connectmethod < closest | public | private | p2p | <country> [<city> [<number>]] | <tag> >";
inline constexpr char disconnect[] = "disconnect";

// Account and directory
inline constexpr char login[] = "login <username> [password]";
inline constexpr char loginAuto[] = "login auto";
inline constexpr char loginOauth[] = "login oauth [access token]";
inline constexpr char refreshOauth[] = "refresh oauth [access token]";
inline constexpr char logout[] = "logout";
inline constexpr char directory[] = "directory [directory server domain]";
inline constexpr char gateway[] = "gateway [directory gateway uri]";

// Connection settings
inline constexpr char encryption[] = "encryption <on|off>";
inline constexpr char jumbo[] = "jumbo <on|off>";
inline constexpr char packetaggr[] = "packetaggr <on|off>";
inline constexpr char headercompression[] = "headercompression <on|off>";
inline constexpr char startupconnect[] = "startupconnect <on|off>";
inline constexpr char routeDefault[] = "route default <on|off>";
inline constexpr char mode[] = "mode <redundant|speed|streaming>";
inline constexpr char transport[] = "transport <auto|tcp|tcp-multi|udp|https>";
inline constexpr char transportretry[] = "transportretry <time in seconds>";
inline constexpr char connectretry[] = "connectretry <time in seconds>";
inline constexpr char maxredundant[] = "maxredundant <number of conns>";
inline constexpr char targetconnections[] =
    "targetconnections <number upload connections> <number download connections>";
inline constexpr char overflow[] = "overflow <speed in mbps>";
inline constexpr char priorityoverflow[] = "priorityoverflow <speed in mbps>";
inline constexpr char ports[] = "ports [port/proto] ...";
inline constexpr char subnets[] = "subnets [subnet/length] ...";
// Stand in for a usage text, line feed included, and are filled in with the bound that was passed.
inline constexpr char tooManyPortsFormat[] = "only %d ports may be requested\n";
inline constexpr char tooManySubnetsFormat[] = "only %d subnets may be declared\n";

// Adapters
inline constexpr char adapter[] =
    "adapter <datalimit|priority|ratelimit|overlimitratelimit|encryption|resetusage|directionalmode>";
inline constexpr char adapterDatalimit[] = "adapter datalimit <monthly|daily|dailyboost>";
inline constexpr char adapterDatalimitDaily[] = "adapter datalimit daily <adapter id> <data usage in bytes|unlimited>";
inline constexpr char adapterDatalimitDailyboost[] = "adapter datalimit dailyboost <adapter id> <additional bytes>";
inline constexpr char adapterDatalimitMonthly[] =
    "adapter datalimit monthly <adapter id> <data usage in bytes|unlimited> <day of the month to reset on|0 for last "
    "30 days>";
inline constexpr char adapterDirectionalmode[] =
    "adapter directionalmode <adapter id> <upload mode (on | backup_off | strict_off)> <download mode (on | backup_off "
    "| strict_off)>";
inline constexpr char adapterEncryption[] = "adapter encryption <adapter id> <on|off>";
inline constexpr char adapterOverlimitratelimit[] =
    "adapter overlimitratelimit <adapter id> <speed in bits per second|0 to stop using>";
inline constexpr char adapterPriority[] = "adapter priority <adapter id> <automatic|always|secondary|backup|never>";
inline constexpr char adapterRatelimit[] = "adapter ratelimit <adapter id> <speed in bits per second|unlimited>";
inline constexpr char adapterResetusage[] = "adapter resetusage <adapter id>";

// Statistics and tests
inline constexpr char stats[] =
    "stats [historic | [duration in seconds] [networksharing] [current|day|week|month|total|<period in hours>] ...]";
inline constexpr char speedtest[] = "speedtest";
inline constexpr char streamtest[] = "streamtest";

// Privacy, DNS and captive portals
inline constexpr char privacy[] = "privacy <dnsleak|ipleak|killswitch|requestToDisableDoH>";
inline constexpr char privacyDnsleak[] = "privacy dnsleak <on|off>";
inline constexpr char privacyIpleak[] = "privacy ipleak <on|off>";
inline constexpr char privacyKillswitch[] = "privacy killswitch <on|off>";
inline constexpr char privacyRequestToDisableDoH[] = "privacy requestToDisableDoH <on|off>";
inline constexpr char dns[] = "dns <ip address> ...";
inline constexpr char captiveportal[] = "captiveportal check|login";
inline constexpr char captiveportalCheck[] = "captiveportal check";
inline constexpr char captiveportalLogin[] = "captiveportal login <on|off> <adapter id>";

// Rule lists
inline constexpr char firewall[] = "firewall <mode|domains|ipv4|ipv6|ports>";
inline constexpr char firewallDomains[] = "firewall domains <add|rem|set> <domain> ...";
inline constexpr char firewallIpv4[] = "firewall ipv4 <add|rem|set> <ip address> ...";
inline constexpr char firewallIpv6[] = "firewall ipv6 <add|rem|set> <ip address> ...";
inline constexpr char firewallMode[] = "firewall mode <off|allowlist|denylist>";
inline constexpr char firewallPorts[] = "firewall ports <add|rem|set> [port[-portRangeEnd]/proto] ...";
inline constexpr char firewallPortsAdd[] = "firewall ports add [port[-portRangeEnd]/proto] ...";
inline constexpr char firewallPortsRem[] = "firewall ports rem [port[-portRangeEnd]/proto] ...";
inline constexpr char firewallPortsSet[] = "firewall ports set [port[-portRangeEnd]/proto] ...";
inline constexpr char streaming[] = "streaming <domains|ipv4|ipv6|ports>";
inline constexpr char streamingDomains[] = "streaming domains <add|rem|set> <domain> ...";
inline constexpr char streamingIpv4[] = "streaming ipv4 <add|rem|set> <ip address> ...";
inline constexpr char streamingIpv6[] = "streaming ipv6 <add|rem|set> <ip address> ...";
inline constexpr char streamingPorts[] = "streaming ports <add|rem|set> [port[-portRangeEnd]/proto] ...";
inline constexpr char streamingPortsAdd[] = "streaming ports add [port[-portRangeEnd]/proto] ...";
inline constexpr char streamingPortsRem[] = "streaming ports rem [port[-portRangeEnd]/proto] ...";
inline constexpr char streamingPortsSet[] = "streaming ports set [port[-portRangeEnd]/proto] ...";
inline constexpr char streamingbypass[] = "streamingbypass <domains|ipv4|ipv6|ports|service>";
inline constexpr char streamingbypassDomains[] = "streamingbypass domains <add|rem|set> [<domain> ...]";
inline constexpr char streamingbypassIpv4[] = "streamingbypass ipv4 <add|rem|set> <ip address> ...";
inline constexpr char streamingbypassIpv6[] = "streamingbypass ipv6 <add|rem|set> <ip address> ...";
inline constexpr char streamingbypassPorts[] = "streamingbypass ports <add|rem|set> <port[-portRangeEnd]/proto> ...";
inline constexpr char streamingbypassPortsAdd[] = "streamingbypass ports add <port[-portRangeEnd]/proto> ...";
inline constexpr char streamingbypassPortsRem[] = "streamingbypass ports rem <port[-portRangeEnd]/proto> ...";
inline constexpr char streamingbypassPortsSet[] = "streamingbypass ports set <port[-portRangeEnd]/proto> ...";
inline constexpr char streamingbypassService[] = "streamingbypass service <enable|disable|service name> [<on|off>]";
inline constexpr char localproxy[] = "localproxy <on|off>";

// Safe browsing
inline constexpr char safebrowsing[] =
    "safebrowsing "
    "<initialize|config|enable|errors|stats|redirects|loglevel|token|homenetwork|override|settings|start|stop>";
inline constexpr char safebrowsingConfig[] = "safebrowsing config <string>";
inline constexpr char safebrowsingEnable[] = "safebrowsing enable <on|off>";
inline constexpr char safebrowsingErrors[] = "safebrowsing errors [duration in seconds]";
inline constexpr char safebrowsingHomenetwork[] = "safebrowsing homenetwork [retries delay timeout]";
inline constexpr char safebrowsingInitialize[] = "safebrowsing initialize <string>";
inline constexpr char safebrowsingLoglevel[] = "safebrowsing loglevel <trace|debug|info|warning|error>";
inline constexpr char safebrowsingOverride[] = "safebrowsing override <none|unsafe|safe>";
inline constexpr char safebrowsingStart[] = "safebrowsing start <string>";
inline constexpr char safebrowsingToken[] = "safebrowsing token <string>";

// Network sharing
inline constexpr char networksharing[] =
    "networksharing <availableshares|connect|discovery|peer|set|settings|startdiscovery>";
inline constexpr char networksharingAvailableshares[] = "networksharing availableshares";
inline constexpr char networksharingConnect[] = "networksharing connect <peer connect code>";
inline constexpr char networksharingDiscovery[] = "networksharing discovery";
inline constexpr char networksharingPeer[] = "networksharing peer <allow|reject|request|unpair> <peer uuid>";
inline constexpr char networksharingReconnect[] = "networksharing reconnect <peer uuid>";
inline constexpr char networksharingSet[] =
    "networksharing set <alwaysOnDiscovery|autoPairBehavior|client|displayname|host|pairRequestBehavior|peer>";
inline constexpr char networksharingSetAlwaysOnDiscovery[] = "networksharing set alwaysOnDiscovery <on|off>";
inline constexpr char networksharingSetAutoPairBehavior[] =
    "networksharing set autoPairBehavior <manual|auto_user|auto_user_team>";
inline constexpr char networksharingSetDisplayname[] = "networksharing set displayname <new name>";
inline constexpr char networksharingSetPairRequestBehavior[] =
    "networksharing set pairRequestBehavior <ask|accept|reject>";
inline constexpr char networksharingSetPeer[] =
    "networksharing set peer <autoreconnect|allowhost|allowclient> <peer uuid> <on|off>";
inline constexpr char networksharingSetSwitch[] = "networksharing set <host|client> <on|off>";
inline constexpr char networksharingSettings[] = "networksharing settings";
inline constexpr char networksharingStartdiscovery[] = "networksharing startdiscovery";

// Daemon
inline constexpr char log[] = "log <erase|daemon>";
inline constexpr char logDaemon[] = "log daemon <file size> <files per daemon> <total files> <verbose|info|warn|error>";
inline constexpr char logErase[] = "log erase";
inline constexpr char logReport[] = "log report <email> <message> <filepath>";
inline constexpr char daemonExit[] = "daemon exit";

// Reading
inline constexpr char show[] =
    "show < servers | settings | privacy | adapters | currentserver | user | directory | connectmethod | "
    "streamingbypass | disconnect | streaming | speedtest | logsettings >";

// The order of the general usage.
inline constexpr const char* kListed[] = {
    adapterDatalimitDaily,
    adapterDatalimitDailyboost,
    adapterDatalimitMonthly,
    adapterDirectionalmode,
    adapterEncryption,
    adapterOverlimitratelimit,
    adapterPriority,
    adapterRatelimit,
    adapterResetusage,
    captiveportalCheck,
    captiveportalLogin,
    headercompression,
    connect,
    connectmethod,
    connectretry,
    daemonExit,
    directory,
    dns,
    disconnect,
    encryption,
    gateway,
    jumbo,
    login,
    loginAuto,
    loginOauth,
    logout,
    maxredundant,
    mode,
    networksharingSetAlwaysOnDiscovery,
    networksharingAvailableshares,
    networksharingConnect,
    networksharingDiscovery,
    networksharingPeer,
    networksharingReconnect,
    networksharingSetSwitch,
    networksharingSetAutoPairBehavior,
    networksharingSetDisplayname,
    networksharingSetPairRequestBehavior,
    networksharingSetPeer,
    networksharingSettings,
    networksharingStartdiscovery,
    overflow,
    packetaggr,
    ports,
    priorityoverflow,
    privacyDnsleak,
    privacyKillswitch,
    privacyIpleak,
    privacyRequestToDisableDoH,
    refreshOauth,
    routeDefault,
    log,
    logErase,
    logDaemon,
    show,
    speedtest,
    streamtest,
    startupconnect,
    state,
    stats,
    streamingDomains,
    streamingIpv4,
    streamingIpv6,
    streamingPorts,
    streamingbypassDomains,
    streamingbypassIpv4,
    streamingbypassIpv6,
    streamingbypassPorts,
    streamingbypassService,
    subnets,
    targetconnections,
    transport,
    transportretry,
    version,
};

// What the general usage leaves out on purpose, and completions know. `safebrowsing` has words without a text of their
// own.
inline constexpr const char* kUnlisted[] = {
    firewallDomains,
    firewallIpv4,
    firewallIpv6,
    firewallMode,
    firewallPorts,
    localproxy,
    safebrowsing,
    safebrowsingConfig,
    safebrowsingEnable,
    safebrowsingErrors,
    safebrowsingHomenetwork,
    safebrowsingInitialize,
    safebrowsingLoglevel,
    safebrowsingOverride,
    safebrowsingStart,
    safebrowsingToken,
    logReport,
};

}  // namespace usage
}  // namespace cli
