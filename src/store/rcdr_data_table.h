// t_RcdrData: the Action id at each position of the recorder's history.
#pragma once

#include <cstdint>
#include <string_view>

#include "store/rowset_table.h"

namespace store {

class CRcdrDataTable : public CRowsetTable {
 public:
  using CRowsetTable::CRowsetTable;

  // Updates the row of that position, or inserts it.
  HRESULT SetRcdrRow(int32_t position, std::u16string_view id);
};

}  // namespace store
