// The month view: six weeks of days with the number of Actions that start on each, and the rows of
// the current date.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/app_state.h"
#include "views/view_rows.h"

namespace views {

inline constexpr int kMonthCells = 42;  // row by row, Sunday first

struct MonthCell {
  std::optional<core::Day> day;  // none beyond the calendar's ends
  int count = 0;                 // of the Actions that start on the day
};

struct MonthData {
  std::array<MonthCell, kMonthCells> MonthCells;
  int MonthTotal = 0;  // of the days of the month itself
  int year = -1;       // the month that was counted
  int month = -1;

  bool Holds(const MonthCell& cell) const { return cell.day && cell.day->month == month; }
};

// Counts through the Action index, so that a find narrows it. The cells open with at least one day
// of the month before.
MonthData CountMonth(const core::CAppState& app, int year, int month);

// "6/23 2件": a cell in words; empty beyond the calendar's ends.
std::u16string CellText(const MonthCell& cell);

// "yyyy/mm/dd - total of the month(total of the index)".
std::u16string MonthTitle(const core::CAppState& app, const MonthData& month);

// The Actions that start on the current date, a line for each; the one at SelIndex is selected.
ViewRows FillMonthList(const core::CAppState& app);

}  // namespace views
