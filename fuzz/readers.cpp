// Fuzzes the reader of every report with any JSON. The first line of the input selects an action by its number, or with
// the prefix "s" a subscription; the following lines are the data of successive reports.
//
// The matching printer must print JSON, and no count may exceed the size of its array.
#include <cstdlib>
#include <iterator>
#include <type_traits>
#include <utility>

#include "fuzz/at_once.h"
#include "fuzz/captured.h"
#include "fuzz/check.h"
#include "zephlinksdk/zephlinksdk.h"

namespace {

using Words = std::vector<std::string>;

// These actions reach every reader and every printer.
constexpr const char* kActions[] = {"state",
                                    "version",
                                    "connect",
                                    "disconnect",
                                    "login name password",
                                    "logout",
                                    "gateway https://example.com",
                                    "mode speed",
                                    "adapter ratelimit id 1",
                                    "stats 1 networksharing current day 7",
                                    "stats historic",
                                    "privacy dnsleak on",
                                    "captiveportal check",
                                    "captiveportal login on id",
                                    "firewall domains add example.com",
                                    "firewall ports rem 80/tcp",
                                    "streaming ipv4 add 192.0.2.1",
                                    "streamingbypass ipv6 set 2001:db8::1",
                                    "streamingbypass service name on",
                                    "localproxy on",
                                    "speedtest",
                                    "streamtest",
                                    "log daemon 1 2 3 info",
                                    "log report me@example.com text /",
                                    "safebrowsing initialize {}",
                                    "safebrowsing stats",
                                    "safebrowsing errors 1",
                                    "safebrowsing redirects",
                                    "safebrowsing settings",
                                    "safebrowsing homenetwork",
                                    "networksharing settings",
                                    "networksharing availableshares",
                                    "networksharing startdiscovery",
                                    "networksharing discovery",
                                    "networksharing connect eyJ1IjoiaWQifQ==",
                                    "networksharing peer request id",
                                    "networksharing peer unpair id",
                                    "networksharing set peer allowhost id on",
                                    "show servers",
                                    "show settings",
                                    "show privacy",
                                    "show adapters",
                                    "show currentserver",
                                    "show user",
                                    "show directory",
                                    "show connectmethod",
                                    "show localproxy",
                                    "show firewall",
                                    "show streamingbypass",
                                    "show disconnect",
                                    "show streaming",
                                    "show speedtest",
                                    "show logsettings"};

std::size_t g_checked = 0;

template <class Entry, std::size_t N, class Count>
void bounded(Count count, const Entry (&)[N]) {
  ++g_checked;
  fuzz::check(count <= N, "a count does not exceed its array", std::to_string(count));
}

template <class Record>
void checkCounts(const Record& record) {
  if constexpr (requires { record.server.publicIP; }) {
    bounded(record.server.publicIPCount, record.server.publicIP);
    bounded(record.server.dnsIPCount, record.server.dnsIP);
  }
  if constexpr (requires { record.servers; }) bounded(record.count, record.servers);
  if constexpr (requires { record.forwardedPorts; }) {
    bounded(record.forwardedPortCount, record.forwardedPorts);
    bounded(record.downstreamSubnetCount, record.downstreamSubnets);
    bounded(record.perConnectionEncryptionCount, record.perConnectionEncryptionSettings);
    bounded(record.perConnectionDscpExposeCount, record.perConnectionDscpExpose);
    bounded(record.perConnectionParallelSocketCount, record.perConnectionParallelSockets);
  }
  if constexpr (requires { record.adapters; }) bounded(record.adapterCount, record.adapters);
  if constexpr (requires { record.connections; }) bounded(record.connectionCount, record.connections);
  if constexpr (requires { record.streams; }) bounded(record.streamCount, record.streams);
  if constexpr (requires { record.periods; }) bounded(record.periodCount, record.periods);
  if constexpr (requires { record.dnsAddresses; }) bounded(record.dnsAddressCount, record.dnsAddresses);
  if constexpr (requires { record.networks; }) bounded(record.networkCount, record.networks);
  if constexpr (requires { record.runs; }) bounded(record.runCount, record.runs);
  if constexpr (requires { record.peers; }) bounded(record.peerCount, record.peers);
  if constexpr (requires { record.lists; }) {
    bounded(record.domainCount, record.domains);
    bounded(record.ipv4Count, record.ipv4);
    bounded(record.ipv6Count, record.ipv6);
    bounded(record.portCount, record.ports);
  }
  if constexpr (requires { record.services; }) {
    bounded(record.serviceCount, record.services);
    for (std::size_t i = 0; i < record.serviceCount; ++i) {
      bounded(record.services[i].watchedDomainCount, record.services[i].watchedDomains);
      bounded(record.services[i].proxiedDomainCount, record.services[i].proxiedDomains);
    }
  }
}

/// A callback that checks each record and stays subscribed.
template <class Record>
bool checkRecord(Record record, void*) {
  g_checked = 0;
  checkCounts(record);
  fuzz::check(g_checked > 0, "a record of this list has a count");
  return true;
}

template <auto& Method>
void subscribe(zephlinksdk::ZephlinkSDK* sdk) {
  [sdk]<class Record>(Record (&method)(zephlinksdk::ZephlinkSDK*, zephlinksdk::Callback<Record>, void*)) {
    method(sdk, checkRecord<Record>, nullptr);
  }(Method);
}

// All methods whose record has a list.
constexpr void (*kSubscriptions[])(zephlinksdk::ZephlinkSDK*) = {
    subscribe<ZephlinkSDK_getConnectedServer>,    subscribe<ZephlinkSDK_getDirectory>,
    subscribe<ZephlinkSDK_getSettings>,           subscribe<ZephlinkSDK_getAdapters>,
    subscribe<ZephlinkSDK_getConnectionStats>,    subscribe<ZephlinkSDK_getHistoricConnectionStats>,
    subscribe<ZephlinkSDK_getStreamingStats>,     subscribe<ZephlinkSDK_getSessionStats>,
    subscribe<ZephlinkSDK_getPrivacySettings>,    subscribe<ZephlinkSDK_checkForCaptivePortals>,
    subscribe<ZephlinkSDK_getFirewallSettings>,   subscribe<ZephlinkSDK_getStreamingSettings>,
    subscribe<ZephlinkSDK_getLocalProxySettings>, subscribe<ZephlinkSDK_getSpeedTestResults>,
    subscribe<ZephlinkSDK_startSpeedTest>,        subscribe<ZephlinkSDK_getNetworkSharesAvailable>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static zephlinksdk::ZephlinkSDK* const sdk = fuzz::makeSdk();
  Words lines = fuzz::piecesOf(fuzz::textOf(data, size));
  if (lines.empty()) return 0;
  const std::string choice = lines.front();
  lines.erase(lines.begin());
  fuzz::answerWith(std::move(lines));
  if (choice.starts_with("s")) {
    kSubscriptions[std::strtoul(choice.c_str() + 1, nullptr, 10) % std::size(kSubscriptions)](sdk);
  } else {
    const Words words = fuzz::piecesOf(kActions[std::strtoul(choice.c_str(), nullptr, 10) % std::size(kActions)], ' ');
    fuzz::checkOutcome(words, fuzz::runAction(words));
  }
  return 0;
}
