// What the fills of the views share: the read of one Action.
#include "views/view_rows.h"

#include "core/text.h"
#include "platform/host.h"
#include "store/session.h"
#include "store/user_data_table.h"

namespace views {

void ShowReadError(std::u16string_view caller, std::u16string_view step, int line, int result,
                   std::u16string_view title) {
  platform::ShowNotice(std::u16string(caller) + u" " + std::u16string(step) + u" Err (ln=" +
                           core::ZeroPadded(line, 1) + u", hr=" + core::Hex(result) + u")",
                       std::u16string(title), platform::Icon::kStop);
}

RowRead ReadAction(std::u16string_view id, std::u16string_view caller, store::Action& action,
                   std::u16string_view errorTitle) {
  store::CUserDataTable* table = store::dbSession().UserTable.get();
  store::HRESULT result =
      table == nullptr ? store::E_POINTER : table->Select(store::SelectByIdSql(id));
  if (store::Failed(result)) {
    if (table != nullptr) table->CloseRS();
    ShowReadError(caller, u"Select", 1, result, errorTitle);
    return RowRead::kFailed;
  }
  result = table->GetNextRS(action);
  table->CloseRS();
  if (!store::Failed(result)) {
    return result == store::DB_S_ENDOFROWSET ? RowRead::kGone : RowRead::kRead;
  }
  ShowReadError(caller, u"GetNextRS", 2, result, errorTitle);
  return RowRead::kFailed;
}

}  // namespace views
