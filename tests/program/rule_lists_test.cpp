// The rule lists of firewall, streaming and local proxy: four kinds in three families, and what is around them.
#include <gtest/gtest.h>

#include <functional>

#include "tests/program_case.h"

namespace tests {
namespace {

/// One kind of rule: the rule number `i` as a word, in a request, in the output.
struct Kind {
  const char* name;
  std::function<std::string(int)> word;
  std::function<std::string(int)> wire;
  std::function<std::string(int)> printed;
};

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

const Kind kDomains{"domains", [](int i) { return "host" + std::to_string(i) + ".example"; },
                    [](int i) { return quoted("host" + std::to_string(i) + ".example"); },
                    [](int i) { return quoted("host" + std::to_string(i) + ".example"); }};
const Kind kIPv4{"ipv4", [](int i) { return "10.1." + std::to_string(i / 256) + "." + std::to_string(i % 256); },
                 [](int i) { return quoted(kIPv4.word(i)); }, [](int i) { return quoted(kIPv4.word(i)); }};
const Kind kIPv6{"ipv6", [](int i) { return "FD00:0::1" + std::to_string(i); },
                 [](int i) { return quoted("fd00::1" + std::to_string(i)); },
                 [](int i) { return quoted("fd00::1" + std::to_string(i)); }};
const Kind kPorts{"ports", [](int i) { return std::to_string(i) + (i % 2 == 0 ? "-4000/udp" : "/tcp"); },
                  [](int i) {
                    return R"({"port":)" + std::to_string(i) + R"(,"portRangeEnd":)" + (i % 2 == 0 ? "4000" : "0") +
                           R"(,"proto":)" + (i % 2 == 0 ? R"("udp"})" : R"("tcp"})");
                  },
                  [](int i) {
                    return R"({"port":)" + std::to_string(i) +
                           (i % 2 == 0 ? R"(,"portRangeEnd":4000,"protocol":"udp"})" : R"(,"protocol":"tcp"})");
                  }};
const Kind* const kKinds[] = {&kDomains, &kIPv4, &kIPv6, &kPorts};

/// One family: its word, its name on the wire, what its printer shows of an empty report besides the lists, and how
/// the words behind its lists are told.
struct Family {
  std::string word;
  std::string wire;
  std::string printed;
  std::string domainRules;
  std::string portRules;

