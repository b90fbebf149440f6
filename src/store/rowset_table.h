// A table object with one open row set. The row set is borrowed from GetRS until CloseRS, on every
// road out; nothing nests. Screens read all they need, close, and only then write.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/engine.h"
#include "store/hresult.h"

namespace store {

class CRowsetTable {
 public:
  explicit CRowsetTable(Engine& session) : Session(session) {}
  virtual ~CRowsetTable() = default;
  CRowsetTable(const CRowsetTable&) = delete;
  CRowsetTable& operator=(const CRowsetTable&) = delete;

  // Runs a select and opens its row set. `columns` name, without regard to case, what GetNextRS
  // hands out, in that order; a name that the select lacks: E_FAIL.
  HRESULT GetRS(std::u16string_view sql, std::span<const std::u16string_view> columns);
  // Rows that the open select finds; counted when it is asked for.
  int RowCount();
  // Back to the first row.
  HRESULT RestartRS();
  // The next row's texts, none for a NULL column. DB_S_ENDOFROWSET, and all of `row` none, when no
  // row is left. One row is delivered however many are asked for.
  HRESULT GetNextRS(std::span<std::optional<std::u16string>> row, int rowsAsked = 1);
  // Harmless on a closed table. Always 0.
  HRESULT CloseRS();

 protected:
  Engine& Session;  // not owned

 private:
  std::unique_ptr<RowSet> rowSet_;
};

}  // namespace store
