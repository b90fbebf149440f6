#include "edit/initial_times.h"

#include "core/calendar_value.h"
#include "core/date_time.h"
#include "core/settings_choices.h"

namespace edit {
namespace {

std::u16string InitialTime(bool today, int timeInitForNewMode, const platform::LocalTime& now) {
  if (timeInitForNewMode == core::kNewAllDay) return std::u16string(core::kAllDayMark);
  if (!today) return u"12:00";
  if (timeInitForNewMode == core::kNewAtHalfHour) {
    return core::FormatHourMinute(now.hour, now.minute < 30 ? 0 : 30);
  }
  return ShortTimeOf(now);
}

// The end moves up to the half hour at or after the clock.
void EndAtNextHalfHour(StartEnd& times, const platform::LocalTime& now) {
  if (now.minute <= 30) {
    times.endTime = core::FormatHourMinute(now.hour, 30);
  } else if (now.hour < 23) {
    times.endTime = core::FormatHourMinute(now.hour + 1, 0);
  } else {
    times.endTime = u"00:00";
    times.endDate = NextDay(times.endDate);
  }
}

}  // namespace

StartEnd TimesOfNew(std::u16string_view date, int timeInitForNewMode,
                    const platform::LocalTime& now) {
  return AtOneMoment(date, InitialTime(date == DateOf(now), timeInitForNewMode, now));
}

StartEnd TimesOfFollow(const StartEnd& former, int timeInitForFollowMode,
                       const platform::LocalTime& now) {
  if (former.AllDay()) return AtOneMoment(NextDay(former.endDate), core::kAllDayMark);
  StartEnd times = AtOneMoment(former.endDate, former.endTime);
  if (times.endDate != DateOf(now)) return times;
  const std::u16string clock = ShortTimeOf(now);
  if (timeInitForFollowMode == core::kFollowToNow) {
    if (times.staTime <= clock) times.endTime = clock;
  } else if (times.staTime.substr(0, 2) <= clock.substr(0, 2)) {
    const StartEnd unmoved = times;
    EndAtNextHalfHour(times, now);
    // A start later in this very hour can lie behind that half hour.
    if (StoredEnd(times) < StoredStart(times)) times = unmoved;
  }
  return times;
}

std::u16string NextDay(std::u16string_view date) {
  int year = 0, month = 0, day = 0;
  if (core::ParseDate(date, year, month, day) != 0) return std::u16string(date);
  const core::CalendarParts next = core::AddDays(year, month, day, 1);
  if (next.year < 0) return std::u16string(date);
  return core::FormatDate(next.year, next.month, next.day);
}

std::u16string ExistingDate(int year, int month, int day, const platform::LocalTime& now) {
  for (; day >= 1; day--) {
    const std::u16string date = core::FormatDate(year, month, day);
    if (core::ParseDate(date, year, month, day) == 0) return date;
  }
  return DateOf(now);
}

}  // namespace edit
