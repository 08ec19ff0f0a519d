// networksharing: connecting to a peer, pairing with it, and its switches.
#include <gtest/gtest.h>

#include "tests/program_case.h"

namespace tests {
namespace {

constexpr const char* kConnect = "networksharing connect <peer connect code>";
constexpr const char* kReconnect = "networksharing reconnect <peer uuid>";
constexpr const char* kPeer = "networksharing peer <allow|reject|request|unpair> <peer uuid>";
constexpr const char* kSetPeer = "networksharing set peer <autoreconnect|allowhost|allowclient> <peer uuid> <on|off>";
constexpr const char* kSetSwitch = "networksharing set <host|client> <on|off>";

// {"u":"p-1"}
constexpr const char* kCode = "eyJ1IjoicC0xIn0=";

std::string status(const std::string& members) {
  return event("report_networksharing_peer_status_change", "{" + members + "}");
}

std::string pairChange(const std::string& members) {
  return event("report_networksharing_peer_pair_change", "{" + members + "}");
}

const std::string kAuthenticated = status(R"("uuid":"p-1","peer_role":"host","peerStatus":2,"tunnelStatus":1)");
const std::string kFailed =
    status(R"("uuid":"p-1","display_name":"One","have_auth_token":true,"peer_role":"host","peerStatus":0,)"
           R"("type":3,"msg":"refused by peer")");
const std::string kPaired = pairChange(R"("uuid":"p-1","display_name":"One","have_auth_token":true)");

// Events that neither connecting to p-1 nor pairing with it may end on.
const std::vector<std::string> kPassedOver = {
    status(R"("uuid":"p-1","peerStatus":1)"),
    status(R"("uuid":"p-1","peerStatus":1,"type":0,"msg":"on the way")"),
    status(R"("uuid":"p-1","peerStatus":0,"type":0)"),
    status(R"("uuid":"p-1","peerStatus":7,"type":"3")"),
    status(R"("uuid":"p-1","peerStatus":"2","type":-1)"),
    status(R"("uuid":"p-2","peerStatus":2)"),
    status(R"("uuid":"p-2","peerStatus":0,"type":5,"msg":"of another peer")"),
    status(R"("uuid":"p-10","peerStatus":2)"),
    status(R"("uuid":1,"peerStatus":2,"type":5)"),
    status(R"("uuid":null,"peerStatus":2,"type":5)"),
    status(R"("peerStatus":2,"type":5)"),
    event("report_networksharing_peer_status_change", "null"),
    pairChange(R"("uuid":"p-2","have_auth_token":true)"),
    event("report_networksharing_sharesavailable", "[]"),
    event("report_networkshare_auth_request", R"({"uuid":"p-1"})"),
    event("report_networksharing_new_peer_available", R"({"uuid":"p-1"})"),
};

ProgramCase row(std::vector<std::string> words, const std::string& request, const std::string& members,
                const std::vector<std::string>& reports, const std::string& out) {
  words.insert(words.begin(), "networksharing");
  return {.words = std::move(words),
          .answers = {{request, reports}},
          .sent = {"[\"" + request + "\"," + members + ",\"zephlink_sdk\"]"},
          .out = out};
}

std::string connection(const char* peerStatus, const char* role, const std::string& uuid) {
  return std::string("{\n\t\"peerStatus\" : \"") + peerStatus + "\",\n\t\"role\" : \"" + role + "\",\n\t\"uuid\" : \"" +
         uuid + "\"\n}";
}

std::string pair(const std::string& name, const char* haveAuthToken, const std::string& uuid) {
  return "{\n\t\"displayName\" : \"" + name + "\",\n\t\"haveAuthToken\" : " + haveAuthToken + ",\n\t\"uuid\" : \"" +
         uuid + "\"\n}";
}

ProgramCase connectCase(const std::string& code, const std::vector<std::string>& reports, const std::string& out) {
  return row({"connect", code}, "connect_to_networkshare_connectcode", R"({"connect_code":")" + code + "\"}", reports,
             out);
}

ProgramCase reconnectCase(const std::string& uuid, const std::vector<std::string>& reports, const std::string& out) {
  return row({"reconnect", uuid}, "reconnect_to_networkshare", R"({"uuid":")" + uuid + "\"}", reports, out);
}

