// Host lookup of the statically linked program. The C library's lookup would load name-service modules at run time;
// these belong to the C library of the machine that runs the program, not to the linked one. This lookup reads the
// hosts file and queries the name servers of resolv.conf, whatever the system's name-service configuration.
#include <ares.h>
#include <arpa/inet.h>
#include <netdb.h>
#include <poll.h>

#include <array>
#include <cstring>

#include "platform/socket.h"

namespace zephlinksdk {

namespace {

struct Answer {
  bool arrived = false;
  bool found = false;
  std::vector<Ipv4>* addresses = nullptr;
};

void onAnswer(void* argument, int status, int, hostent* host) {
  auto* answer = static_cast<Answer*>(argument);
  answer->arrived = true;
  answer->found = status == ARES_SUCCESS;
  if (!answer->found) return;
  for (char** entry = host->h_addr_list; *entry != nullptr; ++entry) {
    Ipv4 address = 0;
    std::memcpy(&address, *entry, sizeof address);
    answer->addresses->push_back(address);
  }
}

/// Waits for the name servers as long as c-ares asks, then lets it proceed.
void process(ares_channel channel) {
  std::array<ares_socket_t, ARES_GETSOCK_MAXNUM> sockets{};
  const auto bits = static_cast<unsigned>(ares_getsock(channel, sockets.data(), ARES_GETSOCK_MAXNUM));
  std::array<pollfd, ARES_GETSOCK_MAXNUM> watched{};
  nfds_t count = 0;
  for (unsigned i = 0; i < ARES_GETSOCK_MAXNUM; ++i) {
    short events = 0;
    if (ARES_GETSOCK_READABLE(bits, i)) events |= POLLIN;
    if (ARES_GETSOCK_WRITABLE(bits, i)) events |= POLLOUT;
    if (events != 0) watched[count++] = {sockets[i], events, 0};
  }
  timeval longest{1, 0};
  timeval wait{};
  ares_timeout(channel, &longest, &wait);
  ::poll(watched.data(), count, static_cast<int>(wait.tv_sec * 1000 + wait.tv_usec / 1000 + 1));
  for (nfds_t i = 0; i < count; ++i) {
    const bool readable = (watched[i].revents & (POLLIN | POLLERR | POLLHUP)) != 0;
    const bool writable = (watched[i].revents & POLLOUT) != 0;
    ares_process_fd(channel, readable ? watched[i].fd : ARES_SOCKET_BAD, writable ? watched[i].fd : ARES_SOCKET_BAD);
  }
  // Lets c-ares process its time-outs when no socket is ready.
  ares_process_fd(channel, ARES_SOCKET_BAD, ARES_SOCKET_BAD);
}

}  // namespace

bool lookUpHost(const char* host, std::vector<Ipv4>& addresses) {
  // The C library's lookup also accepts short and hexadecimal forms such as 127.1.
  in_addr address{};
  if (::inet_aton(host, &address) != 0) {
    addresses.push_back(address.s_addr);
    return true;
  }
  ares_options options{};
  char order[] = "fb";  // the hosts file first, then the name servers
  options.lookups = order;
  ares_channel channel = nullptr;
  if (ares_init_options(&channel, &options, ARES_OPT_LOOKUPS) != ARES_SUCCESS) return false;
  Answer answer;
  answer.addresses = &addresses;
  ares_gethostbyname(channel, host, AF_INET, onAnswer, &answer);
  while (!answer.arrived) process(channel);
  ares_destroy(channel);
  return answer.found;
}

}  // namespace zephlinksdk
