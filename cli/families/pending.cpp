// Words whose families are still to be written: they say so and fail.
#include <cstdio>

#include "cli/families/handlers.h"

namespace cli {

namespace {

int pending() {
  std::fputs("This action is not built yet.\n", stderr);
  return kFailed;
}

}  // namespace

// logs.cpp
int log(Words) { return pending(); }
int daemon(Words) { return pending(); }
int showLogSettings(Words) { return pending(); }

}  // namespace cli
