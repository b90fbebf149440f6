// Where the parts of the screen of totals and of its two pictures lie: pure functions, in the units
// of platform::Scaled.
#pragma once

#include <vector>

#include "platform/rect.h"
#include "totals/wall_clock.h"

namespace totals {

using platform::Rect;

// Ids of the controls and commands.
enum TotalsControl {
  kIdTitle = 1600,
  kIdPeriod = 1601,
  kIdFirst = 1602,
  kIdLast = 1603,
  kIdBigBack = 1604,
  kIdBack = 1605,
  kIdToday = 1606,
  kIdForward = 1607,
  kIdBigForward = 1608,
  kIdKind = 1609,
  kIdBy = 1610,
  kIdWithin = 1611,
  kIdSum = 1612,
  kIdWritten = 1613,
  kIdRest = 1614,
  kIdNote = 1615,
  kIdBars = 1616,
  kIdColumns = 1617,
  kIdGroup = 1618,
  kIdActions = 1619,
  kIdCount = 1620,
  kIdGroupFigures = 1621,
  kIdCalendar = 1622,
  kIdKeyBack = 33220,
  kIdMenuCopy = 33221,
  kIdMenuCsv = 33222,
  kIdMenuMovements = 33223,
  kIdMenuClose = 32900
};

// What there is to show. An open list takes the place of the columns.
struct Shown {
  bool isFromTo = false;
  bool canStep = true;
  bool hasNote = false;
  bool hasColumns = false;
  bool isOpen = false;
  int groupFigures = 0;  // how wide those of the opened group are
};

// All that shows, in the order of the Tab key: above one another in portrait, the bars on the left
// in landscape. `height` is what the soft keys leave.
std::vector<platform::PlacedControl> LayOutTotals(int width, int height, const Shown& shown);

// A bar's row, from the top of all rows: its name, its figures and, below them, the bar itself and
// its other figures.
struct BarRow {
  Rect row;
  Rect name;
  Rect figures;
  Rect bar;  // as long as its time is of the longest
  Rect details;
};
// How wide the texts at the right are, for all rows.
struct FigureWidths {
  int figures = 0;
  int details = 0;
};
int BarRowHeight();
// The name and the bar need the room of some of the figures.
bool IsNarrowBar(int width);
BarRow LayOutBar(int width, int position, bool isInner, Seconds time, Seconds longest,
                 const FigureWidths& figures);

struct ColumnsGrid {
  Rect chart;  // on it the columns stand side by side
  std::vector<Rect> columns;
  int labelHeight = 0;         // of the texts below the chart
  int labelStep = 1;           // only each so many have room
  std::vector<Rect> legend;    // of each entry
  Seconds top = 0;             // that the chart's height stands for
  std::vector<Seconds> lines;  // across it, with their hours
};
// `label` is how wide a column's text is.
ColumnsGrid LayOutColumns(int width, int height, int columns, int entries, int label,
                          Seconds highest);
// The part of a column that has `time` on top of `below`.
Rect LayOutSegment(const ColumnsGrid& grid, size_t column, Seconds below, Seconds time);

}  // namespace totals
