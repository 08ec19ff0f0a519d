// The adapters: what is sent, read and printed.
#include <gtest/gtest.h>

#include "tests/program_case.h"

namespace tests {
namespace {

std::string report(const std::string& data) { return event("report_networks", data); }

void showsAdapters(const std::string& data, const std::string& out) {
  check({.words = {"show", "adapters"},
         .answers = {{"request_networks", {report(data)}}},
         .sent = {request("request_networks")},
         .out = out});
}

/// An adapter of which only the ID and one more member are known, which prints as `key` with `value`.
std::string almostBare(const std::string& id, const std::string& key = "isp", const std::string& value = R"("")") {
  std::string text =
      R"({"adapterID":")" + id +
      R"(","connectedNetworkBSSID":"","connectedNetworkName":"","dataUsage":{"overlimitRatelimit":-1,"usageDaily":0,)"
      R"("usageDailyBoost":0,"usageDailyLimit":-1,"usageMonthly":0,"usageMonthlyLimit":-1,"usageMonthlyResetDay":0},)"
      R"("description":"","directionalSettings":{"download":"on","upload":"on"},"isp":"","name":"",)"
      R"("priority":"always","rateLimit":-1,"state":"disconnected","type":"Unknown","workingPriority":"always"})";
  const std::size_t start = text.find("\"" + key + "\":") + key.size() + 3;
  return text.replace(start, text.find_first_of(",}", start) - start, value);
}

struct Setter {
  std::vector<std::string> words;
  std::string request;
  std::string members;
};

const Setter kSetters[] = {
    {{"priority", "eth0", "always"}, "set_network_priority", R"({"network":"eth0","priority":0})"},
    {{"priority", "eth0", "secondary"}, "set_network_priority", R"({"network":"eth0","priority":1})"},
    {{"priority", "eth0", "backup"}, "set_network_priority", R"({"network":"eth0","priority":2})"},
    {{"priority", "eth0", "never"}, "set_network_priority", R"({"network":"eth0","priority":100})"},
    {{"priority", "", "automatic"}, "set_network_priority", R"({"network":"","priority":200})"},
    {{"ratelimit", "eth0", "-5"}, "set_network_ratelimit", R"({"bps":-5,"network":"eth0"})"},
    {{"ratelimit", "eth0", "unlimited"}, "set_network_ratelimit", R"({"bps":0,"network":"eth0"})"},
    {{"overlimitratelimit", "eth0", "99999999999999999999"},
     "set_network_overlimit_rate",
     R"({"bps":9223372036854775807,"network":"eth0"})"},
    {{"datalimit", "monthly", "eth0", "5000000000", "31"},
     "set_network_limit",
     R"({"max":5000000000,"network":"eth0","resetDay":31})"},
    {{"datalimit", "monthly", "eth0", "unlimited", "notanumber"},
     "set_network_limit",
     R"({"max":0,"network":"eth0","resetDay":0})"},
    {{"datalimit", "daily", "eth0", "7"}, "set_network_daily_limit", R"({"max":7,"network":"eth0"})"},
    {{"datalimit", "daily", "eth0", "unlimited"}, "set_network_daily_limit", R"({"max":0,"network":"eth0"})"},
    {{"directionalmode", "eth0", "strict_off", "backup_off"},
     "set_network_directional_modes",
     R"({"download":"backup_off","network":"eth0","upload":"strict_off"})"},
    {{"directionalmode", "eth0", "on", "strict_off"},
     "set_network_directional_modes",
     R"({"download":"strict_off","network":"eth0","upload":"on"})"},
};

// Usage is no setting: a refusal of these ends nothing.
const Setter kUsageSetters[] = {
    {{"datalimit", "dailyboost", "eth0", "12"}, "add_net_daily_limit_boost", R"({"network":"eth0","value":12})"},
    {{"resetusage", "eth0"}, "reset_network_usage", R"({"guid":"eth0"})"},
};

ProgramCase setterCase(const Setter& row, const std::string& refused) {
  ProgramCase result{.words = row.words,
                     .answers = {{row.request, {refusedSetting(refused), report(R"([{"guid":"a"}])")}}},
                     .sent = {request(row.request, row.members)},
                     .out = printed("[" + almostBare("a") + "]")};
  result.words.insert(result.words.begin(), "adapter");
  return result;
}

TEST(Adapters, SettersSendTheirTextAndPrintTheAnswer) {
  for (const Setter& row : kSetters) check(setterCase(row, "set_other"));
  for (const Setter& row : kUsageSetters) check(setterCase(row, row.request));
}

TEST(Adapters, SettersEndWhenTheirSettingIsRefused) {
  for (const Setter& row : kSetters) {
    ProgramCase refused = setterCase(row, row.request);
    refused.out = "";
    refused.err = refusedSettingError();
    refused.status = 1;
    check(refused);
  }
}

TEST(Adapters, RefuseFaultyWords) {
  const std::string adapter =
      "adapter <datalimit|priority|ratelimit|overlimitratelimit|encryption|resetusage|directionalmode>";
  const std::string priority = "adapter priority <adapter id> <automatic|always|secondary|backup|never>";
  const std::string rate = "adapter ratelimit <adapter id> <speed in bits per second|unlimited>";
  const std::string overlimit = "adapter overlimitratelimit <adapter id> <speed in bits per second|0 to stop using>";
  const std::string encryption = "adapter encryption <adapter id> <on|off>";
  const std::string monthly =
      "adapter datalimit monthly <adapter id> <data usage in bytes|unlimited> "
      "<day of the month to reset on|0 for last 30 days>";
  const std::string daily = "adapter datalimit daily <adapter id> <data usage in bytes|unlimited>";
  const std::string boost = "adapter datalimit dailyboost <adapter id> <additional bytes>";
  const std::string reset = "adapter resetusage <adapter id>";
  const std::string directional =
      "adapter directionalmode <adapter id> <upload mode (on | backup_off | strict_off)> "
      "<download mode (on | backup_off | strict_off)>";
  for (const ProgramCase& row : {
           missingCase({"adapter"}, adapter),
           invalidCase({"adapter", "Priority"}, adapter),
           missingCase({"adapter", "priority", "eth0"}, priority),
           missingCase({"adapter", "priority", "eth0", "always", "extra"}, priority),
           invalidCase({"adapter", "priority", "eth0", "sometimes"}, priority),
           invalidCase({"adapter", "ratelimit"}, rate),
           invalidCase({"adapter", "ratelimit", "eth0"}, rate),
           invalidCase({"adapter", "ratelimit", "eth0", "12x"}, rate),
           invalidCase({"adapter", "ratelimit", "eth0", "1", "2"}, rate),
           missingCase({"adapter", "overlimitratelimit", "eth0"}, overlimit),
           invalidCase({"adapter", "overlimitratelimit", "eth0", "unlimited"}, overlimit),
           invalidCase({"adapter", "overlimitratelimit", "eth0", "1", "2"}, overlimit),
           missingCase({"adapter", "encryption", "eth0"}, encryption),
           invalidCase({"adapter", "encryption", "eth0", "yes"}, encryption),
           invalidCase({"adapter", "encryption", "eth0", "on", "off"}, encryption),
           // Not its own usage.
           missingCase({"adapter", "datalimit"}, encryption),
           invalidCase({"adapter", "datalimit", "weekly"}, "adapter datalimit <monthly|daily|dailyboost>"),
           missingCase({"adapter", "datalimit", "monthly", "eth0", "unlimited"}, monthly),
           invalidCase({"adapter", "datalimit", "monthly", "eth0", "x", "1"}, monthly),
           invalidCase({"adapter", "datalimit", "monthly", "eth0", "1000", "notanumber"}, monthly),
           invalidCase({"adapter", "datalimit", "monthly", "eth0", "unlimited", "1", "2"}, monthly),
           missingCase({"adapter", "datalimit", "daily", "eth0"}, daily),
           invalidCase({"adapter", "datalimit", "daily", "eth0", ""}, daily),
           invalidCase({"adapter", "datalimit", "daily", "eth0", "1", "2"}, daily),
           missingCase({"adapter", "datalimit", "dailyboost", "eth0"}, boost),
           invalidCase({"adapter", "datalimit", "dailyboost", "eth0", "unlimited"}, boost),
           invalidCase({"adapter", "datalimit", "dailyboost", "eth0", "1", "2"}, boost),
           missingCase({"adapter", "resetusage"}, reset),
           invalidCase({"adapter", "resetusage", "eth0", "x"}, reset),
           missingCase({"adapter", "directionalmode", "eth0", "on"}, directional),
           invalidCase({"adapter", "directionalmode", "eth0", "on", "STRICT_OFF"}, directional),
           invalidCase({"adapter", "directionalmode", "eth0", "off", "on"}, directional),
           invalidCase({"adapter", "directionalmode", "eth0", "on", "on", "on"}, directional),
       }) {
    check(row);
  }
}

TEST(Adapters, PrintAllThatAReportHolds) {
  showsAdapters(R"([{"guid":"{id}","name":"{{ADAPTERTYPES.NetworkShare Client}}","description":"Shared \"x\"",
                     "connectionState":1,"type":"NetworkShare Client","priority":100,"ssid":"Café","bssid":"02:00",
                     "rateLimit":2000000000,"workingPriority":2,"isp":"Cable",
                     "limits":{"usage":1000000000001,"usageDaily":1000000000002,"max":1000000000003,"resetDay":4,
                               "maxDaily":1000000000005,"boostDaily":1000000000006,"overlimitRate":1000000000007},
                     "directional_mode":{"upload":"STRICT_OFF","download":"backup_off"}},
                    {"guid":"second"}])",
                R"([
	{
		"adapterID" : "{id}",
		"connectedNetworkBSSID" : "02:00",
		"connectedNetworkName" : "Café",
		"dataUsage" : 
		{
			"overlimitRatelimit" : 1000000000007,
			"usageDaily" : 1000000000002,
			"usageDailyBoost" : 1000000000006,
			"usageDailyLimit" : 1000000000005,
			"usageMonthly" : 1000000000001,
			"usageMonthlyLimit" : 1000000000003,
			"usageMonthlyResetDay" : 4
		},
		"description" : "Shared \"x\"",
		"directionalSettings" : 
		{
			"download" : "backup_off",
			"upload" : "strict_off"
		},
		"isp" : "Cable",
		"name" : "Paired Network",
		"priority" : "never",
		"rateLimit" : 2000000000,
		"state" : "connecting",
		"type" : "NetworkShare Client",
		"workingPriority" : "backup"
	},
	{
		"adapterID" : "second",
		"connectedNetworkBSSID" : "",
		"connectedNetworkName" : "",
		"dataUsage" : 
		{
			"overlimitRatelimit" : -1,
			"usageDaily" : 0,
			"usageDailyBoost" : 0,
			"usageDailyLimit" : -1,
			"usageMonthly" : 0,
			"usageMonthlyLimit" : -1,
			"usageMonthlyResetDay" : 0
		},
		"description" : "",
		"directionalSettings" : 
		{
			"download" : "on",
			"upload" : "on"
		},
		"isp" : "",
		"name" : "",
		"priority" : "always",
		"rateLimit" : -1,
		"state" : "disconnected",
		"type" : "Unknown",
		"workingPriority" : "always"
	}
])");
}

