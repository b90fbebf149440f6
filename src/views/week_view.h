// The boxes of the week view: a piece of an Action for each of its days, and the lane in which it
// lies beside the others of that day.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "core/calendar_value.h"

namespace views {

inline constexpr int kWeekDays = 7;
inline constexpr int kDaysBeforeCurDate = 3;  // the current date's band is the fourth

struct WeekItem {
  int position = 0;  // of the Action in the index when it was read
  std::u16string id;
  core::CalendarValue start;  // of this piece
  core::CalendarValue end;    // on the same day, at most 23:59:59
  std::u16string text;        // the place
  int dup = 0;  // boxes that share the height of the band; 0 before the lanes are made
  int row = 0;  // band, 0 the first day. Pieces outside the week have rows below 0, or 7 and more
  int col = 0;  // lane, 0 the top one
};

struct WeekData {
  std::vector<WeekItem> WeekItems;          // by the start of their Actions
  std::array<int, kWeekDays> WeekRowMax{};  // the largest dup of each band
  std::optional<core::Day> WeekCacheDate;   // the date they were read for
};

// The first day of the grid. Round a day that its month lacks it's the grid of the month's last.
// A day that doesn't exist if that lies before the calendar.
core::Day FirstDayOfWeek();

// Reads the boxes round the current date, unless they are already those of that date. Kept on
// purpose: a change of an Action does not show before the date moves.
void ReadWeek(const core::CAppState& app, WeekData& week);

// Fills WeekItems with the Actions that start on the seven days from `first` on. Answers their
// count, or -100 after the message of a failed read.
int DbReadWeekData(const core::CAppState& app, const core::Day& first, WeekData& week);

// "6/23 10:00-11:30 会社": a box in words.
std::u16string BoxText(const WeekItem& item);

// Sets row, dup and col of every item, and WeekRowMax. Of a day with more than a thousand items the
// later ones get no lane.
void CalcWeekRepetition(const core::Day& first, WeekData& week);

}  // namespace views
