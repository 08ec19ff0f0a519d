// The settings of the tunnel: what is sent, read and printed.
#include <gtest/gtest.h>

#include "tests/process.h"
#include "tests/program_case.h"

namespace tests {
namespace {

/// What a report without members prints.
const std::string kNoSettings = R"({
	"allowChaChaEncryption" : false,
	"bondingMode" : "speed",
	"downstreamSubnets" : [],
	"enableAutomaticPriority" : false,
	"enableDefaultRoute" : false,
	"encrypted" : false,
	"forwardedPorts" : [],
	"headerCompression" : false,
	"jumboPackets" : false,
	"maxRedundant" : 0,
	"maximumConnectRetry" : 0,
	"maximumTransportRetry" : 0,
	"overflowThreshold" : 0.0,
	"packetAggregation" : false,
	"packetPoolSize" : "",
	"perConnectionEncryptionEnabled" : false,
	"perConnectionEncryptionSettings" : [],
	"perConnectionParallelSockets" : [],
	"priorityOverflowThreshold" : 0.0,
	"startupConnect" : false,
	"targetNumberOfConnections" : 
	{
		"download" : 0,
		"upload" : 0
	},
	"transportMode" : "auto",
	"ulpReportIntervalSeconds" : 0
})";

std::string report(const std::string& data) { return event("report_connection_settings", data); }

void showsSettings(const std::string& data, const std::string& out) {
  check({.words = {"show", "settings"},
         .answers = {{"request_connection_settings", {report(data)}}},
         .sent = {request("request_connection_settings")},
         .out = out});
}

/// What is printed without any settings, but for the one that starts with `key`.
std::string but(const std::string& key, const std::string& value) {
  std::string text = kNoSettings;
  const std::size_t start = text.find("\"" + key + "\" : ") + key.size() + 5;
  return text.replace(start, text.find_first_of(",\n", start) - start, value);
}

struct Setter {
  std::vector<std::string> words;
  std::string request;
  std::string members;
};

const Setter kSetters[] = {
    {{"encryption", "on"}, "set_encryption_enabled", R"({"enable":true})"},
    {{"encryption", "off"}, "set_encryption_enabled", R"({"enable":false})"},
    {{"jumbo", "on"}, "set_dev_jumbo_packets", R"({"enable":true})"},
    {{"packetaggr", "on"}, "set_packet_aggregation", R"({"enable":true})"},
    {{"headercompression", "on"}, "set_header_compression", R"({"enable":true})"},
    {{"startupconnect", "on"}, "set_startup_connect", R"({"connect":true})"},
    {{"route", "default", "off"}, "set_connection_enable_default_route", R"({"enabled":false})"},
    {{"route", "default", "on", "extra"}, "set_connection_enable_default_route", R"({"enabled":true})"},
    {{"mode", "speed"}, "set_connection_algorithm", R"({"algorithm":"SP"})"},
    {{"mode", "redundant"}, "set_connection_algorithm", R"({"algorithm":"RD"})"},
    {{"mode", "streaming"}, "set_connection_algorithm", R"({"algorithm":"STR"})"},
    {{"transport", "auto"}, "set_connection_transport", R"({"transport_mode":"auto"})"},
    {{"transport", "tcp"}, "set_connection_transport", R"({"transport_mode":"tcp"})"},
    {{"transport", "tcp-multi"}, "set_connection_transport", R"({"transport_mode":"tcp-multi"})"},
    {{"transport", "udp"}, "set_connection_transport", R"({"transport_mode":"udp"})"},
    {{"transport", "https"}, "set_connection_transport", R"({"transport_mode":"https"})"},
    {{"maxredundant", "4294967295"}, "set_max_redundant_sends", R"({"max_redundant":4294967295})"},
    {{"overflow", "1e3"}, "set_overflow_threshold", R"({"speed":1000.0})"},
    {{"priorityoverflow", "2.5"}, "set_priority_overflow_threshold", R"({"speed":2.5})"},
    {{"targetconnections", "-1", "2"}, "set_target_num_connections", R"({"download":2,"upload":-1})"},
    {{"connectretry", "5"}, "set_maximum_connect_retry", R"({"value":5})"},
    {{"transportretry", "6"}, "set_maximum_transport_retry", R"({"value":6})"},
    {{"ports"}, "set_connection_forward_ports", R"({"forward_ports":[]})"},
    {{"ports", "2", "80/tcpish", "53/udp"},
     "set_connection_forward_ports",
     R"({"forward_ports":[{"port":2,"portRangeEnd":0,"proto":"tcp"},)"
     R"({"port":80,"portRangeEnd":0,"proto":"tcp"},{"port":53,"portRangeEnd":0,"proto":"udp"}]})"},
    {{"subnets"}, "set_downstream_subnets", R"({"downstream_subnets":[]})"},
    {{"subnets", "10.0.0.0/200", "x/8", std::string(60, 'y') + "/0"},
     "set_downstream_subnets",
     R"({"downstream_subnets":[{"address":"10.0.0.0","prefix_length":200},{"address":"x","prefix_length":8},)"
     R"({"address":")" +
         std::string(45, 'y') + R"(","prefix_length":0}]})"},
    {{"adapter", "encryption", "eth \"0\"", "on"}, "set_encryption_enabled", R"({"enable":true,"guid":"eth \"0\""})"},
};

