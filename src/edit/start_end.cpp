// How a change of one side of an Action's time drags the other side along.
#include "edit/start_end.h"

#include "core/date_time.h"

namespace edit {
namespace {

void DragEndAlong(StartEnd& times) {
  std::u16string date, time;
  if (core::LaterDateTime(times.staDate, times.staTime, times.endDate, times.endTime, date, time) ==
      1) {
    times.endDate = date;
    times.endTime = time;
  }
}

void DragStartAlong(StartEnd& times) {
  std::u16string date, time;
  if (core::EarlierDateTime(times.staDate, times.staTime, times.endDate, times.endTime, date,
                            time) == 1) {
    times.staDate = date;
    times.staTime = time;
  }
}

}  // namespace

bool StartEnd::AllDay() const {
  return staTime == core::kAllDayMark;
}

StartEnd AtOneMoment(std::u16string_view date, std::u16string_view time) {
  const std::u16string dateText(date);
  const std::u16string timeText(time);
  return {dateText, timeText, dateText, timeText};
}

void SetStartDate(StartEnd& times, std::u16string_view date) {
  times.staDate = date;
  DragEndAlong(times);
}

void SetStartTime(StartEnd& times, std::u16string_view time) {
  if (times.AllDay() || time == core::kAllDayMark) times.endTime = time;
  times.staTime = time;
  DragEndAlong(times);
}

void SetEndDate(StartEnd& times, std::u16string_view date) {
  times.endDate = date;
  DragStartAlong(times);
}

void SetEndTime(StartEnd& times, std::u16string_view time) {
  times.endTime = time;
  DragStartAlong(times);
}

void SetStartToNow(StartEnd& times, const platform::LocalTime& now) {
  if (!times.AllDay()) times.staTime = core::ShortTimeOf(now);
  SetStartDate(times, core::DateOf(now));
}

void SetEndToNow(StartEnd& times, const platform::LocalTime& now) {
  if (!times.AllDay()) times.endTime = core::ShortTimeOf(now);
  SetEndDate(times, core::DateOf(now));
}

StartEnd FromStored(std::u16string_view staDateTime, std::u16string_view endDateTime) {
  const core::MomentText start = core::SplitMoment(staDateTime);
  const core::MomentText end = core::SplitMoment(endDateTime);
  StartEnd times = {std::u16string(start.date), std::u16string(start.HourMinute()),
                    std::u16string(end.date), std::u16string(end.HourMinute())};
  if (times.endTime == u"24:00") times.staTime = times.endTime = core::kAllDayMark;
  return times;
}

std::u16string StoredStart(const StartEnd& times) {
  return times.staDate + u' ' +
         (times.AllDay() ? std::u16string(core::kStartOfDay) : times.staTime + u":00");
}

std::u16string StoredEnd(const StartEnd& times) {
  return times.endDate + u' ' +
         (times.AllDay() ? std::u16string(core::kEndOfDay) : times.endTime + u":00");
}

}  // namespace edit
