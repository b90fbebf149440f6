// Reading a week, and the lanes of Actions that overlap.
#include "views/week_view.h"

#include <algorithm>
#include <cmath>

#include "core/date_time.h"
#include "core/text.h"
#include "platform/late_wait.h"
#include "views/navigation.h"
#include "views/view_rows.h"

namespace views {
namespace {

using core::CalendarGreater;
using core::CalendarLess;
using core::CalendarValue;
using core::Day;

constexpr int kReadFailed = -100;
constexpr double kSecondsPerDay = 86400;
// The pieces of an Action that lasts for years stop some weeks after the grid, where nobody sees
// them.
constexpr int kMostRows = 4 * kWeekDays;
// More boxes than a band has pixels. Each is held against each other one.
constexpr size_t kMostBoxes = 1000;

CalendarValue ValueOf(const Day& day, int hour, int minute, int second) {
  CalendarValue value;
  core::MakeCalendarValue(value, day.year, day.month, day.day, hour, minute, second);
  return value;
}

// Any sign may stand between the date and the time.
CalendarValue MomentValue(std::u16string_view moment) {
  const auto [date, time] = core::SplitMoment(moment);
  core::Timestamp n;
  CalendarValue value{0, 1};
  if (core::ParseTimestamp(std::u16string(date) + u' ' + std::u16string(time), n) == 0) {
    core::MakeCalendarValue(value, n[0], n[1], n[2], n[3], n[4], n[5]);
  }
  return value;
}

// The end of a day, which no calendar value can hold, becomes its last second.
CalendarValue EndValue(std::u16string_view moment) {
  const core::MomentText end = core::SplitMoment(moment);
  if (end.time != core::kEndOfDay) return MomentValue(moment);
  return MomentValue(std::u16string(end.date) + u" 23:59:59");
}

void AddPieces(const store::Action& action, int position, const CalendarValue& lastEnd,
               WeekData& week) {
  core::CalendarSpan entry{MomentValue(TextOf(action, store::kStaDateTime)),
                           EndValue(TextOf(action, store::kEndDateTime))};
  if (entry.start.status != 0 || entry.end.status != 0) return;
  if (CalendarLess(lastEnd, entry.end)) entry.end = lastEnd;
  std::vector<core::CalendarSpan> pieces;
  core::SplitAtMidnight(pieces, entry);
  for (const core::CalendarSpan& piece : pieces) {
    week.WeekItems.push_back({position, std::u16string(TextOf(action, store::kActId)), piece.start,
                              piece.end, std::u16string(TextOf(action, store::kPlace))});
  }
}

// Half a second makes up for what the fraction of a day has lost.
int RowOf(const WeekItem& item, const CalendarValue& first) {
  return static_cast<int>(std::floor(item.start.dt - first.dt + 0.5 / kSecondsPerDay));
}

// The first lane that is not in `taken`, which may name one twice.
int FirstFreeLane(std::vector<int>& taken) {
  std::ranges::sort(taken);
  int lane = 0;
  for (const int other : taken) {
    if (lane == other) ++lane;
  }
  return lane;
}

// Kept on purpose: an item that begins before another and ends within it takes no lane from it, and
// one that has no lane yet counts as lane 0. So boxes of one cluster may differ in height and lie
// over one another.
void PlaceInBand(const std::vector<WeekItem*>& band, WeekItem& item) {
  std::vector<int> taken;
  int startsWithin = 0;
  int endsWithin = 0;
  for (const WeekItem* other : band) {
    if (other == &item) continue;
    if (!CalendarLess(item.start, other->start) && CalendarLess(item.start, other->end)) {
      ++startsWithin;
      taken.push_back(other->col);
    }
    if (CalendarGreater(item.end, other->start) && !CalendarGreater(item.end, other->end)) {
      ++endsWithin;
    }
  }
  item.col = FirstFreeLane(taken);
  item.dup = std::max(startsWithin, endsWithin) + 1;
}

}  // namespace

Day FirstDayOfWeek() {
  return DaysFromCurDate(-kDaysBeforeCurDate).value_or(Day{});
}

void ReadWeek(const core::CAppState& app, WeekData& week) {
  const std::optional<Day> date = DaysFromCurDate(0);
  if (date && date == week.WeekCacheDate) return;
  const Day first = FirstDayOfWeek();
  if (DbReadWeekData(app, first, week) > 0) CalcWeekRepetition(first, week);
  week.WeekCacheDate = date;
}

int DbReadWeekData(const core::CAppState& app, const Day& first, WeekData& week) {
  week.WeekItems.clear();
  const std::optional<Day> after = core::DaysLater(first, kWeekDays);
  if (app.IndexCount < 1 || !after) return 0;
  const std::u16string end = core::DayText(*after);
  const CalendarValue lastEnd =
      ValueOf(core::DaysLater(first, kMostRows - 1).value_or(Day{}), 23, 59, 59);
  const int from = FirstPositionAfter(app, core::DaysLater(first, -1));
  int position = from;
  platform::LateWait wait;
  for (; position < app.IndexCount; ++position) {
    store::Action action;
    const RowRead read = ReadAction(app.ActIds.At(static_cast<size_t>(position)),
                                    u"CMainWnd::DbReadWeekData", action);
    if (read == RowRead::kFailed) return kReadFailed;
    if (read == RowRead::kGone) break;
    if (StartOf(action).date >= end) break;
    AddPieces(action, position, lastEnd, week);
    wait.Look();
  }
  return position - from;
}

void CalcWeekRepetition(const Day& first, WeekData& week) {
  platform::LateWait wait;
  week.WeekRowMax.fill(0);
  const CalendarValue firstDay = ValueOf(first, 0, 0, 0);
  std::array<std::vector<WeekItem*>, kMostRows> bands;
  for (WeekItem& item : week.WeekItems) {
    item.row = RowOf(item, firstDay);
    // As a text "2010/1/011" sorts after September, and is a day of January.
    if (item.row < 0) continue;
    auto& band = bands[static_cast<size_t>(item.row)];
    if (band.size() < kMostBoxes) band.push_back(&item);
  }
  for (size_t row = 0; row < bands.size(); ++row) {
    for (WeekItem* item : bands[row]) {
      PlaceInBand(bands[row], *item);
      wait.Look();
      if (row < week.WeekRowMax.size()) {
        week.WeekRowMax[row] = std::max(week.WeekRowMax[row], item->dup);
      }
    }
  }
}

std::u16string BoxText(const WeekItem& item) {
  core::CalendarParts start;
  core::CalendarParts end;
  core::CalendarToParts(item.start, start);
  core::CalendarToParts(item.end, end);
  const auto time = [](const core::CalendarParts& at) {
    return core::ZeroPadded(at.hour, 2) + u":" + core::ZeroPadded(at.minute, 2);
  };
  return core::ZeroPadded(start.month, 1) + u"/" + core::ZeroPadded(start.day, 1) + u" " +
         time(start) + u"-" + time(end) + u" " + item.text;
}

}  // namespace views
