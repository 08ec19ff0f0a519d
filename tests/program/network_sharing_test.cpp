// networksharing: this machine's settings, discovery, and the peers that the daemon knows.
#include <gtest/gtest.h>

#include "tests/program_case.h"

namespace tests {
namespace {

constexpr const char* kMain = "networksharing <availableshares|connect|discovery|peer|set|settings|startdiscovery>";
constexpr const char* kSet =
    "networksharing set <alwaysOnDiscovery|autoPairBehavior|client|displayname|host|pairRequestBehavior|peer>";
constexpr const char* kSetSwitch = "networksharing set <host|client> <on|off>";
constexpr const char* kSetAutoPair = "networksharing set autoPairBehavior <manual|auto_user|auto_user_team>";
constexpr const char* kSetPairRequest = "networksharing set pairRequestBehavior <ask|accept|reject>";
constexpr const char* kSetAlwaysOn = "networksharing set alwaysOnDiscovery <on|off>";

constexpr const char* kNoSettings = R"({
	"alwaysOnDiscovery" : false,
	"autoPairBehavior" : "manual",
	"clientEnabled" : false,
	"displayName" : "",
	"hostConnectCode" : "",
	"hostEnabled" : false,
	"pairRequestBehavior" : "ask",
	"sameUserAutoPair" : false
})";

ProgramCase row(std::vector<std::string> words, const std::string& request, const std::string& members,
                const std::string& report, const std::string& out) {
  words.insert(words.begin(), "networksharing");
  return {.words = std::move(words),
          .answers = {{request, {report}}},
          .sent = {"[\"" + request + "\"," + members + ",\"zephlink_sdk\"]"},
          .out = out};
}

ProgramCase settingsCase(const std::string& data, const std::string& out) {
  return row({"settings", "ignored"}, "request_networksharing_settings", "null",
             event("report_networksharing_settings", data), out);
}

ProgramCase setterCase(std::vector<std::string> words, const std::string& request, const std::string& members) {
  words.insert(words.begin(), "set");
  return row(std::move(words), request, members, event("report_networksharing_settings", "{}"), kNoSettings);
}

ProgramCase sharesCase(const std::string& data, const std::string& out) {
  return row({"availableshares", "ignored"}, "request_networksharing_sharesavailable", "null",
             event("report_networksharing_sharesavailable", data), out);
}

std::string role(const char* allowed, const char* peer, const char* tunnel, const char* month, const char* today,
                 const char* total, const char* week) {
  return std::string("\n\t\t{\n\t\t\t\"allowed\" : ") + allowed + ",\n\t\t\t\"peerStatus\" : \"" + peer +
         "\",\n\t\t\t\"tunnelStatus\" : \"" + tunnel +
         "\",\n\t\t\t\"usage\" : \n\t\t\t{\n\t\t\t\t\"month\" : " + month + ",\n\t\t\t\t\"today\" : " + today +
         ",\n\t\t\t\t\"total\" : " + total + ",\n\t\t\t\t\"week\" : " + week + "\n\t\t\t}\n\t\t}";
}

const std::string kNoRole = role("false", "disconnected", "inactive", "0", "0", "0", "0");

std::string peer(const std::string& name, const std::string& uuid, const std::string& client, const std::string& host,
                 const std::array<const char*, 3>& flags = {"false", "false", "false"}) {
  return std::string("\t{\n\t\t\"autoReconnect\" : ") + flags[0] + ",\n\t\t\"displayName\" : \"" + name +
         "\",\n\t\t\"haveAuthToken\" : " + flags[1] + ",\n\t\t\"peerAsClient\" : " + client +
         ",\n\t\t\"peerAsHost\" : " + host + ",\n\t\t\"supportsHost\" : " + flags[2] + ",\n\t\t\"uuid\" : \"" + uuid +
         "\"\n\t}";
}

