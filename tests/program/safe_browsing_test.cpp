// safebrowsing: its words, settings, counters and both streams.
#include <gtest/gtest.h>

#include "tests/program_case.h"

namespace tests {
namespace {

constexpr const char* kMain =
    "safebrowsing "
    "<initialize|config|enable|errors|stats|redirects|loglevel|token|homenetwork|override|settings|start|stop>";
constexpr const char* kErrors = "safebrowsing errors [duration in seconds]";
constexpr const char* kLogLevel = "safebrowsing loglevel <trace|debug|info|warning|error>";
constexpr const char* kOverride = "safebrowsing override <none|unsafe|safe>";
constexpr const char* kHomeNetwork = "safebrowsing homenetwork [retries delay timeout]";

std::string settingsReport(const std::string& data) { return event("report_safe_browsing_settings", data); }
std::string connectError(const std::string& data) { return event("report_safe_browsing_connect_error", data); }
std::string settingsError(const std::string& setting) {
  return event("report_settings_error", R"({"setting":")" + setting + R"(","type":11,"msg":"locked"})");
}

const std::string kReady = settingsReport(R"({"initialized":true})");
const std::string kUnreachable = connectError(R"({"error":4,"safebro_msg":"out of reach"})");

std::string settings(const char* initialized, const char* configSet = "false", const char* enabled = "false",
                     const char* logLevel = "debug", const char* networkOverride = "none") {
  return std::string("{\n\t\"configSet\" : ") + configSet + ",\n\t\"enabled\" : " + enabled +
         ",\n\t\"initialized\" : " + initialized + ",\n\t\"log_level\" : \"" + logLevel +
         "\",\n\t\"network_override\" : \"" + networkOverride + "\"\n}";
}

std::string connectErrorObject(const char* error, const std::string& message) {
  return std::string("{\n\t\"error\" : ") + error + ",\n\t\"msg\" : \"" + message + "\"\n}";
}

/// One request of a word: its name, its members as they are sent, and what the daemon answers.
struct Exchange {
  std::string request;
  std::string members;
  std::vector<std::string> reports;
};

ProgramCase row(std::vector<std::string> words, const std::vector<Exchange>& exchanges, const std::string& out,
                int status = 0) {
  ProgramCase each{.words = std::move(words), .out = out, .status = status};
  each.words.insert(each.words.begin(), "safebrowsing");
  for (const Exchange& exchange : exchanges) {
    each.answers[exchange.request] = exchange.reports;
    each.sent.push_back("[\"" + exchange.request + "\"," + exchange.members + ",\"zephlink_sdk\"]");
  }
  return each;
}

ProgramCase refusedRow(std::vector<std::string> words, const std::vector<Exchange>& exchanges) {
  ProgramCase each = row(std::move(words), exchanges, "", 1);
  each.err = errorObject(11, "Setting locked by server configuration", "locked");
  return each;
}

void checkAll(const std::vector<ProgramCase>& rows) {
  for (const ProgramCase& each : rows) check(each);
}

ProgramCase settingsCase(const std::string& data, const std::string& out) {
  return row({"settings"}, {{"request_safe_browsing_settings", "null", {settingsReport(data)}}}, out);
}

TEST(SafeBrowsing, PrintsItsSettings) {
  checkAll({
      settingsCase(R"({"initialized":true,"config_set":false,"enabled":true,"log_level":"trace",)"
                   R"("network_override":"unsafe"})",
                   settings("true", "false", "true", "trace", "unsafe")),
      settingsCase(R"({"config_set":true,"log_level":"verbose","network_override":"Safe"})",
                   settings("false", "true", "false")),
      settingsCase(R"({"initialized":"true","config_set":{},"enabled":null,"log_level":3,"network_override":["safe"]})",
                   settings("false")),
      settingsCase("[]", settings("false")),
  });
}

TEST(SafeBrowsing, PrintsItsCounters) {
  const auto stats = [](const char* data, const char* out) {
    check(row({"stats"}, {{"request_safe_browsing_stats", "null", {event("report_safe_browsing_stats", data)}}}, out));
  };
  stats(R"({"min":1,"max":4294967295,"average":3,"num_errors":4,"num_blocks":5,"failure_rate":0.25,)"
        R"("num_block_responses":7,"num_safe_browsing_lookups":18446744073709551615,)"
        R"("num_safe_browsing_packets_filtered":9})",
        "{\n\t\"average\" : 3,\n\t\"failure_rate\" : 0.25,\n\t\"max\" : 4294967295,\n\t\"min\" : 1,\n"
        "\t\"num_block_responses\" : 7,\n\t\"num_blocks\" : 5,\n\t\"num_errors\" : 4,\n"
        "\t\"num_lookups\" : 18446744073709551615,\n\t\"num_packets_filtered\" : 9\n}");
  const char* zeros =
      "{\n\t\"average\" : 0,\n\t\"failure_rate\" : 0.0,\n\t\"max\" : 0,\n\t\"min\" : 0,\n"
      "\t\"num_block_responses\" : 0,\n\t\"num_blocks\" : 0,\n\t\"num_errors\" : 0,\n"
      "\t\"num_lookups\" : 0,\n\t\"num_packets_filtered\" : 0\n}";
  stats("{}", zeros);
  stats(R"({"min":-1,"max":4294967296,"average":"3","num_lookups":5,"num_packets_filtered":6,"failure_rate":"1"})",
        zeros);
}

TEST(SafeBrowsing, ChangesASetting) {
  const auto setter = [](const char* word, const char* value, const char* request, const std::string& members) {
    return row({word, value}, {{request, members, {kUnreachable, settingsReport("{}")}}}, settings("false"));
  };
  std::vector<ProgramCase> rows = {
      setter("config", "a \"b\"", "set_safe_browsing_config", R"({"config":"a \"b\""})"),
      setter("config", "", "set_safe_browsing_config", R"({"config":""})"),
      setter("enable", "on", "enable_safe_browsing", R"({"enable":true})"),
      setter("enable", "off", "enable_safe_browsing", R"({"enable":false})"),
  };
  for (const char* level : {"debug", "info", "error", "trace", "warning"}) {
    rows.push_back(
        setter("loglevel", level, "set_safe_browsing_log_level", std::string(R"({"log_level":")") + level + "\"}"));
    rows.push_back(
        settingsCase(std::string(R"({"log_level":")") + level + "\"}", settings("false", "false", "false", level)));
  }
  for (const char* choice : {"none", "unsafe", "safe"}) {
    rows.push_back(setter("override", choice, "set_safe_browsing_safe_network_override",
                          std::string(R"({"network_override":")") + choice + "\"}"));
    rows.push_back(settingsCase(std::string(R"({"network_override":")") + choice + "\"}",
                                settings("false", "false", "false", "debug", choice)));
  }
  checkAll(rows);
}

/// The names under which the daemon refuses: some are those of another request, and some requests have none.
TEST(SafeBrowsing, IsRefusedUnderItsNames) {
  const auto refused = [](std::vector<std::string> words, const char* request, const char* members, const char* name,
                          const std::vector<std::string>& otherNames) {
    std::vector<std::string> reports;
    for (const std::string& other : otherNames) reports.push_back(settingsError(other));
    reports.push_back(settingsError(name));
    check(refusedRow(std::move(words), {{request, members, reports}}));
  };
  const char* init = "initialize_safe_browsing";
  const char* token = "safe_browsing_token_refresh";
  refused({"initialize", "c"}, init, R"({"config":"c"})", init, {token, "set_safe_browsing_config"});
  refused({"config", "c"}, "set_safe_browsing_config", R"({"config":"c"})", init, {"set_safe_browsing_config"});
  refused({"enable", "on"}, "enable_safe_browsing", R"({"enable":true})", "enable_safe_browsing", {init});
  refused({"token", "t"}, token, R"({"token":"t"})", token, {init});
  refused({"homenetwork"}, "safe_browsing_report_home_network", R"({"delay":0,"retries":0,"timeout":0})", token,
          {"safe_browsing_report_home_network"});
  const auto deaf = [](const char* word, const char* value, const char* request, const char* members) {
    check(row({word, value}, {{request, members, {settingsError(request), kReady}}}, settings("true")));
  };
  deaf("loglevel", "info", "set_safe_browsing_log_level", R"({"log_level":"info"})");
  deaf("override", "safe", "set_safe_browsing_safe_network_override", R"({"network_override":"safe"})");
}

TEST(SafeBrowsing, ConnectsToItsService) {
  const auto initialize = [](const std::string& report, const std::string& out, int status) {
    return row({"initialize", "c"}, {{"initialize_safe_browsing", R"({"config":"c"})", {report}}}, out, status);
  };
  const auto token = [](const std::vector<std::string>& reports, const std::string& out, int status) {
    return row({"token", "t"}, {{"safe_browsing_token_refresh", R"({"token":"t"})", reports}}, out, status);
  };
  const std::string longText(250, 'x');
  checkAll({
      initialize(kReady, settings("true"), 0),
      initialize(settingsReport("{}"), settings("false"), 0),
      initialize(kUnreachable, connectErrorObject("4", "out of reach"), 1),
      initialize(connectError(R"({"error":-17,"safebro_msg":")" + longText + "\"}"),
                 connectErrorObject("-17", longText.substr(0, 199)), 1),
      initialize(connectError("{}"), connectErrorObject("0", ""), 1),
      initialize(connectError(R"({"error":"4","safebro_msg":{}})"), connectErrorObject("0", ""), 1),
      token({kReady}, settings("true"), 0),
      token({kUnreachable}, connectErrorObject("4", "out of reach"), 1),
      token({connectError(R"({"error":17,"safebro_msg":"m"})")}, connectErrorObject("17", "m"), 1),
      // Only the settings of an initialized service will do.
      token({settingsReport("{}"), settingsReport(R"({"initialized":false})"), settingsReport(R"({"initialized":1})"),
             settingsReport(R"({"initialized":null})"), kReady},
            settings("true"), 0),
  });
}

