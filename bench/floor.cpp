// The smallest program with the requests of `zephctl state`: it connects, upgrades, sends the same texts and reads the
// same report with plain system calls. Its cost is the cost of the network and a process.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char kUpgrade[] =
    "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
    "Sec-WebSocket-Key: q7ZPmV2sT0dWc8LhE4nYfA==\r\nSec-WebSocket-Version: 13\r\n"
    "Sec-WebSocket-Protocol: event-protocol\r\n\r\n";
constexpr const char* kTexts[] = {
    "[\"set_app_name\",{\"name\":\"Zephlink\"},\"zephlink_sdk\"]\n",
    "[\"request_current_state\",null,\"zephlink_sdk\"]\n",
};

/// Appends a masked text frame of less than 126 bytes. The key is zero, which leaves the payload unchanged.
std::size_t appendFrame(char* buffer, std::size_t at, const char* text) {
  const std::size_t size = std::strlen(text);
  buffer[at] = static_cast<char>(0x81);
  buffer[at + 1] = static_cast<char>(0x80 | size);
  std::memset(buffer + at + 2, 0, 4);
  std::memcpy(buffer + at + 6, text, size);
  return at + 6 + size;
}

/// Reads until the buffer contains `end`. Returns false if the stream ends before.
bool readUntil(int socket, char* buffer, std::size_t capacity, const char* end) {
  std::size_t size = 0;
  do {
    const ssize_t count = read(socket, buffer + size, capacity - 1 - size);
    if (count <= 0) return false;
    size += static_cast<std::size_t>(count);
    buffer[size] = '\0';
  } while (std::strstr(buffer, end) == nullptr);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const int link = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in daemon{};
  daemon.sin_family = AF_INET;
  daemon.sin_port = htons(static_cast<std::uint16_t>(std::atoi(argv[1])));
  daemon.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(link, reinterpret_cast<sockaddr*>(&daemon), sizeof daemon) != 0) return 1;
  const int enable = 1;
  setsockopt(link, IPPROTO_TCP, TCP_NODELAY, &enable, sizeof enable);

  char buffer[4096];
  if (write(link, kUpgrade, sizeof kUpgrade - 1) < 0 || !readUntil(link, buffer, sizeof buffer, "\r\n\r\n")) return 1;
  std::size_t size = 0;
  for (const char* text : kTexts) size = appendFrame(buffer, size, text);
  if (write(link, buffer, size) < 0 || !readUntil(link, buffer, sizeof buffer, "\"report_current_state\"")) return 1;
  const char* report = std::strstr(buffer, "[\"report");
  return write(STDOUT_FILENO, report, std::strlen(report)) > 0 ? 0 : 1;
}
