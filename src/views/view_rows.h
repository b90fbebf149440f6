// The rows that a fill puts into the shared list, and what the commands need to know about them.
// The fills know no widget: the screen shows what they return.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "core/date_time.h"
#include "core/settings_choices.h"
#include "store/action.h"

namespace views {

inline constexpr std::u16string_view kNewRowText = u"<新規作成>";
inline constexpr std::u16string_view kFillErrorTitle = u"ERROR";

// Whether an Action shows on every day that it touches, and not only on the one it starts on.
inline bool SpansDays(const core::CAppState& app) {
  return app.DayVwMltDayMode == core::kSpanningDayMode;
}

// Whether the week and the month are read again after every change, or only after those that the
// window names.
inline bool StaysCurrent(const core::CAppState& app) {
  return app.ViewAutoUpdate == core::kOn;
}

// How a row's number leads to its Action's position in the index.
enum class RowOrder {
  kByStart,      // FirstRowIndex + row
  kSpanning,     // not by counting: Actions between the first and the last may be missing
  kNewestFirst,  // FirstRowIndex - row
};

struct ViewRows {
  RowOrder order = RowOrder::kByStart;
  std::vector<std::vector<std::u16string>> cells;  // of the Actions' rows, column by column
  std::vector<std::u16string> RowActIds;           // of the same rows
  int newRowColumn = 0;                            // of kNewRowText, which follows them
  int FirstRowIndex = 0;
  int LastRowIndex = -1;
  int selectedRow = 0;  // row to select, focus and show; one that is no row: none
  // A read failed and its message was shown: the rows end here, and kNewRowText does not follow.
  bool abandoned = false;
};

// The position of the first Action that starts after a day; 0 if there are no Actions, or no day.
int FirstPositionAfter(const core::CAppState& app, const std::optional<core::Day>& day);

inline core::MomentText StartOf(const store::Action& action) {
  return core::SplitMoment(TextOf(action, store::kStaDateTime));
}
inline core::MomentText EndOf(const store::Action& action) {
  return core::SplitMoment(TextOf(action, store::kEndDateTime));
}
// "hh:mm-hh:mm", with mm/dd in place of a time that is to show its date.
std::u16string TimeSpanText(const core::MomentText& start, bool startAsDate,
                            const core::MomentText& end, bool endAsDate);

// Reads the Action of an id. `caller` names the fill or the command in the message of a failed
// read.
enum class RowRead { kRead, kGone, kFailed };
RowRead ReadAction(std::u16string_view id, std::u16string_view caller, store::Action& action,
                   std::u16string_view errorTitle = kFillErrorTitle);

// "<caller> <step> Err (ln=%d, hr=%x)".
void ShowReadError(std::u16string_view caller, std::u16string_view step, int line, int result,
                   std::u16string_view title = kFillErrorTitle);

}  // namespace views
