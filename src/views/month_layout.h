// Where the month view's cells and its list lie, and how a cell looks: pure functions, in the units
// of platform::Scaled.
#pragma once

#include "views/header_layout.h"
#include "views/month_view.h"

namespace views {

inline constexpr int kMonthColumns = 7;
inline constexpr int kMonthRows = 6;

struct MonthLayout {
  Rect grid;  // with the row of the weekdays on top; the list takes the rest
  Rect list;
  int firstRowTop = 0;  // within the grid
  int rowHeight = 0;    // at least 1
  int columnWidth = 0;  // at least 1
};

// Within the part of the window that the view has. In landscape the list lies beside the grid,
// whose rows are as high as the room allows.
MonthLayout LayoutMonth(const Rect& content, bool portrait, bool showsToolBar);

// Within the grid. The last weekday reaches to the grid's edge.
Rect WeekdayRect(const MonthLayout& layout, int column);
Rect CellRect(const MonthLayout& layout, int cell);
// The cell at a point of the grid, or -1.
int CellAt(const MonthLayout& layout, int x, int y);

enum class CellKind { kOutside, kWorkday, kSaturday, kSunday, kToday };
// Today is known by the current year and month, which need not be those that were counted.
CellKind KindOfCell(const MonthData& month, int cell, const core::Day& today);
// The cell of the current day, or -1 if the month has no such day.
int CellOfCurDay(const MonthData& month);

}  // namespace views
