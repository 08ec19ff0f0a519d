// The families of requests that the simulated daemon handles. Each is a table of requests and their initial state.
#pragma once

#include <vector>

#include "simulator/daemon.h"

namespace zephsim {

/// Adds the family's state to the world, starts its periodic tasks, and returns its requests.
using Family = std::vector<Request> (*)(Daemon&);

std::vector<Request> connectingFamily(Daemon& daemon);
std::vector<Request> accountFamily(Daemon& daemon);
std::vector<Request> settingsFamily(Daemon& daemon);
std::vector<Request> adaptersFamily(Daemon& daemon);
std::vector<Request> privacyFamily(Daemon& daemon);
std::vector<Request> ruleListsFamily(Daemon& daemon);
std::vector<Request> statisticsFamily(Daemon& daemon);
std::vector<Request> networkSharingFamily(Daemon& daemon);
std::vector<Request> speedTestsFamily(Daemon& daemon);
std::vector<Request> safeBrowsingFamily(Daemon& daemon);
std::vector<Request> logsFamily(Daemon& daemon);
std::vector<Request> daemonControlFamily(Daemon& daemon);

inline constexpr Family kFamilies[] = {
    connectingFamily, accountFamily,        settingsFamily,   adaptersFamily,     privacyFamily, ruleListsFamily,
    statisticsFamily, networkSharingFamily, speedTestsFamily, safeBrowsingFamily, logsFamily,    daemonControlFamily,
};

}  // namespace zephsim
