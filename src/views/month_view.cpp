// Counting a month, and the lines of one of its days.
#include "views/month_view.h"

#include <algorithm>

#include "core/calendar_value.h"
#include "core/date_time.h"
#include "core/text.h"
#include "store/action_index.h"

namespace views {
namespace {

constexpr size_t kDateLength = 10;
constexpr size_t kLongestMemo = 20;
constexpr int kSunday = 1;
constexpr int kWeek = 7;

std::u16string DateText(const core::CalendarParts& day) {
  return core::FormatDate(day.year, day.month, day.day);
}

// The position of the first Action that starts behind a day.
int FirstPositionBehind(const core::CAppState& app, const core::CalendarParts& day) {
  return std::max(0, store::FindActionIndexLower(app, DateText(day), core::kEndOfDay,
                                                 store::LowerMode::kAtOrAfter));
}

std::u16string TimeText(const core::CAppState& app, const core::MomentText& start,
                        const core::MomentText& end) {
  const bool dates = end.IsEndOfDay();
  const bool endsElsewhere = SpansDays(app) && end.date != start.date;
  std::u16string text(dates ? start.MonthDay() : start.HourMinute());
  text += u'-';
  text += dates || endsElsewhere ? end.MonthDay() : end.HourMinute();
  return text;
}

std::u16string RowText(const core::CAppState& app, const store::Action& action) {
  std::u16string memo = core::RemoveLineBreaks(TextOf(action, store::kMemo));
  if (memo.size() > kLongestMemo) memo = memo.substr(0, kLongestMemo) + u"...";
  std::u16string text = TimeText(app, core::SplitMoment(TextOf(action, store::kStaDateTime)),
                                 core::SplitMoment(TextOf(action, store::kEndDateTime)));
  text += u' ';
  text += TextOf(action, store::kPlace);
  text += u"::";
  text += TextOf(action, store::kCategory1);
  return text + u"::" + memo;
}

}  // namespace

MonthData CountMonth(const core::CAppState& app, int year, int month) {
  MonthData data;
  data.year = year;
  data.month = month;
  const int weekday = core::WeekdayOf(year, month, 1);
  if (weekday < kSunday) return data;
  const int first = weekday == kSunday ? -kWeek : kSunday - weekday;
  int position = FirstPositionBehind(app, core::AddDays(year, month, 1, first - 1));
  for (int n = 0; n < kMonthCells; ++n) {
    const core::CalendarParts day = core::AddDays(year, month, 1, first + n);
    const std::u16string date = DateText(day);
    MonthCell& cell = data.MonthCells[static_cast<size_t>(n)];
    cell = {day.year, day.month, day.day};
    while (position < app.IndexCount &&
           app.ActStarts.At(static_cast<size_t>(position)).substr(0, kDateLength) == date) {
      ++position;
      ++cell.count;
    }
    if (data.Holds(cell)) data.MonthTotal += cell.count;
  }
  return data;
}

std::u16string MonthTitle(const core::CAppState& app, const MonthData& month) {
  return core::CurDate() + u" - " + core::ZeroPadded(month.MonthTotal, 1) + u"(" +
         core::ZeroPadded(app.IndexCount, 1) + u")";
}

ViewRows FillMonthList(const core::CAppState& app) {
  ViewRows rows;
  // The list outlives a delete, so its rows cannot be counted into the index.
  rows.order = RowOrder::kSpanning;
  const std::u16string date = core::CurDate();
  rows.FirstRowIndex =
      FirstPositionBehind(app, core::AddDays(core::CurYear, core::CurMonth, core::CurDay, -1));
  int position = rows.FirstRowIndex;
  for (; position < app.IndexCount; ++position) {
    store::Action action;
    const RowRead read = ReadAction(app.ActIds.At(static_cast<size_t>(position)),
                                    u"MainView:SetDataDayViewForSingle", action);
    rows.abandoned = read == RowRead::kFailed;
    if (read != RowRead::kRead) break;
    if (core::SplitMoment(TextOf(action, store::kStaDateTime)).date != date) break;
    if (app.SelIndex == position) rows.selectedRow = position - rows.FirstRowIndex;
    rows.RowActIds.emplace_back(TextOf(action, store::kActId));
    rows.cells.push_back({RowText(app, action)});
  }
  rows.LastRowIndex = position - 1;
  return rows;
}

}  // namespace views
