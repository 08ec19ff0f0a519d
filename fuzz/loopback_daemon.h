// The other end of a channel, in this process: accepts its one connection and sends it texts.
#pragma once

#include <cstdint>
#include <string>

namespace fuzz {

class LoopbackDaemon {
 public:
  /// Listens on a free port of the loopback.
  LoopbackDaemon();
  ~LoopbackDaemon();
  LoopbackDaemon(const LoopbackDaemon&) = delete;
  LoopbackDaemon& operator=(const LoopbackDaemon&) = delete;

  std::uint16_t port() const { return listeningPort; }

  /// Waits for the connection and accepts its upgrade.
  void accept();

  /// Sends each text as a message, all in one write where the socket takes it.
  void send(const std::string& text);
  void flush();

 private:
  int listener = -1;
  int connection = -1;
  std::uint16_t listeningPort = 0;
  std::string pending;
};

}  // namespace fuzz
