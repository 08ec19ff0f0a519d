#include "cli/usage.h"

#include "cli/program_name.h"

namespace cli {
namespace {

constexpr char kVersion[] = "14.9.1";
constexpr char kBuild[] = "12483";

// The order of the general usage. Some actions are left out of it on purpose.
constexpr const char* kActions[] = {
    usage::adapterDatalimitDaily,
    usage::adapterDatalimitDailyboost,
    usage::adapterDatalimitMonthly,
    usage::adapterDirectionalmode,
    usage::adapterEncryption,
    usage::adapterOverlimitratelimit,
    usage::adapterPriority,
    usage::adapterRatelimit,
    usage::adapterResetusage,
    usage::captiveportalCheck,
    usage::captiveportalLogin,
    usage::headercompression,
    usage::connect,
    usage::connectmethod,
    usage::connectretry,
    usage::daemonExit,
    usage::directory,
    usage::dns,
    usage::disconnect,
    usage::encryption,
    usage::gateway,
    usage::jumbo,
    usage::login,
    usage::loginAuto,
    usage::loginOauth,
    usage::logout,
    usage::maxredundant,
    usage::mode,
    usage::networksharingSetAlwaysOnDiscovery,
    usage::networksharingAvailableshares,
    usage::networksharingConnect,
    usage::networksharingDiscovery,
    usage::networksharingPeer,
    usage::networksharingReconnect,
    usage::networksharingSetSwitch,
    usage::networksharingSetAutoPairBehavior,
    usage::networksharingSetDisplayname,
    usage::networksharingSetPairRequestBehavior,
    usage::networksharingSetPeer,
    usage::networksharingSettings,
    usage::networksharingStartdiscovery,
    usage::overflow,
    usage::packetaggr,
    usage::ports,
    usage::priorityoverflow,
    usage::privacyDnsleak,
    usage::privacyKillswitch,
    usage::privacyIpleak,
    usage::privacyRequestToDisableDoH,
    usage::refreshOauth,
    usage::routeDefault,
    usage::log,
    usage::logErase,
    usage::logDaemon,
    usage::show,
    usage::speedtest,
    usage::streamtest,
    usage::startupconnect,
    usage::state,
    usage::stats,
    usage::streamingDomains,
    usage::streamingIpv4,
    usage::streamingIpv6,
    usage::streamingPorts,
    usage::streamingbypassDomains,
    usage::streamingbypassIpv4,
    usage::streamingbypassIpv6,
    usage::streamingbypassPorts,
    usage::streamingbypassService,
    usage::subnets,
    usage::targetconnections,
    usage::transport,
    usage::transportretry,
    usage::version,
};

}  // namespace

void printUsage(std::FILE* stream) {
  std::fprintf(stream, "%s v%s.%s\n", programName(), kVersion, kBuild);
  std::fprintf(stream, "Usage : %s action\n", programName());
  std::fputs("Actions:\n", stream);
  for (const char* action : kActions) std::fprintf(stream, "   %s\n", action);
}

}  // namespace cli
