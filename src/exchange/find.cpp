// The condition is SQL text because the views append it to queries of their own.
#include "exchange/find.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <utility>

#include "core/date_time.h"
#include "core/text.h"
#include "platform/utf.h"
#include "store/session.h"

namespace exchange {
namespace {

constexpr int kRowsBetweenProgress = 10'000;

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

// Goes through the diary in the order of insertion, a stretch of row ids at a time, between which
// it can be stopped.
class Search {
 public:
  Search(store::CUserDataTable& table, std::u16string condition, int rows)
      : table_(table), condition_(std::move(condition)), rows_(rows) {}

  core::TextList ids, starts;

  // The number found, kFindFailed or kFindStopped.
  int Run(const FindProgress& progress) {
    if (!ReadBounds()) return kFindFailed;
    const uint64_t stretches = static_cast<uint64_t>(std::max(0, rows_) / kRowsBetweenProgress) + 1;
    const uint64_t width = (last_ - first_) / stretches;
    for (uint64_t i = 0; i < stretches; ++i) {
      const bool isLast = i + 1 == stretches;
      const uint64_t begin = first_ + i * width;
      if (!ReadStretch(begin, isLast ? last_ : begin + width - 1)) return kFindFailed;
      const auto hundredths = static_cast<int>((i + 1) * 100 / stretches);
      if (!isLast && progress && !progress(hundredths)) return kFindStopped;
    }
    return static_cast<int>(ids.Count());
  }
  // A select has run, whatever came of it.
  bool HasBegun() const { return hasBegun_; }

 private:
  // As unsigned numbers, which wrap: their distance is right whatever their signs.
  bool ReadBounds() {
    static constexpr std::array<std::u16string_view, 2> kBounds = {u"f_first", u"f_last"};
    std::array<std::optional<std::u16string>, 2> row;
    const auto opened = table_.GetRS(
        u"select (select min(rowid) from t_UserData) as f_first, (select max(rowid) from "
        u"t_UserData) as f_last",
        kBounds);
    const bool isRead =
        !store::Failed(opened) && table_.CRowsetTable::GetNextRS(row) == store::S_OK;
    if (isRead) {
      first_ = static_cast<uint64_t>(
          std::strtoll(platform::ToUtf8(row[0].value_or(u"1")).c_str(), nullptr, 10));
      last_ = static_cast<uint64_t>(
          std::strtoll(platform::ToUtf8(row[1].value_or(u"1")).c_str(), nullptr, 10));
    }
    table_.CloseRS();
    return isRead;
  }

  bool ReadStretch(uint64_t begin, uint64_t end) {
    static constexpr std::array<std::u16string_view, 2> kColumns = {u"f_nchActId",
                                                                    u"f_nchStaDateTime"};
    const auto number = [](uint64_t row) {
      return platform::ToUtf16(std::to_string(static_cast<int64_t>(row)));
    };
    std::u16string sql = u"select f_nchActId,f_nchStaDateTime from t_UserData where rowid >= '" +
                         number(begin) + u"' and rowid <= '" + number(end) + u"'";
    if (!condition_.empty()) sql += u" and " + condition_;
    const auto opened = table_.GetRS(sql + u" order by rowid", kColumns);
    hasBegun_ = hasBegun_ || !store::Failed(opened);
    std::array<std::optional<std::u16string>, 2> row;
    store::HRESULT result = opened;
    while (!store::Failed(result) &&
           (result = table_.CRowsetTable::GetNextRS(row)) == store::S_OK) {
      Add(row[0].value_or(u""), row[1].value_or(u""));
    }
    table_.CloseRS();
    return result == store::DB_S_ENDOFROWSET;
  }

  // Equal starts stay in the order of insertion.
  void Add(std::u16string_view id, std::u16string_view start) {
    const size_t count = starts.Count();
    size_t place = count;
    if (count > 0 && starts.Compare(start, count - 1) < 0) {
      place = core::SortedSearch(count, core::SearchMode::kUpperBound,
                                 [&](size_t other) { return starts.Compare(start, other); });
    }
    ids.InsertAt(place, id);
    starts.InsertAt(place, start);
  }

  store::CUserDataTable& table_;
  std::u16string condition_;
  int rows_;  // in the diary, about
  uint64_t first_ = 0, last_ = 0;
  bool hasBegun_ = false;
};

}  // namespace

std::u16string FindCondition(const FindSpan& span, std::u16string_view text, int mask) {
  std::u16string condition;
  AppendSpan(condition, span);
  AppendTargets(condition, text, mask);
  return condition;
}

int FindActions(core::CAppState& app, const FindSpan& span, std::u16string_view text, int mask,
                const FindProgress& progress) {
  const std::u16string condition = FindCondition(span, text, mask);
  store::CUserDataTable* table = store::dbSession().UserTable.get();
  const std::optional<std::u16string> former = app.FindWhere;
  app.FindWhere.reset();
  if (!condition.empty()) app.FindWhere = condition;  // kept on purpose: also when the select fails
  if (table == nullptr) return kFindFailed;
  const store::ReadView view(*store::dbSession().Session);
  Search search(*table, condition, app.TotalCount);
  const int found = search.Run(progress);
  if (found == kFindStopped) {
    app.FindWhere = former;
  } else if (search.HasBegun()) {
    app.ActIds = std::move(search.ids);
    app.ActStarts = std::move(search.starts);
    app.IndexCount = static_cast<int>(app.ActIds.Count());
  }
  return found;
}

}  // namespace exchange