/// `request`, `allow` and `reject`, which wait in the same way; words behind are ignored.
std::vector<ProgramCase> pairCases(const std::vector<std::string>& reports, const std::string& out) {
  return {row({"peer", "request", "p-1", "ignored"}, "request_networksharing_pair", R"({"uuid":"p-1"})", reports, out),
          row({"peer", "allow", "p-1"}, "allow_networksharing_pair", R"({"allow":true,"uuid":"p-1"})", reports, out),
          row({"peer", "reject", "p-1"}, "allow_networksharing_pair", R"({"allow":false,"uuid":"p-1"})", reports, out)};
}

ProgramCase failing(ProgramCase each, unsigned code, const char* type, const std::string& message) {
  each.out = "";
  each.err = errorObject(code, type, message);
  each.status = 1;
  return each;
}

std::vector<std::string> behind(std::vector<std::string> reports, const std::string& last) {
  reports.push_back(last);
  return reports;
}

TEST(Peers, ConnectingEndsWhenThePeerIsAuthenticated) {
  const std::string out = connection("authenticated", "host", "p-1");
  check(connectCase(kCode, {kAuthenticated}, out));
  check(connectCase(kCode, behind(kPassedOver, kAuthenticated), out));
  check(reconnectCase("p-1", {kAuthenticated}, out));
  check(reconnectCase("p-1", behind(behind(kPassedOver, status(R"("uuid":"","peerStatus":2)")), kAuthenticated), out));
}

TEST(Peers, ConnectingEndsInAFailure) {
  for (const auto& each :
       {connectCase(kCode, behind(kPassedOver, kFailed), ""), reconnectCase("p-1", behind(kPassedOver, kFailed), "")}) {
    check(failing(each, 3, "Invalid credentials", "refused by peer"));
  }
  // Also of a peer that is authenticated, with any code.
  const std::string odd = status(R"("uuid":"p-1","peerStatus":2,"type":4000,"msg":")" + std::string(250, 'm') + "\"");
  check(failing(connectCase(kCode, {odd}, ""), 4000, "Unknown error", std::string(199, 'm')));
  check(failing(reconnectCase("p-1", {status(R"("uuid":"p-1","type":true)")}, ""), 1, "Network related error", ""));
}

TEST(Peers, ConnectingByACodeTakesEventsOfNobody) {
  check(connectCase(kCode, {status(R"("uuid":"","peerStatus":2)")}, connection("authenticated", "client", "")));
  check(failing(connectCase(kCode, {status(R"("uuid":"","type":13,"msg":"bad code")")}, ""), 13,
                "An invalid argument was supplied", "bad code"));
}

TEST(Peers, PrintsTheConnectionByItsWords) {
  const std::string uuid(50, 'u');
  check(reconnectCase("", {status(R"("uuid":"","peer_role":"guest","peerStatus":2.9)")},
                      connection("authenticated", "client", "")));
  // A wish for a peer whose uuid is as long as a uuid may be.
  const std::string longest = uuid.substr(0, 36);
  check(reconnectCase(longest, {status(R"("uuid":")" + longest + R"(","peer_role":"client","peerStatus":2)")},
                      connection("authenticated", "client", longest)));
}

TEST(Peers, CodesMayNameAnyHost) {
  const auto hostOf = [](const std::string& code, const std::string& json, const std::string& printed) {
    check(connectCase(code,
                      {status(R"("uuid":"other","peerStatus":2)"), status("\"uuid\":" + json + R"(,"peerStatus":2)")},
                      connection("authenticated", "client", printed)));
  };
  hostOf("eyJ1IjpudWxsfQ==", R"("")", "");         // {"u":null}
  hostOf("eyJ1Ijo1fQ==", R"("5")", "5");           // {"u":5}
  hostOf("eyJ1IjpbXX0=", R"("")", "");             // {"u":[]}
  hostOf("eyJ1IjoiIn0gKi8=", R"("")", "");         // {"u":""} and text behind it
  hostOf("eyJ1IjoicC0xIn0=*", R"("p-1")", "p-1");  // a bad character behind all that matters
  // 128 characters.
  std::string code = "eyJ1Ijoi";
  for (int i = 0; i < 29; ++i) code += "YWFh";
  const std::string uuid(87, 'a');
  hostOf(code + "In0g", "\"" + uuid + "\"", uuid.substr(0, 36));
}

