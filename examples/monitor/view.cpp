#include "examples/monitor/view.h"

#include <curses.h>
#include <langinfo.h>
#include <wchar.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "examples/monitor/graph.h"

namespace monitor {

const int View::kResized = KEY_RESIZE;

namespace {

// ---- Characters and colours ----

struct Characters {
  GraphStyle graph;
  const char* full;
  const char* empty;
  const char* down;
  const char* up;
  const char* line;
  const char* cut;
};
constexpr Characters kUnicode{GraphStyle::Braille, "●", "○", "↓", "↑", "─", "…"};
constexpr Characters kAscii{GraphStyle::Ascii, "*", "o", "v", "^", "-", "~"};

const Characters& characters() {
  static const Characters& chosen = std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0 ? kUnicode : kAscii;
  return chosen;
}

// Each is the number of its colour pair.
enum Colour : short { kNormal, kDim, kGood, kWarning, kBad, kDownload, kUpload, kLatency };

struct ColourRow {
  Colour colour;
  short of256;
  short of8;
};
constexpr ColourRow kColours[] = {
    {kDim, 244, COLOR_WHITE},    {kGood, 114, COLOR_GREEN},     {kWarning, 179, COLOR_YELLOW}, {kBad, 174, COLOR_RED},
    {kDownload, 74, COLOR_CYAN}, {kUpload, 176, COLOR_MAGENTA}, {kLatency, 144, COLOR_YELLOW},
};

void startColours() {
  if (!has_colors() || std::getenv("NO_COLOR") != nullptr) return;
  start_color();
  use_default_colors();
  for (const ColourRow& row : kColours) init_pair(row.colour, COLORS >= 256 ? row.of256 : row.of8, -1);
}

chtype attribute(Colour colour) {
  const bool faint = colour == kDim && COLORS < 256;
  return static_cast<chtype>(COLOR_PAIR(colour)) | (faint ? A_DIM : A_NORMAL);
}

Colour colourOf(Tone tone) {
  switch (tone) {
    case Tone::Good:
      return kGood;
    case Tone::Warning:
      return kWarning;
    case Tone::Bad:
      return kBad;
    default:
      return kNormal;
  }
}

// ---- Text of a given width ----

enum class Align { Left, Right };

/// Exactly `width` columns: cut or filled up. What cannot be printed becomes a question mark.
std::string fit(const std::string& text, int width, Align align = Align::Left) {
  std::string shown;
  std::string uncut;  // as far as there is still room for the sign of a cut
  int used = 0;
  std::mbstate_t state{};
  for (std::size_t at = 0; at < text.size();) {
    wchar_t letter = 0;
    std::size_t bytes = std::mbrtowc(&letter, text.data() + at, text.size() - at, &state);
    int columns = bytes <= text.size() ? wcwidth(letter) : -1;
    std::string printed = text.substr(at, bytes);
    if (columns < 0 || bytes == 0) {
      state = {};
      bytes = 1;
      columns = 1;
      printed = "?";
    }
    if (used + columns > width) {
      shown = uncut + characters().cut;
      used = width;
      break;
    }
    shown += printed;
    used += columns;
    at += bytes;
    if (used < width) uncut = shown;
  }
  // A wide letter may leave one column more than the sign takes; the next field is placed by itself.
  const std::string blanks(static_cast<std::size_t>(std::max(0, width - used)), ' ');
  return align == Align::Right ? blanks + shown : shown + blanks;
}

void put(int row, int column, int width, const std::string& text, Colour colour = kNormal, Align align = Align::Left,
         chtype extra = A_NORMAL) {
  if (row < 0 || row >= LINES || column >= COLS || width <= 0) return;
  attrset(static_cast<int>(attribute(colour) | extra));
  mvaddstr(row, column, fit(text, std::min(width, COLS - column), align).c_str());
}

std::string number(float value, int decimals) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", decimals, static_cast<double>(value));
  return text;
}

std::string axisNumber(float value) { return number(value, value < 1 ? 1 : 0); }

// ---- The table of adapters ----

constexpr int kMargin = 1;
constexpr int kMarkWidth = 2;
constexpr int kRoomForDetails = 180;

struct Cell {
  std::string text;
  Colour colour = kNormal;
};

bool standsBy(const Adapter& adapter) {
  return adapter.state == ZephlinkSDK_AdapterState_Connected && adapter.now && adapter.now->asleep;
}

Colour colourOf(const Adapter& adapter) {
  if (standsBy(adapter)) return kDim;
  switch (adapter.state) {
    case ZephlinkSDK_AdapterState_Connected:
      return kGood;
    case ZephlinkSDK_AdapterState_Connecting:
      return kWarning;
    default:
      return kDim;
  }
}

Cell nameCell(const Adapter& adapter) { return {adapter.name, kNormal}; }
Cell idCell(const Adapter& adapter) { return {adapter.id, kDim}; }
Cell networkCell(const Adapter& adapter) { return {adapter.network, kDim}; }

Cell stateCell(const Adapter& adapter) {
  return {standsBy(adapter) ? "standby" : adapterStateWord(adapter.state), colourOf(adapter)};
}

Cell priorityCell(const Adapter& adapter) {
  if (adapter.priority == ZephlinkSDK_ConnectionPriority_Automatic && COLS >= kRoomForDetails) {
    return {priorityWord(adapter.priority) + " (" + priorityWord(adapter.workingPriority) + ")"};
  }
  return {priorityWord(adapter.priority)};
}

Cell measured(const Adapter& adapter, float Measurement::*field, int decimals, Colour colour = kNormal) {
  if (!adapter.now) return {"-", kDim};
  return {number((*adapter.now).*field, decimals), colour};
}

Cell downCell(const Adapter& adapter) { return measured(adapter, &Measurement::down, 1, kDownload); }
Cell upCell(const Adapter& adapter) { return measured(adapter, &Measurement::up, 1, kUpload); }
Cell latencyCell(const Adapter& adapter) { return measured(adapter, &Measurement::latency, 0); }

Cell lossCell(const Adapter& adapter) {
  const float loss = adapter.now ? adapter.now->loss : 0;
  return measured(adapter, &Measurement::loss, 1, loss >= 2 ? kBad : loss >= 0.5F ? kWarning : kNormal);
}

struct Column {
  const char* title;
  int width;
  Align align;
  int fromColumns;  ///< of the terminal; narrower ones do without
  Cell (*cell)(const Adapter&);
};
constexpr Column kColumns[] = {
    {"adapter", 16, Align::Left, 0, nameCell},
    {"id", 10, Align::Left, 92, idCell},
    {"network", 20, Align::Left, 112, networkCell},
    {"state", 13, Align::Left, 45, stateCell},
    {"priority", 11, Align::Left, 79, priorityCell},
    {"Mbit/s down", 11, Align::Right, 0, downCell},
    {"up", 8, Align::Right, 53, upCell},
    {"ms", 7, Align::Right, 60, latencyCell},
    {"% lost", 8, Align::Right, 68, lossCell},
};

bool isShown(const Column& column) { return COLS >= column.fromColumns; }

/// What a wide terminal leaves to every column besides its width.
int extraWidth() {
  constexpr int kMostExtra = 8;
  int used = 2 * kMargin + kMarkWidth;
  int count = 0;
  for (const Column& column : kColumns) {
    if (!isShown(column)) continue;
    used += column.width;
    ++count;
  }
  return std::clamp((COLS - used) / count, 0, kMostExtra);
}

/// Calls `visit` with each column, its place and its width.
template <class Visit>
void forEachColumn(Visit visit) {
  const int extra = extraWidth();
  int at = kMargin + kMarkWidth;
  for (const Column& column : kColumns) {
    if (!isShown(column)) continue;
    visit(column, at, column.width + extra);
    at += column.width + extra;
  }
}

void drawTitles(int row) {
  forEachColumn(
      [row](const Column& column, int at, int width) { put(row, at, width, column.title, kDim, column.align); });
}

/// `stale` when nobody knows whether all this still holds.
void drawAdapterLine(int row, const Adapter& adapter, bool stale) {
  const bool up = adapter.state == ZephlinkSDK_AdapterState_Connected && !standsBy(adapter) && !stale;
  put(row, kMargin, 1, up ? characters().full : characters().empty, stale ? kDim : colourOf(adapter));
  forEachColumn([row, &adapter, stale](const Column& column, int at, int width) {
    const Cell cell = column.cell(adapter);
    const bool isFirst = at == kMargin + kMarkWidth;
    // A text stays one column away from the next.
    put(row, at, column.align == Align::Left ? width - 1 : width, cell.text, stale ? kDim : cell.colour, column.align,
        isFirst ? A_BOLD : A_NORMAL);
  });
}

// ---- Graphs ----

constexpr int kAxisWidth = 6;

struct Plot {
  const char* label;
  Series Adapter::*series;
  float leastScale;
  Colour colour;
};
constexpr Plot kPlots[] = {
    {"down", &Adapter::down, 1, kDownload},
    {"up", &Adapter::up, 1, kUpload},
    {"ms", &Adapter::latency, 10, kLatency},
};

int plotCount() { return COLS >= 120 ? 3 : COLS >= 50 ? 2 : 1; }

/// The place of one plot, its axis included; a column stays free on its right.
int plotWidth() { return (COLS - 2 * kMargin) / plotCount(); }

int secondsShown() { return samplesIn(std::max(0, plotWidth() - kAxisWidth - 1), characters().graph); }

void drawPlot(int row, int column, int rows, const Series& series, const Plot& plot) {
  const int columns = plotWidth() - kAxisWidth - 1;
  if (columns <= 0) return;
  const float scale = scaleFor(series.largest(secondsShown()), plot.leastScale);
  if (rows > 1) put(row, column, kAxisWidth - 1, axisNumber(scale), kDim, Align::Right);
  put(row + rows - 1, column, kAxisWidth - 1, plot.label, kDim, Align::Right);
  for (const std::string& line : drawGraph(series, columns, rows, scale, characters().graph)) {
    put(row++, column + kAxisWidth, columns, line, plot.colour);
  }
}

void drawPlots(int row, int rows, const Adapter& adapter) {
  for (int i = 0; i < plotCount(); ++i) {
    const Plot& plot = kPlots[i];
    drawPlot(row, kMargin + i * plotWidth(), rows, adapter.*plot.series, plot);
  }
}

// ---- Header, events, footer ----

void drawRule(int row, const std::string& title) {
  std::string line = std::string(characters().line) + " " + title + " ";
  for (int i = static_cast<int>(title.size()) + 3; i < COLS - 2 * kMargin; ++i) line += characters().line;
  put(row, kMargin, COLS - 2 * kMargin, line, kDim);
}

Cell linkCell(LinkStatus status) {
  switch (status) {
    case LinkStatus::Live:
      return {"live", kGood};
    case LinkStatus::Quiet:
      return {"quiet", kWarning};
    case LinkStatus::Unreachable:
      return {"no daemon", kBad};
    case LinkStatus::Mute:
      return {"no answer", kBad};
    default:
      return {"connecting", kWarning};
  }
}

Colour colourOfState(const Picture& picture) {
  if (!picture.state) return kDim;
  switch (*picture.state) {
    case ZephlinkSDK_State_Connected:
      return kGood;
    case ZephlinkSDK_State_LoggedOut:
    case ZephlinkSDK_State_LoggedIn:
      return kNormal;
    case ZephlinkSDK_State_OverLimit:
      return kBad;
    default:
      return kWarning;
  }
}

void drawHeader(const Picture& picture, const std::string& daemon) {
  const bool connected = picture.state == ZephlinkSDK_State_Connected;
  const Cell link = linkCell(picture.link);
  const std::string where = COLS >= 60 ? daemon + "  " + link.text : link.text;
  const int whereWidth = static_cast<int>(where.size());
  const int room = COLS - 2 * kMargin - whereWidth - 2;
  const std::string state = picture.state ? stateWord(*picture.state) : "unknown";
  const std::string line = std::string(connected ? characters().full : characters().empty) + " " + state;
  const int stateWidth = static_cast<int>(state.size()) + 2;
  const Colour colour = colourOfState(picture);
  put(0, kMargin, std::min(room, stateWidth), line, colour, Align::Left, A_BOLD);
  put(0, kMargin + stateWidth + 2, room - stateWidth - 2, picture.server, colour == kDim ? kDim : kNormal, Align::Left,
      A_BOLD);
  put(0, COLS - kMargin - whereWidth, whereWidth, where, kDim);
  const int linkWidth = static_cast<int>(link.text.size());
  put(0, COLS - kMargin - linkWidth, linkWidth, link.text, link.colour);
}

void drawTotals(int row, const Picture& picture) {
  Measurement sum;
  for (const Adapter& adapter : picture.adapters) {
    sum.down += adapter.now ? adapter.now->down : 0;
    sum.up += adapter.now ? adapter.now->up : 0;
  }
  constexpr int kWidth = 18;
  put(row, kMargin, kWidth, std::string(characters().down) + " " + number(sum.down, 1) + " Mbit/s", kDownload);
  put(row, kMargin + kWidth + 1, kWidth, std::string(characters().up) + " " + number(sum.up, 1) + " Mbit/s", kUpload);
  const std::string span = "graphs: " + std::to_string(secondsShown()) + " s";
  const int width = static_cast<int>(span.size());
  const int column = COLS - kMargin - width;
  if (column > kMargin + 2 * kWidth) put(row, column, width, span, kDim);
}

void drawEvents(int row, int rows, const std::deque<Event>& events) {
  if (rows < 2) return;
  drawRule(row, "events");
  constexpr int kTimeWidth = 10;
  constexpr int kSubjectWidth = 17;
  for (const Event& event : events) {
    if (--rows == 0) return;
    ++row;
    std::tm local{};
    localtime_r(&event.time, &local);
    char time[16];
    std::strftime(time, sizeof time, "%H:%M:%S", &local);
    put(row, kMargin, kTimeWidth, time, kDim);
    put(row, kMargin + kTimeWidth, kSubjectWidth - 1, event.subject);
    const int column = kMargin + kTimeWidth + kSubjectWidth;
    put(row, column, COLS - kMargin - column, event.text, colourOf(event.tone));
  }
}

void drawFooter(bool paused) {
  const int row = LINES - 1;
  put(row, kMargin, COLS - 2 * kMargin, std::string("q quit   p ") + (paused ? "go on" : "pause") + "   c clear events",
      kDim);
  if (paused && COLS >= 50) put(row, COLS - kMargin - 8, 8, " PAUSED ", kWarning, Align::Left, A_REVERSE);
}

// ---- The whole ----

/// Who gets how many rows.
struct Layout {
  int headerRows;
  int graphRows;  ///< of each adapter with something to show
  int blankRows;  ///< below its graphs
};

constexpr int kMostGraphRows = 9;

/// Whether there is anything to show in the graphs of an adapter; one without takes a single row.
bool hasGraphs(const Adapter& adapter) {
  for (int age = 0; age < secondsShown(); ++age) {
    if (adapter.latency.at(age) >= 0) return true;
  }
  return false;
}

Layout arrange(const std::vector<Adapter>& adapters) {
  const int headerRows = LINES >= 24 ? 4 : 3;
  const int room = LINES - headerRows - 1;
  const int forEvents = room >= 40 ? 10 : room >= 16 ? 6 : room >= 10 ? 3 : 0;
  const int graphed = static_cast<int>(std::count_if(adapters.begin(), adapters.end(), hasGraphs));
  const int spare = room - forEvents - static_cast<int>(adapters.size());
  const int each = graphed > 0 ? std::max(0, spare / graphed) : 0;
  const int blankRows = each >= 4 ? 1 : 0;
  return {headerRows, std::min(kMostGraphRows, each - blankRows), blankRows};
}

}  // namespace

