// Passwords and tokens, as long as a handler needs them.
#pragma once

#include <cstddef>
#include <cstring>

#include "cli/parsers.h"
#include "platform/wipe.h"

namespace cli {

/// An answer to a prompt, forgotten when it goes. One that is too long counts as empty.
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

/// A word of the command line that is a secret, wiped where it stands when this goes: other programs that list the
/// arguments of a process no longer see it, nor does a dump of its memory.
class WordOfSecret {
 public:
  explicit WordOfSecret(char* text) : word(text) {}
  ~WordOfSecret() { zephlinksdk::wipe(word, std::strlen(word)); }
  WordOfSecret(const WordOfSecret&) = delete;
  WordOfSecret& operator=(const WordOfSecret&) = delete;

 private:
  char* word;
};

}  // namespace cli
