// The totals of a day, a month and all of 100,000 Actions, from the data file to the figures and
// the columns, beside the bare select of the same rows.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <optional>

#include "large_diary.h"
#include "platform/utf.h"
#include "store/session.h"
#include "totals/columns.h"
#include "totals/read_period.h"
#include "wordless_host.h"

namespace {

constexpr int kDayRows = 30;

// Twelve categories, each with some of its own below it, and forty places, one in ten a movement.
constexpr char kVary[] =
    "update t_UserData set f_nvcCategory1 = '分類の' || (rowid * 7 % 12),"
    " f_nvcCategory2 = case rowid % 3 when 0 then null else 'その内の' || (rowid * 5 % 30) end,"
    " f_nvcPlace = '東京都の店' || (rowid * 11 % 40) ||"
    "  case rowid % 10 when 0 then '－＞自宅' else '' end";

class Diary {
 public:
  Diary() : file_("morvenly_totals_bench.sdf") {
    sqlite3_open(file_.HostPath().c_str(), &raw_);
    if (sqlite3_exec(raw_, kVary, nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
    store::ConnectDataFile(file_.Path());
    store::dbSession().Starts->Refresh();
  }
  ~Diary() {
    sqlite3_close(raw_);
    store::DisconnectDataFile();
  }
  Diary(const Diary&) = delete;
  Diary& operator=(const Diary&) = delete;

  sqlite3* Raw() const { return raw_; }
  core::CAppState app;

 private:
  LargeDiary file_;
  sqlite3* raw_ = nullptr;
};

std::unique_ptr<Diary> diary;  // main closes it, before the session goes that it uses

totals::Period PeriodOf(totals::PeriodKind kind) {
  return totals::PeriodOf(kind, totals::NumberOf({2000, 6, 23}));
}

int RowsOf(totals::PeriodKind kind) {
  return kind == totals::PeriodKind::kDay     ? kDayRows
         : kind == totals::PeriodKind::kMonth ? 30 * kDayRows
                                              : kLargeDiaryActions;
}

void SumUp(benchmark::State& state, totals::PeriodKind kind, totals::Choices choices) {
  totals::Rows rows(diary->app.PlaceSepaStr);
  for (auto _ : state) {
    totals::Period period = PeriodOf(kind);
    platform::LateWait wait;
    if (!totals::ReadPeriod(diary->app, period, u"", choices, rows, wait)) std::abort();
    if (!period.IsBounded()) {
      const totals::Span days = rows.Days();
      period.first = totals::DayAt(days.from);
      period.after = totals::DayAt(days.to);
    }
    const totals::Totals sums = totals::Sum(rows, period.Moments(), choices);
    if (sums.count != RowsOf(kind)) std::abort();
    benchmark::DoNotOptimize(totals::Stack(rows, period, choices, sums));
  }
}

// A text into a row that keeps its memory.
void Take(sqlite3_stmt* select, int column, std::optional<std::u16string>& text) {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(select, column));
  if (bytes == nullptr) return text.reset();
  if (!text) text.emplace();
  text->clear();
  platform::AppendUtf16({bytes, static_cast<size_t>(sqlite3_column_bytes(select, column))}, *text);
}

// One statement, prepared once, and its texts into such a row; nothing is done with them.
void ReadRaw(benchmark::State& state, totals::PeriodKind kind, const std::string& columns,
             const char* condition) {
  const std::string sql =
      "select rowid,f_nchStaDateTime,f_nchEndDateTime" + columns + " from t_UserData" + condition;
  sqlite3_stmt* select = nullptr;
  sqlite3_prepare_v2(diary->Raw(), sql.c_str(), -1, &select, nullptr);
  std::array<std::optional<std::u16string>, 6> row;
  const int count = sqlite3_column_count(select);
  for (auto _ : state) {
    int rows = 0;
    for (; sqlite3_step(select) == SQLITE_ROW; ++rows) {
      for (int column = 1; column < count; ++column) {
        Take(select, column, row[static_cast<size_t>(column)]);
      }
      benchmark::DoNotOptimize(row.data());
      benchmark::DoNotOptimize(sqlite3_column_int64(select, 0));
    }
    if (rows != RowsOf(kind)) std::abort();
    sqlite3_reset(select);
  }
  sqlite3_finalize(select);
}

using enum totals::PeriodKind;
using totals::By;
constexpr char kTheDay[] =
    " where f_nchStaDateTime < '2000/06/24' and f_nchEndDateTime >= '2000/06/23'";
constexpr char kTheMonth[] =
    " where f_nchStaDateTime < '2000/07/01' and f_nchEndDateTime >= '2000/06/01'";

constexpr char kCategory[] = ",f_nvcCategory1";

BENCHMARK_CAPTURE(SumUp, day, kDay, totals::Choices{})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadRaw, day, kDay, kCategory, kTheDay)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SumUp, month, kMonth, totals::Choices{})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadRaw, month, kMonth, kCategory, kTheMonth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SumUp, all, kAll, totals::Choices{})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadRaw, all, kAll, kCategory, "")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SumUp, within, kAll, totals::Choices{By::kCategory1, By::kCategory2})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadRaw, within, kAll, ",f_nvcCategory1,f_nvcCategory2", "")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SumUp, places, kAll, totals::Choices{By::kPlace})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadRaw, places, kAll, ",f_nvcPlace", "")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SumUp, hours, kAll, totals::Choices{By::kWeekday, By::kHour})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadRaw, hours, kAll, "", "")->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  WordlessHost host;
  platform::SetHost(&host);
  benchmark::Initialize(&argc, argv);
  diary = std::make_unique<Diary>();
  benchmark::RunSpecifiedBenchmarks();
  diary.reset();
}
