#include "tests/ports.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/interprocess/sync/file_lock.hpp>
#include <boost/interprocess/sync/scoped_lock.hpp>
#include <fstream>
#include <iomanip>
#include <locale>
#include <mutex>
#include <stdexcept>

namespace tests {

namespace {

constexpr int kFirst = 10000;
constexpr int kLast = 29999;

/// The next number of all processes of the run. The file contains the one before it.
int nextNumber() {
  // The stream closes after the lock has gone: closing any descriptor of a file frees its locks.
  std::ofstream(PORTS_FILE, std::ios::app).close();
  std::fstream file(PORTS_FILE);
  // A test may have set a global locale that groups digits.
  file.imbue(std::locale::classic());
  boost::interprocess::file_lock shared(PORTS_FILE);
  const boost::interprocess::scoped_lock lock(shared);
  int number = 0;
  file >> number;
  number = number < kFirst || number >= kLast ? kFirst : number + 1;
  file.clear();
  file.seekp(0);
  // Of one length, so that nothing of the number before remains.
  file << std::setw(8) << number << '\n' << std::flush;
  if (!file) throw std::runtime_error("cannot write " PORTS_FILE);
  return number;
}

/// Whether a server can have it. Nothing but the check uses it, so it is free again at once.
bool isFree(std::uint16_t port) {
  boost::asio::io_context context;
  boost::asio::ip::tcp::socket socket(context, boost::asio::ip::tcp::v4());
  boost::system::error_code failed;
  socket.bind({boost::asio::ip::address_v4::loopback(), port}, failed);
  return !failed;
}

}  // namespace

std::uint16_t nextPort() {
  static std::mutex mutex;  // a file's lock is the process's
  const std::lock_guard lock(mutex);
  for (int attempt = kFirst; attempt <= kLast; ++attempt) {
    const auto port = static_cast<std::uint16_t>(nextNumber());
    if (isFree(port)) return port;
  }
  throw std::runtime_error("no port is free");
}

}  // namespace tests