  std::string get() const { return "request_" + wire + "_settings"; }
  std::string set(const Kind& kind) const { return "set_" + wire + "_" + kind.name; }
  std::string report(const std::string& data) const { return event("report_" + wire + "_settings", data); }
  std::string usage(const Kind& kind, const std::string& edit = "<add|rem|set>") const {
    const std::string rules = &kind == &kDomains ? domainRules : &kind == &kPorts ? portRules : "<ip address>";
    return word + " " + kind.name + " " + edit + " " + rules + (rules.ends_with("]") && rules[1] == '<' ? "" : " ...");
  }
};

const Family kFirewall{"firewall", "firewall", R"("mode":"off",)", "<domain>", "[port[-portRangeEnd]/proto]"};
const Family kStreaming{"streaming", "streaming", "", "<domain>", "[port[-portRangeEnd]/proto]"};
const Family kBypass{"streamingbypass", "localproxy", R"("domainWatchlistEnabled":false,"services":[],)",
                     "[<domain> ...]", "<port[-portRangeEnd]/proto>"};
const Family* const kFamilies[] = {&kFirewall, &kStreaming, &kBypass};

std::vector<int> range(int first, int count) {
  std::vector<int> numbers;
  for (int i = 0; i < count; ++i) numbers.push_back(first + i);
  return numbers;
}

std::string joined(const std::vector<int>& numbers, const std::function<std::string(int)>& text) {
  std::string all;
  for (const int number : numbers) all += (all.empty() ? "" : ",") + text(number);
  return "[" + all + "]";
}

/// An edit of one list: the daemon has `had`, must hear `wanted`, and answers with `answered`.
ProgramCase editCase(const Family& family, const Kind& kind, const std::string& edit, const std::vector<int>& words,
                     const std::vector<int>& had, const std::vector<int>& wanted) {
  const std::vector<int> answered = {7, 8};
  ProgramCase row{.words = {family.word, kind.name, edit}};
  for (const int i : words) row.words.push_back(kind.word(i));
  if (edit != "set") row.sent.push_back(request(family.get()));
  row.sent.push_back(
      request(family.set(kind), "{\"" + std::string(kind.name) + "\":" + joined(wanted, kind.wire) + "}"));
  const auto lists = [&](const std::vector<int>& rules, const std::function<std::string(int)>& text) {
    std::string data;
    for (const Kind* other : kKinds) {
      data += quoted(other->name) + ":" + (other == &kind ? joined(rules, text) : "[]") + ",";
    }
    data.pop_back();
    return data + "}";
  };
  row.answers[family.get()] = {family.report("{" + lists(had, kind.wire))};
  row.answers[family.set(kind)] = {family.report("{" + lists(answered, kind.wire))};
  row.out = printed("{" + family.printed + lists(answered, kind.printed));
  return row;
}

TEST(RuleLists, EditsEachListOfEachFamily) {
  for (const Family* family : kFamilies) {
    for (const Kind* kind : kKinds) {
      check(editCase(*family, *kind, "set", {1, 2, 1}, {}, {1, 2, 1}));
      check(editCase(*family, *kind, "set", {}, {}, {}));
      check(editCase(*family, *kind, "add", {3, 2, 4, 4}, {2, 1, 2}, {2, 1, 2, 3, 4}));
      check(editCase(*family, *kind, "rem", {2, 9}, {2, 1, 2, 3}, {1, 3}));
    }
  }
}

TEST(RuleLists, SendsAListThatHasNotChanged) {
  for (const Kind* kind : kKinds) {
    check(editCase(kFirewall, *kind, "add", {}, {2, 1}, {2, 1}));
    check(editCase(kFirewall, *kind, "add", {1}, {2, 1}, {2, 1}));
    check(editCase(kFirewall, *kind, "add", {1, 1}, {}, {1}));
    check(editCase(kFirewall, *kind, "rem", {}, {2, 2}, {2, 2}));
    check(editCase(kFirewall, *kind, "rem", {3}, {}, {}));
  }
}

TEST(RuleLists, HoldsAHundredRules) {
  const std::vector<int> full = range(2, 100);
  for (const Kind* kind : kKinds) {
    check(editCase(kFirewall, *kind, "add", {500, 501}, range(2, 99), [&] {
      std::vector<int> wanted = range(2, 99);
      wanted.push_back(500);
      return wanted;
    }()));
    check(editCase(kFirewall, *kind, "add", {500}, full, full));
    check(editCase(kFirewall, *kind, "add", {500}, range(2, 101), full));
    check(editCase(kFirewall, *kind, "rem", {101}, range(2, 101), range(2, 99)));
    check(editCase(kFirewall, *kind, "set", full, {}, full));
    check(editCase(kFirewall, *kind, "add", full, {}, full));
    if (kind == &kPorts) continue;
    // Words beyond a hundred are dropped.
    check(editCase(kFirewall, *kind, "set", range(2, 1000), {}, full));
    check(editCase(kFirewall, *kind, "add", range(2, 1000), {}, full));
    check(editCase(kFirewall, *kind, "rem", range(2, 1000), {101, 102, 1}, {102, 1}));
  }
  const auto bounded = [](const Family& family, const char* edit, int count) {
    ProgramCase row = invalidCase({family.word, "ports", edit}, "only 100 ports may be requested\n");
    for (const int i : range(2, count)) row.words.push_back(kPorts.word(i));
    check(row);
  };
  for (const Family* family : kFamilies) bounded(*family, "set", 101);
  bounded(kFirewall, "add", 1000);
  bounded(kFirewall, "rem", 101);
}

/// Sends what the words of one list become.
ProgramCase setCase(const std::string& kind, std::vector<std::string> rules, const std::string& wire) {
  ProgramCase row{.words = {"firewall", kind, "set"}};
  row.words.insert(row.words.end(), rules.begin(), rules.end());
  row.sent = {request("set_firewall_" + kind, "{\"" + kind + "\":" + wire + "}")};
  row.answers["set_firewall_" + kind] = {kFirewall.report("{}")};
  row.out = printed(R"({"domains":[],"ipv4":[],"ipv6":[],"mode":"off","ports":[]})");
  return row;
}

TEST(RuleLists, TakesWordsAsTheyStand) {
  const std::string text49(49, 'a');
  check(setCase("domains", {text49 + "bcd", "", "*.\xC3\xA4"}, "[\"" + text49 + R"(","","*.\u00e4"])"));
  check(setCase("ipv4", {"no", "1.2.3.256", "", "::1", "255.255.255.255"},
                R"(["0.0.0.0","0.0.0.0","0.0.0.0","0.0.0.0","255.255.255.255"])"));
  check(setCase("ipv6", {"1.2.3.4", "2001:DB8:0:0:0:0:0:1", "1:2", "::ffff:1.2.3.4"},
                R"(["::","2001:db8::1","::","::ffff:1.2.3.4"])"));
  check(setCase("ports", {"8080", "0/tcp", "1/udp", "65535/tcpish", "200-100/udp", "9-0/tcp"},
                R"([{"port":8080,"portRangeEnd":0,"proto":"tcp"},{"port":0,"portRangeEnd":0,"proto":"tcp"},)"
                R"({"port":1,"portRangeEnd":0,"proto":"udp"},{"port":65535,"portRangeEnd":0,"proto":"tcp"},)"
                R"({"port":200,"portRangeEnd":100,"proto":"udp"},{"port":9,"portRangeEnd":0,"proto":"tcp"}])"));
}

TEST(RuleLists, ComparesWholeRules) {
  ProgramCase row = setCase("ports", {},
                            R"([{"port":80,"portRangeEnd":0,"proto":"udp"},)"
                            R"({"port":80,"portRangeEnd":0,"proto":"tcp"},)"
                            R"({"port":80,"portRangeEnd":80,"proto":"tcp"}])");
  row.words = {"firewall", "ports", "add", "80/tcp", "80-80/tcp", "80/udp"};
  row.sent.insert(row.sent.begin(), request(kFirewall.get()));
  row.answers[kFirewall.get()] = {kFirewall.report(R"({"ports":[{"proto":"udp","port":80}]})")};
  check(row);

  // Domains compare with case, cut to what a record holds; addresses in whatever form.
  const std::string text49(49, 'a');
  row = setCase("domains", {}, R"(["B.example"])");
  row.words = {"firewall", "domains", "rem", text49 + "xyz", "b.example"};
  row.sent.insert(row.sent.begin(), request(kFirewall.get()));
  row.answers[kFirewall.get()] = {kFirewall.report("{\"domains\":[\"" + text49 + "0\",\"B.example\"]}")};
  check(row);
  row = setCase("ipv6", {}, R"(["::2"])");
  row.words = {"firewall", "ipv6", "rem", "0:0::0001"};
  row.sent.insert(row.sent.begin(), request(kFirewall.get()));
  row.answers[kFirewall.get()] = {kFirewall.report(R"({"ipv6":["::1","0::2"]})")};
  check(row);
}

TEST(RuleLists, TellsFaultsOfTheWords) {
  for (const Family* family : kFamilies) {
    for (const Kind* kind : kKinds) {
      check(missingCase({family->word, kind->name}, family->usage(*kind)));
      check(invalidCase({family->word, kind->name, "Set", "1"}, family->usage(*kind)));
    }
    for (const char* edit : {"set", "add", "rem"}) {
      check(invalidCase({family->word, "ports", edit, "80", "80/icmp"}, family->usage(kPorts, edit)));
    }
  }
  for (const char* word : {"100-200", "70000/tcp", "x/tcp", "/tcp", "", "80/", "-1/tcp", "80-/tcp"}) {
    check(invalidCase({"firewall", "ports", "set", word}, kFirewall.usage(kPorts, "set")));
  }
  const std::pair<const char*, const char*> families[] = {
      {"firewall", "firewall <mode|domains|ipv4|ipv6|ports>"},
      {"streaming", "streaming <domains|ipv4|ipv6|ports>"},
      {"streamingbypass", "streamingbypass <domains|ipv4|ipv6|ports|service>"},
  };
  for (const auto& [word, usage] : families) {
    check(missingCase({word}, usage));
    check(invalidCase({word, "domain", "set"}, usage));
  }
}

TEST(RuleLists, TellsARefusal) {
  for (const Family* family : kFamilies) {
    for (const Kind* kind : kKinds) {
      // Refused under the firewall's name: the one row that is out of line.
      const bool outOfLine = family == &kBypass && kind == &kPorts;
      const std::string setting = outOfLine ? "set_firewall_ports" : family->set(*kind);
      ProgramCase row = editCase(*family, *kind, "add", {1}, {}, {1});
      row.answers[family->set(*kind)] = {refusedSetting("x"), refusedSetting(setting)};
      row.out = "";
      row.err = refusedSettingError();
      row.status = 1;
      check(row);
    }
  }
}

ProgramCase timedOut(ProgramCase row) {
  row.out = "";
  row.err = errorObject(3841, "Timeout waiting for result", "Timeout");
  row.status = 1;
  return row;
}

TEST(RuleLists, EndsWhenTheListCannotBeRead) {
  ProgramCase row = editCase(kStreaming, kDomains, "rem", {1}, {1}, {});
  row.answers.erase(kStreaming.get());
  row.sent.pop_back();
  check(timedOut(row));
}

TEST(RuleLists, LocalProxyPortsTimeOutBehindARefusalUnderTheirOwnName) {
  ProgramCase row = editCase(kBypass, kPorts, "set", {1}, {}, {1});
  row.answers["set_localproxy_ports"] = {refusedSetting("set_localproxy_ports")};
  check(timedOut(row));
}

TEST(RuleLists, NoRefusalEndsTheSwitchOfAService) {
  check(timedOut({.words = {"streamingbypass", "service", "Films", "on"},
                  .answers = {{"set_localproxy_domainwatchlist_enable",
                               {refusedSetting("set_localproxy_domainwatchlist_enable")}}},
                  .sent = {request("set_localproxy_domainwatchlist_enable", R"({"enabled":true,"title":"Films"})")}}));
}

// Every member with a value of its own, over-long texts, members of a wrong type.
constexpr const char* kLists =
    R"("domains":["a.example","0123456789012345678901234567890123456789012345678","bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb)"
    R"(bbbbbbbbbbbbbbbb",7,null,["x"]],"ipv4":["1.2.3.4","x",5],"ipv6":["FE80::1","1.2.3.4",null],)"
    R"("ports":[{"proto":"udp","port":1,"portRangeEnd":2},{"proto":"TCP","port":65537},)"
    R"({"proto":17,"port":3000000000,"portRangeEnd":-1},{"proto":"udp","port":"5","portRangeEnd":null},"80/tcp"])";
