// A TCP server that speaks byte by byte, for what no sane WebSocket server sends.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tests {

/// One accepted connection, used on the server's thread. Reads end early when the peer goes.
class RawConnection {
 public:
  virtual ~RawConnection() = default;

  /// All bytes up to `end`, it included.
  virtual std::string readUntil(std::string_view end) = 0;
  virtual std::string read(std::size_t count) = 0;
  /// What comes until the peer ends its side.
  virtual std::string readAll() = 0;
  /// True when all bytes were taken.
  virtual bool write(std::string_view bytes) = 0;
  /// Ends the connection with a reset in place of an orderly close.
  virtual void reset() = 0;

  /// Reads the upgrade request, accepts it, and returns it.
  std::string accept();
};

/// Runs `script` for each connection, one after the other, on a thread of its own; the connection closes behind it.
class RawServer {
 public:
  using Script = std::function<void(RawConnection&)>;

  explicit RawServer(Script script);
  ~RawServer();
  std::uint16_t port() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tests
