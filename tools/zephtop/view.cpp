#include "tools/zephtop/view.h"

#include <curses.h>
#include <langinfo.h>
#include <wchar.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <optional>
#include <utility>

#include "tools/zephtop/graph.h"
#include "zephlinksdk/words.h"

namespace zephtop {

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

// The numbers of the colour pairs.
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

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

void startColours() {
  if (!has_colors() || isSet("NO_COLOR")) return;
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

/// Returns exactly `width` columns: cuts or pads the text. Replaces unprintable characters by question marks.
std::string fit(const std::string& text, int width, Align align = Align::Left) {
  std::string shown;
  std::string uncut;  // the part that leaves room for the cut mark
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
  // A wide character may leave one more column than the cut mark takes; the next field has its own position.
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

bool isStandby(const Adapter& adapter) {
  return adapter.state == ZephlinkSDK_AdapterState_Connected && adapter.now && adapter.now->asleep;
}

Colour colourOf(const Adapter& adapter) {
  if (isStandby(adapter)) return kDim;
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
  return {isStandby(adapter) ? "standby" : adapterStateWord(adapter.state), colourOf(adapter)};
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
/// Formats the used data, with the limit if there is one.
Cell usageCell(std::int64_t used, std::int64_t limit) {
  if (used < 0) return {"-", kDim};
  if (limit <= 0) return {bytesText(used)};
  return {bytesText(used) + " of " + bytesText(limit), used >= limit           ? kBad
                                                       : used >= limit / 5 * 4 ? kWarning
                                                                               : kNormal};
}

Cell todayCell(const Adapter& adapter) { return usageCell(adapter.today, adapter.todayLimit); }
Cell monthCell(const Adapter& adapter) { return usageCell(adapter.month, adapter.monthLimit); }
Cell latencyCell(const Adapter& adapter) { return measured(adapter, &Measurement::latency, 0); }

Cell lossCell(const Adapter& adapter) {
  const float loss = adapter.now ? adapter.now->loss : 0;
  return measured(adapter, &Measurement::loss, 1, loss >= 2 ? kBad : loss >= 0.5F ? kWarning : kNormal);
}

struct Column {
  const char* title;
  int width;
  Align align;
  int fromColumns;  ///< minimum width of the terminal for this column
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
    {"today", 19, Align::Right, 146, todayCell},
    {"month", 19, Align::Right, 127, monthCell},
};

/// Returns the width of a line with the columns that a terminal of this width shows.
constexpr int usedWidth(int terminalWidth) {
  int used = 2 * kMargin + kMarkWidth;
  for (const Column& column : kColumns) used += terminalWidth >= column.fromColumns ? column.width : 0;
  return used;
}
static_assert(std::ranges::all_of(kColumns, [](const Column& column) {
  return column.fromColumns == 0 || usedWidth(column.fromColumns) <= column.fromColumns;
}));

bool isShown(const Column& column) { return COLS >= column.fromColumns; }

/// Returns by how much a wide terminal widens each column.
int extraWidth() {
  constexpr int kMostExtra = 8;
  const auto count = static_cast<int>(std::ranges::count_if(kColumns, isShown));
  return std::clamp((COLS - usedWidth(COLS)) / count, 0, kMostExtra);
}

/// Calls `visit` with each column, its position and its width.
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

/// `stale`: the record may be outdated.
void drawAdapterLine(int row, const Adapter& adapter, bool selected, bool stale) {
  const bool up = adapter.state == ZephlinkSDK_AdapterState_Connected && !isStandby(adapter) && !stale;
  put(row, kMargin, 1, up ? characters().full : characters().empty, stale ? kDim : colourOf(adapter));
  forEachColumn([row, &adapter, selected, stale](const Column& column, int at, int width) {
    const Cell cell = stale && column.cell == stateCell ? Cell{"unknown"} : column.cell(adapter);
    const bool isFirst = at == kMargin + kMarkWidth;
    // Keep one column free after a text.
    put(row, at, column.align == Align::Left ? width - 1 : width, cell.text, stale ? kDim : cell.colour, column.align,
        isFirst ? A_BOLD | (selected ? A_REVERSE : A_NORMAL) : A_NORMAL);
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

/// Returns the width of one plot, including its axis; one column to its right is free.
int plotWidth() { return (COLS - 2 * kMargin) / plotCount(); }

int secondsShown() { return samplesIn(std::max(0, plotWidth() - kAxisWidth - 1), characters().graph); }

/// The parameters that all graphs of a picture share.
struct Graphs {
  int rows;
  int secondsBack;
  bool stale;
  std::array<std::optional<float>, std::size(kPlots)> scales;  ///< empty: each adapter has its own
};

float scaleOf(const Series& series, const Plot& plot, int secondsBack) {
  return scaleFor(series.largest(secondsBack, secondsShown()), plot.leastScale);
}

Graphs commonGraphs(const Picture& picture, const Display& display, int rows) {
  Graphs graphs{.rows = rows, .secondsBack = display.secondsBack, .stale = isStale(picture.link), .scales = {}};
  if (display.ownScales) return graphs;
  for (std::size_t i = 0; i < std::size(kPlots); ++i) {
    float& common = graphs.scales[i].emplace(kPlots[i].leastScale);
    for (const Adapter& adapter : picture.adapters) {
      common = std::max(common, scaleOf(adapter.*kPlots[i].series, kPlots[i], display.secondsBack));
    }
  }
  return graphs;
}

void drawPlot(int row, int column, const Series& series, std::size_t index, const Graphs& graphs) {
  const int columns = plotWidth() - kAxisWidth - 1;
  if (columns <= 0) return;
  const Plot& plot = kPlots[index];
  const int rows = graphs.rows;
  const float scale = graphs.scales[index].value_or(scaleOf(series, plot, graphs.secondsBack));
  if (rows > 1) put(row, column, kAxisWidth - 1, axisNumber(scale), kDim, Align::Right);
  put(row + rows - 1, column, kAxisWidth - 1, plot.label, kDim, Align::Right);
  for (const std::string& line : drawGraph(series, graphs.secondsBack, columns, rows, scale, characters().graph)) {
    put(row++, column + kAxisWidth, columns, line, graphs.stale ? kDim : plot.colour);
  }
}

void drawPlots(int row, const Adapter& adapter, const Graphs& graphs) {
  for (int i = 0; i < plotCount(); ++i) {
    const auto index = static_cast<std::size_t>(i);
    drawPlot(row, kMargin + i * plotWidth(), adapter.*kPlots[index].series, index, graphs);
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
      return {"gone", kBad};
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

/// Draws right-aligned text, unless it would overlap the text that ends at `used`.
void putRight(int row, int used, const std::string& text, Colour colour = kDim) {
  const int width = static_cast<int>(text.size());
  const int column = COLS - kMargin - width;
  if (column > used) put(row, column, width, text, colour);
}

void drawTotals(int row, const Picture& picture, const Display& display) {
  Measurement sum;
  for (const Adapter& adapter : picture.adapters) {
    sum.down += adapter.now ? adapter.now->down : 0;
    sum.up += adapter.now ? adapter.now->up : 0;
  }
  constexpr int kWidth = 18;
  const bool stale = isStale(picture.link);
  put(row, kMargin, kWidth, std::string(characters().down) + " " + number(sum.down, 1) + " Mbit/s",
      stale ? kDim : kDownload);
  put(row, kMargin + kWidth + 1, kWidth, std::string(characters().up) + " " + number(sum.up, 1) + " Mbit/s",
      stale ? kDim : kUpload);
  std::string span = "graphs: " + std::to_string(secondsShown()) + " s";
  if (display.secondsBack > 0) span += ", until " + std::to_string(display.secondsBack) + " s ago";
  putRight(row, kMargin + 2 * kWidth, span, display.secondsBack > 0 ? kWarning : kDim);
}

std::string settingsText(const Picture& picture) {
  std::string text;
  if (picture.settings) {
    const Settings& settings = *picture.settings;
    text = std::string(ZephlinkSDK_bondingModeText(settings.mode)) + ", " +
           ZephlinkSDK_transportModeText(settings.transport) + ", " +
           (settings.byAdapter   ? "encrypted by adapter"
            : settings.encrypted ? "encrypted"
                                 : "not encrypted");
  }
  if (picture.peers && picture.peers->known > 0) {
    text += ", peers " + std::to_string(picture.peers->connected) + "/" + std::to_string(picture.peers->known);
  }
  return text;
}

void drawUsage(int row, const Picture& picture) {
  const auto amount = [](std::optional<std::int64_t> bytes) { return bytesText(bytes.value_or(-1)); };
  const std::string settings = settingsText(picture);
  const Traffic& traffic = picture.traffic;
  const std::string used =
      "day " + amount(traffic.day) + "  week " + amount(traffic.week) + "  month " + amount(traffic.month);
  put(row, kMargin, COLS - 2 * kMargin, used, isStale(picture.link) ? kDim : kNormal);
  const int width = static_cast<int>(used.size());
  const int room = COLS - 3 * kMargin - width - 1;
  put(row, kMargin + width + 2, room, settings, kDim, Align::Right);
}

/// Returns the details that do not fit in the table.
std::string detailsOf(const Adapter& adapter) {
  std::string text = adapter.name + ": today " + usageCell(adapter.today, adapter.todayLimit).text + ", month " +
                     usageCell(adapter.month, adapter.monthLimit).text;
  const auto addRate = [&text](const char* title, std::int64_t rate) {
    if (rate > 0) text += std::string(", ") + title + " " + number(static_cast<float>(rate) / 1e6F, 1) + " Mbit/s";
  };
  addRate("rate limit", adapter.rateLimit);
  addRate("over a limit", adapter.overlimitRate);
  if (!adapter.transport.empty()) text += ", " + adapter.transport;
  if (adapter.encrypted) text += *adapter.encrypted ? ", encrypted" : ", not encrypted";
  return text;
}

void drawEvents(int row, int rows, const std::deque<Event>& events, bool stale) {
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
    put(row, column, COLS - kMargin - column, event.text,
        stale && event.tone == Tone::Good ? kDim : colourOf(event.tone));
  }
}

void drawFooter(const Display& display) {
  const int row = LINES - 1;
  put(row, kMargin, COLS - 2 * kMargin, "? help   q quit", kDim);
  const char* mark = display.paused ? " PAUSED " : display.secondsBack > 0 ? " HISTORY " : "";
  putRight(row, kMargin + 40, mark, kWarning);
}

// ---- The whole ----

/// The distribution of rows.
struct Layout {
  int listEnd;    ///< the row below the list of adapters
  int graphRows;  ///< for each adapter with data to show
  int blankRows;  ///< below its graphs
};

constexpr int kMostGraphRows = 9;

/// Returns whether the graphs of an adapter contain any data; an adapter without data takes a single row.
bool hasGraphs(const Adapter& adapter, int secondsBack) {
  for (int age = 0; age < secondsShown(); ++age) {
    if (adapter.latency.at(secondsBack + age) >= 0) return true;
  }
  return false;
}

/// Returns the number of header rows, including the titles of the table.
int headerRows() { return LINES >= 24 ? 5 : 4; }

/// Returns the row of the selected adapter's details, below the list and the events.
int detailRow() { return LINES - 2; }

Layout arrange(const std::vector<Adapter>& adapters, int secondsBack) {
  const int room = detailRow() - headerRows();
  const auto withGraphs = [secondsBack](const Adapter& adapter) { return hasGraphs(adapter, secondsBack); };
  const int count = static_cast<int>(adapters.size());
  const int forEvents = room >= 40 ? 10 : room >= 14 ? std::clamp(room - count, 3, 6) : room >= 10 ? 3 : 0;
  const int graphed = static_cast<int>(std::count_if(adapters.begin(), adapters.end(), withGraphs));
  const int each = graphed > 0 ? std::max(0, (room - forEvents - count) / graphed) : 0;
  const int blankRows = each >= 4 ? 1 : 0;
  return {.listEnd = detailRow() - forEvents,
          .graphRows = std::min(kMostGraphRows, each - blankRows),
          .blankRows = blankRows};
}

int heightOf(const Adapter& adapter, const Layout& layout, int secondsBack) {
  const bool graphs = layout.graphRows > 0 && hasGraphs(adapter, secondsBack);
  return graphs ? 1 + layout.graphRows + layout.blankRows : 1;
}

/// Returns the first adapter to draw so that the selected one is visible.
std::size_t firstShown(const Picture& picture, const Display& display, const Layout& layout) {
  const auto selected = static_cast<std::size_t>(display.selected);
  int rows = 0;
  std::size_t first = selected + 1;
  while (first > 0) {
    rows += heightOf(picture.adapters[first - 1], layout, display.secondsBack);
    if (rows - layout.blankRows > layout.listEnd - headerRows()) break;
    --first;
  }
  return std::min(first, selected);
}

/// Returns the row below the list.
int drawAdapters(const Picture& picture, const Display& display) {
  const Layout layout = arrange(picture.adapters, display.secondsBack);
  const Graphs graphs = commonGraphs(picture, display, layout.graphRows);
  int row = headerRows();
  drawTitles(row - 1);
  if (picture.adapters.empty()) return row;
  const std::size_t first = firstShown(picture, display, layout);
  std::size_t next = first;
  for (; next < picture.adapters.size() && row < layout.listEnd; ++next) {
    const Adapter& adapter = picture.adapters[next];
    const int height = heightOf(adapter, layout, display.secondsBack);
    drawAdapterLine(row, adapter, static_cast<int>(next) == display.selected, graphs.stale);
    if (height > 1 && row + layout.graphRows < layout.listEnd) drawPlots(row + 1, adapter, graphs);
    row += height;
  }
  const std::size_t all = picture.adapters.size();
  put(detailRow(), kMargin, COLS - 2 * kMargin, detailsOf(picture.adapters[static_cast<std::size_t>(display.selected)]),
      kDim);
  if (first > 0 || next < all) {
    putRight(LINES - 1, kMargin + 18,
             "adapters " + std::to_string(first + 1) + "-" + std::to_string(next) + " of " + std::to_string(all));
  }
  return std::min(row, layout.listEnd);
}

// ---- Dialogs ----

/// Draws a centered box, with as many lines around the highlighted one as fit.
void drawDialog(const Dialog& dialog) {
  std::size_t widest = std::max(dialog.title.size(), dialog.hint.size());
  for (const std::string& line : dialog.lines) widest = std::max(widest, line.size());
  const int width = std::min(COLS - 4, static_cast<int>(widest) + 4);
  const int all = static_cast<int>(dialog.lines.size());
  const int count = std::min(all, LINES - 4);
  const int first = std::clamp(dialog.chosen - count / 2, 0, all - count);
  const int column = (COLS - width) / 2;
  int row = (LINES - count - 4) / 2;
  const auto drawLine = [&](const std::string& text, Colour colour, chtype extra) {
    put(row++, column, width, "  " + text, colour, Align::Left, extra);
  };
  drawLine(dialog.title, kNormal, A_REVERSE | A_BOLD);
  drawLine("", kNormal, A_NORMAL);
  for (int i = first; i < first + count; ++i) {
    const std::string mark = i == dialog.chosen ? "> " : "  ";
    put(row++, column, width, mark + dialog.lines[static_cast<std::size_t>(i)], kNormal, Align::Left,
        i == dialog.chosen ? A_BOLD : A_NORMAL);
  }
  drawLine("", kNormal, A_NORMAL);
  drawLine(dialog.hint, kDim, A_REVERSE);
}

// ---- Keys ----

constexpr std::pair<int, int> kKeys[] = {
    {KEY_UP, kUp},
    {KEY_DOWN, kDown},
    {KEY_LEFT, kLeft},
    {KEY_RIGHT, kRight},
    {KEY_PPAGE, kPageUp},
    {KEY_NPAGE, kPageDown},
    {KEY_HOME, kHome},
    {KEY_END, kEnd},
    {KEY_ENTER, kEnter},
    {'\n', kEnter},
    {127, kBackspace},
    {'\b', kBackspace},
    {KEY_BACKSPACE, kBackspace},
};

/// Maps the mouse wheel to the arrow keys.
int wheelKey() {
  MEVENT event;
  if (getmouse(&event) != OK) return kOther;
  if ((event.bstate & BUTTON4_PRESSED) != 0) return kUp;
  return (event.bstate & BUTTON5_PRESSED) != 0 ? kDown : kOther;
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
  set_escdelay(25);
  mousemask(BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
  startColours();
}

View::~View() {
  if (terminal == nullptr) return;
  endwin();
  delscreen(static_cast<SCREEN*>(terminal));
}

int View::readKey() {
  const int key = getch();
  for (const auto& [code, meaning] : kKeys) {
    if (key == code) return meaning;
  }
  if (key == ERR) return 0;
  if (key == KEY_MOUSE) return wheelKey();
  return key > 0 && key < 256 ? key : kOther;
}

void Display::clampTo(const Picture& picture) {
  const int count = static_cast<int>(picture.adapters.size());
  selected = std::clamp(selected, 0, std::max(0, count - 1));
  int longest = 0;
  for (const Adapter& adapter : picture.adapters) longest = std::max(longest, adapter.down.size());
  secondsBack = std::clamp(secondsBack, 0, std::max(0, longest - secondsShown()));
}

void View::draw(const Picture& picture, const Display& display, const std::optional<Dialog>& dialog) const {
  erase();
  drawHeader(picture, daemon);
  drawTotals(1, picture, display);
  drawUsage(2, picture);
  drawFooter(display);
  const int row = drawAdapters(picture, display);
  drawEvents(row, detailRow() - row, picture.events, isStale(picture.link));
  if (picture.notice) {
    put(detailRow(), kMargin, COLS - 2 * kMargin, picture.notice->text, colourOf(picture.notice->tone));
  }
  if (dialog) drawDialog(*dialog);
  refresh();
}

}  // namespace zephtop