constexpr const char* kPrintedLists =
    R"("domains":["a.example","0123456789012345678901234567890123456789012345678","bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb)"
    R"(bbbbbbbbb","7","",""],"ipv4":["1.2.3.4","0.0.0.0","0.0.0.0"],"ipv6":["fe80::1","::","::"],)"
    R"("ports":[{"port":1,"portRangeEnd":2,"protocol":"udp"},{"port":1,"protocol":"tcp"},)"
    R"({"port":0,"portRangeEnd":65535,"protocol":"tcp"},{"port":0,"protocol":"udp"},{"port":0,"protocol":"tcp"}])";
constexpr const char* kNoLists = R"("domains":[],"ipv4":[],"ipv6":[],"ports":[])";

ProgramCase showCase(const char* word, const Family& family, const std::string& data, const std::string& shown) {
  return {.words = {"show", word},
          .answers = {{family.get(), {family.report(data)}}},
          .sent = {request(family.get())},
          .out = printed(shown)};
}

TEST(RuleLists, PrintsReports) {
  const std::string lists = kLists;
  const std::string shown = kPrintedLists;
  const std::string none = kNoLists;
  check(
      showCase("firewall", kFirewall, R"({"mode":"denylist",)" + lists + "}", R"({"mode":"denylist",)" + shown + "}"));
  check(showCase("streaming", kStreaming, "{" + lists + "}", "{" + shown + "}"));
  check(showCase("streamingbypass", kBypass,
                 R"({"enabled":false,"watchlist_enabled":true,"matchMode":"denylist","domain_watchlist":[)"
                 R"({"title":"Films","enabled":true,"watchedDomains":["a"],"proxiedDomains":["b"]},)"
                 R"({"title":"0123456789012345678901234567890123456789","enabled":"true"},5],)" +
                     lists + "}",
                 R"({"domainWatchlistEnabled":true,"services":[{"enabled":true,"title":"Films"},)"
                 R"({"enabled":false,"title":"01234567890123456789012345678"},{"enabled":false,"title":""}],)" +
                     shown + "}"));
  check(showCase("localproxy", kBypass, R"({"enabled":true,"watchlist_enabled":false})", R"({"enabled":true})"));
  for (const char* data : {"null", "{}", "[]", R"({"domains":"a","ipv4":4,"ipv6":null,"ports":true,"mode":1})"}) {
    check(showCase("firewall", kFirewall, data, R"({"mode":"off",)" + none + "}"));
    check(showCase("streaming", kStreaming, data, "{" + none + "}"));
    check(showCase("streamingbypass", kBypass, data, R"({"domainWatchlistEnabled":false,"services":[],)" + none + "}"));
    check(showCase("localproxy", kBypass, data, R"({"enabled":false})"));
  }
  const auto service = [](int i) { return R"({"enabled":true,"title":"Service )" + std::to_string(i) + "\"}"; };
  check(showCase("streamingbypass", kBypass, R"({"domain_watchlist":)" + joined(range(0, 101), service) + "}",
                 R"({"domainWatchlistEnabled":false,"services":)" + joined(range(0, 100), service) + "," + none + "}"));
}

