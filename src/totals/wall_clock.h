// Moments as numbers. What the wall clock says is what counts: there are no time zones here, and a
// night with a change to summer time is as long as the clock's difference.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "core/day.h"
#include "core/text_list.h"

namespace totals {

// A moment, counted from 1970/01/01 00:00:00, or a length of time.
using Seconds = int64_t;
// A day, counted from 1970/01/01. Moments before it have negative numbers.
using DayNumber = int;

inline constexpr Seconds kMinuteSeconds = 60;
inline constexpr Seconds kHourSeconds = 3600;
inline constexpr Seconds kDaySeconds = 86400;

// From one moment up to another, which is no longer in it.
struct Span {
  Seconds from = 0;
  Seconds to = 0;
  Seconds Length() const { return to - from; }
  bool operator==(const Span&) const = default;
};

DayNumber NumberOf(const core::Day& day);  // of a day that exists
core::Day DayOf(DayNumber number);
int WeekdayOf(DayNumber number);  // 0 Sunday .. 6 Saturday
// The day that a moment lies on.
DayNumber DayAt(Seconds moment);

// A stored moment, in the forms that the store takes. 24:00:00 is the midnight after its day. None
// for what is no date, or lies beyond the year 9999.
class MomentReader {
 public:
  std::optional<Seconds> Read(std::u16string_view text);
  // One of a list, which keeps most of them as numbers.
  std::optional<Seconds> Read(const core::TextList& moments, size_t place);

 private:
  std::optional<Seconds> ReadDigits(uint64_t digits);

  // Most moments lie on the same day as the one before.
  uint64_t date_ = 0;  // its eight digits
  Seconds midnight_ = 0;
};
inline std::optional<Seconds> ReadMoment(std::u16string_view text) {
  return MomentReader().Read(text);
}

}  // namespace totals
