// zephtop's screen, drawn with ncurses.
#pragma once

#include <optional>
#include <string>

#include "tools/zephtop/hands.h"
#include "tools/zephtop/model.h"

namespace zephtop {

/// What the keys have chosen to see.
struct Display {
  bool paused = false;
  bool ownScales = false;  ///< each adapter its own scale, instead of one for all
  int selected = 0;        ///< index of an adapter; the list scrolls to it
  int secondsBack = 0;     ///< how far the graphs are moved into the past

  /// Keeps `selected` and `secondsBack` within what there is.
  void clampTo(const Picture& picture);
};

/// Takes the terminal, and gives it back as it was. One thread, one object at a time.
class View {
 public:
  /// `daemon` names the daemon in the header. Check `ready` before anything else.
  explicit View(std::string daemon);
  ~View();
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  /// False where the terminal can't be used.
  bool ready() const { return terminal != nullptr; }

  /// The next key that was pressed, a byte or a Key; 0 for none.
  static int readKey();

  /// `dialog` is drawn over the rest.
  void draw(const Picture& picture, const Display& display, const std::optional<Dialog>& dialog) const;

 private:
  std::string daemon;
  void* terminal = nullptr;
};

}  // namespace zephtop
