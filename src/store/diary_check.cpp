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
constexpr std::u16string_view kReadActions =
    u"select f_nchActId, f_dtLastUpdate, f_nchStaDateTime, f_nchEndDateTime, f_fltLatitude, "
    u"f_fltLongitude, f_nvcSubject, f_nvcPlace, f_nvcCategory1, f_nvcCategory2, f_nvcMemo from "
    u"t_UserData limit 0";
constexpr std::u16string_view kReads[] = {kReadActions,
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

// Nothing of ours has anything in inner brackets but a column's length. A check, a computed column
// or an index of an expression would run with our reads and writes.
bool HoldsNoExpression(std::u16string_view sql) {
  constexpr size_t kLongest = 2000;
  if (sql.size() > kLongest) return false;
  size_t bracket = sql.find(u'(');
  while (bracket != sql.npos && (bracket = sql.find(u'(', bracket + 1)) != sql.npos) {
    const size_t end = sql.find_first_not_of(u"0123456789", bracket + 1);
    if (end == sql.npos || sql[end] != u')') return false;
  }
  return true;
}

bool HoldsNoExpressions(Engine& engine) {
  static constexpr std::u16string_view kColumns[] = {u"sql"};
  std::unique_ptr<RowSet> rows;
  std::array<std::optional<std::u16string>, 1> sql;
  HRESULT result = engine.OpenRows(
      u"select sql from sqlite_schema where tbl_name collate nocase in ('t_UserData','t_SysInfo',"
      u"'t_LongData','t_TextData','t_RcdrData','t_UndoData')",
      rows);
  if (Failed(result) || Failed(rows->Bind(kColumns))) return false;
  while ((result = rows->Next(sql)) == S_OK) {
    if (!sql[0] || HoldsNoExpression(*sql[0])) continue;
    NoteTrouble(Trouble::kForeignSql);
    return false;
  }
  return !Failed(result);
}

}  // namespace

bool IsDiary(Engine& engine) {
  const auto reads = [&engine](std::u16string_view sql) {
    std::unique_ptr<RowSet> rows;
    return !Failed(engine.OpenRows(sql, rows));
  };
  return HoldsOurTablesAlone(engine) && HoldsNoExpressions(engine) &&
         std::all_of(std::begin(kReads), std::end(kReads), reads);
}

}  // namespace store
