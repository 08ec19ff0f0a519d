// Connecting, disconnecting, the directory and the default server: what is read and printed, and how calls end.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "sdk/results.h"
#include "tests/process.h"
#include "tests/program_case.h"

namespace tests {
namespace {

constexpr const char* kConnectRequest = R"(["server_auto_connect",{"server":"auto"},"zephlink_sdk"])";

std::string state(int number) { return event("report_current_state", "{\"state\":" + std::to_string(number) + "}"); }

/// What the daemon tells about a server, and how it is printed: alone, and the first lines as in a list.
constexpr const char* kServer =
    R"({"country":"privatejp","city":"tokyo","num":"7","private":"yes","premium":"no","torrent":"yes",)"
    R"("publicIP":["203.0.113.1","2001:db8::1"],"dnsIP":["198.51.100.1"],"dc":"tyo-1"})";
constexpr const char* kPrintedServer = R"({
	"city" : "tokyo",
	"country" : "jp",
	"dataCenter" : "tyo-1",
	"dnsIP" : 
	[
		"198.51.100.1"
	],
	"friendlyName" : "Japan - Tokyo #7",
	"isPremium" : true,
	"isPrivate" : true,
	"num" : 7,
	"publicIP" : 
	[
		"203.0.113.1",
		"2001:db8::1"
	],
	"tag" : "privatejp-tokyo-7",
	"torrentAllowed" : true
})";
constexpr const char* kPrintedEmptyServer = R"({
	"city" : "",
	"country" : "",
	"dataCenter" : "",
	"dnsIP" : [],
	"friendlyName" : "",
	"isPremium" : false,
	"isPrivate" : false,
	"num" : 0,
	"publicIP" : [],
	"tag" : "--0",
	"torrentAllowed" : false
})";

/// The members of a server in a list; all but what is told stands at its zero.
std::string listed(const std::string& country, const std::string& name, bool isPrivate = false) {
  const std::string flag = isPrivate ? "true" : "false";
  return "\t\t{\n\t\t\t\"city\" : \"\",\n\t\t\t\"country\" : \"" + country +
         "\",\n\t\t\t\"dataCenter\" : \"\",\n\t\t\t\"friendlyName\" : \"" + name +
         "\",\n\t\t\t\"isPremium\" : " + flag + ",\n\t\t\t\"isPrivate\" : " + flag +
         ",\n\t\t\t\"num\" : 0,\n\t\t\t\"tag\" : \"" + (isPrivate ? "private" : "") + country +
         "--0\",\n\t\t\t\"torrentAllowed\" : false\n\t\t}";
}

ProgramCase serverCase(const std::string& server, const std::string& out) {
  return {.words = {"show", "currentserver"},
          .answers = {{"request_connected_server", {event("report_connected_server", server)}}},
          .sent = {R"(["request_connected_server",null,"zephlink_sdk"])"},
          .out = out};
}

ProgramCase connectCase(const std::vector<std::string>& reports, const std::string& out) {
  return {.words = {"connect"}, .answers = {{"server_auto_connect", reports}}, .sent = {kConnectRequest}, .out = out};
}

TEST(CurrentServer, IsPrinted) {
  check(serverCase(kServer, kPrintedServer));
  for (const char* nothing : {"{}", "null", "[]", "7", R"({"private":true,"torrent":"Yes","publicIP":null})"}) {
    check(serverCase(nothing, kPrintedEmptyServer));
  }
}

TEST(CurrentServer, SurvivesWrongTypes) {
  check(serverCase(R"({"country":["us"],"city":{},"num":[7],"private":["yes"],"torrent":null,"publicIP":"1.2.3.4",)"
                   R"("dnsIP":17,"dc":[]})",
                   kPrintedEmptyServer));
}

