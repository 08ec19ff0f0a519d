// The monitor's screen, drawn with ncurses.
#pragma once

#include <string>

#include "examples/monitor/model.h"

namespace monitor {

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

  /// The next key that was pressed, 0 for none. `kResized` when the terminal has another size.
  static int readKey();
  static const int kResized;

  void draw(const Picture& picture, bool paused) const;

 private:
  std::string daemon;
  void* terminal = nullptr;
};

}  // namespace monitor