/// One adapter for each odd member, all in one report.
TEST(Adapters, ReadEachMemberAsItComes) {
  struct Row {
    std::string member;
    std::string key;
    std::string value;
  };
  const std::string longText(120, 't');
  const Row rows[] = {
      {R"("type":"Wi-Fi")", "type", R"("Wi-Fi")"},
      {R"("type":"Ethernet")", "type", R"("Ethernet")"},
      {R"("type":"Cellular")", "type", R"("Cellular")"},
      {R"("type":"Bluetooth")", "type", R"("Bluetooth")"},
      {R"("type":"NetworkShare Host")", "type", R"("NetworkShare Host")"},
      {R"("type":"VPN")", "type", R"("VPN")"},
      {R"("type":"Loopback")", "type", R"("Loopback")"},
      {R"("type":"wi-fi")", "type", R"("Unknown")"},
      {R"("connectionState":2)", "state", R"("connected")"},
      {R"("connectionState":3)", "state", R"("disconnected")"},
      {R"("workingPriority":200)", "workingPriority", R"("automatic")"},
      {R"("workingPriority":1)", "workingPriority", R"("secondary")"},
      {R"("priority":50)", "priority", R"("always")"},
      // A member that is null is there.
      {R"("priority":2,"workingPriority":null)", "priority", R"("backup")"},
      {R"("rateLimit":0)", "rateLimit", "0"},
      {R"("rateLimit":null)", "rateLimit", "0"},
      {R"("rateLimit":4294967296)", "rateLimit", "0"},
      {R"("limits":{"max":0})", "usageMonthlyLimit", "0"},
      {R"("limits":{"maxDaily":null})", "usageDailyLimit", "0"},
      {R"("limits":{"overlimitRate":"fast"})", "overlimitRatelimit", "0"},
      {R"("limits":[1,2])", "isp", R"("")"},
      {R"("directional_mode":{"download":"Backup_Off"})", "download", R"("backup_off")"},
      {R"("directional_mode":{"upload":"off"})", "upload", R"("on")"},
      {R"("directional_mode":"strict_off","name":5,"isp":[],"ssid":{})", "name", R"("5")"},
      {R"("name":"{{ADAPTERTYPES.Fax}}")", "name", R"("{{ADAPTERTYPES.Fax}}")"},
  };
  std::string adapters;
  std::string shown;
  for (const Row& row : rows) {
    adapters += R"({"guid":"a",)" + row.member + "},";
    shown += almostBare("a", row.key, row.value) + ",";
  }
  ASSERT_EQ(std::size(rows), 25U);
  // The 26th finds no room.
  showsAdapters("[" + adapters + R"({"guid":"b"}])", printed("[" + shown.substr(0, shown.size() - 1) + "]"));

  const std::string cut = "\"" + longText.substr(0, 99) + "\"";
  for (const auto& [wire, key] : {std::pair<std::string, std::string>{"guid", "adapterID"},
                                  {"name", "name"},
                                  {"description", "description"},
                                  {"ssid", "connectedNetworkName"},
                                  {"bssid", "connectedNetworkBSSID"},
                                  {"isp", "isp"}}) {
    std::string adapter = "[{\"" + wire;
    adapter += "\":\"" + longText + "\"}]";
    showsAdapters(adapter, printed("[" + almostBare("", key, cut) + "]"));
  }
  // Of the wrong kind, an adapter is one without members.
  showsAdapters(R"([7,null])", printed("[" + almostBare("") + "," + almostBare("") + "]"));
}

TEST(Adapters, PrintAnEmptyListWithoutAny) {
  for (const char* data : {"[]", "null", "{}", "\"text\""}) showsAdapters(data, "[]");
}

// The working priority is the priority's own where the daemon gives none.
TEST(Adapters, WorkingPriorityFollowsThePriority) {
  std::string both = almostBare("a", "priority", R"("never")");
  both.replace(both.rfind("always"), 6, "never");
  showsAdapters(R"([{"guid":"a","priority":100}])", printed("[" + both + "]"));
}

}  // namespace
}  // namespace tests