TEST(SafeBrowsing, ReportsTheHomeNetwork) {
  const auto report = [](std::vector<std::string> limits, const char* members, const std::vector<std::string>& reports,
                         const std::string& out, int status = 0) {
    limits.insert(limits.begin(), "homenetwork");
    return row(std::move(limits), {{"safe_browsing_report_home_network", members, reports}}, out, status);
  };
  const char* zeros = R"({"delay":0,"retries":0,"timeout":0})";
  checkAll({
      report({}, zeros, {settingsReport(R"({"initialized":false})"), kReady}, settings("true")),
      report({"1", "2", "3"}, R"({"delay":2,"retries":1,"timeout":3})", {kReady}, settings("true")),
      report({"4294967295", "18446744073709551615", "-1"},
             R"({"delay":18446744073709551615,"retries":4294967295,"timeout":18446744073709551615})", {kReady},
             settings("true")),
      report({}, zeros, {kUnreachable}, connectErrorObject("4", "out of reach"), 1),
      // These two count as a success.
      report({}, zeros, {connectError(R"({"error":17,"safebro_msg":"m"})")}, connectErrorObject("17", "m")),
      report({}, zeros, {connectError(R"({"safebro_msg":"m"})")}, connectErrorObject("0", "m")),
  });
}

TEST(SafeBrowsing, StartsAndStops) {
  const auto start = [](const std::vector<std::string>& first, const std::vector<std::string>& second,
                        const std::string& out) {
    return row({"start", "c"},
               {{"enable_safe_browsing", R"({"enable":true})", first},
                {"initialize_safe_browsing", R"({"config":"c"})", second}},
               out);
  };
  checkAll({
      start({settingsReport(R"({"enabled":true})")}, {kReady}, settings("true")),
      // What comes of the first request is of no interest.
      start({settingsError("enable_safe_browsing")}, {kReady}, settings("true")),
      start({settingsReport("{}")}, {kUnreachable}, settings("false")),
      row({"stop"},
          {{"enable_safe_browsing", R"({"enable":false})", {settingsReport("{}")}},
           {"initialize_safe_browsing", R"({"config":""})", {settingsReport(R"({"config_set":true})")}}},
          settings("false", "true")),
      refusedRow({"stop"},
                 {{"enable_safe_browsing", R"({"enable":false})", {settingsReport("{}")}},
                  {"initialize_safe_browsing", R"({"config":""})", {settingsError("initialize_safe_browsing")}}}),
  });
}

