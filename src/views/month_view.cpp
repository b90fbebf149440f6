// Counting a month, and the lines of one of its days.
#include "views/month_view.h"

#include "core/date_time.h"
#include "core/text.h"
#include "platform/late_wait.h"

namespace views {
namespace {

constexpr size_t kLongestMemo = 20;
constexpr int kSunday = 1;
constexpr int kWeek = 7;

std::u16string RowText(const core::CAppState& app, const store::Action& action) {
  std::u16string memo = core::RemoveLineBreaks(TextOf(action, store::kMemo));
  if (memo.size() > kLongestMemo) memo = memo.substr(0, kLongestMemo) + u"...";
  const core::MomentText start = StartOf(action);
  const core::MomentText end = EndOf(action);
  const bool dates = end.IsEndOfDay();
  const bool endsElsewhere = SpansDays(app) && end.date != start.date;
  std::u16string text = TimeSpanText(start, dates, end, dates || endsElsewhere);
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
  const core::Day first{year, month, 1};
  const int weekday = core::WeekdayOf(first);
  if (weekday < kSunday) return data;
  const int offset = weekday == kSunday ? -kWeek : kSunday - weekday;  // of the first cell
  int position = FirstPositionAfter(app, core::DaysLater(first, offset - 1));
  for (int n = 0; n < kMonthCells; ++n) {
    MonthCell& cell = data.MonthCells[static_cast<size_t>(n)];
    cell.day = core::DaysLater(first, offset + n);
    if (!cell.day) continue;
    const std::u16string date = core::DayText(*cell.day);
    while (position < app.IndexCount &&
           app.ActStarts.IsOnDay(static_cast<size_t>(position), date)) {
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
  rows.FirstRowIndex = FirstPositionAfter(app, core::DaysLater(core::CurrentDay(), -1));
  int position = rows.FirstRowIndex;
  platform::LateWait wait;
  for (; position < app.IndexCount; ++position) {
    store::Action action;
    const RowRead read = ReadAction(app.ActIds.At(static_cast<size_t>(position)),
                                    u"MainView:SetDataDayViewForSingle", action);
    rows.abandoned = read == RowRead::kFailed;
    if (read != RowRead::kRead) break;
    if (StartOf(action).date != date) break;
    if (app.SelIndex == position) rows.selectedRow = position - rows.FirstRowIndex;
    rows.RowActIds.emplace_back(TextOf(action, store::kActId));
    rows.cells.push_back({RowText(app, action)});
    wait.Look();
  }
  rows.LastRowIndex = position - 1;
  return rows;
}

std::u16string CellText(const MonthCell& cell) {
  if (!cell.day) return {};
  return core::ZeroPadded(cell.day->month, 1) + u"/" + core::ZeroPadded(cell.day->day, 1) + u" " +
         core::ZeroPadded(cell.count, 1) + u"件";
}

}  // namespace views
