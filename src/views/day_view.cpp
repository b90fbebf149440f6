// The two fills of the day view.
#include "views/day_view.h"

#include "core/date_time.h"
#include "platform/late_wait.h"
#include "store/action_index.h"
#include "store/session.h"

namespace views {
namespace {

// The positions of the Actions that start on the current date. A day that its month lacks has no
// day before it, and no Actions.
void SpanTheDay(const core::CAppState& app, ViewRows& rows) {
  const std::optional<core::Day> before = core::DaysLater(core::CurrentDay(), -1);
  if (app.IndexCount < 1 || !before) return;
  rows.FirstRowIndex = FirstPositionAfter(app, before);
  rows.LastRowIndex = FirstPositionAfter(app, core::CurrentDay()) - 1;
}

// Either part is a clock time on `day` and a date elsewhere; an Action to the end of a day shows
// its dates.
std::u16string SpanningTimeText(const store::Action& action, std::u16string_view day) {
  const core::MomentText start = StartOf(action);
  const core::MomentText end = EndOf(action);
  const bool dates = end.IsEndOfDay();
  return TimeSpanText(start, dates || start.date != day, end, dates || end.date != day);
}

std::u16string SingleTimeText(const store::Action& action) {
  const core::MomentText end = EndOf(action);
  return TimeSpanText(StartOf(action), end.IsEndOfDay(), end, end.IsEndOfDay());
}

void AddRow(const core::CAppState& app, const store::Action& action, std::u16string timeText,
            ViewRows& rows) {
  const std::u16string_view id = TextOf(action, store::kActId);
  if (app.SelActId == id) rows.selectedRow = static_cast<int>(rows.RowActIds.size());
  rows.RowActIds.emplace_back(id);
  rows.cells.push_back({std::move(timeText), std::u16string(TextOf(action, store::kPlace)),
                        std::u16string(TextOf(action, store::kCategory1)),
                        core::RemoveLineBreaks(TextOf(action, store::kMemo))});
}

// Opens the rows of the Actions that touch the day and pass the find.
store::HRESULT SelectSpanning(const core::CAppState& app, store::CUserDataTable& table,
                              const std::u16string& day) {
  const auto touching = store::TouchingCondition(day + u" 00:00:00", day + u" 24:00:00");
  if (!touching) return store::E_FAIL;
  std::u16string sql = u"select * from t_UserData where " + *touching;
  if (app.FindWhere) sql += u" and " + *app.FindWhere;
  return table.Select(sql + u" order by f_nchStaDateTime asc");
}

// Takes the rows of the open select, up to the first that cannot be read.
void ReadSpanningRows(const core::CAppState& app, store::CUserDataTable& table,
                      const std::u16string& day, std::u16string_view caller,
                      const AddRowCells& addRow, ViewRows& rows) {
  platform::LateWait wait;
  store::Action action;
  store::HRESULT result;
  while ((result = table.GetNextRS(action)) != store::DB_S_ENDOFROWSET) {
    if (store::Failed(result)) {
      rows.abandoned = true;
      ShowReadError(caller, u"GetNextRS", 2, result);
      return;
    }
    AddRow(app, action, SpanningTimeText(action, day), rows);
    addRow(action, rows.cells.back());
    wait.Look();
  }
}

}  // namespace

ViewRows SetDataDayView(const core::CAppState& app) {
  return SpansDays(app) ? SetDataDayViewForMulti(app) : SetDataDayViewForSingle(app);
}

ViewRows SetDataDayViewForSingle(const core::CAppState& app) {
  ViewRows rows;
  platform::LateWait wait;
  SpanTheDay(app, rows);
  for (int position = rows.FirstRowIndex; position <= rows.LastRowIndex; ++position) {
    store::Action action;
    const RowRead read = ReadAction(app.ActIds.At(static_cast<size_t>(position)),
                                    u"CMainWnd:SetDataDayViewForSingle", action);
    rows.abandoned = read == RowRead::kFailed;
    if (read != RowRead::kRead) break;
    AddRow(app, action, SingleTimeText(action), rows);
    wait.Look();
  }
  return rows;
}

ViewRows SetDataDayViewForMulti(const core::CAppState& app) {
  return ReadSpanningDay(app, u"CMainWnd:SetDataDayViewForMulti",
                         [](const store::Action&, std::vector<std::u16string>&) {});
}

ViewRows ReadSpanningDay(const core::CAppState& app, std::u16string_view caller,
                         const AddRowCells& addRow) {
  ViewRows rows;
  rows.order = RowOrder::kSpanning;
  const std::u16string day = core::CurDate();
  store::CUserDataTable* table = store::dbSession().UserTable.get();
  const store::HRESULT result =
      table == nullptr ? store::E_POINTER : SelectSpanning(app, *table, day);
  if (store::Failed(result)) {
    rows.abandoned = true;
    if (table != nullptr) table->CloseRS();
    ShowReadError(caller, u"Select", 1, result);
    return rows;
  }
  ReadSpanningRows(app, *table, day, caller, addRow, rows);
  table->CloseRS();
  if (rows.RowActIds.empty()) {
    SpanTheDay(app, rows);
  } else if (!rows.abandoned) {
    rows.FirstRowIndex = store::FindActionPosition(app, rows.RowActIds.front());
    rows.LastRowIndex = store::FindActionPosition(app, rows.RowActIds.back());
  }
  return rows;
}

}  // namespace views