TEST(NetworkSharing, PrintsItsSettings) {
  const std::string code(150, 'c');
  const std::string name(40, 'n');
  const ProgramCase rows[] = {
      settingsCase(
          R"({"client_enabled":true,"host_enabled":false,"host_connect_code":"code","display_name":"Zoë",)"
          R"("pair_request_behavior":"accept","auto_pair_behavior":"auto_user","always_on_discovery":true})",
          "{\n\t\"alwaysOnDiscovery\" : true,\n\t\"autoPairBehavior\" : \"auto_user\",\n\t\"clientEnabled\" : true,\n"
          "\t\"displayName\" : \"Zoë\",\n\t\"hostConnectCode\" : \"code\",\n\t\"hostEnabled\" : false,\n"
          "\t\"pairRequestBehavior\" : \"accept\",\n\t\"sameUserAutoPair\" : true\n}"),
      settingsCase(R"({"host_enabled":1,"host_connect_code":")" + code + R"(","display_name":")" + name +
                       R"(","pair_request_behavior":"reject","auto_pair_behavior":"auto_user_team"})",
                   "{\n\t\"alwaysOnDiscovery\" : false,\n\t\"autoPairBehavior\" : \"auto_user_team\",\n"
                   "\t\"clientEnabled\" : false,\n\t\"displayName\" : \"" +
                       name.substr(0, 32) + "\",\n\t\"hostConnectCode\" : \"" + code.substr(0, 128) +
                       "\",\n\t\"hostEnabled\" : true,\n\t\"pairRequestBehavior\" : \"reject\",\n"
                       "\t\"sameUserAutoPair\" : true\n}"),
      settingsCase(R"({"pair_request_behavior":"never","auto_pair_behavior":"AUTO_USER"})", kNoSettings),
      settingsCase(R"({"client_enabled":"true","host_enabled":[true],"host_connect_code":{},"display_name":["x"],)"
                   R"("pair_request_behavior":1,"auto_pair_behavior":2,"always_on_discovery":null})",
                   kNoSettings),
      settingsCase("[]", kNoSettings),
  };
  for (const ProgramCase& each : rows) check(each);
}

TEST(NetworkSharing, ChangesItsSettings) {
  const ProgramCase rows[] = {
      setterCase({"client", "on"}, "set_networksharing_client_enabled", R"({"client_enabled":true})"),
      setterCase({"client", "off", "ignored"}, "set_networksharing_client_enabled", R"({"client_enabled":false})"),
      setterCase({"displayname", "A \"B\"", "ignored"}, "set_networksharing_display_name",
                 R"({"display_name":"A \"B\""})"),
      setterCase({"displayname", ""}, "set_networksharing_display_name", R"({"display_name":""})"),
      setterCase({"pairRequestBehavior", "ask"}, "set_networksharing_pair_request_behavior",
                 R"({"pair_request_behavior":"ask"})"),
      setterCase({"pairRequestBehavior", "accept"}, "set_networksharing_pair_request_behavior",
                 R"({"pair_request_behavior":"accept"})"),
      setterCase({"pairRequestBehavior", "reject"}, "set_networksharing_pair_request_behavior",
                 R"({"pair_request_behavior":"reject"})"),
      setterCase({"autoPairBehavior", "manual"}, "set_networksharing_auto_pair_behavior",
                 R"({"auto_pair_behavior":"manual"})"),
      setterCase({"autoPairBehavior", "auto_user"}, "set_networksharing_auto_pair_behavior",
                 R"({"auto_pair_behavior":"auto_user"})"),
      setterCase({"autoPairBehavior", "auto_user_team"}, "set_networksharing_auto_pair_behavior",
                 R"({"auto_pair_behavior":"auto_user_team"})"),
      setterCase({"sameUserAutoPair", "on"}, "set_networksharing_auto_pair_behavior",
                 R"({"auto_pair_behavior":"auto_user_team"})"),
      setterCase({"sameUserAutoPair", "off"}, "set_networksharing_auto_pair_behavior",
                 R"({"auto_pair_behavior":"manual"})"),
      setterCase({"alwaysOnDiscovery", "on"}, "set_networksharing_always_on_discovery",
                 R"({"always_on_discovery":true})"),
      setterCase({"alwaysOnDiscovery", "off"}, "set_networksharing_always_on_discovery",
                 R"({"always_on_discovery":false})"),
  };
  for (const ProgramCase& each : rows) {
    check(each);
    // The daemon refuses each under the name of its request; another setting's error is passed over.
    ProgramCase refused = each;
    const std::string request = each.answers.begin()->first;
    refused.answers[request] = {
        event("report_settings_error", R"({"setting":"other","type":1,"msg":"no"})"),
        event("report_settings_error", R"({"setting":")" + request + R"(","type":12,"msg":"locked"})")};
    refused.out = "";
    refused.err = errorObject(12, "Setting locked by account configuration", "locked");
    refused.status = 1;
    check(refused);
  }
}

