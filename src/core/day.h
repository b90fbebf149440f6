// A day of the calendar. It may be one that the calendar lacks: a step from January 31 into
// February keeps the 31. All functions are re-entrant.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"

namespace core {

struct Day {
  int year = 0;
  int month = 0;  // 1..12
  int day = 0;    // 1..31

  auto operator<=>(const Day&) const = default;
};

Day DayOf(const platform::LocalTime& moment);
// What ParseDate reads; none for anything else.
std::optional<Day> ReadDay(std::u16string_view text);
// yyyy/mm/dd
std::u16string DayText(const Day& day);

// None if `day` doesn't exist, or the other one lies outside the years 100 to 9999. `days` may be
// negative.
std::optional<Day> DaysLater(const Day& day, int days);
// `day`, or the last one of its month where that is shorter.
Day WithinMonth(const Day& day);
// 1 Sunday .. 7 Saturday, or -1 for a day that doesn't exist.
int WeekdayOf(const Day& day);

}  // namespace core
