// Handlers that many rows share. They can be combined: `exactly<1, setValue<...>>`.
#pragma once

#include <cstddef>

#include "cli/actions.h"
#include "cli/parsers.h"

namespace cli {

/// Calls a method without arguments and prints its record. Ignores the command-line arguments.
template <auto& Method, auto& Print>
int perform(Arguments, const char*) {
  return finish(call<Method>(), Print);
}

/// Sets a value from the first argument; a value that `Parse` rejects is Invalid. REQUIRES: an argument.
template <auto& Parse, auto& Method, auto& Print>
int setValue(Arguments arguments, const char* usage) {
  const auto value = valueOf<Parse>(arguments[0]);
  return value ? finish(call<Method>(*value), Print) : invalid(usage);
}

/// Fewer than `Count` arguments are Missing, more are ignored.
template <std::size_t Count, Handler& Handle>
int atLeast(Arguments arguments, const char* usage) {
  return arguments.size() < Count ? missing(usage) : Handle(arguments, usage);
}

/// Fewer than `Count` arguments are Missing, more are Invalid.
template <std::size_t Count, Handler& Handle>
int exactly(Arguments arguments, const char* usage) {
  if (arguments.size() > Count) return invalid(usage);
  return arguments.size() < Count ? missing(usage) : Handle(arguments, usage);
}

}  // namespace cli