TEST(NetworkSharing, CannotBeAHost) {
  for (const char* value : {"on", "off"}) {
    const char* text = "Platform does not support this call";
    check({.words = {"networksharing", "set", "host", value}, .err = errorObject(3844, text, text), .status = 1});
  }
}

TEST(NetworkSharing, PrintsAndStartsDiscovery) {
  const auto discovery = [](std::vector<std::string> words, const char* request, const char* data, const char* active) {
    check(row(std::move(words), request, "null", event("report_networksharing_discovery", data),
              std::string("{\n\t\"discoveryActive\" : ") + active + "\n}"));
  };
  discovery({"discovery", "ignored"}, "get_networksharing_discovery", R"({"discovering":true})", "true");
  discovery({"discovery"}, "get_networksharing_discovery", "{}", "false");
  discovery({"startdiscovery"}, "start_networksharing_discovery", R"({"discovering":true})", "true");
}

TEST(NetworkSharing, PrintsItsPeers) {
  check(sharesCase(
      R"([{"uuid":"u-1","auto_reconnect":true,"have_auth_token":false,"supports_host":false,"display_name":"One",)"
      R"("peer_as_client":{"allow":true,"peerStatus":1,"tunnelStatus":9,)"
      R"("usage":{"today":1,"week":2,"month":3,"total":4}},)"
      R"("peer_as_host":{"allow":false,"peerStatus":2,"tunnelStatus":4,)"
      R"("usage":{"today":5,"week":6,"month":7,"total":8}}},)"
      R"({"uuid":"u-2","have_auth_token":true,"display_name":"Two","peer_as_client":{"allow":true,"peerStatus":2}},)"
      R"({"uuid":"u-3","supports_host":true,"peer_as_host":{"usage":{"week":9}}}])",
      "[\n" +
          peer("One", "u-1", role("true", "unauthenticated", "paused", "3", "1", "4", "2"),
               role("false", "authenticated", "no networks available", "7", "5", "8", "6"),
               {"true", "false", "false"}) +
          ",\n" +
          peer("Two", "u-2", role("true", "authenticated", "inactive", "0", "0", "0", "0"), kNoRole,
               {"false", "true", "false"}) +
          ",\n" +
          peer("", "u-3", kNoRole, role("false", "disconnected", "inactive", "0", "0", "0", "9"),
               {"false", "false", "true"}) +
          "\n]"));
  for (const char* data : {"[]", "{}", "null", "5", "\"text\""}) check(sharesCase(data, "[]"));
}

TEST(NetworkSharing, ReadsPeersOfAnyShape) {
  const std::string longText(50, 'x');
  const std::string nobody = peer("", "", kNoRole, kNoRole);
  check(sharesCase(R"([5,null,[],{"uuid":")" + longText + R"(","display_name":")" + longText +
                       R"(","peer_as_client":null,"peer_as_host":[{"allow":true}]},)"
                       R"({"uuid":[],"auto_reconnect":"true","peer_as_client":{"allow":"on","peerStatus":"2",)"
                       R"("tunnelStatus":"1","usage":7},"peer_as_host":{"usage":{"today":"1","total":[2]}}}])",
                   "[\n" + nobody + ",\n" + nobody + ",\n" + nobody + ",\n" +
                       peer(longText.substr(0, 32), longText.substr(0, 36), kNoRole, kNoRole) + ",\n" + nobody +
                       "\n]"));
}

TEST(NetworkSharing, KeepsTheFirst32Peers) {
  std::string data;
  std::string out;
  for (int i = 0; i < 40; ++i) {
    const std::string uuid = "u" + std::to_string(i);
    data += std::string(i == 0 ? "[" : ",") + R"({"uuid":")" + uuid + "\"}";
    if (i < 32) out += (i == 0 ? "[\n" : ",\n") + peer("", uuid, kNoRole, kNoRole);
  }
  check(sharesCase(data + "]", out + "\n]"));
}