TEST(CurrentServer, CutsTextsAndLists) {
  const std::string longText(60, 'x');
  std::string many = "\"" + longText + "\",{}";
  for (int i = 3; i <= 13; ++i) many += "," + std::to_string(i);
  std::string printed;
  for (int i = 3; i <= 12; ++i) printed += ",\n\t\t\"" + std::to_string(i) + "\"";
  const std::string city(ZephlinkSDK_CitySize - 1, 'x');
  const std::string address = "\"" + std::string(ZephlinkSDK_AddressSize - 1, 'x') + "\"";
  // The prefix of a private country goes before the text is cut to its room.
  const std::string report = R"({"country":"private)" + longText + R"(","city":")" + longText + R"(","dc":")" +
                             longText + R"(","num":" 12x","private":"yes","publicIP":[)" + many + R"(],"dnsIP":{"a":)" +
                             "\"" + longText + R"(","b":2,"c":3,"d":4}})";
  const std::string country(ZephlinkSDK_CountrySize - 1, 'x');
  std::string name = "{{LOCATION.COUNTRY." + country + "}} - {{LOCATION.CITY." + city + "}} #12";
  check(serverCase(report, "{\n\t\"city\" : \"" + city + "\",\n\t\"country\" : \"" + country +
                               "\",\n\t\"dataCenter\" : \"" + city + "\",\n\t\"dnsIP\" : \n\t[\n\t\t" + address +
                               ",\n\t\t\"2\",\n\t\t\"3\"\n\t],\n\t\"friendlyName\" : \"" + name +
                               "\",\n\t\"isPremium\" : true,\n\t\"isPrivate\" : true,\n\t\"num\" : 12,\n\t\"publicIP\" "
                               ": \n\t[\n\t\t" +
                               address + ",\n\t\t\"\"" + printed + "\n\t],\n\t\"tag\" : \"private" + country + "-" +
                               city + "-12\",\n\t\"torrentAllowed\" : false\n}"));
}

TEST(Connect, EndsOnTheStateWithTheLastServer) {
  const std::string other =
      event("report_connected_server", R"({"country":"us","city":"nyc","publicIP":["192.0.2.1"]})");
  const std::string server = event("report_connected_server", kServer);
  check(
      connectCase({state(3), other, state(5), state(2), server, state(4), state(7), state(6), other}, kPrintedServer));
  check(connectCase({state(6)}, kPrintedEmptyServer));
}

TEST(Connect, EndsOnErrors) {
  const std::string refusal = R"({"setting":"server_auto_connect","type":11,"msg":"locked"})";
  const std::tuple<const char*, std::string, std::string> errors[] = {
      {"report_connect_error", R"({"type":4,"msg":"no server"})",
       errorObject(4, "Directory related error", "no server")},
      {"report_login_error", R"({"type":7,"msg":"old"})", errorObject(7, "The provided OAUTH token is expired", "old")},
      {"report_connect_error", R"({"type":14,"msg":null})", errorObject(14, "Unknown error", "")},
      {"report_settings_error", refusal, errorObject(11, "Setting locked by server configuration", "locked")},
  };
  for (const auto& [name, data, err] : errors) {
    ProgramCase row = connectCase({event("report_settings_error", R"({"setting":"set_server_connectbest","msg":"x"})"),
                                   event("report_connected_server", kServer), event(name, data)},
                                  "");
    row.err = err;
    row.status = 1;
    check(row);
  }
}

TEST(Disconnect, EndsSignedInOrOut) {
  for (const auto& [number, word] : {std::pair{2, "LOGGED_IN"}, std::pair{0, "LOGGED_OUT"}}) {
    check({.words = {"disconnect"},
           .answers = {{"server_disconnect",
                        {state(6), event("report_connect_error", R"({"type":1,"msg":"x"})"), state(5), state(number)}}},
           .sent = {R"(["server_disconnect",null,"zephlink_sdk"])"},
           .out = std::string("{\n\t\"state\" : \"") + word + "\"\n}"});
  }
}

/// Disconnecting gives up after ten seconds; connecting and signing in, begun before, have a minute.
TEST(Disconnect, TimesOutLongBeforeConnectAndLogin) {
  ScriptedDaemon daemon;
  const std::string port = std::to_string(daemon.port());
  Process connecting({ZEPHCTL_PATH, "-p", port, "connect"});
  Process signingIn({ZEPHCTL_PATH, "-p", port, "login", "auto"});
  ASSERT_TRUE(daemon.waitForRequests(3));
  const auto start = std::chrono::steady_clock::now();
  const ProgramRun run = zephctl(daemon.port(), {"disconnect"});
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(run.err, errorObject(3841, "Timeout waiting for result", "Timeout"));
  EXPECT_EQ(run.status, 1);
  EXPECT_GE(took, std::chrono::seconds(10));
  EXPECT_LT(took, std::chrono::seconds(20));
  daemon.send(state(6));
  EXPECT_EQ(connecting.finish().out, kPrintedEmptyServer);
  EXPECT_EQ(signingIn.finish().out, "{\n\t\"state\" : \"CONNECTED\"\n}");
}

ProgramCase directoryCase(const std::string& servers, const std::string& out) {
  return {.words = {"show", "servers"},
          .answers = {{"request_directory", {event("report_directory", servers)}}},
          .sent = {R"(["request_directory",null,"zephlink_sdk"])"},
          .out = out};
}

