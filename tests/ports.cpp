#include "tests/ports.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/interprocess/sync/file_lock.hpp>
#include <boost/interprocess/sync/scoped_lock.hpp>
#include <fstream>
#include <functional>
#include <iomanip>
#include <locale>
#include <mutex>
#include <stdexcept>
#include <string_view>

namespace tests {

namespace {

constexpr int kFirst = 10000;
constexpr int kLast = 29999;

/// Returns a number that differs between builds, so that a client that outlives a run of one build does not meet the
/// servers of another.
int firstNumber() { return kFirst + static_cast<int>(std::hash<std::string_view>()(PORTS_FILE) % (kLast - kFirst)); }

/// Returns the next number, unique in the run across processes. The file contains the previous one.
int nextNumber() {
  // The stream must be closed after the lock was released: closing any descriptor of a file releases its locks.
  std::ofstream(PORTS_FILE, std::ios::app).close();
  std::fstream file(PORTS_FILE);
  // A test may have set a global locale that groups digits.
  file.imbue(std::locale::classic());
  boost::interprocess::file_lock shared(PORTS_FILE);
  const boost::interprocess::scoped_lock lock(shared);
  int number = 0;
  file >> number;
  if (number == 0) number = firstNumber();
  number = number >= kLast ? kFirst : number + 1;
  file.clear();
  file.seekp(0);
  // Of fixed length, to overwrite the previous number completely.
  file << std::setw(8) << number << '\n' << std::flush;
  if (!file) throw std::runtime_error("cannot write " PORTS_FILE);
  return number;
}

/// Returns whether a server can bind the port. The check itself leaves it free.
bool isFree(std::uint16_t port) {
  boost::asio::io_context context;
  boost::asio::ip::tcp::socket socket(context, boost::asio::ip::tcp::v4());
  boost::system::error_code failed;
  socket.bind({boost::asio::ip::address_v4::loopback(), port}, failed);
  return !failed;
}

}  // namespace

std::uint16_t nextPort() {
  static std::mutex mutex;  // a file lock belongs to the whole process
  const std::lock_guard lock(mutex);
  for (int attempt = kFirst; attempt <= kLast; ++attempt) {
    const auto port = static_cast<std::uint16_t>(nextNumber());
    if (isFree(port)) return port;
  }
  throw std::runtime_error("no port is free");
}

}  // namespace tests
