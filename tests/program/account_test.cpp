// Signing in and out, prompts, the account's figures and the directory settings.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/program_case.h"

namespace tests {
namespace {

std::string state(int number) { return event("report_current_state", "{\"state\":" + std::to_string(number) + "}"); }

std::string stateObject(const std::string& word) { return "{\n\t\"state\" : \"" + word + "\"\n}"; }

TEST(Login, EndsOnTheFirstStateThatCounts) {
  for (const auto& [number, word] : {std::pair{2, "LOGGED_IN"}, {6, "CONNECTED"}, {7, "OVERLIMIT"}}) {
    check({.words = {"login", "oauth", "token"},
           .answers = {{"login_oauth", {state(0), state(1), state(3), state(4), state(5), state(8), state(number)}}},
           .sent = {R"(["login_oauth",{"oauth":"token"},"zephlink_sdk"])"},
           .out = stateObject(word)});
  }
}

TEST(Login, TellsWhyItWasRefused) {
  check({.words = {"login", "bob", "x"},
         .answers = {{"login", {state(1), event("report_login_error", R"({"type":3,"msg":"wrong"})"), state(2)}}},
         .sent = {R"(["login",{"password":"x","username":"bob"},"zephlink_sdk"])"},
         .err = errorObject(3, "Invalid credentials", "wrong"),
         .status = 1});
}

TEST(Login, AsksForSecretsOnStandardInput) {
  const auto password = [](const std::string& input, const std::string& sent) {
    check({.words = {"login", "bob"},
           .answers = {{"login", {state(2)}}},
           .sent = {R"(["login",{"password":")" + sent + R"(","username":"bob"},"zephlink_sdk"])"},
           .out = "Enter password : " + stateObject("LOGGED_IN"),
           .input = input});
  };
  password("secret\nrest\n", "secret");
  password("no line end", "no line end");
  password("\n", "");
  password("", "");
  password(std::string(128, 'x') + "\n", std::string(128, 'x'));
  password(std::string(129, 'x') + "\n", "");
  for (const auto& [word, event] : {std::pair{"login", "login_oauth"}, {"refresh", "update_oauth"}}) {
    for (const std::size_t length : {std::size_t{511}, std::size_t{512}}) {
      const std::string token(length, 'x');
      check({.words = {word, "oauth"},
             .answers = {{event, {state(2)}}},
             .sent = {std::string("[\"") + event + R"(",{"oauth":")" + (length == 511 ? token : "") +
                      R"("},"zephlink_sdk"])"},
             .out = "Enter oauth token : " + stateObject("LOGGED_IN"),
             .input = token + "\n"});
    }
  }
}

constexpr const char* kLogoutRequest = R"(["logout",null,"zephlink_sdk"])";
constexpr const char* kStateRequest = R"(["request_current_state",null,"zephlink_sdk"])";

TEST(Logout, EndsOnceTheDaemonIsLoggedOut) {
  check({.words = {"logout"},
         .answers = {{"logout", {state(5), state(2)}}, {"request_current_state", {state(6), state(0)}}},
         .sent = {kLogoutRequest, kStateRequest},
         .out = stateObject("LOGGED_OUT")});
}

/// Neither an error of signing in nor another state ends it.
TEST(Logout, TimesOut) {
  check({.words = {"logout"},
         .answers = {{"logout", {event("report_login_error", R"({"type":3,"msg":"x"})"), state(2), state(7)}}},
         .sent = {kLogoutRequest, kStateRequest},
         .err = errorObject(3841, "Timeout waiting for result", "Timeout"),
         .status = 1});
}

ProgramCase userCase(const std::string& data, const std::string& out) {
  return {.words = {"show", "user"},
          .answers = {{"request_accounting_data", {event("report_accounting_data", data)}}},
          .sent = {R"(["request_accounting_data",null,"zephlink_sdk"])"},
          .out = out};
}

/// The printed record, but for what is told all zero.
struct User {
  std::string action = "none";
  std::string dataPeriodEnd = {};
  std::string email = {};
  std::string paymentType = "free";

