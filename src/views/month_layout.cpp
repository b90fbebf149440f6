// Cells of the month view.
#include "views/month_layout.h"

#include <algorithm>

#include "platform/metrics.h"

namespace views {
namespace {

using platform::Scaled;

constexpr int kWeekdayHeight = 15;
constexpr int kGridHeight = 126;  // of the cells, in portrait
constexpr int kLandscapeSide = 160;
constexpr int kToolBarHeight = 24;

}  // namespace

MonthLayout LayoutMonth(const Rect& content, bool portrait, bool showsToolBar) {
  MonthLayout layout;
  layout.firstRowTop = Scaled(kWeekdayHeight);
  const int line = Scaled(1);  // below the last row
  const int wanted = portrait
                         ? Scaled(kGridHeight)
                         : Scaled(kLandscapeSide) - (showsToolBar ? Scaled(kToolBarHeight) : 0);
  const int room = content.height - layout.firstRowTop - line;
  layout.rowHeight = std::max(1, std::min(wanted, room) / kMonthRows);
  const int width = portrait ? content.width : Scaled(kLandscapeSide);
  layout.columnWidth = std::max(1, width / kMonthColumns);
  if (portrait) {
    const int height = layout.firstRowTop + layout.rowHeight * kMonthRows + line;
    layout.grid = {content.x, content.y, content.width, height};
    layout.list = {content.x, content.y + height, content.width,
                   std::max(0, content.height - height)};
  } else {
    const int listWidth = std::max(0, content.width - width);
    layout.grid = {content.x + listWidth, content.y, width, content.height};
    layout.list = {content.x, content.y, listWidth, content.height};
  }
  return layout;
}

Rect WeekdayRect(const MonthLayout& layout, int column) {
  const int x = column * layout.columnWidth;
  const bool last = column == kMonthColumns - 1;
  return {x, 0, last ? layout.grid.width - x : layout.columnWidth, layout.firstRowTop};
}

Rect CellRect(const MonthLayout& layout, int cell) {
  return {cell % kMonthColumns * layout.columnWidth,
          layout.firstRowTop + cell / kMonthColumns * layout.rowHeight, layout.columnWidth,
          layout.rowHeight};
}

int CellAt(const MonthLayout& layout, int x, int y) {
  if (x < 0 || y < layout.firstRowTop) return -1;
  const int column = x / layout.columnWidth;
  const int row = (y - layout.firstRowTop) / layout.rowHeight;
  return column < kMonthColumns && row < kMonthRows ? row * kMonthColumns + column : -1;
}

CellKind KindOfCell(const MonthData& month, int cell, const core::Day& today) {
  const MonthCell& shown = month.MonthCells[static_cast<size_t>(cell)];
  if (!month.Holds(shown)) return CellKind::kOutside;
  if (today == core::Day{core::CurYear, core::CurMonth, shown.day->day}) return CellKind::kToday;
  const int column = cell % kMonthColumns;
  if (column == 0) return CellKind::kSunday;
  return column == kMonthColumns - 1 ? CellKind::kSaturday : CellKind::kWorkday;
}

int CellOfCurDay(const MonthData& month) {
  for (int cell = 0; cell < kMonthCells; ++cell) {
    const MonthCell& shown = month.MonthCells[static_cast<size_t>(cell)];
    if (month.Holds(shown) && shown.day->day == core::CurDay) return cell;
  }
  return -1;
}

}  // namespace views
