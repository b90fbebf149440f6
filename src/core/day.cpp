#include "core/day.h"

#include <algorithm>

#include "core/calendar_value.h"
#include "core/date_time.h"

namespace core {
namespace {

CalendarValue Midnight(const Day& day) {
  CalendarValue value;
  MakeCalendarValue(value, day.year, day.month, day.day, 0, 0, 0);
  return value;
}

}  // namespace

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
  DateSpan span;
  MakeDateSpan(span, days, 0, 0, 0);
  CalendarParts parts;
  if (!CalendarToParts(Midnight(day) + span, parts)) return {};
  return Day{parts.year, parts.month, parts.day};
}

Day WithinMonth(const Day& day) {
  return {day.year, day.month, std::min(day.day, DaysInMonth(day.year, day.month))};
}

int WeekdayOf(const Day& day) {
  CalendarParts parts;
  CalendarToParts(Midnight(day), parts);
  return parts.weekday;
}

}  // namespace core
