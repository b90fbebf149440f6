// The mechanics of one open row set; what a select means is the caller's.
#include "store/rowset_table.h"

#include <algorithm>

namespace store {

HRESULT CRowsetTable::GetRS(std::u16string_view sql, std::span<const std::u16string_view> columns) {
  const HRESULT opened = Session.OpenRows(sql, rowSet_);
  return Failed(opened) ? opened : rowSet_->Bind(columns);
}

int CRowsetTable::RowCount() {
  return rowSet_ ? rowSet_->Count().value_or(0) : 0;
}

HRESULT CRowsetTable::RestartRS() {
  return rowSet_ ? rowSet_->Restart() : E_FAIL;
}

HRESULT CRowsetTable::GetNextRS(ColumnTexts row, int /*rowsAsked*/) {
  const HRESULT result = rowSet_ ? rowSet_->Next(row) : E_FAIL;
  if (result != S_OK) std::fill(row.begin(), row.end(), std::nullopt);
  return result;
}

HRESULT CRowsetTable::CloseRS() {
  rowSet_.reset();
  return S_OK;
}

}  // namespace store
