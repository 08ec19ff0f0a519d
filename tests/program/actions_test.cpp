// The words of the actions: what each form sends and what each fault tells, one table a family.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/usage.h"
#include "tests/process.h"
#include "tests/program_case.h"

namespace tests {
namespace {

namespace usage = cli::usage;

/// The words of a line, divided by single blanks: two in a row, or one at the end, make an empty word.
std::vector<std::string> words(const std::string& line) {
  std::vector<std::string> pieces(1);
  for (const char letter : line) {
    if (letter == ' ') {
      pieces.emplace_back();
    } else {
      pieces.back() += letter;
    }
  }
  return pieces;
}

std::string request(const std::string& name, const std::string& members = "null") {
  return "[\"" + name + "\"," + members + ",\"zephlink_sdk\"]";
}

struct Form {
  const char* line;
  std::string members;
};

/// All forms that send one request of this name, whose answer is printed as `out`.
void checkForms(const std::vector<Form>& forms, const std::string& name, const std::string& report,
                const std::string& out) {
  for (const Form& form : forms) {
    check(
        {.words = words(form.line), .answers = {{name, {report}}}, .sent = {request(name, form.members)}, .out = out});
  }
}

void checkInvalid(const char* usage, const std::vector<const char*>& lines) {
  for (const char* line : lines) check(invalidCase(words(line), usage));
}

void checkMissing(const char* usage, const char* line) { check(missingCase(words(line), usage)); }

// ---- Connecting ----

constexpr const char* kNoServer =
    "{\n\t\"city\" : \"\",\n\t\"country\" : \"\",\n\t\"dataCenter\" : \"\",\n\t\"dnsIP\" : [],\n\t\"friendlyName\" : "
    "\"\",\n\t\"isPremium\" : false,\n\t\"isPrivate\" : false,\n\t\"num\" : 0,\n\t\"publicIP\" : [],\n\t\"tag\" : "
    "\"--0\",\n\t\"torrentAllowed\" : false\n}";

TEST(Actions, Connect) {
  checkForms(
      {
          {"connect", R"({"server":"auto"})"},
          {"connect closest", R"({"server":"user"})"},
          {"connect public", R"({"server":"userpublic"})"},
          {"connect private", R"({"server":"userprivate"})"},
          {"connect p2p", R"({"server":"p2p"})"},
          {"connect last", R"({"server":"last"})"},
          {"connect proxy", R"({"server":"proxy"})"},
          {"connect ignorelast", R"({"server":"ignorelast"})"},
          {"connect #us-nyc-3", R"({"server":"#us|nyc|3"})"},
          {"connect #privateus-nyc-3", R"({"server":"#privateus|nyc|3"})"},
          {"connect us-nyc-3", R"({"server":"us|nyc|3"})"},
          {"connect us-nyc-0", R"({"server":"us|nyc|0"})"},
          {"connect us-nyc-3x", R"({"server":"us|nyc|3"})"},
          {"connect us", R"({"server":"us"})"},
          {"connect US", R"({"server":"US"})"},
          {"connect privateus", R"({"server":"privateus"})"},
          {"connect us nyc", R"({"server":"us|nyc"})"},
          {"connect us ", R"({"server":"us|"})"},
          {"connect us nyc 3", R"({"server":"us|nyc|3"})"},
          {"connect privateus nyc 2147483647", R"({"server":"privateus|nyc|2147483647"})"},
      },
      "server_auto_connect", event("report_current_state", R"({"state":6})"), kNoServer);
}

TEST(Actions, ConnectFaults) {
  checkInvalid(usage::connect, {"connect ",
                                "connect USA",
                                "connect u1",
                                "connect auto",
                                "connect country",
                                "connect exact",
                                "connect Closest",
                                "connect privateu",
                                "connect Privateus",
                                "connect a-b-1",
                                "connect #a-b-1",
                                "connect us-ny2-3",
                                "connect us-nyc-x",
                                "connect us--3",
                                "connect us-nyc-3-4",
                                "connect #us",
                                "connect closest us",
                                "connect us-nyc-3 nyc",
                                "connect us n1",
                                "connect us nyc 0",
                                "connect us nyc -1",
                                "connect us nyc abc",
                                "connect us nyc 3x",
                                "connect us nyc ",
                                "connect us nyc 2147483648",
                                "connect us nyc 3 4",
                                "connect closest nyc 3 4"});
}

TEST(Actions, ConnectMethod) {
  const auto members = [](const std::string& mode, const std::string& country) {
    return R"({"connect_to_best_method":")" + mode + R"(","countryCode":")" + country + "\"}";
  };
  checkForms(
      {
          {"connectmethod closest", members("user", "")},
          {"connectmethod public", members("userpublic", "")},
          {"connectmethod private", members("userprivate", "")},
          {"connectmethod p2p", members("p2p", "")},
          {"connectmethod proxy", members("proxy", "")},
          {"connectmethod #us-nyc-3", members("exact", "us|nyc|3")},
          {"connectmethod us-nyc-3", members("country", "us|nyc|3")},
          {"connectmethod privateus", members("country", "privateus")},
          {"connectmethod us nyc", members("country", "us|nyc")},
          {"connectmethod us nyc 3", members("country", "us|nyc|3")},
      },
      "set_server_connectbest", event("report_server_settings", "{}"),
      "{\n\t\"city\" : \"\",\n\t\"connectMethod\" : \"closest\",\n\t\"country\" : \"\",\n\t\"num\" : 0\n}");
}

TEST(Actions, ConnectMethodFaults) {
  checkMissing(usage::connectmethod, "connectmethod");
  checkInvalid(
      usage::connectmethod,
      {"connectmethod ", "connectmethod last", "connectmethod ignorelast", "connectmethod auto", "connectmethod usa",
       "connectmethod us-ny2-3", "connectmethod #us-nyc-x", "connectmethod closest us", "connectmethod us nyc 0",
       "connectmethod us nyc x", "connectmethod us nyc 3 4", "connectmethod us n1 3 4", "connectmethod u1 n1"});
  checkInvalid(usage::connect, {"connectmethod us n1", "connectmethod us n1 3", "connectmethod us n1 x"});
}

TEST(Actions, WordsOfConnectingWithoutArguments) {
  checkInvalid(usage::disconnect, {"disconnect x", "disconnect "});
  for (const char* list : {"countries", "cities", "servers"}) {
    check({.words = {"show", list},
           .answers = {{"request_directory", {event("report_directory", "[]")}}},
           .sent = {request("request_directory")},
           .out = "{\n\t\"private\" : [],\n\t\"public\" : []\n}"});
  }
  checkMissing(usage::show, "show");
  checkInvalid(usage::show, {"show ", "show server", "show servers x", "show user x", "show directory "});
}

// ---- Account ----

TEST(Actions, LoginFaults) {
  checkMissing(usage::login, "login");
  checkInvalid(usage::loginAuto, {"login auto x", "login auto ", "login auto x y"});
  checkInvalid(usage::loginOauth, {"login oauth a b", "login oauth a b c"});
  checkInvalid(usage::login, {"login bob x y", "login bob x y z", "login Auto x y"});
  checkMissing(usage::refreshOauth, "refresh");
  checkInvalid(usage::refreshOauth, {"refresh token", "refresh auto", "refresh ", "refresh oauth a b"});
  checkInvalid(usage::logout, {"logout x"});
}

TEST(Actions, SignIn) {
  const std::string loggedIn = event("report_current_state", R"({"state":2})");
  const std::string out = "{\n\t\"state\" : \"LOGGED_IN\"\n}";
  checkForms({{"login bob pass", R"({"password":"pass","username":"bob"})"},
              {"login Auto x", R"({"password":"x","username":"Auto"})"},
              {"login bob ", R"({"password":"","username":"bob"})"}},
             "login", loggedIn, out);
  checkForms({{"login oauth token", R"({"oauth":"token"})"}}, "login_oauth", loggedIn, out);
  checkForms({{"refresh oauth token", R"({"oauth":"token"})"}}, "update_oauth", loggedIn, out);
  check({.words = {"login", "auto"},
         .answers = {{"login_auto", {loggedIn}}},
         .sent = {request("allow_auto_account"), request("login_auto")},
         .out = out});
}

TEST(Actions, DirectorySettings) {
  const std::string report = event("report_directory_settings", "{}");
  const std::string out = "{\n\t\"domain\" : \"\",\n\t\"enableEsni\" : false,\n\t\"gatewayUri\" : \"\"\n}";
  checkForms(
      {{"directory d.example", R"({"domain":"d.example"})"}, {"directory ", R"({"domain":""})"}, {"directory", "null"}},
      "set_directory_domain", report, out);
  checkForms({{"gateway https://g/", R"({"url":"https://g/"})"}, {"gateway", "null"}}, "set_directory_gateway_uri",
             report, out);
  checkForms({{"esni on", "null"}, {"esni off", "null"}, {"show directory", "null"}}, "request_directory_url", report,
             out);
  checkInvalid(usage::directory, {"directory a b"});
  checkInvalid(usage::gateway, {"gateway a b"});
  const std::string help = Process({ZEPHCTL_PATH, "help"}).finish().out;
  for (const char* line : {"esni", "esni maybe", "esni On", "esni on off"}) check({.words = words(line), .err = help});
}

}  // namespace
}  // namespace tests
