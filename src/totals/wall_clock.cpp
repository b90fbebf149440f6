#include "totals/wall_clock.h"

#include <chrono>
#include <string>

#include "core/calendar_value.h"
#include "core/date_time.h"

namespace totals {
namespace {

constexpr size_t kMomentLength = 19;
constexpr size_t kDateLength = 10;
constexpr size_t kTimePlace = 11;
constexpr int kLastYear = 9999;

// The number of `count` digits, or a negative one where any of them is none.
int Digits(const char16_t* text, int count) {
  int number = 0;
  for (int i = 0; i < count; ++i) {
    const unsigned digit = static_cast<unsigned>(text[i]) - u'0';
    if (digit > 9) return -1;
    number = number * 10 + static_cast<int>(digit);
  }
  return number;
}

// The forms that everything here writes, with each part at its place; none for any other, good or
// not. yyyy/mm/dd gives the midnight that it begins with.
std::optional<Seconds> ReadFixedDate(const char16_t* text) {
  const int year = Digits(text, 4), month = Digits(text + 5, 2), day = Digits(text + 8, 2);
  const bool isDate = text[4] == u'/' && text[7] == u'/' && year >= 1900 && month >= 1 &&
                      month <= 12 && day >= 1 && day <= core::DaysInMonth(year, month);
  if (!isDate) return {};
  return NumberOf({year, month, day}) * kDaySeconds;
}

// hh:mm:ss below 24:00.
std::optional<Seconds> ReadFixedTime(const char16_t* text) {
  const int hour = Digits(text, 2), minute = Digits(text + 3, 2), second = Digits(text + 6, 2);
  const bool isTime = text[2] == u':' && text[5] == u':' && hour >= 0 && minute >= 0 &&
                      minute < 60 && second >= 0 && second < 60 && hour < 24;
  if (!isTime) return {};
  return hour * kHourSeconds + minute * kMinuteSeconds + second;
}

// What the store's check lets through: parts without their zeros, and the end of a day.
std::optional<Seconds> ReadLoose(std::u16string_view text) {
  const core::MomentText moment = core::SplitMoment(text);
  const std::optional<core::Day> day = core::ReadDay(moment.date);
  if (!day || day->year > kLastYear) return {};
  const Seconds midnight = NumberOf(*day) * kDaySeconds;
  int hour = 0, minute = 0, second = 0;
  if (core::ParseEndTime(moment.time) == -1) return midnight + kDaySeconds;
  if (core::ParseTime(moment.time, hour, minute, second) != 0) return {};
  return midnight + hour * kHourSeconds + minute * kMinuteSeconds + second;
}

}  // namespace

DayNumber NumberOf(const core::Day& day) {
  using namespace std::chrono;
  const year_month_day date(std::chrono::year(day.year), month(static_cast<unsigned>(day.month)),
                            std::chrono::day(static_cast<unsigned>(day.day)));
  return static_cast<DayNumber>(sys_days(date).time_since_epoch().count());
}

core::Day DayOf(DayNumber number) {
  using namespace std::chrono;
  const year_month_day date{sys_days(days(number))};
  return {int(date.year()), static_cast<int>(unsigned(date.month())),
          static_cast<int>(unsigned(date.day()))};
}

int WeekdayOf(DayNumber number) {
  constexpr int kThursday = 4;  // day 0
  return ((number + kThursday) % 7 + 7) % 7;
}

DayNumber DayAt(Seconds moment) {
  const Seconds day = moment / kDaySeconds;
  return static_cast<DayNumber>(moment % kDaySeconds < 0 ? day - 1 : day);
}

std::optional<Seconds> MomentReader::Read(std::u16string_view text) {
  if (text.size() != kMomentLength) return ReadLoose(text);
  if (std::u16string_view(last_, kMomentLength) == text) return moment_;
  const std::optional<Seconds> time = ReadFixedTime(text.data() + kTimePlace);
  if (!time) return ReadLoose(text);
  if (!text.starts_with(std::u16string_view(last_, kDateLength))) {
    const std::optional<Seconds> midnight = ReadFixedDate(text.data());
    if (!midnight) return ReadLoose(text);
    midnight_ = *midnight;
  }
  text.copy(last_, kMomentLength);
  return moment_ = midnight_ + *time;
}

}  // namespace totals
