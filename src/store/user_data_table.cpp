// Every write stamps the row and checks its times first, so that no row of the file can hold an end
// before its start.
#include "store/user_data_table.h"

#include <array>
#include <chrono>
#include <utility>

#include "core/action_id.h"
#include "core/date_time.h"
#include "core/day.h"
#include "platform/host.h"
#include "store/schema.h"
#include "store/trouble.h"

namespace store {
namespace {

constexpr size_t kDateTimeLength = 19;
constexpr int kMaxIdDraws = 50;

void Stamp(Action& action) {
  action[kLastUpdate] = core::MomentOf(platform::host().Now());
}

using ActionFields = std::array<Field, kActionColumnCount>;

ActionFields FieldsOf(const Action& action) {
  ActionFields fields;
  for (size_t i = 0; i < fields.size(); ++i) fields[i] = {kActionColumns[i], action[i]};
  return fields;
}

Field IdField(std::u16string_view id) {
  return {kActionColumns[kActId], id};
}

// Counted as if the clock never changed, which is all that an id needs.
platform::LocalTime SecondBefore(const platform::LocalTime& moment) {
  namespace chrono = std::chrono;
  const auto day = chrono::year(moment.year) / moment.month / moment.day;
  const auto before = chrono::sys_days(day) + chrono::hours(moment.hour) +
                      chrono::minutes(moment.minute) + chrono::seconds(moment.second - 1);
  const auto midnight = chrono::floor<chrono::days>(before);
  const chrono::year_month_day date(midnight);
  const chrono::hh_mm_ss time(before - midnight);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

}  // namespace

HRESULT CUserDataTable::Select(std::u16string_view sql) {
  return GetRS(sql, kActionColumns);
}

HRESULT CUserDataTable::GetNextRS(Action& action) {
  return CRowsetTable::GetNextRS(action);
}

HRESULT CUserDataTable::ReadById(std::u16string_view id, Action& action) {
  // An Action that was read before keeps its memory.
  const HRESULT result = ReadById(id, kActionColumns, action);
  if (Failed(result)) action = {};
  return result;
}

HRESULT CUserDataTable::ReadById(std::u16string_view id,
                                 std::span<const std::u16string_view> columns, ColumnTexts row) {
  return Session.ReadFirst(kUserDataTable, IdField(id), columns, row);
}

HRESULT CUserDataTable::Insert(Action& action) {
  const bool idIsMade = !action[kActId];
  if (idIsMade) {
    const HRESULT made = MakeUniqueActId(action[kActId]);
    if (made == E_ABORT) NoteTrouble(Trouble::kUnknown);  // all of them are taken
    if (Failed(made)) {
      platform::ShowNotice(WithReason(u"ユニークキーの生成に失敗しました。", made),
                           u"アクションの作成失敗", platform::Icon::kStop);
      return E_ABORT;
    }
  } else if (core::CheckActId(*action[kActId]) != 0) {
    return E_INVALIDARG;
  }
  Stamp(action);
  HRESULT result = E_INVALIDARG;
  if (CheckActionTimes(action) == 0) {
    result = log_.Run(UndoLog::Write::kInsert, *action[kActId],
                      [&] { return Session.Insert(kUserDataTable, FieldsOf(action)); });
  }
  if (Failed(result) && idIsMade) action[kActId].reset();
  return result;
}

HRESULT CUserDataTable::Update(std::u16string_view id, Action& action) {
  if (core::CheckActId(id) != 0) return E_INVALIDARG;
  Stamp(action);
  if (CheckActionTimes(action) != 0) return E_INVALIDARG;
  const ActionFields fields = FieldsOf(action);
  return log_.Run(UndoLog::Write::kUpdate, id, [&] {
    return Session.UpdateFirst(kUserDataTable, IdField(id), std::span(fields).subspan(kLastUpdate));
  });
}

HRESULT CUserDataTable::Delete(std::u16string_view id) {
  if (core::CheckActId(id) != 0) return E_INVALIDARG;
  return log_.Run(UndoLog::Write::kDelete, id,
                  [&] { return Session.DeleteFirst(kUserDataTable, IdField(id)); });
}

// An id of 19 characters would be cut to one that nothing finds.
HRESULT CUserDataTable::TakeIfFree(std::u16string id, MadeId& made) {
  if (core::CheckActId(id) != 0) return E_ABORT;
  std::optional<std::u16string> found;
  const HRESULT result = ReadById(id, {&kActionColumns[kActId], 1}, {&found, 1});
  if (result != DB_E_NOTFOUND) return Failed(result) ? result : E_ABORT;
  made = std::move(id);
  return S_OK;
}

HRESULT CUserDataTable::MakeUniqueActId(MadeId& id) {
  HRESULT result = E_ABORT;
  for (int draw = 0; draw < kMaxIdDraws && result == E_ABORT; ++draw) {
    result = TakeIfFree(core::GenerateActId(), id);
  }
  return result;
}

HRESULT CUserDataTable::MakeUniqueActId(platform::LocalTime& moment, MadeId& id) {
  HRESULT result = E_ABORT;
  for (int draw = 0; draw < kMaxIdDraws && result == E_ABORT; ++draw) {
    result = TakeIfFree(core::GenerateActId(moment), id);
    if (result == E_ABORT) moment = SecondBefore(moment);
  }
  return result;
}

int CheckActionTimes(const Action& action) {
  if (!action[kStaDateTime]) return -107;
  if (!action[kEndDateTime]) return -108;
  if (action[kStaDateTime]->size() != kDateTimeLength) return -109;
  if (action[kEndDateTime]->size() != kDateTimeLength) return -110;
  const core::MomentText start = core::SplitMoment(*action[kStaDateTime]);
  const core::MomentText end = core::SplitMoment(*action[kEndDateTime]);
  int hour, minute, second;
  if (!core::ReadDay(start.date)) return -101;
  if (!core::ReadDay(end.date)) return -102;
  if (core::ParseEndTime(end.time) == -10) return -103;
  if (core::ParseTime(start.time, hour, minute, second) != 0) return -104;
  if (end.time == core::kEndOfDay && start.time != core::kStartOfDay) return -105;
  return core::CompareDateTime(end.date, end.time, start.date, start.time) < 0 ? -106 : 0;
}

std::u16string SqlQuote(std::u16string_view text) {
  std::u16string quoted;
  for (const char16_t c : text) quoted.append(c == u'\'' ? 2 : 1, c);
  return quoted;
}

std::u16string SelectByIdSql(std::u16string_view id) {
  return u"select * from t_UserData where f_nchActId = '" + SqlQuote(id) + u"'";
}

}  // namespace store