TEST(Peers, CodesThatDoNotReadSendNothing) {
  for (const char* code : {"", "x", "not base64", "WzFd" /* [1] */, "e30=" /* {} */, "eyJVIjoiIn0=" /* {"U":""} */,
                           "InUi" /* "u" */, "bnVsbA==" /* null */, "MQ==" /* 1 */, "eyJ1Ijoi" /* {"u":" */,
                           "eyJ1IjoicC0xIn0" /* no padding */, " eyJ1IjoicC0xIn0=", "eyJ1Ijoi*C0xIn0="}) {
    const char* text = "An invalid argument was supplied";
    check({.words = {"networksharing", "connect", code}, .err = errorObject(3842, text, text), .status = 1});
  }
}

TEST(Peers, PairingEndsWithAChangeOfThePair) {
  for (const auto& each : pairCases(behind(kPassedOver, kPaired), pair("One", "true", "p-1"))) check(each);
  // A peer that is authenticated is not yet paired.
  for (const auto& each :
       pairCases({kAuthenticated, pairChange(R"("uuid":"p-1","have_auth_token":"true")")}, pair("", "false", "p-1"))) {
    check(each);
  }
}

TEST(Peers, PairingEndsInAFailure) {
  for (const auto& each : pairCases(behind(kPassedOver, kFailed), "")) {
    check(failing(each, 3, "Invalid credentials", "refused by peer"));
  }
}

TEST(Peers, UnpairingEndsWithAnyPairsChange) {
  const auto unpair = [](const std::vector<std::string>& reports, const std::string& out) {
    check(row({"peer", "unpair", "p-1"}, "unpair_networksharing_peer", R"({"uuid":"p-1"})", reports, out));
  };
  unpair({kFailed, kPaired}, pair("One", "true", "p-1"));
  unpair({pairChange(R"("uuid":")" + std::string(50, 'u') + R"(","display_name":")" + std::string(50, 'n') + "\"")},
         pair(std::string(32, 'n'), "false", std::string(36, 'u')));
  unpair({event("report_networksharing_peer_pair_change", "[]")}, pair("", "false", ""));
}

