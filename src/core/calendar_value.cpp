// Days are counted in the proleptic Gregorian calendar; the time of day is the fraction's absolute
// value, so that -1.25 is 1899-12-29 06:00.
#include "core/calendar_value.h"

#include <chrono>
#include <cmath>
#include <tuple>

namespace core {
namespace {

constexpr int kInvalid = 1;
constexpr int kSecondsPerDay = 86400;
constexpr double kFirstDay = -657434.0;  // 0100-01-01
constexpr double kEndDay = 2958466.0;    // 10000-01-01
constexpr double kMaxSpan = 3615897.0;
constexpr std::chrono::sys_days kDayZero =
    std::chrono::year(1899) / std::chrono::month(12) / std::chrono::day(30);

// Days and their fraction in one line, where later times are greater, and back.
double ToLine(double dt) {
  return dt < 0 ? std::ceil(dt) - (dt - std::ceil(dt)) : dt;
}
double FromLine(double line) {
  return line < 0 ? std::floor(line) - (line - std::floor(line)) : line;
}

bool InYears(double dt) {
  return std::ceil(dt) >= kFirstDay && dt < kEndDay;
}

double MakeDate(int year, int month, int day, int hour, int minute, int second) {
  using namespace std::chrono;
  const sys_days date = sys_days(std::chrono::year(year) / month / 1) + days(day - 1);
  const double line = static_cast<double>((date - kDayZero).count()) +
                      (hour * 3600.0 + minute * 60.0 + second) / kSecondsPerDay;
  return FromLine(line);
}

bool Less(const CalendarValue& a, const CalendarValue& b) {
  return a.status == 0 && b.status == 0 && ToLine(a.dt) < ToLine(b.dt);
}

}  // namespace

int DaysInMonth(int year, int month) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) return 0;
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return month == 2 && leap ? 29 : kDays[month - 1];
}

int32_t MakeCalendarValue(CalendarValue& value, int year, int month, int day, int hour, int minute,
                          int second) {
  value = {0.0, kInvalid};
  const bool convertible = year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
                           day <= 31 && hour >= 0 && hour <= 24 && minute >= 0 && minute <= 60 &&
                           second >= 0 && second <= 60;
  if (!convertible) return value.status;
  value = {MakeDate(year, month, day, hour, minute, second), 0};
  CalendarParts back;
  const bool same = CalendarToParts(value, back) && back.year == year && back.month == month &&
                    back.day == day && back.hour == hour && back.minute == minute &&
                    back.second == second;
  value.status = same ? 0 : kInvalid;
  return value.status;
}

bool CalendarToParts(const CalendarValue& value, CalendarParts& parts) {
  using namespace std::chrono;
  parts = {};
  if (value.status != 0 || !InYears(value.dt)) return false;
  // Half a second rounds the fraction's error away, into the next day where it has to.
  const double line = ToLine(value.dt);
  double wholeDays = std::floor(line);
  int seconds = static_cast<int>(std::floor((line - wholeDays) * kSecondsPerDay + 0.5));
  if (seconds == kSecondsPerDay) {
    seconds = 0;
    wholeDays += 1;
  }
  const sys_days date = kDayZero + days(static_cast<int>(wholeDays));
  const year_month_day ymd(date);
  parts.year = static_cast<int>(ymd.year());
  parts.month = static_cast<int>(static_cast<unsigned>(ymd.month()));
  parts.day = static_cast<int>(static_cast<unsigned>(ymd.day()));
  parts.hour = seconds / 3600;
  parts.minute = seconds / 60 % 60;
  parts.second = seconds % 60;
  parts.weekday = static_cast<int>(weekday(date).c_encoding()) + 1;
  return true;
}

int32_t MakeDateSpan(DateSpan& span, int days, int hours, int minutes, int seconds) {
  span.dt = minutes * 0.0006944444444444445 + seconds * 1.1574074074074073e-5 +
            hours * 0.041666666666666664 + days;
  span.status = span.dt >= -kMaxSpan && span.dt <= kMaxSpan ? 0 : kInvalid;
  return span.status;
}

CalendarValue operator+(const CalendarValue& value, const DateSpan& span) {
  CalendarValue sum{0.0, kInvalid};
  if (value.status != 0 || span.status != 0) return sum;
  sum.dt = FromLine(ToLine(value.dt) + span.dt);
  sum.status = InYears(sum.dt) ? 0 : kInvalid;
  return sum;
}

bool CalendarLess(const CalendarValue& a, const CalendarValue& b) {
  return Less(a, b);
}
bool CalendarGreater(const CalendarValue& a, const CalendarValue& b) {
  return Less(b, a);
}

int CompareCalendarDays(const CalendarValue& a, const CalendarValue& b) {
  CalendarParts dayA, dayB;
  if (!CalendarToParts(a, dayA) || !CalendarToParts(b, dayB)) return 0;
  const auto order =
      std::tie(dayA.year, dayA.month, dayA.day) <=> std::tie(dayB.year, dayB.month, dayB.day);
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

int SplitAtMidnight(std::vector<CalendarSpan>& pieces, const CalendarSpan& entry) {
  if (CalendarLess(entry.end, entry.start)) return -1;
  CalendarSpan piece = entry;
  while (CompareCalendarDays(piece.start, entry.end) != 0) {
    CalendarParts day;
    CalendarToParts(piece.start, day);
    MakeCalendarValue(piece.end, day.year, day.month, day.day, 23, 59, 59);
    pieces.push_back(piece);
    MakeCalendarValue(piece.start, day.year, day.month, day.day, 0, 0, 0);
    piece.start = piece.start + DateSpan{1.0};
  }
  pieces.push_back({piece.start, entry.end});
  return 0;
}

}  // namespace core
