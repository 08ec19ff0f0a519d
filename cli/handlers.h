// Handlers that many rows share. They combine: `exactly<1, setValue<...>>`.
#pragma once

#include <cstddef>

#include "cli/actions.h"
#include "cli/parsers.h"

namespace cli {

/// Calls a method that takes no arguments, and prints its record. Arguments are ignored.
template <auto& Method, auto& Print>
int perform(Words, const char*) {
  return finish(call<Method>(), Print);
}

/// Sets the value of the first argument; one that `Parse` refuses is Invalid.
/// REQUIRES: an argument.
template <auto& Parse, auto& Method, auto& Print>
int setValue(Words words, const char* usage) {
  const auto value = valueOf<Parse>(words[0]);
  return value ? finish(call<Method>(*value), Print) : invalid(usage);
}

/// Fewer than `Count` arguments are Missing, more are ignored.
template <std::size_t Count, Handler& Handle>
int atLeast(Words words, const char* usage) {
  return words.size() < Count ? missing(usage) : Handle(words, usage);
}

/// Fewer than `Count` arguments are Missing, more are Invalid.
template <std::size_t Count, Handler& Handle>
int exactly(Words words, const char* usage) {
  if (words.size() > Count) return invalid(usage);
  return words.size() < Count ? missing(usage) : Handle(words, usage);
}

}  // namespace cli
