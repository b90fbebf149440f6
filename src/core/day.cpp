#include "core/day.h"

#include <algorithm>

#include "core/calendar_value.h"
#include "core/date_time.h"

namespace core {

bool Day::Exists() const {
  return day >= 1 && day <= DaysInMonth(year, month);
}

Day DayOf(const platform::LocalTime& moment) {
  return {moment.year, moment.month, moment.day};
}

std::optional<Day> ReadDay(std::u16string_view text) {
  Day day;
  if (ParseDate(text, day.year, day.month, day.day) != 0) return {};
  return day;
}

std::u16string DayText(const Day& day) {
  return FormatDate(day.year, day.month, day.day);
}

std::optional<Day> DaysLater(const Day& day, int days) {
  const CalendarParts parts = AddDays(day.year, day.month, day.day, days);
  if (parts.day < 1) return {};
  return Day{parts.year, parts.month, parts.day};
}

Day WithinMonth(const Day& day) {
  return {day.year, day.month, std::min(day.day, DaysInMonth(day.year, day.month))};
}

int WeekdayOf(const Day& day) {
  return WeekdayOf(day.year, day.month, day.day);
}

}  // namespace core
