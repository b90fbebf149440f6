// The condition is SQL text because the views append it to queries of their own.
#include "exchange/find.h"

#include <array>
#include <optional>
#include <utility>

#include "core/date_time.h"
#include "store/session.h"

namespace exchange {
namespace {

constexpr int kFailed = -101;

struct Target {
  FindTarget bit;
  std::u16string_view column;
};
constexpr std::array<Target, 4> kTargets = {{{kFindInPlace, u"f_nvcPlace"},
                                             {kFindInCategory1, u"f_nvcCategory1"},
                                             {kFindInCategory2, u"f_nvcCategory2"},
                                             {kFindInMemo, u"f_nvcMemo"}}};

std::u16string Compared(std::u16string_view comparison, const std::u16string& date,
                        std::u16string_view time) {
  return u"(" + std::u16string(comparison) + u" '" + date + u' ' + std::u16string(time) + u"')";
}

// The parts that are joined by "and", each after the blanks that it has always had.
void AppendPart(std::u16string& condition, const std::u16string& part) {
  condition += condition.empty() ? u" " : u" and ";
  condition += part;
}

std::u16string_view OrElse(const std::u16string& time, std::u16string_view otherwise) {
  return time.empty() ? otherwise : std::u16string_view(time);
}

// Kept on purpose: all day finds only what ends at the end of a day, and typed times from 00:00 to
// 24:00 mean all day, too.
void AppendSpan(std::u16string& condition, const FindSpan& span) {
  const bool allDay = span.staTime == core::kStartOfDay && span.endTime == core::kEndOfDay;
  if (!span.staDate.empty()) {
    AppendPart(condition, Compared(u"f_nchStaDateTime >=", span.staDate,
                                   OrElse(span.staTime, core::kStartOfDay)));
  }
  if (!span.endDate.empty()) {
    AppendPart(condition, Compared(u"f_nchEndDateTime <", span.endDate,
                                   OrElse(span.endTime, core::kEndOfDay)));
  }
  if (allDay) AppendPart(condition, u"(f_nchEndDateTime like '%24:00:00')");
}

// Kept on purpose: "%" and "_" stay wildcards, and an empty text finds what has any value in one of
// the columns, be it empty, but not what has none.
void AppendTargets(std::u16string& condition, std::u16string_view text, int mask) {
  const std::u16string pattern = u" like '%" + store::SqlQuote(text) + u"%')";
  bool open = false;
  for (const Target& target : kTargets) {
    if ((mask & target.bit) == 0) continue;
    if (std::exchange(open, true)) {
      condition += u" or ";
    } else {
      condition += condition.empty() ? u" ( " : u" and ( ";
    }
    condition += u'(';
    condition += target.column;
    condition += pattern;
  }
  if (open) condition += u" ) ";
}

// The open select's rows into the lists. False if one of them could not be read.
bool ReadFound(store::CUserDataTable& table, core::CAppState& app) {
  app.ActIds.Clear();
  app.ActStarts.Clear();
  std::array<std::optional<std::u16string>, 2> row;
  store::HRESULT result;
  while ((result = table.CRowsetTable::GetNextRS(row)) == store::S_OK) {
    app.ActIds.Append(row[0] ? *row[0] : std::u16string_view());
    app.ActStarts.Append(row[1] ? *row[1] : std::u16string_view());
  }
  app.IndexCount = static_cast<int>(app.ActIds.Count());
  return result == store::DB_S_ENDOFROWSET;
}

}  // namespace

std::u16string FindCondition(const FindSpan& span, std::u16string_view text, int mask) {
  std::u16string condition;
  AppendSpan(condition, span);
  AppendTargets(condition, text, mask);
  return condition;
}

int FindActions(core::CAppState& app, const FindSpan& span, std::u16string_view text, int mask) {
  static constexpr std::array<std::u16string_view, 2> kColumns = {u"f_nchActId",
                                                                  u"f_nchStaDateTime"};
  const std::u16string condition = FindCondition(span, text, mask);
  std::u16string sql = u"select f_nchActId,f_nchStaDateTime from t_UserData";
  if (condition.empty()) {
    app.FindWhere.reset();
  } else {
    app.FindWhere = condition;  // kept on purpose: also when the select fails
    sql += u" where " + condition;
  }
  sql += u" order by f_nchStaDateTime asc";
  store::CUserDataTable* table = store::dbSession().UserTable.get();
  if (table == nullptr) return kFailed;
  const bool opened = !store::Failed(table->GetRS(sql, kColumns));
  const bool read = opened && ReadFound(*table, app);
  table->CloseRS();
  return read ? app.IndexCount : kFailed;
}

}  // namespace exchange
