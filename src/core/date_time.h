// The text forms of dates and times: yyyy/mm/dd, hh:mm:ss, hh:mm, all zero-padded, so that text
// order is time order. The loose forms that a user types exist only as input of the parsers.
// "24:00:00" is midnight at the end of the day it is written on. All functions are re-entrant.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/host.h"

namespace core {

inline constexpr std::u16string_view kAllDayMark = u"<終日>";
inline constexpr std::u16string_view kStartOfDay = u"00:00:00";
inline constexpr std::u16string_view kEndOfDay = u"24:00:00";

std::u16string FormatDate(int year, int month, int day);
std::u16string FormatTime(int hour, int minute, int second);
std::u16string FormatHourMinute(int hour, int minute);

// The host's clock as text.
std::u16string DateOf(const platform::LocalTime& moment);       // yyyy/mm/dd
std::u16string ShortTimeOf(const platform::LocalTime& moment);  // hh:mm
std::u16string MomentOf(const platform::LocalTime& moment);     // yyyy/mm/dd hh:mm:ss

// The parts of a stored moment, "yyyy/mm/dd hh:mm:ss", as views into it; a text that is too short
// leaves what it lacks empty.
struct MomentText {
  std::u16string_view date;  // yyyy/mm/dd
  std::u16string_view time;  // hh:mm:ss

  std::u16string_view MonthDay() const;    // mm/dd
  std::u16string_view HourMinute() const;  // hh:mm
  bool IsEndOfDay() const { return time.starts_with(u"24:00"); }
};

MomentText SplitMoment(std::u16string_view moment);

// Both compare by code unit, the date first: 1, 0 or -1 as A stands to B.
int CompareDateTime(std::u16string_view dateA, std::u16string_view timeA, std::u16string_view dateB,
                    std::u16string_view timeB);
// Copies the earlier pair; 1 if B was taken, 0 if A was (also on a tie).
int EarlierDateTime(std::u16string_view dateA, std::u16string_view timeA, std::u16string_view dateB,
                    std::u16string_view timeB, std::u16string& date, std::u16string& time);
// Copies the later pair; 1 if A was taken, 0 if B was (also on a tie).
int LaterDateTime(std::u16string_view dateA, std::u16string_view timeA, std::u16string_view dateB,
                  std::u16string_view timeB, std::u16string& date, std::u16string& time);

// The parsers answer 0, or -10 and leave their outputs untouched.
// A date from 1900 on; padding is not required ("2010/1/2").
int ParseDate(std::u16string_view text, int& year, int& month, int& day);
// h:m or h:m:s below 24:00 ("7:5" passes).
int ParseTime(std::u16string_view text, int& hour, int& minute, int& second);
// As ParseTime with the hour up to 24: 0, -1 for exactly 24:00:00, -10 otherwise.
int ParseEndTime(std::u16string_view text);
// What a user types: four digits hhmm, or ParseTime; full-width or not, as input methods leave it.
int ParseTimeEntry(std::u16string_view text, int& hour, int& minute, int& second);

// 0 if the text means the end of the day, 1 if not.
int IsEndOfDayClock(std::u16string_view text);  // h:m or h:m:s
int IsEndOfDayEntry(std::u16string_view text);  // as a user types that, or "2400"

// Year, month, day, hour, minute, second, fraction as written.
using Timestamp = std::array<uint16_t, 7>;

// Reads a stored or imported timestamp without range checks; "/", "." and "-" separate the parts of
// its date, and a date alone is good. 0, or the state's code, negative; `numbers` is zeroed first
// and holds what was read.
int ParseTimestamp(std::u16string_view text, Timestamp& numbers);

// `text` without any CR or LF.
std::u16string RemoveLineBreaks(std::u16string_view text);

}  // namespace core
