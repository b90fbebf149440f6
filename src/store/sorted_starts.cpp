// Reading all rows is most of what a tap on a large diary would wait for, and a tap changes two.
#include "store/sorted_starts.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>

#include "core/text.h"
#include "platform/utf.h"

namespace store {
namespace {

constexpr size_t kIdLength = 18;
constexpr size_t kStartLength = 19;
constexpr std::array<std::u16string_view, 2> kColumns = {u"f_nchActId", u"f_nchStaDateTime"};

std::u16string_view TextOr(const std::optional<std::u16string>& text) {
  return text ? std::u16string_view(*text) : std::u16string_view();
}

// 0, or -3 with no row set.
int OpenRows(Engine& engine, std::u16string_view sql, std::unique_ptr<RowSet>& rows) {
  HRESULT result = engine.OpenRows(sql, rows);
  if (!Failed(result)) result = rows->Bind(kColumns);
  return Failed(result) ? -3 : 0;
}

}  // namespace

SortedStarts::SortedStarts(Engine& engine) : engine_(engine) {
  engine_.WatchRows("t_UserData");
}

int SortedStarts::Refresh() {
  const ReadView view(engine_);
  const RowChanges changes = engine_.TakeRowChanges();
  int result = 0;
  if (changes.all || !isWhole_) {
    result = ReadAll();
  } else {
    for (size_t i = 0; i < changes.rows.size() && result == 0; ++i) {
      result = ReadAgain(changes.rows[i]);
    }
  }
  isWhole_ = result == 0;
  return result;
}

int SortedStarts::ReadAll() {
  ids_.Clear();
  starts_.Clear();
  rowIds_.clear();
  std::unique_ptr<RowSet> rows;
  const int opened = OpenRows(
      engine_, u"select f_nchActId,f_nchStaDateTime,rowid from t_UserData order by rowid", rows);
  if (opened != 0) return opened;
  std::array<std::optional<std::u16string>, 2> texts;
  HRESULT result;
  while ((result = rows->Next(texts)) == S_OK) {
    ids_.Append(TextOr(texts[0]));
    starts_.Append(TextOr(texts[1]));
    rowIds_.push_back(rows->Number(2));
  }
  SortAll();
  return result == DB_S_ENDOFROWSET ? 0 : -101;
}

// The rows come in the order of their insertion, which equal starts keep. A diary grows nearly in
// the order of time, so only the rows that come late are sorted: quicker than the engine, which
// would sort them all and put a large diary into temporary files to do it.
void SortedStarts::SortAll() {
  std::vector<size_t> inTime, late;
  for (size_t row = 0; row < starts_.Count(); ++row) {
    const bool isLate = !inTime.empty() && starts_.At(row) < starts_.At(inTime.back());
    (isLate ? late : inTime).push_back(row);
  }
  if (late.empty()) return;
  const auto earlier = [this](size_t a, size_t b) {
    const int order = starts_.At(a).compare(starts_.At(b));
    return order != 0 ? order < 0 : a < b;
  };
  std::sort(late.begin(), late.end(), earlier);
  std::vector<size_t> all(starts_.Count());
  std::merge(inTime.begin(), inTime.end(), late.begin(), late.end(), all.begin(), earlier);
  core::TextList ids, starts;
  std::vector<int64_t> rowIds;
  ids.Reserve(all.size(), all.size() * kIdLength);
  starts.Reserve(all.size(), all.size() * kStartLength);
  rowIds.reserve(all.size());
  for (const size_t row : all) {
    ids.Append(ids_.At(row));
    starts.Append(starts_.At(row));
    rowIds.push_back(rowIds_[row]);
  }
  ids_ = std::move(ids);
  starts_ = std::move(starts);
  rowIds_ = std::move(rowIds);
}

// A row that was written without another start stays where it is.
int SortedStarts::ReadAgain(int64_t rowId) {
  std::optional<Row> row;
  const int read = ReadRow(rowId, row);
  if (read != 0) return read;
  const auto known = std::find(rowIds_.begin(), rowIds_.end(), rowId);
  if (known != rowIds_.end()) {
    const auto place = static_cast<size_t>(known - rowIds_.begin());
    if (row && ids_.At(place) == row->id && starts_.At(place) == row->start) return 0;
    ids_.RemoveAt(place);
    starts_.RemoveAt(place);
    rowIds_.erase(known);
  }
  if (row) Insert(rowId, *row);
  return 0;
}

// Leaves `row` none if it has been deleted.
int SortedStarts::ReadRow(int64_t rowId, std::optional<Row>& row) {
  const std::u16string sql = u"select f_nchActId,f_nchStaDateTime from t_UserData where rowid = '" +
                             platform::ToUtf16(std::to_string(rowId)) + u"'";
  std::unique_ptr<RowSet> rows;
  const int opened = OpenRows(engine_, sql, rows);
  if (opened != 0) return opened;
  std::array<std::optional<std::u16string>, 2> texts;
  const HRESULT result = rows->Next(texts);
  if (result == S_OK) row = Row{std::u16string(TextOr(texts[0])), std::u16string(TextOr(texts[1]))};
  return Failed(result) ? -101 : 0;
}

void SortedStarts::Insert(int64_t rowId, const Row& row) {
  const size_t place =
      core::SortedSearch(rowIds_.size(), core::SearchMode::kUpperBound, [&](size_t other) {
        const int order = row.start.compare(starts_.At(other));
        return order != 0 ? order : rowId < rowIds_[other] ? -1 : 1;
      });
  ids_.InsertAt(place, row.id);
  starts_.InsertAt(place, row.start);
  rowIds_.insert(rowIds_.begin() + static_cast<ptrdiff_t>(place), rowId);
}

}  // namespace store
