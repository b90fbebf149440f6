// The index is read anew after every change, so its reading is the price of every tap that writes.
#include "store/action_index.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/date_time.h"
#include "core/text.h"
#include "store/session.h"

namespace store {
namespace {

constexpr size_t kIdLength = 18;
constexpr size_t kStartLength = 19;

// How a moment stands to the start at `position`: 1 later, 0 equal, -1 earlier.
int CompareWithStart(const core::CAppState& app, std::u16string_view date, std::u16string_view time,
                     size_t position) {
  const core::MomentText start = core::SplitMoment(app.ActStarts.At(position));
  return core::CompareDateTime(date, time, start.date, start.time);
}

// 0, -103, -104 or -105 as FindActionPosition answers them.
int ReadStart(std::u16string_view actId, std::optional<std::u16string>& start) {
  if (!dbSession().UserTable) return -103;
  CUserDataTable& table = *dbSession().UserTable;
  const std::u16string sql = u"select f_nchStaDateTime from t_UserData where f_nchActId = '" +
                             std::u16string(actId) + u"'";
  const HRESULT opened = table.GetRS(sql, {&kActionColumns[kStaDateTime], 1});
  const HRESULT result = Failed(opened) ? opened : table.CRowsetTable::GetNextRS({&start, 1});
  table.CloseRS();
  if (Failed(opened)) return -103;
  if (result == DB_S_ENDOFROWSET) return -104;
  return Failed(result) ? -105 : 0;
}

// The rows come in the order of their insertion, which equal starts keep. A diary grows nearly in
// the order of time, so only the rows that come late are sorted: quicker than the engine, which
// would sort them all and put a large diary into temporary files to do it.
void SortByStart(core::TextList& ids, core::TextList& starts) {
  std::vector<size_t> inTime, late;
  for (size_t row = 0; row < starts.Count(); ++row) {
    const bool isLate = !inTime.empty() && starts.At(row) < starts.At(inTime.back());
    (isLate ? late : inTime).push_back(row);
  }
  if (late.empty()) return;
  const auto earlier = [&starts](size_t a, size_t b) {
    const int order = starts.At(a).compare(starts.At(b));
    return order != 0 ? order < 0 : a < b;
  };
  std::sort(late.begin(), late.end(), earlier);
  std::vector<size_t> all(starts.Count());
  std::merge(inTime.begin(), inTime.end(), late.begin(), late.end(), all.begin(), earlier);
  core::TextList sortedIds, sortedStarts;
  sortedIds.Reserve(all.size(), all.size() * kIdLength);
  sortedStarts.Reserve(all.size(), all.size() * kStartLength);
  for (const size_t row : all) {
    sortedIds.Append(ids.At(row));
    sortedStarts.Append(starts.At(row));
  }
  ids = std::move(sortedIds);
  starts = std::move(sortedStarts);
}

}  // namespace

int LoadActionIndex(core::CAppState& app) {
  static constexpr std::array<std::u16string_view, 2> kColumns = {u"f_nchActId",
                                                                  u"f_nchStaDateTime"};
  app.ActIds.Clear();
  app.ActStarts.Clear();
  app.IndexCount = app.TotalCount = 0;
  if (!dbSession().UserTable) return -3;
  CUserDataTable& table = *dbSession().UserTable;
  HRESULT result =
      table.GetRS(u"select f_nchActId,f_nchStaDateTime from t_UserData order by rowid", kColumns);
  if (Failed(result)) {
    table.CloseRS();
    return -3;
  }
  std::array<std::optional<std::u16string>, 2> row;
  while ((result = table.CRowsetTable::GetNextRS(row, 2)) == S_OK) {
    app.ActIds.Append(row[0] ? *row[0] : std::u16string_view());
    app.ActStarts.Append(row[1] ? *row[1] : std::u16string_view());
  }
  table.CloseRS();
  SortByStart(app.ActIds, app.ActStarts);
  app.IndexCount = app.TotalCount = static_cast<int>(app.ActIds.Count());
  return result == DB_S_ENDOFROWSET ? 0 : -101;
}

int ReloadActionIndex(core::CAppState& app) {
  app.FindWhere.reset();
  const int loaded = LoadActionIndex(app);
  if (loaded != 0) return loaded;
  const int page = FindActionIndexByPosition(app, core::CurDate(), core::kEndOfDay, app.SeqViewRng);
  app.ListPage = page;
  return page < 0 ? -2 : 0;
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
  const auto rows = static_cast<size_t>(pageSize > 0 ? pageSize : app.ListRowsPerScreen);
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
    if (app.ActStarts.At(position) != wanted) break;
    if (app.ActIds.At(position) == actId) return i;
  }
  return -1;
}

}  // namespace store
