// The rule lists of the traffic that the daemon treats as streaming.
#include "cli/families/families.h"
#include "cli/families/rule_lists.h"
#include "cli/handlers.h"

namespace cli {

namespace {

void printStreaming(const ZephlinkSDK_StreamingSettingsResult& record) { writeJson(stdout, toJson(record.lists)); }

template <const auto& Kind, auto& Set, const EditUsages& Usages = kNoUsages>
constexpr Handler& edit = editList<Kind, ZephlinkSDK_getStreamingSettings, Set, printStreaming, Usages>;

constexpr EditUsages kPortUsages = {
    "streaming ports set [port[-portRangeEnd]/proto] ...",
    "streaming ports add [port[-portRangeEnd]/proto] ...",
    "streaming ports rem [port[-portRangeEnd]/proto] ...",
};

constexpr Action kStreamingRows[] = {
    {"domains", "streaming domains <add|rem|set> <domain> ...", edit<kDomains, ZephlinkSDK_setStreamingDomains>},
    {"ipv4", "streaming ipv4 <add|rem|set> <ip address> ...", edit<kIPv4, ZephlinkSDK_setStreamingIPv4>},
    {"ipv6", "streaming ipv6 <add|rem|set> <ip address> ...", edit<kIPv6, ZephlinkSDK_setStreamingIPv6>},
    {"ports", "streaming ports <add|rem|set> [port[-portRangeEnd]/proto] ...",
     edit<kPorts, ZephlinkSDK_setStreamingPorts, kPortUsages>},
};

constexpr Action kRows[] = {
    {"streaming", "streaming <domains|ipv4|ipv6|ports>", nullptr, &rows<kStreamingRows>},
};

constexpr Action kShowRows[] = {
    {"streaming", nullptr, exactly<0, perform<ZephlinkSDK_getStreamingSettings, printStreaming>>},
};

}  // namespace

constinit const families::Family families::streaming{kRows, kShowRows};

}  // namespace cli
