// Real calendar arithmetic, on the OLE Automation date: days since 1899-12-30 00:00 with the time
// as the fraction; a negative value carries its fraction forward from the day.
#pragma once

#include <cstdint>
#include <vector>

namespace core {

struct CalendarValue {
  double dt = 0.0;
  int32_t status = 0;  // 0 valid
};

// A signed number of days, valid within -3615897.0 to 3615897.0, bounds included.
struct DateSpan {
  double dt = 0.0;
  int32_t status = 0;  // 0 valid
};

struct CalendarParts {
  int year = -1;
  int month = -1;
  int day = -1;
  int hour = -1;
  int minute = -1;
  int second = -1;
  int weekday = -1;  // 1 Sunday .. 7 Saturday
};

// Invalid if the six numbers do not come back from the value: February 30, hour 24. Answers the
// status.
int32_t MakeCalendarValue(CalendarValue& value, int year, int month, int day, int hour, int minute,
                          int second);
// False, and every part -1, if the value is invalid.
bool CalendarToParts(const CalendarValue& value, CalendarParts& parts);

int32_t MakeDateSpan(DateSpan& span, int days, int hours, int minutes, int seconds);
// Invalid if either side is, or the sum leaves the years 100 to 9999.
CalendarValue operator+(const CalendarValue& value, const DateSpan& span);

// By true time; false if either value is invalid.
bool CalendarLess(const CalendarValue& a, const CalendarValue& b);
bool CalendarGreater(const CalendarValue& a, const CalendarValue& b);
// By the day alone: -1, 0 or 1.
int CompareCalendarDays(const CalendarValue& a, const CalendarValue& b);

// From one moment to another that is not before it.
struct CalendarSpan {
  CalendarValue start;
  CalendarValue end;
};

// Appends a piece for each day that `entry` touches. All but the last end at 23:59:59, not at the
// midnight that follows; all but the first start at 00:00:00. 0, or -1 and no piece if the end lies
// before the start.
int SplitAtMidnight(std::vector<CalendarSpan>& pieces, const CalendarSpan& entry);

// 28 to 31, or 0 if there is no such month.
int DaysInMonth(int year, int month);

}  // namespace core
