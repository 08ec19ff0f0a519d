#include "sdk/link/host_lookup.h"

#include <exception>
#include <mutex>

#include "platform/thread.h"

namespace zephlinksdk {

/// Shared by both threads. The lookup's thread writes `addresses` before it changes `state`.
struct HostLookup::Shared {
  std::string host;
  std::mutex mutex;
  State state = State::kUnderWay;
  std::vector<Ipv4> addresses = {};
  // Null when no thread waits any more.
  Waker* waker = nullptr;
};

HostLookup::HostLookup(const std::string& host, Waker* waker) : shared(std::make_shared<Shared>()) {
  shared->host = host;
  shared->waker = waker;
  if (const auto address = addressOfText(host.c_str())) {
    shared->addresses.push_back(*address);
    shared->state = State::kFound;
    return;
  }
  auto forThread = std::make_unique<std::shared_ptr<Shared>>(shared);
  Thread thread;
  if (thread.start(run, forThread.get())) {
    static_cast<void>(forThread.release());
    thread.detach();
  } else {
    shared->state = State::kFailed;
  }
}

HostLookup::~HostLookup() {
  const std::lock_guard lock(shared->mutex);
  shared->waker = nullptr;
}

void HostLookup::run(void* argument) {
  const std::unique_ptr<std::shared_ptr<Shared>> owned(static_cast<std::shared_ptr<Shared>*>(argument));
  Shared& lookup = **owned;
  bool found = false;
  try {
    found = lookUpHost(lookup.host.c_str(), lookup.addresses);
  } catch (const std::exception&) {
    // Out of memory for the addresses: the lookup fails.
  }
  const std::lock_guard lock(lookup.mutex);
  lookup.state = found ? State::kFound : State::kFailed;
  if (lookup.waker != nullptr) lookup.waker->wake();
}

HostLookup::State HostLookup::state() const {
  const std::lock_guard lock(shared->mutex);
  return shared->state;
}

const std::vector<Ipv4>& HostLookup::addresses() const { return shared->addresses; }

}  // namespace zephlinksdk