TEST(Settings, SettersSendTheirTextAndPrintTheAnswer) {
  for (const Setter& row : kSetters) {
    // The refusal of another setting ends nothing.
    check({.words = row.words,
           .answers = {{row.request, {refusedSetting("set_other"), report("{}")}}},
           .sent = {request(row.request, row.members)},
           .out = kNoSettings});
  }
}

TEST(Settings, SettersEndWhenTheirSettingIsRefused) {
  for (const Setter& row : kSetters) {
    check({.words = row.words,
           .answers = {{row.request, {refusedSetting(row.request), report("{}")}}},
           .sent = {request(row.request, row.members)},
           .err = refusedSettingError(),
           .status = 1});
  }
}

TEST(Settings, RefuseFaultyWords) {
  for (const char* word : {"encryption", "jumbo", "packetaggr", "headercompression", "startupconnect"}) {
    const std::string usage = std::string(word) + " <on|off>";
    check(missingCase({word}, usage));
    check(invalidCase({word, "On"}, usage));
    check(invalidCase({word, "on", "off"}, usage));
  }
  const std::string route = "route default <on|off>";
  const std::string mode = "mode <redundant|speed|streaming>";
  const std::string transport = "transport <auto|tcp|tcp-multi|udp|https>";
  const std::string targets = "targetconnections <number upload connections> <number download connections>";
  for (const ProgramCase& row : {
           missingCase({"route"}, route),
           missingCase({"route", "default"}, route),
           invalidCase({"route", "other"}, route),
           invalidCase({"route", "default", "maybe"}, route),
           missingCase({"mode"}, mode),
           invalidCase({"mode", "SP"}, mode),
           invalidCase({"mode", "speed", "x"}, mode),
           missingCase({"transport"}, transport),
           invalidCase({"transport", "proxy"}, transport),
           invalidCase({"transport", "share"}, transport),
           invalidCase({"transport", "tcp", "udp"}, transport),
           missingCase({"maxredundant"}, "maxredundant <number of conns>"),
           invalidCase({"maxredundant", "x"}, "maxredundant <number of conns>"),
           missingCase({"targetconnections"}, targets),
           missingCase({"targetconnections", "x"}, targets),
           invalidCase({"targetconnections", "1", "x"}, targets),
           invalidCase({"targetconnections", "x", "1"}, targets),
           invalidCase({"targetconnections", "1", "2", "3"}, targets),
       }) {
    check(row);
  }
  for (const char* word : {"overflow", "priorityoverflow"}) {
    const std::string usage = std::string(word) + " <speed in mbps>";
    check(missingCase({word}, usage));
    for (const char* value : {"-1", "4294967296", "nan", "x", ""}) check(invalidCase({word, value}, usage));
    check(invalidCase({word, "1", "2"}, usage));
  }
  // Nothing is Missing here.
  for (const char* word : {"connectretry", "transportretry"}) {
    const std::string usage = std::string(word) + " <time in seconds>";
    check(invalidCase({word}, usage));
    check(invalidCase({word, "-1"}, usage));
    check(invalidCase({word, "5", "6"}, usage));
  }
}

TEST(Settings, MaxRedundantWithMoreWordsIsAnUnknownAction) {
  ProgramCase row{.words = {"maxredundant", "1", "2"}, .status = 4};
  row.err = zephctl(1, {"help"}).out;
  check(row);
}

