// Moving the current date and the list's page.
#include "views/navigation.h"

#include <algorithm>
#include <array>

#include "core/calendar_value.h"
#include "core/date_time.h"
#include "platform/host.h"
#include "store/action_index.h"
#include "views/command_table.h"

namespace views {
namespace {

constexpr int kFirstYear = 1900;

bool NextPage(core::CAppState& app) {
  if (app.ListPage >= LastPage(app)) return false;
  ++app.ListPage;
  return true;
}

bool PreviousPage(core::CAppState& app) {
  if (app.ListPage <= 0) return false;
  --app.ListPage;
  return true;
}

void StepPages(core::CAppState& app, Step step) {
  switch (step) {
    case Step::kBigBack:
      app.ListPage = 0;
      break;
    case Step::kBack:
      PreviousPage(app);
      break;
    case Step::kForward:
      NextPage(app);
      break;
    case Step::kBigForward:
      app.ListPage = LastPage(app);
      break;
  }
}

void StepMonths(Step step) {
  switch (step) {
    case Step::kBigBack:
      MoveYear(-1);
      break;
    case Step::kBack:
      MoveMonth(-1);
      break;
    case Step::kForward:
      MoveMonth(1);
      break;
    case Step::kBigForward:
      MoveYear(1);
      break;
  }
}

void StepDays(Step step) {
  switch (step) {
    case Step::kBigBack:
      MoveDate(-7);
      break;
    case Step::kBack:
      MoveDate(-1);
      break;
    case Step::kForward:
      MoveDate(1);
      break;
    case Step::kBigForward:
      MoveDate(7);
      break;
  }
}

// Days by which left, right, up and down move; 0 means nothing.
std::array<int, 4> ArrowDays(core::View view) {
  switch (view) {
    case core::kViewWeek:
      return {-7, 7, -1, 1};
    case core::kViewMonth:
      return {-1, 1, -7, 7};
    default:
      return {-1, 1, 0, 0};
  }
}

}  // namespace

void MoveDate(int days) {
  core::CalendarValue date;
  core::MakeCalendarValue(date, core::CurYear, core::CurMonth, core::CurDay, 0, 0, 0);
  core::DateSpan span;
  core::MakeDateSpan(span, days, 0, 0, 0);
  core::CalendarParts parts;
  core::CalendarToParts(date + span, parts);
  core::CurYear = parts.year;
  core::CurMonth = parts.month;
  core::CurDay = parts.day;
}

void MoveMonth(int months) {
  const int month = core::CurMonth + months;
  if (month >= 1 && month <= 12) {
    core::CurMonth = month;
  } else if (months > 0 || core::CurYear > kFirstYear) {
    core::CurMonth = months > 0 ? 1 : 12;
    core::CurYear += months;
  }
}

void MoveYear(int years) {
  if (years > 0 || core::CurYear > kFirstYear) core::CurYear += years;
}

void GoToWeekday(int weekday) {
  MoveDate(weekday - core::WeekdayOf(core::CurYear, core::CurMonth, core::CurDay));
}

void GoToToday(core::CAppState& app) {
  const platform::LocalTime now = platform::host().Now();
  core::CurYear = now.year;
  core::CurMonth = now.month;
  core::CurDay = now.day;
  if (ViewOnShow(app.CurView) == core::kViewList) GoToPageOfCurDate(app);
}

int RowsPerPage(const core::CAppState& app) {
  return std::max(1, app.SeqViewRng != 0 ? app.SeqViewRng : app.ListRowsPerScreen);
}

int LastPage(const core::CAppState& app) {
  return app.IndexCount < 1 ? 0 : (app.IndexCount - 1) / RowsPerPage(app);
}

void GoToPageOfCurDate(core::CAppState& app) {
  app.ListPage = std::max(
      0, store::FindActionIndexByPosition(app, core::CurDate(), core::kEndOfDay, RowsPerPage(app)));
}

void KeepPageInRange(core::CAppState& app) {
  app.ListPage = std::min(app.ListPage, LastPage(app));
}

void TakeStep(core::CAppState& app, Step step) {
  switch (ViewOnShow(app.CurView)) {
    case core::kViewList:
      return StepPages(app, step);
    case core::kViewMonth:
      return StepMonths(step);
    default:
      return StepDays(step);
  }
}

bool TakeArrow(core::CAppState& app, Arrow arrow) {
  const core::View view = ViewOnShow(app.CurView);
  if (view == core::kViewList) {
    if (arrow == Arrow::kLeft) return PreviousPage(app);
    return arrow == Arrow::kRight && NextPage(app);
  }
  const int days = ArrowDays(view)[static_cast<size_t>(arrow)];
  if (days != 0) MoveDate(days);
  return days != 0;
}

}  // namespace views
