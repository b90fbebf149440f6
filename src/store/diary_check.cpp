// Somebody else's SQL would run with every look or write of ours, and need not end.
#include "store/diary_check.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "store/trouble.h"

namespace store {
namespace {

// Without the column that a file of an older format lacks.
constexpr std::u16string_view kReads[] = {
    u"select f_nchActId, f_dtLastUpdate, f_nchStaDateTime, f_nchEndDateTime, f_fltLatitude, "
    u"f_fltLongitude, f_nvcSubject, f_nvcPlace, f_nvcCategory1, f_nvcCategory2, f_nvcMemo from "
    u"t_UserData limit 0",
    u"select f_nvcItem, f_nvcValue from t_SysInfo limit 0",
    u"select f_nvcItem, f_i4Value from t_LongData limit 0",
    u"select f_nvcItem, f_nvcValue from t_TextData limit 0",
    u"select f_i4SNo, f_nchActId from t_RcdrData limit 0"};

bool HoldsOurTablesAlone(Engine& engine) {
  static constexpr std::u16string_view kColumns[] = {u"tables", u"others"};
  std::unique_ptr<RowSet> rows;
  std::array<std::optional<std::u16string>, 2> found;
  const HRESULT opened = engine.OpenRows(
      u"select sum(type='table' and rootpage>0 and name collate nocase in ('t_UserData',"
      u"'t_SysInfo','t_LongData','t_TextData','t_RcdrData')) as tables, "
      u"sum(type in ('view','trigger')) as others from sqlite_schema",
      rows);
  if (Failed(opened) || Failed(rows->Bind(kColumns)) || rows->Next(found) != S_OK) return false;
  if (found[1] && found[1] != u"0") NoteTrouble(Trouble::kForeignSql);
  return found[0] == u"5" && found[1] == u"0";
}

// A generated column's value is an expression of the file's, and can be of any size.
bool HasGeneratedColumns(Engine& engine) {
  static constexpr std::u16string_view kColumns[] = {u"name"};
  std::unique_ptr<RowSet> rows;
  std::array<std::optional<std::u16string>, 1> found;
  const HRESULT opened = engine.OpenRows(
      u"select c.name as name from sqlite_schema as t, pragma_table_xinfo(t.name) as c "
      u"where t.type='table' and c.hidden<>0",
      rows);
  if (Failed(opened) || Failed(rows->Bind(kColumns))) return true;
  return rows->Next(found) != DB_S_ENDOFROWSET;
}

}  // namespace

bool IsDiary(Engine& engine) {
  const auto reads = [&engine](std::u16string_view sql) {
    std::unique_ptr<RowSet> rows;
    return !Failed(engine.OpenRows(sql, rows));
  };
  return HoldsOurTablesAlone(engine) && !HasGeneratedColumns(engine) &&
         std::all_of(std::begin(kReads), std::end(kReads), reads);
}

}  // namespace store