TEST(Settings, PortAndSubnetWordsAreBounded) {
  for (const char* word : {"1", "0/udp", "100-200/udp", "65536", "80/", "/tcp", ""}) {
    check(invalidCase({"ports", "80", word}, "ports [port/proto] ..."));
  }
  for (const char* word : {"10.0.0.0", "10.0.0.0/999", "10.0.0.0/-1", "10.0.0.0/", ""}) {
    check(invalidCase({"subnets", "10.0.0.0/8", word}, "subnets [subnet/length] ..."));
  }
  const auto bounded = [](const std::string& action, const std::string& word, const Setter& most,
                          const std::string& tooMany) {
    std::vector<std::string> words(static_cast<std::size_t>(std::stoi(most.words[0])), word);
    words.insert(words.begin(), action);
    check({.words = words,
           .answers = {{most.request, {report("{}")}}},
           .sent = {request(most.request, most.members)},
           .out = kNoSettings});
    words.emplace_back("not even looked at");
    check(invalidCase(words, tooMany));
    words.resize(1000, word);
    check(invalidCase(words, tooMany));
  };
  const auto list = [](const std::string& key, const std::string& entry, int count) {
    std::string entries = entry;
    for (int i = 1; i < count; ++i) entries += "," + entry;
    return "{\"" + key + "\":[" + entries + "]}";
  };
  bounded("ports", "80",
          {{"20"},
           "set_connection_forward_ports",
           list("forward_ports", R"({"port":80,"portRangeEnd":0,"proto":"tcp"})", 20)},
          "only 20 ports may be requested\n");
  bounded("subnets", "a/8",
          {{"10"}, "set_downstream_subnets", list("downstream_subnets", R"({"address":"a","prefix_length":8})", 10)},
          "only 10 subnets may be declared\n");
}

TEST(Settings, EachSwitchHasItsMember) {
  const std::pair<const char*, const char*> switches[] = {
      {"jumbo_packets", "jumboPackets"},
      {"encrypted", "encrypted"},
      {"allow_chacha_encryption", "allowChaChaEncryption"},
      {"startup_connect", "startupConnect"},
      {"perconn_encryption", "perConnectionEncryptionEnabled"},
      {"packet_aggregation", "packetAggregation"},
      {"enable_default_route", "enableDefaultRoute"},
      {"header_compress", "headerCompression"},
      {"enable_automatic_priority", "enableAutomaticPriority"},
  };
  for (const auto& [wire, key] : switches) {
    showsSettings(std::string("{\"") + wire + "\":true}", but(key, "true"));
  }
}

TEST(Settings, EachWordHasItsText) {
  const std::pair<const char*, const char*> modes[] = {
      {"SP", "speed"}, {"RD", "redundant"}, {"STR", "streaming"}, {"rd", "speed"}};
  for (const auto& [wire, text] : modes) {
    showsSettings(std::string(R"({"algorithm":")") + wire + "\"}", but("bondingMode", std::string("\"") + text + "\""));
  }
  for (const char* text : {"tcp", "udp", "https", "tcp-multi", "auto"}) {
    showsSettings(std::string(R"({"transport_mode":")") + text + "\"}",
                  but("transportMode", std::string("\"") + text + "\""));
  }
  for (const char* unknown : {"proxy", "share", "TCP", ""}) {
    showsSettings(std::string(R"({"transport_mode":")") + unknown + "\"}", kNoSettings);
  }
}

TEST(Settings, PrintsAllThatAReportHolds) {
  showsSettings(
      R"({"algorithm":"RD","transport_mode":"https","encrypted":true,
          "forward_ports":[{"proto":"udp","port":53},{"proto":"icmp","port":80,"portRangeEnd":90}],
          "downstream_subnets":[{"address":"10.1.0.0","prefix_length":16},{"address":"fd00::","prefix_length":64}],
          "perconn_encryption":true,"perconn_encryption_settings":{"wlan0":true,"eth0":false},
          "perconn_dscp_expose":{"eth0":true},"parallel_sockets":{"wlan0":3,"eth0":4},
          "connection_secondary_speed_activation":5.5,"connection_priority_overflow_treshold":6.25,
          "language":"en","ulp_report_interval_seconds":7,"max_redundant":8,"maximum_connect_retry":9,
          "maximum_transport_retry":4294967295,"packet_pool_size":"largé",
          "num_target_connections":{"upload":-11,"download":12}})",
      printed(
          R"({"allowChaChaEncryption":false,"bondingMode":"redundant",
              "downstreamSubnets":[{"address":"10.1.0.0","prefixLength":16},{"address":"fd00::","prefixLength":64}],
              "enableAutomaticPriority":false,"enableDefaultRoute":false,"encrypted":true,
              "forwardedPorts":[{"protocol":"udp","port":53},{"protocol":"tcp","port":80,"portRangeEnd":90}],
              "headerCompression":false,"jumboPackets":false,"maxRedundant":8,"maximumConnectRetry":9,
              "maximumTransportRetry":4294967295,"overflowThreshold":5.5,"packetAggregation":false,
              "packetPoolSize":"largé","perConnectionEncryptionEnabled":true,
              "perConnectionEncryptionSettings":[{"adapterID":"eth0","encrypted":false},
                                                 {"adapterID":"wlan0","encrypted":true}],
              "perConnectionParallelSockets":[{"adapterID":"eth0","sockets":4},{"adapterID":"wlan0","sockets":3}],
              "priorityOverflowThreshold":6.25,"startupConnect":false,
              "targetNumberOfConnections":{"download":12,"upload":-11},"transportMode":"https",
              "ulpReportIntervalSeconds":7})"));
}

