#include "bench/servers.h"

#include <utility>

namespace bench {

std::string connectionReport() {
  std::string connections;
  for (int i = 0; i < 5; ++i) {
    if (i > 0) connections += ",";
    connections += R"({"bInF":18234,"bInFL":65536,"cnnct":true,"zzz":0,"guid":"{0F2A3C44-77AB-4D11-9A58-00000000000)" +
                   std::to_string(i) + R"(}","key":"connection-)" + std::to_string(i) +
                   R"(","localIp":"192.168.1.20","lsR":0.25,"lsS":0.5,"ltMs":23,"privateIp":"10.8.0.2",)"
                   R"("protocol":"udp","numConns":4,"remoteIp":"198.51.100.7","totBps":8123456,"sndBps":1123456,)"
                   R"("rcvBps":7000000,"sndEstMbps":12.5,"rcvEstMbps":87.25,"jtMs":3,"mos":4.2,)"
                   R"("sndBytes":123456789,"rcvBytes":987654321,"congested":false})";
  }
  return R"(["report_connection_stats",{"time":1700000000000,"connections":[)" + connections + R"(]},"daemon"])";
}

std::string directoryReport(int servers) {
  std::string list;
  for (int i = 0; i < servers; ++i) {
    if (i > 0) list += ",";
    list +=
        R"({"country":"de","city":"frankfurt","num":")" + std::to_string(i + 1) + R"(","dc":"fra-1","torrent":"yes"})";
  }
  return R"(["report_directory",[)" + list + R"(],"daemon"])";
}

std::string frameOf(const std::string& text) {
  const auto size = static_cast<unsigned>(text.size());
  return std::string{static_cast<char>(0x81), 126, static_cast<char>(size >> 8U), static_cast<char>(size)} + text;
}

RequestServer::RequestServer(OnRequest onRequest)
    : handler(std::move(onRequest)), server(0, {.onText = [this](zephsim::Connection from, const std::string& text) {
                                              // ["name",members,"source"]
                                              const std::string_view quoted = std::string_view(text).substr(2);
                                              handler(server, from, quoted.substr(0, quoted.find('"')));
                                            }}) {
  server.start();
}

RequestServer::OnRequest stateAndDirectory(int servers) {
  return [directory = directoryReport(servers)](auto& server, auto to, std::string_view name) {
    if (name == "request_current_state") server.send(to, R"(["report_current_state",{"state":6},"daemon"])");
    if (name == "request_directory") server.send(to, directory);
  };
}

RequestServer::OnRequest burst(const std::string& report, std::size_t count) {
  return [report, count](auto& server, auto to, std::string_view name) {
    if (name == "request_current_state") server.send(to, R"(["report_current_state",{"state":6},"daemon"])");
    if (name == "request_networks") server.send(to, R"(["report_networks",[],"daemon"])");
    if (name == "request_session_stats") server.send(to, R"(["report_session_stats",{},"daemon"])");
    if (name == "request_streaming_stats") server.send(to, R"(["report_streaming_stats",{"streams":[]},"daemon"])");
    if (name != "request_connection_stats") return;
    std::string frames;
    frames.reserve(count * frameOf(report).size());
    for (std::size_t i = 0; i < count; ++i) frames += frameOf(report);
    server.sendRaw(to, std::move(frames));
  };
}

}  // namespace bench