TEST(Peers, SetsTheSwitchesOfAPeer) {
  for (const auto& [word, request] : {std::pair{"autoreconnect", "set_networksharing_peer_auto_reconnect"},
                                      std::pair{"allowhost", "set_networksharing_peer_allow_as_host"},
                                      std::pair{"allowclient", "set_networksharing_peer_allow_as_client"}}) {
    const std::vector<std::string> reports = {
        // These calls change no setting that could be refused.
        event("report_settings_error", std::string(R"({"setting":")") + request + R"(","type":1,"msg":"no"})"),
        event("report_networksharing_sharesavailable", "[]")};
    check(row({"set", "peer", word, "p-1", "on"}, request, R"({"allow":true,"uuid":"p-1"})", reports, "[]"));
    check(row({"set", "peer", word, "", "off", "ignored"}, request, R"({"allow":false,"uuid":""})", reports, "[]"));
  }
}

TEST(Peers, TellsFaultyWords) {
  const std::string longCode(129, 'e');
  const std::string longUuid(37, 'u');
  const std::vector<ProgramCase> rows = {
      missingCase({"networksharing", "connect"}, kConnect),
      invalidCase({"networksharing", "connect", kCode, "two"}, kConnect),
      invalidCase({"networksharing", "connect", longCode}, kConnect),
      missingCase({"networksharing", "reconnect"}, kReconnect),
      invalidCase({"networksharing", "reconnect", "p-1", "two"}, kReconnect),
      invalidCase({"networksharing", "reconnect", longUuid}, kReconnect),
      missingCase({"networksharing", "peer"}, kPeer),
      missingCase({"networksharing", "peer", "mute"}, kPeer),
      invalidCase({"networksharing", "peer", "request", longUuid}, kPeer),
      invalidCase({"networksharing", "peer", "Allow", "p-1"}, kPeer),
      missingCase({"networksharing", "set", "peer"}, kSetPeer),
      missingCase({"networksharing", "set", "peer", "mute", "p-1"}, kSetPeer),
      invalidCase({"networksharing", "set", "peer", "allowhost", longUuid, "on"}, kSetPeer),
      invalidCase({"networksharing", "set", "peer", "mute", longUuid, "on"}, kSetPeer),
      invalidCase({"networksharing", "set", "peer", "mute", "p-1", "maybe"}, kSetPeer),
      invalidCase({"networksharing", "set", "peer", "mute", "p-1", "on"}, kSetSwitch),
  };
  for (const ProgramCase& each : rows) check(each);
}

// Five seconds each: what is passed over leaves the time-out running.

void expectTimeout(const ProgramCase& each) {
  const auto start = std::chrono::steady_clock::now();
  check(failing(each, 3841, "Timeout waiting for result", "Timeout"));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(Peers, ConnectingTimesOutBehindEventsOnTheWay) { expectTimeout(connectCase(kCode, kPassedOver, "")); }

TEST(Peers, AllowingTimesOutBehindEventsOnTheWay) {
  expectTimeout(row({"peer", "allow", "p-1"}, "allow_networksharing_pair", R"({"allow":true,"uuid":"p-1"})",
                    behind(kPassedOver, kAuthenticated), ""));
}

TEST(Peers, UnpairingTimesOutWithoutAnAnswer) {
  expectTimeout(row({"peer", "unpair", "p-1"}, "unpair_networksharing_peer", R"({"uuid":"p-1"})", {kFailed}, ""));
}

/// The calls with a longer time-out still wait when another has given up.
TEST(Peers, SlowPeersAreWaitedForLonger) {
  ScriptedDaemon daemon;
  const std::vector<std::string> command{ZEPHCTL_PATH, "-p", std::to_string(daemon.port()), "networksharing"};
  std::vector<std::string> reconnect = command;
  reconnect.insert(reconnect.end(), {"reconnect", "p-1"});
  std::vector<std::string> request = command;
  request.insert(request.end(), {"peer", "request", "p-1"});
  Process reconnecting(reconnect);
  Process requesting(request);
  ASSERT_TRUE(daemon.waitForRequests(2));
  EXPECT_EQ(zephctl(daemon.port(), {"version"}).status, 1);
  daemon.send(kPaired);
  EXPECT_EQ(requesting.finish().out, pair("One", "true", "p-1"));
  daemon.send(kAuthenticated);
  EXPECT_EQ(reconnecting.finish().out, connection("authenticated", "host", "p-1"));
}

std::string streamBlock(const char* label, const std::string& object) {
  return std::string("[\"") + label + "\",\n" + object + "]\n\n";
}

TEST(Peers, StatisticsStreamTheirEvents) {
  ScriptedDaemon daemon;
  Process run({ZEPHCTL_PATH, "-p", std::to_string(daemon.port()), "stats", "0", "networksharing"});
  const std::string newPeer = streamBlock("networksharing_newpeer", pair("One", "false", "p-1"));
  ASSERT_TRUE(sendUntilPrinted(
      daemon, run, event("report_networksharing_new_peer_available", R"({"uuid":"p-1","display_name":"One"})"),
      newPeer));
  daemon.send(event("report_networkshare_auth_request", R"({"uuid":"p-2","display_name":"Two"})"));
  daemon.send(kPaired);  // No stream tells of a pairing.
  daemon.send(kFailed);
  daemon.send(kAuthenticated);
  const std::string last = streamBlock("networksharing_peer_status_change", connection("authenticated", "host", "p-1"));
  EXPECT_TRUE(run.waitForOutput(last));
  run.kill();
  EXPECT_EQ(behindRepeated(newPeer, run.finish().out),
            streamBlock("networksharing_pairrequest", pair("Two", "false", "p-2")) +
                streamBlock("networksharing_peer_status_change",
                            "{\n\t\"errorCode\" : 3,\n\t\"errorMessage\" : \"refused by peer\",\n"
                            "\t\"errorType\" : \"Invalid credentials\",\n\t\"peerStatus\" : \"disconnected\",\n"
                            "\t\"role\" : \"host\",\n\t\"uuid\" : \"p-1\"\n}") +
                last);
}

}  // namespace
}  // namespace tests
