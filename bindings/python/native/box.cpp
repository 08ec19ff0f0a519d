#include "box.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <system_error>
#include <utility>

namespace zephlink {

namespace {

int openEvent() {
  const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
  return descriptor;
}

Item copyOf(const void* record, std::size_t size) {
  Item copy(std::malloc(size));
  if (!copy) throw std::bad_alloc();
  std::memcpy(copy.get(), record, size);
  return copy;
}

}  // namespace

void Free::operator()(void* memory) const { std::free(memory); }

Box::Box(std::size_t maximum, bool onlyOne) : capacity(maximum), once(onlyOne), event(openEvent()) {}

Box::~Box() { ::close(event); }

bool Box::put(const void* record, std::size_t size) noexcept {
  Item old;  // freed after unlocking
  const std::lock_guard lock(mutex);
  if (isClosed) return false;
  try {
    Item copy = copyOf(record, size);
    if (items.size() == capacity) {
      old = std::move(items.front());
      items.pop_front();
      ++droppedCount;
    }
    items.push_back(std::move(copy));
  } catch (const std::exception&) {
    ++droppedCount;
    // The waiting call would never end without its only record.
    if (once) isClosed = true;
  }
  signal();
  return !once;
}

Item Box::take() {
  const std::lock_guard lock(mutex);
  if (items.empty()) return nullptr;
  Item first = std::move(items.front());
  items.pop_front();
  if (items.empty() && !isClosed) {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = ::read(event, &count, sizeof count);
  }
  return first;
}

bool Box::wait(int milliseconds) {
  pollfd watched{event, POLLIN, 0};
  return ::poll(&watched, 1, milliseconds) > 0;
}

void Box::close() {
  std::deque<Item> old;  // freed after unlocking
  const std::lock_guard lock(mutex);
  isClosed = true;
  items.swap(old);
  signal();
}

bool Box::closed() {
  const std::lock_guard lock(mutex);
  return isClosed;
}

std::uint64_t Box::dropped() {
  const std::lock_guard lock(mutex);
  return droppedCount;
}

void Box::signal() const {
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t sent = ::write(event, &one, sizeof one);
}

}  // namespace zephlink
