// The stretch of days that is summed up, and the columns that a picture of it has.
#pragma once

#include <string>
#include <vector>

#include "core/app_state.h"
#include "totals/wall_clock.h"

namespace totals {

// In the order in which they are offered.
enum class PeriodKind { kDay, kWeek, kMonth, kYear, kAll, kFromTo, kFind };

struct Period {
  PeriodKind kind = PeriodKind::kDay;
  // From `first` up to `after`, which is no longer in it. All Actions and those of a find reach as
  // far as they do.
  DayNumber first = 0;
  DayNumber after = 0;

  bool IsBounded() const { return kind != PeriodKind::kAll && kind != PeriodKind::kFind; }
  int Days() const { return after - first; }
  Span Moments() const { return {first * kDaySeconds, after * kDaySeconds}; }
  bool operator==(const Period&) const = default;
};

// The day, or its week from Sunday on, its month or year. From-to begins as the day's month.
Period PeriodOf(PeriodKind kind, DayNumber day);
// What a view shows: its kind, and where that has a date, the current one in it. The week is the
// one of the week view, with the current date in its middle. While a find lasts the list shows it.
Period PeriodOfView(const core::CAppState& app);

// `steps` periods on, or back. A big step is a week of days, a year of months, ten years, and four
// of the others. The same one where that leads out of the years 1900 to 9999, or there is no other.
Period Step(const Period& period, int steps);
Period BigStep(const Period& period, int steps);
// From-to with another first or last day; the other one moves along where it would lie before it.
Period From(const Period& period, DayNumber first);
Period To(const Period& period, DayNumber last);

// "2026/11/20(金)", "2026/11/15-11/21", "2026年11月", "2026年". Empty where there are no days.
std::u16string TitleOf(const Period& period);

// A column is a day, a week from Sunday on, or so many months.
enum class Unit { kDay = -2, kWeek = -1, kMonth = 1, kYear = 12, kDecade = 120, kCentury = 1200 };

struct ColumnPlan {
  Unit unit = Unit::kDay;
  // Where each begins and, last, where the last one ends: as many columns as a picture can show.
  // Those at the edges may lack days.
  std::vector<DayNumber> edges;
};

ColumnPlan PlanColumns(const Period& period);
// All of the column's days, also those beyond the edges.
Period PeriodOfColumn(const ColumnPlan& plan, size_t column);
// "20", "11/15", "11月", "2026", which is also January's where the months are of several years.
std::u16string ColumnText(const ColumnPlan& plan, size_t column);
// Whether a column's text stands below it where only each `step`th has room. Of months those do
// that come back each year, January first.
bool HasText(const ColumnPlan& plan, size_t column, int step);

}  // namespace totals