TEST(RuleLists, PrintsByteForByte) {
  ProgramCase row =
      showCase("firewall", kFirewall, R"({"mode":"allowlist","ipv4":["1.2.3.4"],"ports":[{"port":80}]})", "0");
  row.out =
      "{\n\t\"domains\" : [],\n\t\"ipv4\" : \n\t[\n\t\t\"1.2.3.4\"\n\t],\n\t\"ipv6\" : [],\n\t\"mode\" : \"allowlist\","
      "\n\t\"ports\" : \n\t[\n\t\t{\n\t\t\t\"port\" : 80,\n\t\t\t\"protocol\" : \"tcp\"\n\t\t}\n\t]\n}";
  check(row);
}

TEST(Firewall, SetsItsMode) {
  for (const std::string mode : {"off", "allowlist", "denylist"}) {
    // Words behind the mode are ignored.
    check({.words = {"firewall", "mode", mode, "extra"},
           .answers = {{"set_firewall_mode", {kFirewall.report("{\"mode\":\"" + mode + "\"}")}}},
           .sent = {request("set_firewall_mode", "{\"mode\":\"" + mode + "\"}")},
           .out = printed("{\"mode\":\"" + mode + "\"," + kNoLists + "}")});
  }
  check({.words = {"firewall", "mode", "off"},
         .answers = {{"set_firewall_mode", {refusedSetting("set_firewall_mode")}}},
         .sent = {request("set_firewall_mode", R"({"mode":"off"})")},
         .err = refusedSettingError(),
         .status = 1});
  check(missingCase({"firewall", "mode"}, "firewall mode <off|allowlist|denylist>"));
  check(invalidCase({"firewall", "mode", "Unknown mode"}, "firewall mode <off|allowlist|denylist>"));
}

