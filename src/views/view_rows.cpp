// What the fills of the views share.
#include "views/view_rows.h"

#include <algorithm>

#include "platform/host.h"
#include "store/action_index.h"
#include "store/read_action.h"

namespace views {

// The end of a day, 24:00:00, sorts after all of that day and before all of the next.
int FirstPositionAfter(const core::CAppState& app, const std::optional<core::Day>& day) {
  if (!day) return 0;
  return std::max(0, store::FindActionIndexLower(app, core::DayText(*day), core::kEndOfDay,
                                                 store::LowerMode::kAtOrAfter));
}

std::u16string TimeSpanText(const core::MomentText& start, bool startAsDate,
                            const core::MomentText& end, bool endAsDate) {
  std::u16string text(startAsDate ? start.MonthDay() : start.HourMinute());
  text += u'-';
  text += endAsDate ? end.MonthDay() : end.HourMinute();
  return text;
}

void ShowReadError(std::u16string_view caller, std::u16string_view step, int line, int result,
                   std::u16string_view title) {
  const std::u16string what = std::u16string(caller) + u' ' + std::u16string(step);
  platform::ShowNotice(store::FaultText(what, line, result), std::u16string(title),
                       platform::Icon::kStop);
}

RowRead ReadAction(std::u16string_view id, std::u16string_view caller, store::Action& action,
                   std::u16string_view errorTitle) {
  const store::ActionRead read = store::ReadAction(id, action);
  if (!store::Failed(read.result)) {
    return read.result == store::DB_S_ENDOFROWSET ? RowRead::kGone : RowRead::kRead;
  }
  ShowReadError(caller, read.Step(), read.selected ? 2 : 1, read.result, errorTitle);
  return RowRead::kFailed;
}

}  // namespace views
