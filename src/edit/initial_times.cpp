#include "edit/initial_times.h"

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
  return core::ShortTimeOf(now);
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
  return AtOneMoment(date, InitialTime(date == core::DateOf(now), timeInitForNewMode, now));
}

StartEnd TimesOfFollow(const StartEnd& former, int timeInitForFollowMode,
                       const platform::LocalTime& now) {
  if (former.AllDay()) return AtOneMoment(NextDay(former.endDate), core::kAllDayMark);
  StartEnd times = AtOneMoment(former.endDate, former.endTime);
  if (times.endDate != core::DateOf(now)) return times;
  const std::u16string clock = core::ShortTimeOf(now);
  if (timeInitForFollowMode == core::kFollowToNow) {
    if (times.staTime <= clock) times.endTime = clock;
  } else if (times.staTime.substr(0, 2) <= clock.substr(0, 2)) {
    const StartEnd unmoved = times;
    EndAtNextHalfHour(times, now);
    // A start later in this very hour can lie after that half hour.
    if (StoredEnd(times) < StoredStart(times)) times = unmoved;
  }
  return times;
}

std::u16string NextDay(std::u16string_view date) {
  const std::optional<core::Day> day = core::ReadDay(date);
  const std::optional<core::Day> next = day ? core::DaysLater(*day, 1) : std::nullopt;
  return next ? core::DayText(*next) : std::u16string(date);
}

std::u16string ExistingDate(const core::Day& day, const platform::LocalTime& now) {
  const std::u16string date = core::DayText(core::WithinMonth(day));
  return core::ReadDay(date) ? date : core::DateOf(now);
}

}  // namespace edit
