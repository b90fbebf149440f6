#include "totals/read_period.h"

#include <algorithm>
#include <array>
#include <memory>
#include <numeric>
#include <vector>

#include "core/date_time.h"
#include "platform/utf.h"
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/read_action.h"
#include "store/session.h"

namespace totals {
namespace {

using store::HRESULT;

constexpr int64_t kNoRow = -1;

std::u16string_view TextOr(const std::optional<std::u16string>& text) {
  return text ? std::u16string_view(*text) : std::u16string_view();
}

// The text columns of a select, before the row's number, and where each belongs.
struct Selected {
  std::vector<std::u16string_view> names;
  std::vector<std::u16string_view RowTexts::*> texts;
};

// What takes no part in the sums isn't read: texts are most of what a row costs.
Selected SelectedFor(const Choices& choices) {
  struct Text {
    By by;
    std::u16string_view name;
    std::u16string_view RowTexts::*text;
  };
  constexpr Text kTexts[] = {{By::kPlace, u"f_nvcPlace", &RowTexts::place},
                             {By::kCategory1, u"f_nvcCategory1", &RowTexts::category1},
                             {By::kCategory2, u"f_nvcCategory2", &RowTexts::category2}};
  Selected columns;
  for (const auto& [by, name, text] : kTexts) {
    if (choices.by != by && choices.within != by) continue;
    columns.names.push_back(name);
    columns.texts.push_back(text);
  }
  return columns;
}

HRESULT Open(const Selected& columns, std::u16string_view condition,
             std::unique_ptr<store::RowSet>& found) {
  std::u16string sql = u"select ";
  for (const std::u16string_view name : columns.names) sql.append(name).append(u",");
  sql += u"rowid from t_UserData";
  if (!condition.empty()) sql.append(u" where ").append(condition);
  const HRESULT opened = store::dbSession().Session->OpenRows(sql, found);
  return store::Failed(opened) ? opened : found->Bind(columns.names);
}

// The recorder's running Action, or kNoRow.
HRESULT FindRunning(const core::CAppState& app, int64_t& row) {
  std::u16string id;
  HRESULT result = recorder::ReadRunningId(app, id);
  row = kNoRow;
  if (store::Failed(result) || id.empty()) return result;
  std::unique_ptr<store::RowSet> found;
  result = Open({}, u"f_nchActId = '" + store::SqlQuote(id) + u"'", found);
  if (!store::Failed(result)) result = found->Next({});
  if (result == store::S_OK) row = found->Number(0);
  return result;
}

// Before the year 10000, whose text would stand before all others.
std::u16string StartOfDay(DayNumber day) {
  const core::Day date = DayOf(day);
  return date.year > 9999 ? u"9999/12/32" : core::DayText(date);
}

// The Actions of a period from the index, which has the moments of all of them, and their texts
// from the data file.
class Reader {
 public:
  Reader(Rows& rows, int64_t running, platform::LateWait& wait)
      : rows_(rows), wait_(wait), running_(running) {}

  HRESULT Read(const Period& period, const std::u16string& find, const Selected& columns) {
    FindPlaces(period);
    if (!columns.names.empty() || !find.empty()) return ReadTexts(find, columns);
    for (const size_t place : places_) Add(place, {});
    return store::S_OK;
  }

 private:
  struct Place {
    int64_t row;
    size_t index;  // where the index has it
  };

  void FindPlaces(const Period& period);
  std::u16string Condition(const std::u16string& find) const;
  std::vector<Place> PlacesByRow() const;
  HRESULT ReadTexts(const std::u16string& find, const Selected& columns);
  void Add(size_t place, const RowTexts& texts);

