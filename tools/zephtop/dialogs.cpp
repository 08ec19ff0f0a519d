#include "tools/zephtop/dialogs.h"

#include <algorithm>
#include <utility>

#include "zephlinksdk/words.h"

namespace zephtop {

namespace {

struct HelpRow {
  const char* text;
  bool changes;  ///< changes the daemon; omitted if read-only
};
constexpr HelpRow kHelp[] = {
    {"up, down    select an adapter", false},
    {"left, right move the graphs in time", false},
    {"home, end   oldest samples, now", false},
    {"s           one scale, or each its own", false},
    {"space       pause", false},
    {"e           clear the events", false},
    {"c           connect", true},
    {"d           disconnect", true},
    {"m           set the mode", true},
    {"p           set the adapter's priority", true},
    {"q           quit", false},
};

Order connectTo(const char* text, ZephlinkSDK_ConnectMethod method) {
  Order order;
  order.kind = Order::Kind::Connect;
  order.text = text;
  order.method = method;
  return order;
}

/// Returns the orders for connecting. The last one still needs a place.
std::vector<Order> connectChoices() {
  Order place;
  place.kind = Order::Kind::ConnectToPlace;
  place.text = "connect to a country or city";
  return {connectTo("connect to the closest server", ZephlinkSDK_ConnectMethod_Closest),
          connectTo("connect to the last server", ZephlinkSDK_ConnectMethod_Last), place};
}

std::vector<Order> modeChoices() {
  std::vector<Order> choices;
  for (const auto mode :
       {ZephlinkSDK_BondingMode_Speed, ZephlinkSDK_BondingMode_Redundant, ZephlinkSDK_BondingMode_Streaming}) {
    Order order;
    order.kind = Order::Kind::SetMode;
    order.mode = mode;
    order.text = std::string("set the mode to ") + ZephlinkSDK_bondingModeText(mode);
    choices.push_back(std::move(order));
  }
  return choices;
}

std::vector<Order> priorityChoices(const Adapter& adapter) {
  std::vector<Order> choices;
  for (const auto priority : {ZephlinkSDK_ConnectionPriority_Automatic, ZephlinkSDK_ConnectionPriority_Always,
                              ZephlinkSDK_ConnectionPriority_Secondary, ZephlinkSDK_ConnectionPriority_Backup,
                              ZephlinkSDK_ConnectionPriority_Never}) {
    Order order;
    order.kind = Order::Kind::SetPriority;
    order.priority = priority;
    order.adapterID = adapter.id;
    order.text = "set the priority of " + adapter.name + " to " + priorityWord(priority);
    choices.push_back(std::move(order));
  }
  return choices;
}

std::string lowered(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return text;
}

/// Removes the last UTF-8 character.
void eraseLast(std::string& text) {
  while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80U) text.pop_back();
  if (!text.empty()) text.pop_back();
}

}  // namespace

bool Dialogs::press(int key, const Picture& picture, int selected) {
  if (step == Step::Closed) return open(key, picture, selected);
  if (key == kOther) return true;
  if (key == kEscape || step == Step::Help || (key == 'q' && step != Step::Search)) {
    step = Step::Closed;
  } else if (step == Step::Menu) {
    pressInMenu(key);
  } else if (step == Step::Search) {
    pressInSearch(key, picture);
  } else if (key == 'y' || key == 'n') {
    if (key == 'y') confirmed = asked;
    step = Step::Closed;
  }
  return true;
}

bool Dialogs::open(int key, const Picture& picture, int selected) {
  if (key == '?') {
    step = Step::Help;
    return true;
  }
  if (readOnly) return false;
  if (key == 'c') {
    openMenu("Connect", connectChoices());
  } else if (key == 'd') {
    Order order;
    order.kind = Order::Kind::Disconnect;
    order.text = "disconnect";
    ask(order);
  } else if (key == 'm') {
    openMenu("Mode", modeChoices());
  } else if (key == 'p' && selected >= 0 && static_cast<std::size_t>(selected) < picture.adapters.size()) {
    const Adapter& adapter = picture.adapters[static_cast<std::size_t>(selected)];
    openMenu("Priority of " + adapter.name, priorityChoices(adapter));
  } else {
    return false;
  }
  return true;
}

void Dialogs::openMenu(const std::string& title, std::vector<Order> choices) {
  menuTitle = title;
  menu = std::move(choices);
  chosen = 0;
  step = Step::Menu;
}

void Dialogs::ask(const Order& order) {
  asked = order;
  step = Step::Confirm;
}

void Dialogs::pressInMenu(int key) {
  moveChoice(key, menu.size());
  if (key != kEnter) return;
  const Order& order = menu[chosen];
  if (order.kind != Order::Kind::ConnectToPlace) return ask(order);
  step = Step::Search;
  typed.clear();
  chosen = 0;
  needsDirectory = true;
}

void Dialogs::pressInSearch(int key, const Picture& picture) {
  const Places places = found(picture);
  moveChoice(key, places.size());
  if (key == kEnter && chosen < places.size()) {
    Order order;
    order.kind = Order::Kind::ConnectToPlace;
    order.place = *places[chosen];
    order.text = "connect to " + order.place.name;
    ask(order);
  } else if (key == kBackspace) {
    eraseLast(typed);
    chosen = 0;
  } else if (key >= ' ' && key < 256) {
    typed += static_cast<char>(key);
    chosen = 0;
  }
}

Dialogs::Places Dialogs::found(const Picture& picture) const {
  Places places;
  if (!picture.places) return places;
  for (const Place& place : *picture.places) {
    if (lowered(place.name).find(lowered(typed)) != std::string::npos) places.push_back(&place);
  }
  return places;
}

void Dialogs::moveChoice(int key, std::size_t count) {
  constexpr std::size_t kPage = 10;
  const std::size_t distance = key == kPageUp || key == kPageDown ? kPage : 1;
  if (key == kUp || key == kPageUp) chosen -= std::min(chosen, distance);
  if (key == kDown || key == kPageDown) chosen += distance;
  chosen = std::min(chosen, count > 0 ? count - 1 : 0);
}

std::optional<Dialog> Dialogs::dialog(const Picture& picture) const {
  Dialog shown;
  switch (step) {
    case Step::Closed:
      return std::nullopt;
    case Step::Help:
      shown.title = "Keys";
      for (const HelpRow& row : kHelp) {
        if (!readOnly || !row.changes) shown.lines.emplace_back(row.text);
      }
      shown.hint = "any key closes";
      break;
    case Step::Menu:
      shown.title = menuTitle;
      for (const Order& order : menu) shown.lines.push_back(order.text);
      shown.chosen = static_cast<int>(chosen);
      shown.hint = "enter chooses, escape cancels";
      break;
    case Step::Search: {
      shown.title = "Country or city: " + typed + "_";
      const Places places = found(picture);
      for (const Place* place : places) shown.lines.push_back(place->name);
      shown.chosen = places.empty() ? -1 : static_cast<int>(std::min(chosen, places.size() - 1));
      if (places.empty()) shown.lines.emplace_back(picture.places ? "no such place" : "waiting for the directory");
      shown.hint = "type to search, enter chooses, escape cancels";
      break;
    }
    case Step::Confirm:
      shown.title = "Confirm";
      shown.lines.push_back("Really " + asked.text + "?");
      shown.hint = "y yes, n no";
      break;
  }
  return shown;
}

}  // namespace zephtop
