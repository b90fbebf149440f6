// The index is rebuilt after every change, but only what has changed is read from the file.
#include "store/action_index.h"

#include <algorithm>
#include <optional>
#include <string>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "core/text.h"
#include "platform/utf.h"
#include "store/session.h"

namespace store {
namespace {

// How a moment stands to the start at `position`: 1 later, 0 equal, -1 earlier.
int CompareWithStart(const core::CAppState& app, std::u16string_view date, std::u16string_view time,
                     size_t position) {
  constexpr size_t kLength = std::u16string_view(u"yyyy/mm/dd hh:mm:ss").size();
  const std::u16string text = app.ActStarts.At(position, kLength);
  const core::MomentText start = core::SplitMoment(text);
  return core::CompareDateTime(date, time, start.date, start.time);
}

// 0, -103, -104 or -105 as FindActionPosition answers them.
int ReadStart(std::u16string_view actId, std::optional<std::u16string>& start) {
  if (!dbSession().UserTable) return -103;
  CUserDataTable& table = *dbSession().UserTable;
  const std::u16string sql =
      u"select f_nchStaDateTime from t_UserData where f_nchActId = '" + SqlQuote(actId) + u"'";
  const HRESULT opened = table.GetRS(sql, {&kActionColumns[kStaDateTime], 1});
  const HRESULT result = Failed(opened) ? opened : table.CRowsetTable::GetNextRS({&start, 1});
  table.CloseRS();
  if (Failed(opened)) return -103;
  if (result == DB_S_ENDOFROWSET) return -104;
  return Failed(result) ? -105 : 0;
}

}  // namespace

int LoadActionIndex(core::CAppState& app) {
  app.ActIds.Clear();
  app.ActStarts.Clear();
  app.IndexCount = app.TotalCount = 0;
  const CDbSession& session = dbSession();
  if (!session.Session) return -3;
  session.UserTable->CloseRS();  // its view of the data would be the reading's
  const int result = session.Starts->Mend();
  app.ActIds = session.Starts->Ids();
  app.ActStarts = session.Starts->Starts();
  app.IndexCount = app.TotalCount = static_cast<int>(app.ActIds.Count());
  return result;
}

int ReloadActionIndex(core::CAppState& app) {
  app.FindWhere.reset();
  const int loaded = LoadActionIndex(app);
  if (loaded != 0) return loaded;
  const int page = FindActionIndexByPosition(app, core::CurDate(), core::kEndOfDay, app.SeqViewRng);
  app.ListPage = std::max(0, page);
  return page < 0 ? -2 : 0;
}

Ahead ReadAhead() {
  const CDbSession& session = dbSession();
  if (!session.Session) return Ahead::kWhole;
  if (session.Starts->ReadAhead()) return Ahead::kMore;
  return session.Starts->IsDamaged() ? Ahead::kDamaged : Ahead::kWhole;
}

void MendActionIndex(core::CAppState& app) {
  const CDbSession& session = dbSession();
  if (!session.Session) return;
  if (app.FindWhere) {
    session.Starts->Mend();  // what was found has lists of its own
  } else {
    ReloadActionIndex(app);
  }
}

void ReadWholeActionIndex(core::CAppState& app) {
  Ahead ahead;
  while ((ahead = ReadAhead()) == Ahead::kMore) {
  }
  if (ahead == Ahead::kDamaged) MendActionIndex(app);
}

int FindActionIndexLower(const core::CAppState& app, std::u16string_view date,
                         std::u16string_view time, LowerMode mode) {
  if (app.IndexCount <= 0) return -101;
  const auto searchMode =
      mode == LowerMode::kAtOrAfter ? core::SearchMode::kLowerBound : core::SearchMode::kUpperBound;
  return static_cast<int>(core::SortedSearch(
      static_cast<size_t>(app.IndexCount), searchMode,
      [&](size_t position) { return CompareWithStart(app, date, time, position); }));
}

int FindActionIndexByPosition(const core::CAppState& app, std::u16string_view date,
                              std::u16string_view time, int pageSize) {
  if (app.IndexCount <= 0 || date.empty()) return 0;
  if (time.empty()) time = core::kEndOfDay;
  const auto rows = static_cast<size_t>(
      std::clamp(pageSize > 0 ? pageSize : app.ListRowsPerScreen, 1, int{core::kMostRowsPerPage}));
  const size_t last = static_cast<size_t>(app.IndexCount) - 1;
  const size_t oldestPage = last / rows;
  const size_t firstBoundary = last - oldestPage * rows;
  // Kept on purpose: with one page alone, a moment equal to the last start answers -1.
  if (oldestPage == 0) return CompareWithStart(app, date, time, last) == 0 ? -1 : 0;
  const size_t later =
      core::SortedSearch(oldestPage, core::SearchMode::kUpperBound, [&](size_t boundary) {
        return CompareWithStart(app, date, time, firstBoundary + boundary * rows);
      });
  return static_cast<int>(oldestPage - later);
}

int FindActionPosition(const core::CAppState& app, std::u16string_view actId) {
  if (app.IndexCount <= 0) return -101;
  std::optional<std::u16string> start;
  const int read = ReadStart(actId, start);
  if (read != 0) return read;
  const std::u16string_view wanted = start ? std::u16string_view(*start) : std::u16string_view();
  const core::MomentText moment = core::SplitMoment(wanted);
  const int first = FindActionIndexLower(app, moment.date, moment.time, LowerMode::kAtOrAfter);
  for (int i = first; i < app.IndexCount; ++i) {
    const auto position = static_cast<size_t>(i);
    if (!app.ActStarts.Holds(position, wanted)) break;
    if (app.ActIds.Holds(position, actId)) return i;
  }
  return -1;
}

std::u16string PlacesCondition(std::span<const size_t> places) {
  const core::NumberList& rowIds = dbSession().Starts->RowIds();
  std::string rows;
  for (const size_t place : places) {
    if (!rows.empty()) rows += ',';
    rows += std::to_string(static_cast<int64_t>(rowIds.At(place)));
  }
  return u"rowid in (select value from json_each('[" + platform::ToUtf16(rows) + u"]'))";
}

// The rows are named as well as described: what is kept of them may be less than what they hold.
// Where they are many, the engine is as quick at looking for them itself.
std::optional<std::u16string> TouchingCondition(std::u16string_view from, std::u16string_view to) {
  const CDbSession& session = dbSession();
  if (!session.Session || session.Starts->Refresh() != 0) return std::nullopt;
  const std::u16string described = u"f_nchStaDateTime < '" + std::u16string(to) +
                                   u"' and f_nchEndDateTime >= '" + std::u16string(from) + u"'";
  const std::vector<size_t> touching = session.Starts->Touching(from, to);
  if (touching.size() > session.Starts->Ids().Count() / 4) return described;
  const std::u16string named = PlacesCondition(touching) + u" and " + described;
  return session.Starts->IsDamaged() ? described : named;
}

}  // namespace store