TEST(SafeBrowsing, TellsFaultyWords) {
  const auto invalidWords = [](std::vector<std::string> words, const char* usage) {
    words.insert(words.begin(), "safebrowsing");
    return invalidCase(std::move(words), usage);
  };
  checkAll({
      missingCase({"safebrowsing"}, kMain),
      invalidWords({"Settings"}, kMain),
      invalidWords({""}, kMain),
      invalidWords({"initialize"}, "safebrowsing initialize <string>"),
      invalidWords({"config"}, "safebrowsing config <string>"),
      invalidWords({"enable"}, "safebrowsing enable <on|off>"),
      invalidWords({"loglevel"}, kLogLevel),
      invalidWords({"token"}, "safebrowsing token <string>"),
      invalidWords({"override"}, kOverride),
      invalidWords({"start"}, "safebrowsing start <string>"),
      invalidWords({"stats", "now"}, kMain),
      invalidWords({"stop", "now"}, kMain),
      invalidWords({"settings", "now"}, kMain),
      invalidWords({"homenetwork", "1"}, kMain),
      invalidWords({"enable", "maybe"}, "safebrowsing enable <on|off>"),
      invalidWords({"errors", "-2"}, kErrors),
      invalidWords({"errors", "5s"}, kErrors),
      invalidWords({"redirects", "-2"}, kErrors),
      invalidWords({"redirects", "2147483648"}, kErrors),
      invalidWords({"redirects", ""}, kErrors),
      invalidWords({"loglevel", "warn"}, kLogLevel),
      invalidWords({"override", "off"}, kOverride),
      invalidWords({"homenetwork", "1", "2"}, kMain),
      invalidWords({"initialize", "a", "b"}, kMain),
      invalidWords({"homenetwork", "-1", "2", "3"}, kHomeNetwork),
      invalidWords({"homenetwork", "1", "x", "3"}, kHomeNetwork),
      invalidWords({"homenetwork", "1", "2", "18446744073709551616"}, kHomeNetwork),
      invalidWords({"initialize", "1", "2", "3"}, kMain),
      invalidWords({"homenetwork", "1", "2", "3", "4"}, kMain),
  });
}

