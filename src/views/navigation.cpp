// Moving the current date and the list's page.
#include "views/navigation.h"

#include <algorithm>
#include <array>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "platform/host.h"
#include "store/action_index.h"

namespace views {
namespace {

constexpr int kFirstYear = 1900;
constexpr int kMonths = 12;

// In the order of Step.
constexpr std::array<int, 4> kStepDays = {-7, -1, 1, 7};
constexpr std::array<int, 4> kStepMonths = {-kMonths, -1, 1, kMonths};

// Days by which the arrows move, in the order of Arrow; 0 means nothing.
constexpr std::array<int, 4> kArrowDays = {-1, 1, 0, 0};
constexpr std::array<int, 4> kArrowDaysInWeek = {-7, 7, -1, 1};
constexpr std::array<int, 4> kArrowDaysInMonth = {-1, 1, -7, 7};

int ArrowDays(core::View view, Arrow arrow) {
  const auto& days = view == core::kViewWeek    ? kArrowDaysInWeek
                     : view == core::kViewMonth ? kArrowDaysInMonth
                                                : kArrowDays;
  return days[static_cast<size_t>(arrow)];
}

// To the nearest page that there is; false if that is the one on show.
bool GoToPage(core::CAppState& app, int page) {
  const int former = app.ListPage;
  app.ListPage = std::clamp(page, 0, LastPage(app));
  return app.ListPage != former;
}

void StepPages(core::CAppState& app, Step step) {
  const std::array<int, 4> pages = {0, app.ListPage - 1, app.ListPage + 1, LastPage(app)};
  GoToPage(app, pages[static_cast<size_t>(step)]);
}

}  // namespace

core::View ViewOnShow(int curView) {
  const bool isView = curView >= core::kViewDay && curView <= core::kViewMap;
  return isView ? static_cast<core::View>(curView) : core::kViewDay;
}

void GoToDay(const std::optional<core::Day>& day) {
  if (day) core::SetCurrentDay(*day);
}

std::optional<core::Day> DaysFromCurDate(int days) {
  return core::DaysLater(core::WithinMonth(core::CurrentDay()), days);
}

void MoveDate(int days) {
  GoToDay(DaysFromCurDate(days));
}

void MoveMonth(int months) {
  const int month = core::CurYear * kMonths + core::CurMonth - 1 + months;
  if (months < 0 && month < kFirstYear * kMonths) return;
  core::CurYear = month / kMonths;
  core::CurMonth = month % kMonths + 1;
}

void GoToWeekday(int weekday) {
  MoveDate(weekday - core::WeekdayOf(core::WithinMonth(core::CurrentDay())));
}

void GoToToday(core::CAppState& app) {
  core::SetCurrentDay(core::DayOf(platform::host().Now()));
  if (ViewOnShow(app.CurView) == core::kViewList) GoToPageOfCurDate(app);
}

int RowsPerPage(const core::CAppState& app) {
  const bool fits = app.SeqViewRng == core::kFitsScreen;
  return std::clamp(fits ? app.ListRowsPerScreen : app.SeqViewRng, 1, int{core::kMostRowsPerPage});
}

int LastPage(const core::CAppState& app) {
  return app.IndexCount < 1 ? 0 : (app.IndexCount - 1) / RowsPerPage(app);
}

void GoToPageOfCurDate(core::CAppState& app) {
  app.ListPage = std::max(
      0, store::FindActionIndexByPosition(app, core::CurDate(), core::kEndOfDay, RowsPerPage(app)));
}

void KeepPageInRange(core::CAppState& app) {
  GoToPage(app, app.ListPage);
}

void TakeStep(core::CAppState& app, Step step) {
  const auto place = static_cast<size_t>(step);
  switch (ViewOnShow(app.CurView)) {
    case core::kViewList:
      return StepPages(app, step);
    case core::kViewMonth:
      return MoveMonth(kStepMonths[place]);
    default:
      return MoveDate(kStepDays[place]);
  }
}

bool TakeArrow(core::CAppState& app, Arrow arrow) {
  const core::View view = ViewOnShow(app.CurView);
  if (view == core::kViewList) {
    const bool sideways = arrow == Arrow::kLeft || arrow == Arrow::kRight;
    return sideways && GoToPage(app, app.ListPage + (arrow == Arrow::kRight ? 1 : -1));
  }
  const int days = ArrowDays(view, arrow);
  if (days != 0) MoveDate(days);
  return days != 0;
}

}  // namespace views
