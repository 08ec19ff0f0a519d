// Keys that are not bytes, independent of the terminal library's codes.
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
  kOther,  ///< any other key, or a resized terminal
};

}  // namespace zephtop
