// Start and end of an Action as the edit screen shows them: dates and short times, or the all-day
// mark in both times. Every change keeps the start at or before the end by moving the other side.
#pragma once

#include <string>
#include <string_view>

#include "platform/host.h"

namespace edit {

struct StartEnd {
  std::u16string staDate;  // yyyy/mm/dd
  std::u16string staTime;  // hh:mm, or core::kAllDayMark
  std::u16string endDate;
  std::u16string endTime;  // the mark exactly where the start time is the mark

  bool AllDay() const;
  bool operator==(const StartEnd&) const = default;
};

// Both sides at one moment of one day.
StartEnd AtOneMoment(std::u16string_view date, std::u16string_view time);

void SetStartDate(StartEnd& times, std::u16string_view date);
// The mark makes both times all day; a real time ends that on both sides.
void SetStartTime(StartEnd& times, std::u16string_view time);
void SetEndDate(StartEnd& times, std::u16string_view date);
// Not called while the Action is all day.
void SetEndTime(StartEnd& times, std::u16string_view time);
// The date, and the time too unless the Action is all day.
void SetStartToNow(StartEnd& times, const platform::LocalTime& now);
void SetEndToNow(StartEnd& times, const platform::LocalTime& now);

// From and to the 19 characters of the store, where an all-day Action runs from 00:00:00 to
// 24:00:00. Seconds are not shown and are written as 00.
StartEnd FromStored(std::u16string_view staDateTime, std::u16string_view endDateTime);
std::u16string StoredStart(const StartEnd& times);
std::u16string StoredEnd(const StartEnd& times);

}  // namespace edit
