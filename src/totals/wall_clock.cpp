#include "totals/wall_clock.h"

#include <chrono>

#include "core/calendar_value.h"
#include "core/date_time.h"

namespace totals {
namespace {

constexpr int kLastYear = 9999;
// yyyymmddhhmmss, as core::PackText has a moment, lies below.
constexpr uint64_t kAfterMoments = 100'000'000'000'000;

std::optional<Seconds> MidnightOf(uint64_t date) {
  const auto year = static_cast<int>(date / 10'000);
  const auto month = static_cast<int>(date / 100 % 100), day = static_cast<int>(date % 100);
  if (year < 1900 || day < 1 || day > core::DaysInMonth(year, month)) return {};
  return NumberOf({year, month, day}) * kDaySeconds;
}

std::optional<Seconds> ClockOf(uint64_t time) {
  if (time == 240'000) return kDaySeconds;
  const auto hour = static_cast<Seconds>(time / 10'000);
  const auto minute = static_cast<Seconds>(time / 100 % 100);
  const auto second = static_cast<Seconds>(time % 100);
  if (hour > 23 || minute > 59 || second > 59) return {};
  return hour * kHourSeconds + minute * kMinuteSeconds + second;
}

// What else the store's check lets through: parts without their zeros, other signs between them.
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
  const uint64_t packed = core::PackText(text);
  return packed < kAfterMoments ? ReadDigits(packed) : ReadLoose(text);
}

std::optional<Seconds> MomentReader::Read(const core::TextList& moments, size_t place) {
  const uint64_t packed = moments.Packed().At(place);
  return packed < kAfterMoments ? ReadDigits(packed) : ReadLoose(moments.At(place));
}

std::optional<Seconds> MomentReader::ReadDigits(uint64_t digits) {
  constexpr uint64_t kClocks = 1'000'000;
  const std::optional<Seconds> clock = ClockOf(digits % kClocks);
  if (!clock) return {};
  if (const uint64_t date = digits / kClocks; date != date_) {
    const std::optional<Seconds> midnight = MidnightOf(date);
    if (!midnight) return {};
    date_ = date;
    midnight_ = *midnight;
  }
  return midnight_ + *clock;
}

}  // namespace totals