View::View(std::string ofDaemon) : daemon(std::move(ofDaemon)) {
  SCREEN* screen = newterm(nullptr, stdout, stdin);
  if (screen == nullptr) return;
  terminal = screen;
  cbreak();
  noecho();
  curs_set(0);
  keypad(stdscr, TRUE);
  nodelay(stdscr, TRUE);
  startColours();
}

View::~View() {
  if (terminal == nullptr) return;
  endwin();
  delscreen(static_cast<SCREEN*>(terminal));
}

int View::readKey() {
  const int key = getch();
  return key == ERR ? 0 : key;
}

void View::draw(const Picture& picture, bool paused) const {
  erase();
  drawHeader(picture, daemon);
  drawTotals(1, picture);
  const Layout layout = arrange(picture.adapters);
  int row = layout.headerRows;
  drawTitles(row - 1);
  for (const Adapter& adapter : picture.adapters) {
    if (row >= LINES - 1) break;
    drawAdapterLine(row++, adapter, isLost(picture.link));
    const bool isLast = &adapter == &picture.adapters.back();
    if (layout.graphRows > 0 && hasGraphs(adapter)) {
      drawPlots(row, layout.graphRows, adapter);
      row += layout.graphRows + layout.blankRows;
    } else if (isLast) {
      row += layout.blankRows;
    }
  }
  drawEvents(row, LINES - 1 - row, picture.events);
  drawFooter(paused);
  refresh();
}

}  // namespace monitor
