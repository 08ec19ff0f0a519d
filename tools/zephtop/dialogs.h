// The dialogs that change the daemon: they let the user choose, ask for confirmation, and return an order.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/zephtop/keys.h"
#include "tools/zephtop/model.h"

namespace zephtop {

/// A requested change of the daemon. Only the fields of its kind are valid.
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

/// The contents of a dialog, for the view.
struct Dialog {
  std::string title;
  std::vector<std::string> lines;
  int chosen = -1;  ///< index of the highlighted line; -1 for none
  std::string hint;
};

/// Handles the keys of the dialogs. Independent of the terminal, so that tests can send keys.
class Dialogs {
 public:
  explicit Dialogs(bool forReadOnly) : readOnly(forReadOnly) {}

  /// Handles a key. Returns false if the key does not belong to a dialog. `selected` is the index of an adapter in the
  /// picture.
  bool press(int key, const Picture& picture, int selected);

  /// Returns the open dialog, if any.
  std::optional<Dialog> dialog(const Picture& picture) const;

  /// Returns the order that was confirmed since the last call, if any.
  std::optional<Order> takeOrder() { return std::exchange(confirmed, std::nullopt); }

  /// Returns whether a dialog has required the directory since the last call.
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