TEST(LocalProxy, SwitchesItselfAndItsServices) {
  const auto switchCase = [](std::vector<std::string> words, const std::string& name, const std::string& members) {
    ProgramCase row{.words = std::move(words), .sent = {request(name, members)}};
    row.answers[name] = {kBypass.report(R"({"enabled":true,"watchlist_enabled":true})")};
    row.out = printed(row.words[0] == "localproxy"
                          ? R"({"enabled":true})"
                          : R"({"domainWatchlistEnabled":true,"services":[],)" + std::string(kNoLists) + "}");
    return row;
  };
  check(switchCase({"localproxy", "on"}, "set_localproxy_enabled", R"({"enabled":true})"));
  check(switchCase({"localproxy", "off", "x"}, "set_localproxy_enabled", R"({"enabled":false})"));
  check(switchCase({"streamingbypass", "service", "enable", "x"}, "set_localproxy_bypass",
                   R"({"watchlistEnabled":true})"));
  check(
      switchCase({"streamingbypass", "service", "disable"}, "set_localproxy_bypass", R"({"watchlistEnabled":false})"));
  check(switchCase({"streamingbypass", "service", "My \"Films\"", "on"}, "set_localproxy_domainwatchlist_enable",
                   R"({"enabled":true,"title":"My \"Films\""})"));
  check(switchCase({"streamingbypass", "service", "", "off", "x"}, "set_localproxy_domainwatchlist_enable",
                   R"({"enabled":false,"title":""})"));

  const char* usage = "streamingbypass service <enable|disable|service name> [<on|off>]";
  check(missingCase({"streamingbypass", "service"}, usage));
  check(missingCase({"streamingbypass", "service", "Films"}, usage));
  check(invalidCase({"streamingbypass", "service", "Films", "maybe"}, usage));
  check(missingCase({"localproxy"}, "localproxy <on|off>"));
  check(invalidCase({"localproxy", "ON"}, "localproxy <on|off>"));
}

}  // namespace
}  // namespace tests
