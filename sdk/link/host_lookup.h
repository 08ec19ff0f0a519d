// Looks up a host name without blocking the waiting thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/socket.h"
#include "platform/waker.h"

namespace zephlinksdk {

/// One lookup. The system's resolver may block for any time and cannot be cancelled, so it runs on its own thread,
/// which may outlive this object. An address in dotted decimal form is found at once, without a thread.
class HostLookup {
 public:
  enum class State { kUnderWay, kFound, kFailed };

  /// Starts the lookup. `waker` (may be null) is woken when the state changes; it must outlive this object.
  HostLookup(const std::string& host, Waker* waker);
  ~HostLookup();
  HostLookup(const HostLookup&) = delete;
  HostLookup& operator=(const HostLookup&) = delete;

  State state() const;

  /// Returns the addresses, in the resolver's order. REQUIRES: state() is kFound.
  const std::vector<Ipv4>& addresses() const;

 private:
  struct Shared;

  static void run(void* shared);

  std::shared_ptr<Shared> shared;
};

}  // namespace zephlinksdk
