// What the fills of the views share: the read of one Action.
#include "views/view_rows.h"

#include "platform/host.h"
#include "store/read_action.h"

namespace views {

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
