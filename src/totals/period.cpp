#include "totals/period.h"

#include <algorithm>

#include "core/text.h"

namespace totals {
namespace {

using core::Day;
using core::ZeroPadded;
using enum PeriodKind;

constexpr int kWeekDays = 7;
constexpr int kMonths = 12;
constexpr int kDaysBeforeCurDate = 3;  // as the week view shows them
constexpr int kFirstYear = 1900;
constexpr int kAfterLastYear = 10000;

DayNumber FirstOf(int months) {
  return NumberOf({months / kMonths, months % kMonths + 1, 1});
}

int MonthsOf(DayNumber day) {
  const Day date = DayOf(day);
  return date.year * kMonths + date.month - 1;
}

// The run of `months` months, counted from the year 0, that a day lies in.
Period MonthsAround(PeriodKind kind, DayNumber day, int months) {
  const int first = MonthsOf(day) / months * months;
  return {kind, FirstOf(first), FirstOf(first + months)};
}

bool IsInReach(const Period& period) {
  return period.first >= NumberOf({kFirstYear, 1, 1}) &&
         period.after <= NumberOf({kAfterLastYear, 1, 1});
}

Period DaysOn(const Period& period, int64_t days) {
  constexpr int64_t kFar = 4'000'000;  // days; beyond all years
  const auto by = static_cast<int>(std::clamp(days, -kFar, kFar));
  return {period.kind, period.first + by, period.after + by};
}

Period MonthsOn(const Period& period, int months) {
  const int first = MonthsOf(period.first) + months;
  const int after = MonthsOf(period.after) + months;
  if (first < kFirstYear * kMonths || after > kAfterLastYear * kMonths) return period;
  return {period.kind, FirstOf(first), FirstOf(after)};
}

Period Moved(const Period& period, int steps) {
  switch (period.kind) {
    case kMonth:
      return MonthsOn(period, steps);
    case kYear:
      return MonthsOn(period, steps * kMonths);
    case kAll:
    case kFind:
      return period;
    default:
      return DaysOn(period, int64_t{period.Days()} * steps);
  }
}

std::u16string MonthDay(const Day& day) {
  return ZeroPadded(day.month, 2) + u"/" + ZeroPadded(day.day, 2);
}

// "2026/11/15-11/21"; the year stands twice where it changes.
std::u16string SpanTitle(const Day& first, const Day& last) {
  return core::DayText(first) + u"-" +
         (first.year == last.year ? MonthDay(last) : core::DayText(last));
}

Unit UnitFor(const Period& period) {
  constexpr int kMostDays = 62;
  constexpr int kMostWeeks = 26;
  constexpr int kMostColumns = 60;
  if (period.Days() <= kMostDays) return Unit::kDay;
  if (period.Days() <= kMostWeeks * kWeekDays) return Unit::kWeek;
  const int months = MonthsOf(period.after - 1) - MonthsOf(period.first) + 1;
  for (const Unit unit : {Unit::kMonth, Unit::kYear, Unit::kDecade}) {
    if (months <= kMostColumns * static_cast<int>(unit)) return unit;
  }
  return Unit::kCentury;
}

Period UnitAround(Unit unit, DayNumber day) {
  switch (unit) {
    case Unit::kDay:
      return PeriodOf(kDay, day);
    case Unit::kWeek:
      return PeriodOf(kWeek, day);
    default: {
      const PeriodKind kind = unit == Unit::kMonth ? kMonth : unit == Unit::kYear ? kYear : kFromTo;
      return MonthsAround(kind, day, static_cast<int>(unit));
    }
  }
}

}  // namespace

Period PeriodOf(PeriodKind kind, DayNumber day) {
  switch (kind) {
    case kWeek: {
      const DayNumber sunday = day - WeekdayOf(day);
      return {kind, sunday, sunday + kWeekDays};
    }
    case kMonth:
    case kFromTo:
      return MonthsAround(kind, day, 1);
    case kYear:
      return MonthsAround(kind, day, kMonths);
    case kDay:
      return {kind, day, day + 1};
    default:
      return {kind, day, day};
  }
}

Period PeriodOfView(const core::CAppState& app) {
  const DayNumber day = NumberOf(core::WithinMonth(core::CurrentDay()));
  switch (app.CurView) {
    case core::kViewWeek:
      return {kWeek, day - kDaysBeforeCurDate, day - kDaysBeforeCurDate + kWeekDays};
    case core::kViewMonth:
      return PeriodOf(kMonth, day);
    case core::kViewList:
      return PeriodOf(app.FindWhere ? kFind : kAll, day);
    default:
      return PeriodOf(kDay, day);
  }
}

Period Step(const Period& period, int steps) {
  const Period moved = Moved(period, steps);
  return IsInReach(moved) ? moved : period;
}

Period BigStep(const Period& period, int steps) {
  constexpr int kYears = 10;
  constexpr int kOthers = 4;
  const int each = period.kind == kDay     ? kWeekDays
                   : period.kind == kMonth ? kMonths
                   : period.kind == kYear  ? kYears
                                           : kOthers;
  return Step(period, each * steps);
}

Period From(const Period& period, DayNumber first) {
  return {kFromTo, first, std::max(first + 1, period.after)};
}

Period To(const Period& period, DayNumber last) {
  return {kFromTo, std::min(period.first, last), last + 1};
}

std::u16string TitleOf(const Period& period) {
  if (period.Days() < 1) return {};
  const Day first = DayOf(period.first);
  switch (period.kind) {
    case kDay: {
      constexpr std::u16string_view kLetters = u"日月火水木金土";
      const auto weekday = static_cast<size_t>(WeekdayOf(period.first));
      return core::DayText(first) + u"(" + kLetters[weekday] + u")";
    }
    case kMonth:
      return ZeroPadded(first.year, 4) + u"年" + ZeroPadded(first.month, 1) + u"月";
    case kYear:
      return ZeroPadded(first.year, 4) + u"年";
    default:
      return SpanTitle(first, DayOf(period.after - 1));
  }
}

ColumnPlan PlanColumns(const Period& period) {
  ColumnPlan plan;
  if (period.Days() < 1) return plan;
  plan.unit = UnitFor(period);
  for (DayNumber day = period.first; day < period.after;) {
    plan.edges.push_back(day);
    day = UnitAround(plan.unit, day).after;
  }
  plan.edges.push_back(period.after);
  return plan;
}

Period PeriodOfColumn(const ColumnPlan& plan, size_t column) {
  return UnitAround(plan.unit, plan.edges[column]);
}

std::u16string ColumnText(const ColumnPlan& plan, size_t column) {
  const Day day = DayOf(plan.edges[column]);
  switch (plan.unit) {
    case Unit::kDay:
      return ZeroPadded(day.day, 1);
    case Unit::kWeek:
      return ZeroPadded(day.month, 1) + u"/" + ZeroPadded(day.day, 1);
    case Unit::kMonth: {
      const bool hasYears = DayOf(plan.edges.front()).year != DayOf(plan.edges.back() - 1).year;
      if (!hasYears || day.month > 1) return ZeroPadded(day.month, 1) + u"月";
      break;
    }
    default:
      break;
  }
  return ZeroPadded(DayOf(PeriodOfColumn(plan, column).first).year, 4);
}

bool HasText(const ColumnPlan& plan, size_t column, int step) {
  if (plan.unit != Unit::kMonth) return column % static_cast<size_t>(step) == 0;
  while (step % kMonths != 0 && kMonths % step != 0) ++step;
  return MonthsOf(plan.edges[column]) % step == 0;
}

}  // namespace totals