TEST(Settings, PrintsZerosForWhatItCannotRead) {
  for (const char* data : {
           "{}",
           "null",
           "[]",
           "\"text\"",
           R"({"jumbo_packets":"true","algorithm":["RD"],"transport_mode":{"tcp":1},"forward_ports":"80",
               "downstream_subnets":7,"parallel_sockets":["eth0"],"perconn_dscp_expose":3,"max_redundant":-1,
               "connection_secondary_speed_activation":"5","language":{},"packet_pool_size":[],
               "maximum_connect_retry":4294967296,"num_target_connections":[1,2]})",
           R"({"jumbo_packets":null,"algorithm":null,"transport_mode":null,"forward_ports":null,
               "downstream_subnets":null,"parallel_sockets":null,"perconn_encryption":null,"packet_pool_size":null,
               "perconn_encryption_settings":{"eth0":true},"num_target_connections":null})",
       }) {
    showsSettings(data, kNoSettings);
  }
}

TEST(Settings, CutsWhatFindsNoRoom) {
  std::string ports;
  std::string subnets;
  std::string sockets;
  std::string shownPorts;
  std::string shownSubnets;
  std::string shownSockets;
  const auto append = [](std::string& list, const std::string& entry) { list += (list.empty() ? "" : ",") + entry; };
  for (int i = 10; i < 40; ++i) {
    const std::string number = std::to_string(i);
    append(ports, R"({"port":)" + number + "}");
    append(subnets, R"({"address":"a)" + number + R"("})");
    // Members come in the order of their names, whatever that of the text.
    append(sockets, "\"b" + std::to_string(49 - i) + "\":" + number);
    if (i < 30) append(shownPorts, R"({"protocol":"tcp","port":)" + number + "}");
    if (i < 20) append(shownSubnets, R"({"address":"a)" + number + R"(","prefixLength":0})");
    if (i < 35) {
      append(shownSockets, R"({"adapterID":"b)" + number + R"(","sockets":)" + std::to_string(49 - i) + "}");
    }
  }
  const auto same = [](const std::string& json) {
    std::string text = printed("{\"x\":" + json + "}");
    text.erase(0, text.find(':') + 2);
    return text.erase(text.rfind("\n}"));
  };
  const auto shown = [&](const std::string& key, const std::string& list) { return but(key, same("[" + list + "]")); };
  showsSettings("{\"forward_ports\":[" + ports + "]}", shown("forwardedPorts", shownPorts));
  showsSettings("{\"downstream_subnets\":[" + subnets + "]}", shown("downstreamSubnets", shownSubnets));
  showsSettings("{\"parallel_sockets\":{" + sockets + "}}", shown("perConnectionParallelSockets", shownSockets));

  showsSettings(R"({"packet_pool_size":")" + std::string(30, 'p') + "\"}",
                but("packetPoolSize", "\"" + std::string(19, 'p') + "\""));
  showsSettings(
      R"({"parallel_sockets":{")" + std::string(120, 'a') + R"(":65540}})",
      shown("perConnectionParallelSockets", R"({"adapterID":")" + std::string(99, 'a') + R"(","sockets":4})"));
  showsSettings(R"({"downstream_subnets":[{"address":")" + std::string(60, 's') + R"(","prefix_length":264},5]})",
                shown("downstreamSubnets", R"({"address":")" + std::string(45, 's') +
                                               R"(","prefixLength":8},{"address":"","prefixLength":0})"));
  showsSettings(R"({"forward_ports":[{"proto":"udp","port":65616,"portRangeEnd":-1},{"port":99999999999},"80"]})",
                shown("forwardedPorts", R"({"protocol":"udp","port":80,"portRangeEnd":65535},
                                           {"protocol":"tcp","port":0},{"protocol":"tcp","port":0})"));
}

}  // namespace
}  // namespace tests
