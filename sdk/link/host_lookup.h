// The lookup of a host name, without blocking the thread that waits for it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/socket.h"
#include "platform/waker.h"

namespace zephlinksdk {

/// One lookup. The system's resolver blocks as long as it likes and cannot be stopped, so it runs on its own thread,
/// which outlives this object if need be. A text in dotted decimal form needs no thread and is found at once.
class HostLookup {
 public:
  enum class State { kUnderWay, kFound, kFailed };

  /// Begins. `waker` (may be null) is woken when the state changes; it must outlive this object.
  HostLookup(const std::string& host, Waker* waker);
  ~HostLookup();
  HostLookup(const HostLookup&) = delete;
  HostLookup& operator=(const HostLookup&) = delete;

  State state() const;

  /// The addresses, in the resolver's order. REQUIRES: state() is kFound.
  const std::vector<Ipv4>& addresses() const;

 private:
  struct Shared;

  static void run(void* shared);

  std::shared_ptr<Shared> shared;
};

}  // namespace zephlinksdk
