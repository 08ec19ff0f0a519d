// zephtop's screen, drawn with ncurses.
#pragma once

#include <optional>
#include <string>

#include "tools/zephtop/dialogs.h"
#include "tools/zephtop/model.h"

namespace zephtop {

/// The display options that keys change.
struct Display {
  bool paused = false;
  bool ownScales = false;  ///< a separate scale for each adapter
  int selected = 0;        ///< index of an adapter; the list scrolls to it
  int secondsBack = 0;     ///< how far the graphs are scrolled into the past

  /// Limits `selected` and `secondsBack` to the available data.
  void clampTo(const Picture& picture);
};

/// Controls the terminal, and restores it on destruction. One thread, one object at a time.
class View {
 public:
  /// `daemon` is the daemon's name in the header. Check `ready` before any other call.
  explicit View(std::string daemon);
  ~View();
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  /// Returns false if the terminal cannot be used.
  bool ready() const { return terminal != nullptr; }

  /// Returns the next pressed key, a byte or a Key; 0 if there is none.
  static int readKey();

  /// Draws the picture, and `dialog` over it.
  void draw(const Picture& picture, const Display& display, const std::optional<Dialog>& dialog) const;

 private:
  std::string daemon;
  void* terminal = nullptr;
};

}  // namespace zephtop
