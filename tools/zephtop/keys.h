// Keys that are not bytes, whatever the terminal library calls them.
#pragma once

namespace zephtop {

enum Key : int {
  kEnter = '\r',
  kEscape = 27,
  kUp = 1000,
  kDown,
  kLeft,
  kRight,
  kPageUp,
  kPageDown,
  kHome,
  kEnd,
  kBackspace,
  kOther,  ///< any other key, and a terminal that has another size
};

}  // namespace zephtop
