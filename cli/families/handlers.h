// The handlers of the action list, one for each of its words, by the file that holds them.
#pragma once

#include "cli/actions.h"

namespace cli {

// state.cpp
int state(Words words);
int version(Words words);

// connecting.cpp
int connect(Words words);
int connectMethod(Words words);
int disconnect(Words words);
int showServers(Words words);
int showCurrentServer(Words words);
int showConnectMethod(Words words);

// account.cpp
int login(Words words);
int refresh(Words words);
int logout(Words words);
int directory(Words words);
int gateway(Words words);
int esni(Words words);
int showUser(Words words);
int showDirectory(Words words);

// settings.cpp
int headerCompression(Words words);
int encryption(Words words);
int jumbo(Words words);
int maxRedundant(Words words);
int mode(Words words);
int overflow(Words words);
int priorityOverflow(Words words);
int packetAggregation(Words words);
int ports(Words words);
int subnets(Words words);
int startupConnect(Words words);
int transport(Words words);
int route(Words words);
int connectRetry(Words words);
int transportRetry(Words words);
int targetConnections(Words words);
int showSettings(Words words);

// adapters.cpp
int adapter(Words words);
int showAdapters(Words words);

// statistics.cpp; `stats historic` is in history.cpp
int stats(Words words);
int statsHistoric();

// privacy.cpp
int privacy(Words words);
int dns(Words words);
int captivePortal(Words words);
int showPrivacy(Words words);

// firewall.cpp
int firewall(Words words);
int showFirewall(Words words);

// streaming.cpp
int streaming(Words words);
int showStreaming(Words words);

// local_proxy.cpp
int streamingBypass(Words words);
int localProxy(Words words);
int showStreamingBypass(Words words);
int showLocalProxy(Words words);

// speed_tests.cpp
int speedTest(Words words);
int streamTest(Words words);
int showSpeedTest(Words words);
int showDisconnect(Words words);

// logs.cpp
int log(Words words);
int daemon(Words words);
int showLogSettings(Words words);

// safe_browsing.cpp
int safeBrowsing(Words words);

// network_sharing.cpp; the words that act on a peer are in peers.cpp
int networkSharing(Words words);

}  // namespace cli