TEST(Directory, DividesTheServersInTheirOrder) {
  const std::string us = R"({"country":"us"})";
  const std::string xx = R"({"country":"xx","publicIP":["192.0.2.1"]})";
  const std::string de = R"({"country":"privatede","private":"yes"})";
  const std::string unknown = listed("xx", "{{LOCATION.COUNTRY.xx}}");
  check(directoryCase("[" + us + "," + de + "," + xx + ",\"text\"]",
                      "{\n\t\"private\" : \n\t[\n" + listed("de", "Germany", true) + "\n\t],\n\t\"public\" : \n\t[\n" +
                          listed("us", "United States") + ",\n" + unknown + ",\n" + listed("", "") + "\n\t]\n}"));
  for (const char* nothing : {"[]", "{}", "null", "\"text\""}) {
    check(directoryCase(nothing, "{\n\t\"private\" : [],\n\t\"public\" : []\n}"));
  }
}

TEST(Directory, HasRoomForTheFirst1024) {
  for (const std::size_t count : {std::size_t{1023}, ZephlinkSDK_MaxServers, std::size_t{1500}}) {
    std::string servers;
    std::string printed;
    for (std::size_t i = 1; i <= count; ++i) {
      // Countries are counted up so that the order shows.
      const std::string number = std::to_string(i);
      servers += (i == 1 ? "{\"country\":\"" : ",{\"country\":\"") + number + "\"}";
      if (i > ZephlinkSDK_MaxServers) continue;
      printed += (i == 1 ? "" : ",\n") + listed(number, "{{LOCATION.COUNTRY." + number + "}}");
    }
    check(directoryCase("[" + servers + "]", "{\n\t\"private\" : [],\n\t\"public\" : \n\t[\n" + printed + "\n\t]\n}"));
  }
}

TEST(ConnectMethod, IsReadFromTheDaemonsWords) {
  struct Row {
    const char* data;
    const char* method;
    const char* country;
    const char* city;
    const char* num;
  };
  const Row rows[] = {
      {R"({"connect_to_best_method":"user","connect_country":"us|nyc|3"})", "closest", "", "", "0"},
      {R"({"connect_to_best_method":"userpublic"})", "public", "", "", "0"},
      {R"({"connect_to_best_method":"userprivate"})", "private", "", "", "0"},
      {R"({"connect_to_best_method":"p2p"})", "p2p", "", "", "0"},
      {R"({"connect_to_best_method":"proxy"})", "proxy", "", "", "0"},
      {R"({"connect_to_best_method":"country","connect_country":"us|nyc|3"})", "country", "us", "nyc", "3"},
      {R"({"connect_to_best_method":"exact","connect_country":"us|nyc|3|4"})", "exact", "us", "nyc", "3"},
      {R"({"connect_to_best_method":"country","connect_country":"us||5"})", "country", "us", "", "5"},
      {R"({"connect_to_best_method":"country","connect_country":"us|nyc"})", "country", "us", "nyc", "0"},
      {R"({"connect_to_best_method":"country","connect_country":"|"})", "country", "", "", "0"},
      {R"({"connect_to_best_method":"country","connect_country":"privateus-long|12345678901234567890|x"})", "country",
       "privateus", "1234567890123456789", "0"},
      {R"({"connect_to_best_method":"country","connect_country":["us"]})", "country", "", "", "0"},
      {R"({"connect_to_best_method":"country"})", "country", "", "", "0"},
      {R"({"connect_to_best_method":"last","connect_country":"us"})", "closest", "", "", "0"},
      {R"({"connect_to_best_method":7,"connect_country":"us"})", "closest", "", "", "0"},
      {"{}", "closest", "", "", "0"},
  };
  for (const Row& row : rows) {
    check({.words = {"show", "connectmethod"},
           .answers = {{"request_server_settings", {event("report_server_settings", row.data)}}},
           .sent = {R"(["request_server_settings",null,"zephlink_sdk"])"},
           .out = std::string("{\n\t\"city\" : \"") + row.city + "\",\n\t\"connectMethod\" : \"" + row.method +
                  "\",\n\t\"country\" : \"" + row.country + "\",\n\t\"num\" : " + row.num + "\n}"});
  }
}

TEST(ConnectMethod, MayBeRefused) {
  check({.words = {"connectmethod", "p2p"},
         .answers = {{"set_server_connectbest",
                      {event("report_settings_error",
                             R"({"setting":"set_server_connectbest","type":12,"msg":"not for you"})")}}},
         .sent = {R"(["set_server_connectbest",{"connect_to_best_method":"p2p","countryCode":""},"zephlink_sdk"])"},
         .err = errorObject(12, "Setting locked by account configuration", "not for you"),
         .status = 1});
}

}  // namespace
}  // namespace tests
