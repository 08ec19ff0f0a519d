// Passwords and tokens during a handler.
#pragma once

#include <cstddef>
#include <cstring>

#include "cli/parsers.h"
#include "platform/wipe.h"

namespace cli {

/// An answer to a prompt, wiped on destruction. An answer that is too long counts as empty.
template <std::size_t Size>
class Secret {
 public:
  explicit Secret(const char* prompt) { readHidden(prompt, bytes, Size); }
  ~Secret() { zephlinksdk::wipe(bytes, Size); }
  Secret(const Secret&) = delete;
  Secret& operator=(const Secret&) = delete;

  const char* text() const { return bytes; }

 private:
  char bytes[Size];
};

/// A secret argument of the command line, wiped in place on destruction: process listings and memory dumps no longer
/// contain it.
class SecretArgument {
 public:
  explicit SecretArgument(char* text) : argument(text) {}
  ~SecretArgument() { zephlinksdk::wipe(argument, std::strlen(argument)); }
  SecretArgument(const SecretArgument&) = delete;
  SecretArgument& operator=(const SecretArgument&) = delete;

 private:
  char* argument;
};

}  // namespace cli
