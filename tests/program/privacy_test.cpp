// Privacy switches, DNS servers and captive portals: what is sent, read and printed.
#include <gtest/gtest.h>

#include "tests/program_case.h"

namespace tests {
namespace {

const std::string kNoPrivacy = R"({
	"dnsAddresses" : [],
	"dnsleak" : false,
	"ipleak" : false,
	"killswitch" : false,
	"requestToDisableDoH" : false
})";

std::string report(const std::string& data) { return event("report_privacy_settings", data); }

struct Setter {
  std::vector<std::string> words;
  std::string request;
  std::string members;
};

const Setter kSetters[] = {
    {{"privacy", "killswitch", "on", "extra"}, "set_privacy_killswitch", R"({"killswitch":true})"},
    {{"privacy", "dnsleak", "on"}, "set_privacy_dnsleak", R"({"dnsleak":true})"},
    {{"privacy", "ipleak", "off"}, "set_privacy_ipleak", R"({"ipleak":false})"},
    {{"privacy", "requestToDisableDoH", "on"}, "set_request_to_disable_doh", R"({"request_to_disable_doh":true})"},
    {{"dns"}, "set_dns_servers", R"({"dns_addresses":[]})"},
    {{"dns", std::string(60, 'd')}, "set_dns_servers", R"({"dns_addresses":[")" + std::string(45, 'd') + "\"]}"},
    {{"dns", "1.1.1.1", "", "x", "4.4.4.4"}, "set_dns_servers", R"({"dns_addresses":["1.1.1.1","","x"]})"},
};

TEST(Privacy, SettersSendTheirTextAndPrintTheAnswer) {
  for (const Setter& row : kSetters) {
    const std::string sent = request(row.request, row.members);
    check({.words = row.words,
           .answers = {{row.request, {refusedSetting("set_other"), report("{}")}}},
           .sent = {sent},
           .out = kNoPrivacy});
    check({.words = row.words,
           .answers = {{row.request, {refusedSetting(row.request), report("{}")}}},
           .sent = {sent},
           .err = refusedSettingError(),
           .status = 1});
  }
}

TEST(Privacy, DnsTakesAnyNumberOfWords) {
  std::vector<std::string> words(1000, std::string(1000, '9'));
  words[0] = "dns";
  const std::string address = "\"" + std::string(45, '9') + "\"";
  check({.words = words,
         .answers = {{"set_dns_servers", {report("{}")}}},
         .sent = {request("set_dns_servers", "{\"dns_addresses\":[" + address + "," + address + "," + address + "]}")},
         .out = kNoPrivacy});
}

TEST(Privacy, PrintsWhatAReportHolds) {
  const auto shows = [](const std::string& data, const std::string& out) {
    check({.words = {"show", "privacy"},
           .answers = {{"request_privacy_settings", {report(data)}}},
           .sent = {request("request_privacy_settings")},
           .out = out});
  };
  for (const auto& [wire, key] : {std::pair<std::string, std::string>{"killswitch", "killswitch"},
                                  {"dnsleak", "dnsleak"},
                                  {"ipleak", "ipleak"},
                                  {"request_to_disable_doh", "requestToDisableDoH"}}) {
    std::string out = kNoPrivacy;
    out.replace(out.find("\"" + key) + key.size() + 5, 5, "true");
    shows("{\"" + wire + "\":true}", out);
  }
  shows(R"({"dns_addresses":["1.1.1.1",7,")" + std::string(60, 'd') + R"(","4.4.4.4","5.5.5.5"]})",
        printed(R"({"dnsAddresses":["1.1.1.1","7",")" + std::string(45, 'd') +
                R"("],"dnsleak":false,"ipleak":false,"killswitch":false,"requestToDisableDoH":false})"));
  for (const char* data : {"null", R"({"killswitch":"on","ipleak":[true],"dns_addresses":"1.1.1.1"})",
                           R"({"dns_addresses":null,"dnsleak":null,"do_not_store_credentials":true})"}) {
    shows(data, kNoPrivacy);
  }
}