  const store::SortedStarts& index_ = *store::dbSession().Starts;
  Rows& rows_;
  platform::LateWait& wait_;
  const int64_t running_;
  const Seconds now_ = ReadMoment(core::MomentOf(platform::host().Now())).value_or(0);
  MomentReader moments_;
  std::vector<size_t> places_;  // in the index, of what reaches into the period
  int read_ = 0;
};

// The running Action ends where it starts, as far as the index knows, and may reach in by now.
void Reader::FindPlaces(const Period& period) {
  if (!period.IsBounded()) {
    places_.resize(index_.RowIds().Count());
    std::iota(places_.begin(), places_.end(), 0);
    return;
  }
  places_ = index_.Touching(StartOfDay(period.first), StartOfDay(period.after));
  const size_t running = running_ == kNoRow ? index_.RowIds().Count()
                                            : index_.RowIds().Find(static_cast<uint64_t>(running_));
  const auto at = std::ranges::lower_bound(places_, running);
  const bool isThere =
      running == index_.RowIds().Count() || (at != places_.end() && *at == running);
  if (!isThere) places_.insert(at, running);
}

// Where they are many, the engine is as quick at going through all rows.
std::u16string Reader::Condition(const std::u16string& find) const {
  const bool areMany = places_.size() > index_.RowIds().Count() / 4;
  const std::u16string places = areMany ? u"" : store::PlacesCondition(places_);
  return places.empty() || find.empty() ? places + find : places + u" and " + find;
}

// In the order of the rows, in which the engine mostly gives them.
std::vector<Reader::Place> Reader::PlacesByRow() const {
  std::vector<Place> byRow;
  byRow.reserve(places_.size());
  for (const size_t place : places_) {
    byRow.push_back({static_cast<int64_t>(index_.RowIds().At(place)), place});
  }
  if (!std::ranges::is_sorted(byRow, {}, &Place::row)) std::ranges::sort(byRow, {}, &Place::row);
  return byRow;
}

HRESULT Reader::ReadTexts(const std::u16string& find, const Selected& columns) {
  std::unique_ptr<store::RowSet> found;
  HRESULT result = Open(columns, Condition(find), found);
  if (store::Failed(result)) return result;
  const std::vector<Place> places = PlacesByRow();
  std::array<std::optional<std::u16string>, 3> row;
  auto next = places.begin();
  while ((result = found->Next(row)) == store::S_OK) {
    const int64_t number = found->Number(static_cast<int>(columns.names.size()));
    if (next == places.end() || next->row != number) {
      next = std::ranges::lower_bound(places, number, {}, &Place::row);
    }
    if (next == places.end() || next->row != number) continue;
    RowTexts texts;
    for (size_t k = 0; k < columns.texts.size(); ++k) texts.*columns.texts[k] = TextOr(row[k]);
    Add((next++)->index, texts);
  }
  return result;
}

void Reader::Add(size_t place, const RowTexts& texts) {
  constexpr int kRowsALook = 1000;
  if (++read_ % kRowsALook == 0) wait_.Look();
  const auto row = static_cast<int64_t>(index_.RowIds().At(place));
  const std::optional<Seconds> start = moments_.Read(index_.Starts(), place);
  if (row == running_) {
    rows_.AddRunning(row, start, now_, texts);
  } else {
    rows_.Add(row, start, moments_.Read(index_.Ends(), place), texts);
  }
}

HRESULT ReadAll(const core::CAppState& app, const Period& period, const std::u16string& find,
                const Choices& choices, Rows& rows, platform::LateWait& wait) {
  const store::CDbSession& session = store::dbSession();
  if (!session.Session) return store::E_POINTER;
  const store::ReadView view(*session.Session);
  if (session.Starts->Refresh() != 0) return store::E_FAIL;
  int64_t running;
  const HRESULT result = FindRunning(app, running);
  if (store::Failed(result)) return result;
  return Reader(rows, running, wait).Read(period, find, SelectedFor(choices));
}

}  // namespace

bool ReadPeriod(core::CAppState& app, const Period& period, const std::u16string& find,
                const Choices& choices, Rows& rows, platform::LateWait& wait) {
  rows.Clear(period.IsBounded() ? std::optional(period.Moments()) : std::nullopt);
  store::ReadWholeActionIndex(app);
  const HRESULT result = ReadAll(app, period, find, choices, rows, wait);
  if (!store::Failed(result)) return true;
  platform::ShowNotice(store::FaultText(u"CTotals::ReadPeriod Select", 1, result), u"ERROR",
                       platform::Icon::kStop);
  return false;
}

std::optional<ActionTexts> ReadTexts(int64_t row) {
  static constexpr std::array<std::u16string_view, 7> kShown = {
      u"f_nchActId",     u"f_nchStaDateTime", u"f_nchEndDateTime", u"f_nvcPlace",
      u"f_nvcCategory1", u"f_nvcCategory2",   u"f_nvcMemo"};
  store::Engine* engine = store::dbSession().Session.get();
  if (engine == nullptr) return {};
  const std::u16string sql =
      u"select f_nchActId,f_nchStaDateTime,f_nchEndDateTime,f_nvcPlace,f_nvcCategory1,"
      u"f_nvcCategory2,f_nvcMemo from t_UserData where rowid = '" +
      platform::ToUtf16(std::to_string(row)) + u"'";
  std::unique_ptr<store::RowSet> found;
  std::array<std::optional<std::u16string>, 7> texts;
  if (store::Failed(engine->OpenRows(sql, found)) || store::Failed(found->Bind(kShown)) ||
      found->Next(texts) != store::S_OK) {
    return {};
  }
  const auto text = [&](size_t column) { return std::u16string(TextOr(texts[column])); };
  return ActionTexts{text(0), text(1), text(2), text(3), text(4), text(5), text(6)};
}

}  // namespace totals