  std::string text() const {
    return "{\n\t\"action\" : \"" + action +
           "\",\n\t\"bytesAvailable\" : 0,\n\t\"bytesUsed\" : 0,\n\t\"dataPeriodEnd\" : \"" + dataPeriodEnd +
           "\",\n\t\"email\" : \"" + email +
           "\",\n\t\"isAutoAccount\" : false,\n\t\"isTeam\" : false,\n\t\"minutesAvailable\" : "
           "0,\n\t\"minutesUsed\" : 0,\n\t\"paymentType\" : \"" +
           paymentType + "\"\n}";
  }
};

TEST(User, IsPrinted) {
  check(userCase(R"({"email":"a@b.example","isAutoAccount":true,"bytesAvail":9223372036854775807,"bytesUsed":-2,)"
                 R"("isTeam":false,"minutesAvail":3,"minutesUsed":4,"payTier":3,"periodEndDate":"2026-02-03",)"
                 R"("account_action":"connect_internet"})",
                 R"({
	"action" : "connect to internet and retry login",
	"bytesAvailable" : 9223372036854775807,
	"bytesUsed" : -2,
	"dataPeriodEnd" : "2026-02-03",
	"email" : "a@b.example",
	"isAutoAccount" : true,
	"isTeam" : false,
	"minutesAvailable" : 3,
	"minutesUsed" : 4,
	"paymentType" : "yearly"
})"));
  check(userCase("{}", User{}.text()));
  check(userCase(R"({"email":["a"],"isAutoAccount":"true","bytesAvail":"1","bytesUsed":{},"isTeam":[true],)"
                 R"("minutesAvail":2147483648,"minutesUsed":1e99,"payTier":"3","periodEndDate":[],)"
                 R"("account_action":{}})",
                 User{}.text()));
  check(userCase(R"({"email":")" + std::string(300, 'x') + "\"}", User{.email = std::string(249, 'x')}.text()));
}

TEST(User, TranslatesNumbersWordsAndDates) {
  for (const auto& [tier, type] :
       {std::pair{"0", "free"}, {"1", "monthly"}, {"2", "free"}, {"3", "yearly"}, {"4", "free"}, {"-1", "free"}}) {
    check(userCase(std::string("{\"payTier\":") + tier + "}", User{.paymentType = type}.text()));
  }
  for (const auto& [word, action] : {std::pair{"retry", "retry login"}, {"Retry", "none"}, {"none", "none"}}) {
    check(userCase(std::string(R"({"account_action":")") + word + "\"}", User{.action = action}.text()));
  }
  const std::pair<const char*, const char*> dates[] = {
      {"", ""},
      {"2026-12-31", "2026-12-31"},
      {"2026-2-3T10:00", "2026-02-03"},
      {"1900-05-06", ""},
      {"today", ""},
      // What is not there stays zero: a month counts from zero, a day from one.
      {"2026", "2026-01-00"},
      {"2026-", "2026-01-00"},
      {"2026/11/12", "2026-01-00"},
      {"2026-11", "2026-11-00"},
      {"2026-11-x", "2026-11-00"},
      {"-2147483648-99-2147483648", "2147483648-99-2147483647"},
  };
  for (const auto& [date, printed] : dates) {
    check(userCase(std::string(R"({"periodEndDate":")") + date + "\"}", User{.dataPeriodEnd = printed}.text()));
  }
}

TEST(DirectorySettings, ArePrinted) {
  const auto settings = [](const std::string& data, const std::string& domain, const char* esni,
                           const std::string& uri) {
    check({.words = {"show", "directory"},
           .answers = {{"request_directory_url", {event("report_directory_settings", data)}}},
           .sent = {R"(["request_directory_url",null,"zephlink_sdk"])"},
           .out = "{\n\t\"domain\" : \"" + domain + "\",\n\t\"enableEsni\" : " + esni + ",\n\t\"gatewayUri\" : \"" +
                  uri + "\"\n}"});
  };
  settings(R"({"domain":"d.example","enableEsni":true,"gatewayUri":"https://g"})", "d.example", "true", "https://g");
  settings("{}", "", "false", "");
  settings(R"({"domain":{},"enableEsni":"true","gatewayUri":7})", "", "false", "7");
  const std::string longText(120, 'x');
  settings(R"({"domain":")" + longText + R"(","gatewayUri":")" + longText + "y\"}", std::string(99, 'x'), "false",
           std::string(99, 'x'));
}

}  // namespace
}  // namespace tests
