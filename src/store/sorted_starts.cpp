// Reading all rows is most of what a tap on a large diary would wait for, and a tap changes two.
#include "store/sorted_starts.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <string_view>

#include "core/text.h"
#include "platform/utf.h"

namespace store {
namespace {

constexpr std::array<std::u16string_view, 3> kColumns = {u"f_nchActId", u"f_nchStaDateTime",
                                                         u"f_nchEndDateTime"};
constexpr size_t kDayLength = 10;
constexpr int kRowIdColumn = 3;  // of the select of all

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
    result = ReadKeptOrAll();
  } else {
    if (!changes.rows.empty()) mark_.reset();
    for (size_t i = 0; i < changes.rows.size() && result == 0; ++i) {
      result = ReadAgain(changes.rows[i]);
    }
  }
  isWhole_ = result == 0;
  return result;
}

int SortedStarts::Mend() {
  const ReadView view(engine_);
  int result = Refresh();
  if (IsDamaged()) {
    result = ReadAll();
    isWhole_ = result == 0;
  }
  return result;
}

bool SortedStarts::ReadAhead() {
  constexpr size_t kBlocks = 64;
  const bool isMore = kept_ && rows_.ReadAhead(kBlocks) == kBlocks && !IsDamaged();
  if (!isMore && !IsDamaged()) kept_.reset();
  return isMore;
}

void SortedStarts::Keep() {
  constexpr size_t kMany = 5'000;  // fewer are read within 5 ms
  if (rows_.rowIds.Count() < kMany) return;
  const auto settled = engine_.Settle([this] { return Mend() == 0; });
  if (settled) {
    mark_ = settled;
    isKept_ = false;
  }
  if (!isWhole_ || !mark_ || isKept_) return;
  while (ReadAhead()) {
  }
  if (!IsDamaged()) KeepIndex(engine_.Path(), *mark_, rows_);
}

int SortedStarts::ReadKeptOrAll() {
  constexpr uint64_t kSmallFile = 1 << 18;  // holds less than what is kept
  mark_ = engine_.Mark();
  const bool isLarge = mark_ && mark_->size >= kSmallFile;
  auto kept = isLarge ? OpenKeptIndex(engine_.Path(), *mark_) : std::nullopt;
  if (!kept) return ReadAll();
  rows_ = std::move(kept->rows);
  kept_ = std::move(kept->blocks);
  isKept_ = true;
  return 0;
}

// The rows come in the order of their insertion, which equal starts keep. A diary grows nearly in
// the order of time, so most of them only join the end: quicker than the engine, which would sort
// them all and put a large diary into temporary files to do it.
int SortedStarts::ReadAll() {
  rows_ = {};
  kept_.reset();
  isKept_ = false;
  std::unique_ptr<RowSet> rows;
  const int opened = OpenRows(
      engine_,
      u"select f_nchActId,f_nchStaDateTime,f_nchEndDateTime,rowid from t_UserData order by rowid",
      rows);
  if (opened != 0) return opened;
  Texts texts;
  HRESULT result;
  while ((result = rows->Next(texts)) == S_OK) {
    Insert(rows->Number(kRowIdColumn), {TextOr(texts[0]), TextOr(texts[1]), TextOr(texts[2])});
  }
  return result == DB_S_ENDOFROWSET ? 0 : -101;
}

// A row that was written without another start stays where it is.
int SortedStarts::ReadAgain(int64_t rowId) {
  Texts texts;
  bool isThere = false;
  const int read = ReadRow(rowId, texts, isThere);
  if (read != 0) return read;
  const Row row{TextOr(texts[0]), TextOr(texts[1]), TextOr(texts[2])};
  const size_t place = rows_.rowIds.Find(static_cast<uint64_t>(rowId));
  if (place < rows_.rowIds.Count()) {
    const bool stays =
        isThere && rows_.ids.Holds(place, row.id) && rows_.starts.Holds(place, row.start);
    if (stays && rows_.ends.Holds(place, row.end)) return 0;
    Remove(place);
  }
  if (isThere) Insert(rowId, row);
  return 0;
}

// Whether it's still there is told in `isThere`.
int SortedStarts::ReadRow(int64_t rowId, Texts& texts, bool& isThere) {
  const std::u16string sql =
      u"select f_nchActId,f_nchStaDateTime,f_nchEndDateTime from t_UserData where rowid = '" +
      platform::ToUtf16(std::to_string(rowId)) + u"'";
  std::unique_ptr<RowSet> rows;
  const int opened = OpenRows(engine_, sql, rows);
  if (opened != 0) return opened;
  const HRESULT result = rows->Next(texts);
  isThere = result == S_OK;
  return Failed(result) ? -101 : 0;
}

void SortedStarts::Insert(int64_t rowId, const Row& row) {
  const auto number = static_cast<uint64_t>(rowId);
  const size_t place = PlaceFor(rowId, row.start);
  rows_.ids.InsertAt(place, row.id);
  rows_.starts.InsertAt(place, row.start);
  rows_.ends.InsertAt(place, row.end);
  rows_.rowIds.InsertAt(place, number);
}

void SortedStarts::Remove(size_t place) {
  rows_.ids.RemoveAt(place);
  rows_.starts.RemoveAt(place);
  rows_.ends.RemoveAt(place);
  rows_.rowIds.RemoveAt(place);
}

size_t SortedStarts::PlaceFor(int64_t rowId, std::u16string_view start) const {
  const auto compare = [&](size_t other) {
    const int order = rows_.starts.Compare(start, other);
    return order != 0 ? order : rowId < static_cast<int64_t>(rows_.rowIds.At(other)) ? -1 : 1;
  };
  const size_t count = rows_.rowIds.Count();
  if (count == 0 || compare(count - 1) > 0) return count;
  return core::SortedSearch(count, core::SearchMode::kUpperBound, compare);
}

// A block in which nothing ends late enough isn't looked into, and that's nearly all of those
// before the day.
std::vector<size_t> SortedStarts::Touching(std::u16string_view from, std::u16string_view to) const {
  std::vector<size_t> places;
  const core::NumberList& ends = rows_.ends.Packed();
  std::u16string first(from);
  if (first.size() == kDayLength) first += u" 00:00:00";
  const uint64_t earliest = core::PackText(first);
  const size_t end =
      core::SortedSearch(rows_.starts.Count(), core::SearchMode::kLowerBound,
                         [&](size_t position) { return rows_.starts.Compare(to, position); });
  for (size_t block = 0; block < ends.Blocks() && ends.Begin(block) < end; ++block) {
    if (ends.Greatest(block) < earliest) continue;
    const std::span<const uint64_t> all = ends.Block(block);
    const size_t count = std::min(all.size(), end - ends.Begin(block));
    for (size_t i = 0; i < count; ++i) {
      if (all[i] >= earliest) places.push_back(ends.Begin(block) + i);
    }
  }
  return places;
}

}  // namespace store
