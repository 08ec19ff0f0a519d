// The rule lists of the traffic that the daemon treats as streaming.
#include "cli/families/handlers.h"
#include "cli/families/rule_lists.h"
#include "cli/usage.h"

namespace cli {

namespace {

void printStreaming(const ZephlinkSDK_StreamingSettingsResult& record) { writeJson(stdout, toJson(record)); }

constexpr RuleFamily<ZephlinkSDK_StreamingSettingsResult> kStreaming{ZephlinkSDK_getStreamingSettings, printStreaming};

constexpr EditUsages kPortUsages = zephlinksdk::wordTable<Edit>({{Edit::Set, usage::streamingPortsSet},
                                                                 {Edit::Add, usage::streamingPortsAdd},
                                                                 {Edit::Remove, usage::streamingPortsRem}},
                                                                usage::streamingPorts);

int editDomains(Words words) {
  return editList(words, kDomains, kStreaming, ZephlinkSDK_setStreamingDomains, usage::streamingDomains);
}

int editIPv4(Words words) {
  return editList(words, kIPv4, kStreaming, ZephlinkSDK_setStreamingIPv4, usage::streamingIpv4);
}

int editIPv6(Words words) {
  return editList(words, kIPv6, kStreaming, ZephlinkSDK_setStreamingIPv6, usage::streamingIpv6);
}

int editPorts(Words words) {
  return editList(words, kPorts, kStreaming, ZephlinkSDK_setStreamingPorts, usage::streamingPorts, kPortUsages);
}

constexpr Action kStreamingActions[] = {
    {"domains", editDomains}, {"ipv4", editIPv4}, {"ipv6", editIPv6}, {"ports", editPorts}};

}  // namespace

int streaming(Words words) { return dispatchWord(kStreamingActions, words, usage::streaming); }

int showStreaming(Words) { return finish(call(ZephlinkSDK_getStreamingSettings), printStreaming); }

}  // namespace cli
