// The write by position. Rows are never deleted: the recorder's own count says how many of them
// are valid.
#include "store/rcdr_data_table.h"

#include <array>
#include <string>

#include "core/text.h"
#include "store/schema.h"

namespace store {

HRESULT CRcdrDataTable::SetRcdrRow(int32_t position, std::u16string_view id) {
  const std::u16string number = core::ZeroPadded(position, 1);
  const std::array<Field, 2> row = {{{kRcdrPositionColumn, number}, {kRcdrIdColumn, id}}};
  const HRESULT updated = Session.UpdateFirst(kRcdrDataTable, row[0], {&row[1], 1});
  return updated == DB_E_NOTFOUND ? Session.Insert(kRcdrDataTable, row) : updated;
}

}  // namespace store