TEST(NetworkSharing, PrintsStatusesByTheirWords) {
  const std::pair<const char*, const char*> statuses[] = {
      {"0", "disconnected"}, {"1", "unauthenticated"}, {"2", "authenticated"},        {"3", "disconnected"},
      {"7", "disconnected"}, {"-1", "disconnected"},   {"4294967298", "disconnected"}};
  const std::pair<const char*, const char*> tunnels[] = {{"0", "inactive"},
                                                         {"1", "active"},
                                                         {"2", "disabled on client"},
                                                         {"3", "disabled on host"},
                                                         {"4", "no networks available"},
                                                         {"5", "tunnel error"},
                                                         {"6", "not authenticated"},
                                                         {"7", "networks over limit"},
                                                         {"8", "host's VPN not connected"},
                                                         {"9", "paused"},
                                                         {"10", "inactive"},
                                                         {"-1", "inactive"}};
  std::string data;
  std::string out;
  const auto add = [&](const std::string& member, const std::string& printed) {
    data += (data.empty() ? "[" : ",") + std::string(R"({"peer_as_host":{)") + member + "}}";
    out += (out.empty() ? "[\n" : ",\n") + peer("", "", kNoRole, printed);
  };
  for (const auto& [number, word] : statuses) {
    add(std::string("\"peerStatus\":") + number, role("false", word, "inactive", "0", "0", "0", "0"));
  }
  for (const auto& [number, word] : tunnels) {
    add(std::string("\"tunnelStatus\":") + number, role("false", "disconnected", word, "0", "0", "0", "0"));
  }
  check(sharesCase(data + "]", out + "\n]"));
}

TEST(NetworkSharing, KeepsTheLow32BitsOfACounter) {
  const std::pair<const char*, const char*> counters[] = {{"2147483647", "2147483647"},
                                                          {"2147483648", "18446744071562067968"},
                                                          {"4294967295", "18446744073709551615"},
                                                          {"4294967297", "1"},
                                                          {"-1", "18446744073709551615"},
                                                          {"-4294967296", "0"},
                                                          {"-9223372036854775807", "1"},
                                                          {"18446744073709551614", "18446744073709551614"},
                                                          {"5000000000.5", "705032704"},
                                                          {"1e300", "0"},
                                                          {"true", "1"},
                                                          {"\"5\"", "0"}};
  for (const auto& [number, printed] : counters) {
    check(sharesCase(
        std::string(R"([{"peer_as_client":{"usage":{"total":)") + number + "}}}]",
        "[\n" + peer("", "", role("false", "disconnected", "inactive", "0", "0", printed, "0"), kNoRole) + "\n]"));
  }
}

TEST(NetworkSharing, TellsFaultyWords) {
  const std::vector<ProgramCase> rows = {
      missingCase({"networksharing"}, kMain),
      invalidCase({"networksharing", "share"}, kMain),
      invalidCase({"networksharing", "Settings"}, kMain),
      invalidCase({"networksharing", "startdiscovery", "now"}, kMain),
      missingCase({"networksharing", "set"}, kSet),
      invalidCase({"networksharing", "set", "displayName", "x"}, kSet),
      missingCase({"networksharing", "set", "client"}, kSetSwitch),
      invalidCase({"networksharing", "set", "client", "maybe"}, kSetSwitch),
      missingCase({"networksharing", "set", "host"}, kSetSwitch),
      invalidCase({"networksharing", "set", "host", "maybe"}, kSetSwitch),
      missingCase({"networksharing", "set", "displayname"}, "networksharing set displayname <new name>"),
      missingCase({"networksharing", "set", "pairRequestBehavior"}, kSetPairRequest),
      invalidCase({"networksharing", "set", "pairRequestBehavior", "manual"}, kSetPairRequest),
      missingCase({"networksharing", "set", "autoPairBehavior"}, kSetAutoPair),
      invalidCase({"networksharing", "set", "autoPairBehavior", "on"}, kSetAutoPair),
      missingCase({"networksharing", "set", "sameUserAutoPair"}, kSetAutoPair),
      invalidCase({"networksharing", "set", "sameUserAutoPair", "manual"}, kSetAutoPair),
      missingCase({"networksharing", "set", "alwaysOnDiscovery"}, kSetAlwaysOn),
      invalidCase({"networksharing", "set", "alwaysOnDiscovery", "ON"}, kSetAlwaysOn),
  };
  for (const ProgramCase& each : rows) check(each);
}

}  // namespace
}  // namespace tests
