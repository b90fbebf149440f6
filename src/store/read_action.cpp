#include "store/read_action.h"

#include "core/text.h"
#include "store/session.h"
#include "store/trouble.h"

namespace store {

ActionRead ReadAction(std::u16string_view id, Action& action) {
  CUserDataTable* table = dbSession().UserTable.get();
  if (table == nullptr) return {E_POINTER, false};
  const HRESULT opened = table->Select(SelectByIdSql(id));
  const HRESULT result = Failed(opened) ? opened : table->GetNextRS(action);
  table->CloseRS();
  return {result, !Failed(opened)};
}

std::u16string FaultText(std::u16string_view what, int line, HRESULT result) {
  return WithReason(std::u16string(what) + u" Err (ln=" + core::ZeroPadded(line, 1) + u", hr=" +
                        core::Hex(result) + u")",
                    result);
}

}  // namespace store
