// Goes through a row's part of a span, group by group.
#pragma once

#include <algorithm>
#include <optional>
#include <span>

#include "totals/groups.h"

namespace totals {

inline constexpr int kWeekdays = 7;
inline constexpr int kHours = 24;

// What of a row lies in a span; none if it has no part in it.
inline std::optional<Span> Cut(const Row& row, const Span& span) {
  const Span inside{std::max(row.start, span.from), std::min(row.end, span.to)};
  if (inside.from < inside.to) return inside;
  const bool isMoment = row.start == row.end && row.start >= span.from && row.start < span.to;
  return isMoment ? std::optional(inside) : std::nullopt;
}

inline bool IsClock(By by) {
  return by == By::kWeekday || by == By::kHour;
}

// The level of the inner groups under a key: movements are told apart by themselves.
inline By InnerLevel(const Choices& choices, int outer) {
  const bool isMovement =
      choices.by == By::kPlace && choices.movementsApart && outer == Names::kMovement;
  return choices.within == By::kNothing && isMovement ? By::kPlace : choices.within;
}

// Calls `take(seconds, hour)` for each hour of a part of one day, which the day has `times` times.
template <typename Take>
void ForEachHour(const Span& part, int times, Take take) {
  const auto first = static_cast<int>(part.from / kHourSeconds);
  for (int hour = first; hour == first || hour * kHourSeconds < part.to; ++hour) {
    const Seconds from = std::max(part.from, hour * kHourSeconds);
    const Seconds to = std::min(part.to, (hour + 1) * kHourSeconds);
    take((to - from) * times, hour);
  }
}

// Calls `take(seconds, weekday, hour)` for what lies on each weekday and, if that is asked for, in
// each hour. However long the span is, its whole days are counted and not walked.
template <typename Take>
void ForEachClock(const Span& span, bool byHour, Take take) {
  const auto takePart = [&](const Span& part, int times, int weekday) {
    if (!byHour) return take(part.Length() * times, weekday, 0);
    ForEachHour(part, times, [&](Seconds time, int hour) { take(time, weekday, hour); });
  };
  const DayNumber first = DayAt(span.from);
  const Seconds midnight = first * kDaySeconds;
  const Span onFirst{span.from - midnight, std::min(span.to - midnight, kDaySeconds)};
  takePart(onFirst, 1, WeekdayOf(first));
  if (span.to - midnight <= kDaySeconds) return;
  const DayNumber last = DayAt(span.to);
  const int whole = last - first - 1;
  for (int k = 0; k < std::min(whole, kWeekdays); ++k) {
    takePart({0, kDaySeconds}, (whole - k - 1) / kWeekdays + 1, WeekdayOf(first + 1 + k));
  }
  const Seconds rest = span.to - last * kDaySeconds;
  if (rest > 0) takePart({0, rest}, 1, WeekdayOf(last));
}

// The row's keys of a level that is no clock. `single` is room for one.
inline std::span<const int> KeysOf(const Rows& rows, const Row& row, By by, bool movementsApart,
                                   int& single) {
  single = by == By::kCategory1   ? row.category1
           : by == By::kCategory2 ? row.category2
           : by == By::kPlace     ? row.place
                                  : Key::kAny;
  if (by != By::kPlace) return {&single, 1};
  const std::vector<int>& parts = rows.PartsOf(row.place);
  if (parts.empty()) return {&single, 1};
  if (!movementsApart) return parts;
  single = Names::kMovement;
  return {&single, 1};
}

// Calls `take(outer, inner, seconds)` for what the row has in each group, within `span`, which is
// the row's own or a part of it. A group may come more than once.
template <typename Take>
void ForEachGroup(const Rows& rows, const Row& row, const Span& span, const Choices& choices,
                  Take take) {
  int outerKey, innerKey;
  const std::span<const int> outers =
      KeysOf(rows, row, choices.by, choices.movementsApart, outerKey);
  const By level = InnerLevel(choices, outers.front());
  if (level == By::kNothing && !IsClock(choices.by)) {
    for (const int outer : outers) take(outer, Key::kAny, span.Length());
    return;
  }
  // Movements in a group of movements are told apart by what they are.
  const bool whole = level == By::kPlace && choices.within == By::kNothing;
  std::span<const int> inners = KeysOf(rows, row, level, choices.movementsApart, innerKey);
  if (whole) inners = {&row.place, 1};
  const auto takeAll = [&](Seconds time, int weekday, int hour) {
    const int clock[] = {weekday, hour};
    const auto keys = [&](By by, std::span<const int> named) {
      return IsClock(by) ? std::span(&clock[by == By::kHour], 1) : named;
    };
    for (const int outer : keys(choices.by, outers)) {
      for (const int inner : keys(level, inners)) take(outer, inner, time);
    }
  };
  if (!IsClock(choices.by) && !IsClock(level)) return takeAll(span.Length(), 0, 0);
  const bool byHour = choices.by == By::kHour || level == By::kHour;
  ForEachClock(span, byHour, takeAll);
}

}  // namespace totals