/// Five seconds: the settings of a service that is not initialized leave the time-out running.
TEST(SafeBrowsing, TimesOutWhenItsServiceIsNotInitialized) {
  ProgramCase each =
      row({"token", "t"},
          {{"safe_browsing_token_refresh", R"({"token":"t"})", {settingsReport(R"({"enabled":true})")}}}, "", 1);
  each.err = errorObject(3841, "Timeout waiting for result", "Timeout");
  check(each);
}

std::string lookupError(const std::string& data) { return event("report_safe_browsing_lookup_error", data); }
std::string block(const std::string& data) { return event("report_safe_browsing_block", data); }

std::string errorBlock(const char* error, const std::string& host, const std::string& message) {
  return std::string("[\"safebrowsing_error\",\n{\n\t\"error\" : ") + error + ",\n\t\"host\" : \"" + host +
         "\",\n\t\"message\" : \"" + message + "\"\n}]\n\n";
}

std::string blockBlock(const std::string& host, const char* redirected) {
  return "[\"safebrowsing_block\",\n{\n\t\"host\" : \"" + host + "\",\n\t\"redirected\" : " + redirected + "\n}]\n\n";
}

std::vector<std::string> command(ScriptedDaemon& daemon, std::vector<std::string> words) {
  words.insert(words.begin(), {ZEPHCTL_PATH, "-p", std::to_string(daemon.port()), "safebrowsing"});
  return words;
}

TEST(SafeBrowsing, StreamsEachEventAsItComes) {
  const std::string longText(300, 'x');
  ScriptedDaemon daemon;
  Process errors(command(daemon, {"errors"}));
  Process redirects(command(daemon, {"redirects", "-1"}));
  const std::string firstError = errorBlock("-8", "a.example", "too slow");
  ASSERT_TRUE(sendUntilPrinted(daemon, errors,
                               lookupError(R"({"error":-8,"host":"a.example","safebro_msg":"too slow"})"), firstError));
  const std::string firstBlock = blockBlock("b.example", "true");
  ASSERT_TRUE(sendUntilPrinted(daemon, redirects, block(R"({"redirected":true,"host":"b.example"})"), firstBlock));

  // A member that is missing or of another kind reads as zero: nothing stays of the event before.
  const std::string tooLong = R"({"host":")" + longText + R"(","safebro_msg":")" + longText + "\"}";
  for (const char* data : {"null", R"({"error":"1","host":7,"safebro_msg":[]})", tooLong.c_str()}) {
    daemon.send(lookupError(data));
    daemon.send(block(data));
  }
  const std::string lastError = errorBlock("0", longText.substr(0, 252), longText.substr(0, 199));
  const std::string lastBlock = blockBlock(longText.substr(0, 252), "false");
  EXPECT_TRUE(errors.waitForOutput(lastError));
  EXPECT_TRUE(redirects.waitForOutput(lastBlock));
  errors.kill();
  redirects.kill();
  EXPECT_EQ(behindRepeated(firstError, errors.finish().out),
            errorBlock("0", "", "") + errorBlock("0", "7", "") + lastError);
  EXPECT_EQ(behindRepeated(firstBlock, redirects.finish().out),
            blockBlock("", "false") + blockBlock("7", "false") + lastBlock);
  EXPECT_EQ(daemon.heard().size(), 0U);
}

/// The time counts from the first event, so a stream without one does not end.
TEST(SafeBrowsing, StreamsEndWhenTheirTimeHasRunOut) {
  ScriptedDaemon daemon;
  Process errors(command(daemon, {"errors", "1"}));
  Process redirects(command(daemon, {"redirects", "1"}));
  ASSERT_TRUE(sendUntilPrinted(daemon, redirects, block("{}"), blockBlock("", "false")));
  const ProgramRun blocked = redirects.finish();
  EXPECT_EQ(blocked.status, 0);
  EXPECT_EQ(behindRepeated(blockBlock("", "false"), blocked.out), "");
  EXPECT_EQ(blocked.err, "");
  ASSERT_TRUE(sendUntilPrinted(daemon, errors, lookupError("{}"), errorBlock("0", "", "")));
  const ProgramRun failed = errors.finish();
  EXPECT_EQ(failed.status, 0);
  EXPECT_EQ(behindRepeated(errorBlock("0", "", ""), failed.out), "");
  EXPECT_EQ(failed.err, "");
}

}  // namespace
}  // namespace tests
