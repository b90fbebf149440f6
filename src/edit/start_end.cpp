// How a change of one side of an Action's time drags the other side along.
#include "edit/start_end.h"

#include "core/date_time.h"

namespace edit {
namespace {

constexpr size_t kDateLength = 10;
constexpr size_t kTimeStart = 11;
constexpr size_t kShortTimeLength = 5;

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

// What stands at `position` of a stored moment; a malformed one may be too short.
std::u16string Piece(std::u16string_view moment, size_t position, size_t length) {
  return std::u16string(moment.substr(std::min(position, moment.size()), length));
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
  if (!times.AllDay()) times.staTime = ShortTimeOf(now);
  SetStartDate(times, DateOf(now));
}

void SetEndToNow(StartEnd& times, const platform::LocalTime& now) {
  if (!times.AllDay()) times.endTime = ShortTimeOf(now);
  SetEndDate(times, DateOf(now));
}

StartEnd FromStored(std::u16string_view staDateTime, std::u16string_view endDateTime) {
  StartEnd times = {
      Piece(staDateTime, 0, kDateLength), Piece(staDateTime, kTimeStart, kShortTimeLength),
      Piece(endDateTime, 0, kDateLength), Piece(endDateTime, kTimeStart, kShortTimeLength)};
  if (times.endTime == u"24:00") times.staTime = times.endTime = core::kAllDayMark;
  return times;
}

std::u16string StoredStart(const StartEnd& times) {
  return times.staDate + u' ' + (times.AllDay() ? u"00:00:00" : times.staTime + u":00");
}

std::u16string StoredEnd(const StartEnd& times) {
  return times.endDate + u' ' +
         (times.AllDay() ? std::u16string(core::kEndOfDay) : times.endTime + u":00");
}

std::u16string DateOf(const platform::LocalTime& moment) {
  return core::FormatDate(moment.year, moment.month, moment.day);
}

std::u16string ShortTimeOf(const platform::LocalTime& moment) {
  return core::FormatHourMinute(moment.hour, moment.minute);
}

}  // namespace edit
