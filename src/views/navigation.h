// Moving the current date and the list's page: what the header's buttons, the arrow keys and "今日"
// do. The functions only move; the window shows the new place.
#pragma once

#include <optional>

#include "core/app_state.h"

namespace views {

// The view that `curView` shows: a number that is no view shows the day. The number itself stays as
// it is, because it goes back into the settings.
core::View ViewOnShow(int curView);

// Without a day the current date stays.
void GoToDay(const std::optional<core::Day>& day);
// Counted from the current date, or from the last day of its month if that lacks the day. None
// beyond the calendar's ends.
std::optional<core::Day> DaysFromCurDate(int days);
void MoveDate(int days);
// The day number stays as it is, also where the new month is shorter. A step back that would lead
// before 1900 is not taken.
void MoveMonth(int months);
// To weekday 1 Sunday .. 7 Saturday of the week of the current date, which begins on Sunday.
void GoToWeekday(int weekday);
// To the host's date, and in the list to its page.
void GoToToday(core::CAppState& app);

// Rows on a page of the list: the setting, or what the list control shows; at least 1.
int RowsPerPage(const core::CAppState& app);
// The oldest page, 0 if there are no Actions.
int LastPage(const core::CAppState& app);
void GoToPageOfCurDate(core::CAppState& app);
// For pages that have become longer.
void KeepPageInRange(core::CAppState& app);

enum class Step { kBigBack, kBack, kForward, kBigForward };
// A header button in the view on show.
void TakeStep(core::CAppState& app, Step step);

enum class Arrow { kLeft, kRight, kUp, kDown };
// An arrow key in the view on show; false if it means nothing there.
bool TakeArrow(core::CAppState& app, Arrow arrow);

}  // namespace views
