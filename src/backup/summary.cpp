#include "backup/summary.h"

#include <array>
#include <memory>

#include "core/text.h"
#include "store/diary_check.h"
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
  if (!store::IsDiary(engine)) return {};
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
