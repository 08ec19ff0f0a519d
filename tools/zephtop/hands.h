// What the keys can change at the daemon: dialogs that choose, ask for confirmation, and yield an order.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/zephtop/keys.h"
#include "tools/zephtop/model.h"

namespace zephtop {

/// A change to ask the daemon for. Only the fields of its kind have a meaning.
struct Order {
  enum class Kind { Connect, ConnectToPlace, Disconnect, SetMode, SetPriority };
  Kind kind{};
  std::string text;  ///< "connect to the closest server"
  ZephlinkSDK_ConnectMethod method{};
  Place place;
  ZephlinkSDK_BondingMode mode{};
  ZephlinkSDK_ConnectionPriority priority{};
  std::string adapterID;
};

/// A dialog as the view draws it.
struct Dialog {
  std::string title;
  std::vector<std::string> lines;
  int chosen = -1;  ///< index of the marked line; -1 for none
  std::string hint;
};

/// The dialogs that keys open. Without a terminal, so that tests can press the keys.
class Hands {
 public:
  explicit Hands(bool forReadOnly) : readOnly(forReadOnly) {}

  /// False if the key is not for a dialog. `selected` is the index of an adapter of the picture.
  bool press(int key, const Picture& picture, int selected);

  /// The open dialog.
  std::optional<Dialog> dialog(const Picture& picture) const;

  /// The order that was confirmed since the last call.
  std::optional<Order> takeOrder() { return std::exchange(confirmed, std::nullopt); }

  /// Whether the directory has become necessary since the last call.
  bool takeDirectoryRequest() { return std::exchange(needsDirectory, false); }

 private:
  enum class Step { Closed, Help, Menu, Search, Confirm };
  using Places = std::vector<const Place*>;

  bool open(int key, const Picture& picture, int selected);
  void openMenu(const std::string& title, std::vector<Order> choices);
  void ask(const Order& order);
  void pressInMenu(int key);
  void pressInSearch(int key, const Picture& picture);
  Places found(const Picture& picture) const;
  void moveChoice(int key, std::size_t count);

  bool readOnly;
  Step step = Step::Closed;
  std::string menuTitle;
  std::vector<Order> menu;
  std::size_t chosen = 0;
  std::string typed;
  Order asked;
  std::optional<Order> confirmed;
  bool needsDirectory = false;
};

}  // namespace zephtop
