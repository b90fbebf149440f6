#include "backup/summary.h"

#include <array>
#include <memory>

#include "core/text.h"
#include "store/trouble.h"

namespace backup {
namespace {

using Text = std::u16string;

// The first row of a select; none if it can't run or finds nothing.
template <size_t N>
std::optional<std::array<std::optional<Text>, N>> ReadRow(
    store::Engine& engine, std::u16string_view sql,
    const std::array<std::u16string_view, N>& columns) {
  std::unique_ptr<store::RowSet> rows;
  std::array<std::optional<Text>, N> row;
  if (store::Failed(engine.OpenRows(sql, rows)) || store::Failed(rows->Bind(columns)) ||
      rows->Next(row) != store::S_OK) {
    return {};
  }
  return row;
}

bool HoldsOurTables(store::Engine& engine) {
  const auto found = ReadRow<2>(
      engine,
      u"select sum(type='table' and name collate nocase in ('t_UserData','t_SysInfo','t_LongData',"
      u"'t_TextData','t_RcdrData')) as tables, sum(type in ('view','trigger')) as others from "
      u"sqlite_schema",
      {u"tables", u"others"});
  return found && (*found)[0] == u"5" && (*found)[1] == u"0";
}

// Those of the Actions show in what the index reads; the others are asked for by name.
bool HaveOurColumns(store::Engine& engine) {
  return ReadRow<1>(engine,
                    u"select count(*) as entries from (select f_nvcItem, f_nvcValue from t_SysInfo "
                    u"union all select f_nvcItem, f_nvcValue from t_TextData "
                    u"union all select f_nvcItem, f_i4Value from t_LongData "
                    u"union all select f_i4SNo, f_nchActId from t_RcdrData)",
                    {u"entries"})
      .has_value();
}

}  // namespace

std::optional<Summary> ReadSummary(store::Engine& engine) {
  const auto version = ReadRow<1>(
      engine, u"select f_nvcValue from t_SysInfo where f_nvcItem='DBFmtVer'", {u"f_nvcValue"});
  const auto actions =
      ReadRow<3>(engine,
                 u"select count(*) as actions, substr(min(f_nchStaDateTime),1,10) as firstDay, "
                 u"substr(max(f_nchStaDateTime),1,10) as lastDay from t_UserData",
                 {u"actions", u"firstDay", u"lastDay"});
  if (!version || !actions) return {};
  const auto& [count, first, last] = *actions;
  return Summary{core::ToInt32(count.value_or(u"")), first.value_or(u""), last.value_or(u""),
                 (*version)[0].value_or(u"")};
}

std::optional<Summary> CheckWhole(store::Engine& engine) {
  store::NoteTrouble(store::Trouble::kUnknown);
  if (!HoldsOurTables(engine) || !HaveOurColumns(engine)) return {};
  const auto check = ReadRow<1>(engine, u"PRAGMA integrity_check(1)", {u"integrity_check"});
  if (!check) return {};
  if ((*check)[0] == u"ok") return ReadSummary(engine);
  store::NoteTrouble(store::Trouble::kDamaged);
  return {};
}

Text SummaryText(const Summary& summary) {
  Text text = core::ZeroPadded(summary.actions, 1) + u"個のアクション";
  if (summary.actions > 0) text += u'\n' + summary.firstDay + u'～' + summary.lastDay;
  return text;
}

}  // namespace backup