TEST(Privacy, RefuseFaultyWords) {
  const std::string privacy = "privacy <dnsleak|ipleak|killswitch|requestToDisableDoH>";
  const std::string login = "captiveportal login <on|off> <adapter id>";
  for (const ProgramCase& row : {
           missingCase({"privacy"}, privacy),
           invalidCase({"privacy", "Killswitch", "on"}, privacy),
           missingCase({"captiveportal"}, "captiveportal check|login"),
           invalidCase({"captiveportal", "logout"}, "captiveportal check|login"),
           invalidCase({"captiveportal", "check", "extra"}, "captiveportal check"),
           missingCase({"captiveportal", "login"}, login),
           missingCase({"captiveportal", "login", "on"}, login),
           invalidCase({"captiveportal", "login", "maybe"}, login),
           invalidCase({"captiveportal", "login", "off", "eth0"}, login),
           invalidCase({"captiveportal", "login", "on", "eth0", "extra"}, login),
       }) {
    check(row);
  }
  // No fault of a value is Invalid here.
  for (const char* word : {"killswitch", "dnsleak", "ipleak", "requestToDisableDoH"}) {
    const std::string usage = std::string("privacy ") + word + " <on|off>";
    check(missingCase({"privacy", word}, usage));
    check(missingCase({"privacy", word, "maybe"}, usage));
    if (word != std::string("killswitch")) check(missingCase({"privacy", word, "on", "extra"}, usage));
  }
}

TEST(CaptivePortal, CheckPrintsTheNetworks) {
  std::string networks;
  for (int i = 10; i < 35; ++i) networks += "\"n" + std::to_string(i) + "\",";
  networks.pop_back();
  const std::string longText(120, 'n');
  for (const auto& [data, out] : {
           std::pair<std::string, std::string>{R"({"networks":["wlan0","eth0"]})", "[ \"wlan0\", \"eth0\" ]"},
           {"{\"networks\":[" + networks + ",\"n35\"]}", "[" + networks + "]"},
           {"{\"networks\":[\"" + longText + "\",5]}", "[\"" + longText.substr(0, 99) + "\",\"5\"]"},
           {"{}", "[]"},
           {R"({"networks":"wlan0"})", "[]"},
           {R"(["wlan0"])", "[]"},
       }) {
    check({.words = {"captiveportal", "check"},
           .answers = {{"check_captive_networks", {event("report_captive_networks", data)}}},
           .sent = {request("check_captive_networks")},
           .out = printed(out)});
  }
}

TEST(CaptivePortal, LoginNamesTheAdapterToEnable) {
  const auto login = [](std::vector<std::string> words, const std::string& members, const std::string& data,
                        const std::string& out) {
    words.insert(words.begin(), {"captiveportal", "login"});
    check({.words = words,
           .answers = {{"set_cplogin_enable", {event("report_cplogin_network", data)}}},
           .sent = {request("set_cplogin_enable", members)},
           .out = printed(out)});
  };
  login({"on", "eth0"}, R"({"enable":true,"network":"eth0"})", R"({"enabled":true,"network":"wlan0"})",
        R"({"adapterID":"wlan0","enabled":true})");
  login({"on", ""}, R"({"enable":true,"network":""})", R"({"enabled":1,"network":")" + std::string(120, 'n') + "\"}",
        R"({"adapterID":")" + std::string(99, 'n') + R"(","enabled":true})");
  login({"off"}, R"({"enable":false})", "{}", R"({"adapterID":"","enabled":false})");
  login({"off"}, R"({"enable":false})", R"({"enabled":"yes","network":["eth0"]})",
        R"({"adapterID":"","enabled":false})");
}

/// Neither is a setting that a daemon could refuse.
TEST(CaptivePortal, PassesOverRefusedSettings) {
  check({.words = {"captiveportal", "check"},
         .answers = {{"check_captive_networks",
                      {refusedSetting("check_captive_networks"), event("report_captive_networks", "{}")}}},
         .sent = {request("check_captive_networks")},
         .out = "[]"});
  check({.words = {"captiveportal", "login", "off"},
         .answers = {{"set_cplogin_enable",
                      {refusedSetting("set_cplogin_enable"), event("report_cplogin_network", "{}")}}},
         .sent = {request("set_cplogin_enable", R"({"enable":false})")},
         .out = printed(R"({"adapterID":"","enabled":false})")});
}

}  // namespace
}  // namespace tests
