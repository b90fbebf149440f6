#include "totals/totals_layout.h"

#include <algorithm>

#include "platform/metrics.h"

namespace totals {
namespace {

using platform::PlacedControl;
using platform::Scaled;

constexpr int kRowHeight = 25;
constexpr int kTitleWidth = 28;
constexpr int kDateWidth = 64;
constexpr int kStepWidth = 22;
constexpr int kLineHeight = 15;
constexpr int kMargin = 3;
constexpr int kBarMargin = 6;  // leaves room for the frame of the keys
constexpr int kTextHeight = 14;
constexpr int kIndent = 12;
constexpr int kLegendEntry = 58;
constexpr int kMostLegendRows = 3;
constexpr int kAxisWidth = 26;

using Controls = std::vector<PlacedControl>;

// Two dates take the place of the title where a narrow screen has no room for all three.
void PlaceHeader(Controls& controls, int width, bool isFromTo, bool canStep) {
  const int height = Scaled(kRowHeight) - 1;
  const int right = canStep ? width - 5 * Scaled(kStepWidth) : width;
  const bool hasTitle = !isFromTo || right >= Scaled(kTitleWidth + 2 * kDateWidth);
  const int left = hasTitle ? Scaled(kTitleWidth + kMargin) : 0;
  if (hasTitle) controls.push_back({kIdTitle, {Scaled(kMargin), 0, Scaled(kTitleWidth), height}});
  if (isFromTo) {
    const int half = (right - left) / 2;
    controls.push_back({kIdFirst, {left, 0, half - 1, height}});
    controls.push_back({kIdLast, {left + half, 0, right - left - half - 1, height}});
  } else {
    controls.push_back({kIdPeriod, {left, 0, right - left - 1, height}});
  }
  if (!canStep) return;
  int x = right;
  for (const int id : {kIdBigBack, kIdBack, kIdToday, kIdForward, kIdBigForward}) {
    controls.push_back({id, {x, 0, Scaled(kStepWidth), height}});
    x += Scaled(kStepWidth);
  }
}

void PlaceChoices(Controls& controls, int width, int y) {
  const int each = width / 3;
  int x = 0;
  for (const int id : {kIdKind, kIdBy, kIdWithin}) {
    controls.push_back({id, {x, y, each - 1, Scaled(kRowHeight) - 1}});
    x += each;
  }
}

// A wide screen has room for the note beside the others. Where they end.
int PlaceSummary(Controls& controls, int y, int width, bool isWide, bool hasNote) {
  struct Part {
    int id, line, from, to;  // in twentieths of the line
  };
  constexpr Part kTall[] = {{kIdSum, 0, 0, 9},
                            {kIdWritten, 0, 9, 20},
                            {kIdRest, 1, 0, 15},
                            {kIdCount, 1, 15, 20},
                            {kIdNote, 2, 0, 20}};
  constexpr Part kWide[] = {{kIdSum, 0, 0, 7},
                            {kIdWritten, 0, 7, 16},
                            {kIdRest, 1, 0, 11},
                            {kIdNote, 1, 11, 20},
                            {kIdCount, 0, 16, 20}};
  const int line = Scaled(kLineHeight);
  const int inner = width - 2 * Scaled(kMargin);
  int lines = 0;
  for (const Part& part : isWide ? kWide : kTall) {
    if (part.id == kIdNote && !hasNote) continue;
    lines = std::max(lines, part.line + 1);
    const int left = inner * part.from / 20;
    controls.push_back(
        {part.id,
         {Scaled(kMargin) + left, y + part.line * line, inner * part.to / 20 - left, line}});
  }
  return y + lines * line;
}

// The columns, or the opened group's name, figures and Actions.
void PlaceLower(Controls& controls, const Rect& area, const Shown& shown) {
  if (!shown.isOpen) return controls.push_back({kIdColumns, area});
  const int line = Scaled(kLineHeight + 3);
  const int left = area.x + Scaled(kMargin), right = area.x + area.width - Scaled(kMargin);
  const int figures = std::max(right - shown.groupFigures, left + 1);
  controls.push_back({kIdGroup, {left, area.y, figures - left, line}});
  controls.push_back({kIdGroupFigures, {figures, area.y, right - figures, line}});
  controls.push_back({kIdActions, {area.x, area.y + line, area.width, area.height - line}});
}

// The hours of the lines: few enough to leave room between them, and two at least.
Seconds LineStep(Seconds highest) {
  constexpr int kHours[] = {1,   2,    3,    6,    12,    24,    50,    100,    200,
                            500, 1000, 2000, 5000, 10000, 20000, 50000, 100000, 200000};
  constexpr int kMostLines = 5;
  for (const int hours : kHours) {
    if (highest <= hours * kHourSeconds * kMostLines) return hours * kHourSeconds;
  }
  return highest;
}

std::vector<Rect> PlaceLegend(int width, int height, int entries) {
  const int perRow =
      std::max(width / Scaled(kLegendEntry), (entries + kMostLegendRows - 1) / kMostLegendRows);
  const int rows = entries == 0 ? 0 : (entries + perRow - 1) / perRow;
  const int line = Scaled(kTextHeight);
  std::vector<Rect> legend;
  legend.reserve(static_cast<size_t>(entries));
  for (int entry = 0; entry < entries; ++entry) {
    legend.push_back({entry % perRow * width / perRow, height - (rows - entry / perRow) * line,
                      width / perRow, line});
  }
  return legend;
}

}  // namespace

std::vector<PlacedControl> LayOutTotals(int width, int height, const Shown& shown) {
  Controls controls;
  PlaceHeader(controls, width, shown.isFromTo, shown.canStep);
  PlaceChoices(controls, width, Scaled(kRowHeight));
  const int top = 2 * Scaled(kRowHeight);
  const bool hasLower = shown.hasColumns || shown.isOpen;
  const bool isWide = width > height;
  const int y = PlaceSummary(controls, top, width, isWide, shown.hasNote);
  const int room = height - y;
  if (isWide) {
    const int left = !hasLower ? width : width * (shown.isOpen ? 9 : 10) / 20;
    controls.push_back({kIdBars, {0, y, left, room}});
    if (hasLower) PlaceLower(controls, {left, y, width - left, room}, shown);
    return controls;
  }
  const int bars = hasLower ? room * (shown.isOpen ? 9 : 10) / 20 : room;
  controls.push_back({kIdBars, {0, y, width, bars}});
  if (hasLower) PlaceLower(controls, {0, y + bars, width, room - bars}, shown);
  return controls;
}

int BarRowHeight() {
  return Scaled(2 * kTextHeight + 4);
}

bool IsNarrowBar(int width) {
  constexpr int kEnough = 180;
  return width < Scaled(kEnough);
}

BarRow LayOutBar(int width, int position, bool isInner, Seconds time, Seconds longest,
                 const FigureWidths& figures) {
  const int line = Scaled(kTextHeight);
  const int first = position * BarRowHeight() + Scaled(2), second = first + line;
  const int left = Scaled(kBarMargin + (isInner ? kIndent : 0));
  const int right = width - Scaled(kBarMargin);
  const int name = right - figures.figures - Scaled(2 * kMargin) - left;
  // The same time is as long in an inner group as in an outer one.
  const int all = right - figures.details - Scaled(2 * kMargin + kBarMargin + kIndent);
  const auto length = longest > 0 ? static_cast<int>(std::max(all, 1) * time / longest) : 0;
  return {{0, position * BarRowHeight(), width, BarRowHeight()},
          {left, first, std::max(name, 1), line},
          {right - figures.figures, first, figures.figures, line},
          {left, second + Scaled(3), std::max(length, 1), line - Scaled(5)},
          {right - figures.details, second, figures.details, line}};
}

ColumnsGrid LayOutColumns(int width, int height, int columns, int entries, int label,
                          Seconds highest) {
  ColumnsGrid grid;
  grid.legend = PlaceLegend(width - 2 * Scaled(kMargin), height - Scaled(2), entries);
  for (Rect& entry : grid.legend) entry.x += Scaled(kMargin);
  grid.labelHeight = Scaled(kTextHeight);
  const int left = Scaled(kAxisWidth);
  const int top = Scaled(7);  // half a line's text
  const int bottom = (entries > 0 ? grid.legend.front().y : height) - grid.labelHeight;
  grid.chart = {left, top, std::max(width - left - Scaled(kMargin), 1), std::max(bottom - top, 1)};
  for (int column = 0; column < columns; ++column) {
    const int x = left + grid.chart.width * column / columns;
    const int next = left + grid.chart.width * (column + 1) / columns;
    grid.columns.push_back({x, top, next - x, grid.chart.height});
  }
  grid.labelStep = std::max(1, (label + Scaled(2)) * columns / grid.chart.width + 1);
  const Seconds step = LineStep(highest);
  grid.top = std::max(highest, step);
  for (Seconds line = step; step > 0 && line <= grid.top; line += step) grid.lines.push_back(line);
  return grid;
}

Rect LayOutSegment(const ColumnsGrid& grid, size_t column, Seconds below, Seconds time) {
  const Rect& all = grid.columns[column];
  const auto up = [&](Seconds at) { return static_cast<int>(all.height * at / grid.top); };
  const int gap = all.width > Scaled(4) ? Scaled(1) : 0;
  const int bottom = all.y + all.height;
  return {all.x, bottom - up(below + time), all.width - gap, up(below + time) - up(below)};
}

}  // namespace totals
