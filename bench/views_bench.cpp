// A day of 30 rows, its map, a page of 30 of the list, a week of 210 boxes and a month of 900
// Actions in a diary of 10,000 or 100,000, filled and painted: what a step to another day or page
// costs. A frame is 16 ms.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <memory>

#include "large_diary.h"
#include "mainwindow/main_window.h"
#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"
#include "platform/utf.h"
#include "store/action_index.h"
#include "store/session.h"
#include "views/commands.h"
#include "views/day_view.h"
#include "views/list_view.h"
#include "views/map_view.h"
#include "views/month_view.h"
#include "views/week_layout.h"

namespace {

constexpr int kRows = 30;
constexpr int kWeekRows = 7 * kRows;

class Diary {
 public:
  explicit Diary(int actions) : file_("morvenly_views_bench.sdf", actions) {
    store::ConnectDataFile(file_.Path());
    store::ReloadActionIndex(app);
    app.SeqViewRng = kRows;
    core::MenuBarHeight = 26;
  }
  ~Diary() { store::DisconnectDataFile(); }

  int Actions() const { return file_.Actions(); }
  const char* File() const { return file_.HostPath().c_str(); }

  core::CAppState app;

 private:
  LargeDiary file_;
};

std::unique_ptr<Diary> openDiary;  // main closes it, before the session goes that it uses

Diary& TheDiary(int actions = 100000) {
  if (openDiary == nullptr || openDiary->Actions() != actions) {
    openDiary.reset();
    openDiary = std::make_unique<Diary>(actions);
  }
  core::SetCurDate(u"2000/06/23");
  openDiary->app.ListPage = 100;
  return *openDiary;
}

// The data part alone.
void ReadDay(benchmark::State& state) {
  const core::CAppState& app = TheDiary().app;
  for (auto _ : state) {
    if (views::SetDataDayViewForSingle(app).cells.size() != kRows) std::abort();
  }
}

void ReadSpanningDay(benchmark::State& state) {
  const core::CAppState& app = TheDiary().app;
  for (auto _ : state) {
    if (views::SetDataDayViewForMulti(app).cells.size() != kRows) std::abort();
  }
}

void ReadMap(benchmark::State& state) {
  const core::CAppState& app = TheDiary(static_cast<int>(state.range(0))).app;
  views::MapPane pane;
  for (auto _ : state) {
    if (views::SetDataMapViewForLV(app, pane).cells.size() != kRows) std::abort();
  }
}

void ReadListPage(benchmark::State& state) {
  const core::CAppState& app = TheDiary().app;
  for (auto _ : state) {
    if (views::SetDataListView(app).cells.size() != kRows) std::abort();
  }
}

// What the raw reads of a week stand beside: its boxes with their lanes and rectangles.
void ReadWeekAndLayOut(benchmark::State& state) {
  const core::CAppState& app = TheDiary(static_cast<int>(state.range(0))).app;
  const views::WeekGrid grid = views::LayoutWeek(240, 269);
  for (auto _ : state) {
    views::WeekData week;
    views::ReadWeek(app, week);
    if (week.WeekItems.size() != kWeekRows) std::abort();
    for (const views::WeekItem& item : week.WeekItems) {
      benchmark::DoNotOptimize(views::BoxRect(grid, item));
    }
  }
}

// All columns of the row at which a statement of the library's own stands, as texts.
store::Action ReadRaw(sqlite3_stmt* select) {
  store::Action action;
  for (int column = 0; column < store::kActionColumnCount; ++column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(select, column));
    if (text == nullptr) continue;
    const auto size = static_cast<size_t>(sqlite3_column_bytes(select, column));
    action[static_cast<size_t>(column)] = platform::ToUtf16({text, size});
  }
  return action;
}

// What the map's fill stands beside: the same select, prepared once.
void ReadMapRaw(benchmark::State& state) {
  const Diary& diary = TheDiary(static_cast<int>(state.range(0)));
  sqlite3* raw = nullptr;
  sqlite3_stmt* select = nullptr;
  sqlite3_open(diary.File(), &raw);
  sqlite3_prepare_v2(raw,
                     "select * from t_UserData where f_nchStaDateTime < '2000/06/23 24:00:00' and"
                     " f_nchEndDateTime >= '2000/06/23 00:00:00' order by f_nchStaDateTime asc",
                     -1, &select, nullptr);
  for (auto _ : state) {
    int rows = 0;
    for (; sqlite3_step(select) == SQLITE_ROW; ++rows) benchmark::DoNotOptimize(ReadRaw(select));
    if (rows != kRows) std::abort();
    sqlite3_reset(select);
  }
  sqlite3_finalize(select);
  sqlite3_close(raw);
}

// The same 210 Actions by one statement prepared once.
void ReadWeekRaw(benchmark::State& state) {
  const Diary& diary = TheDiary(static_cast<int>(state.range(0)));
  const int first = store::FindActionIndexLower(diary.app, u"2000/06/20", u"00:00:00",
                                                store::LowerMode::kAtOrAfter);
  sqlite3* raw = nullptr;
  sqlite3_stmt* select = nullptr;
  sqlite3_open(diary.File(), &raw);
  sqlite3_prepare_v2(raw, "select * from t_UserData where f_nchActId = ?", -1, &select, nullptr);
  for (auto _ : state) {
    for (int position = first; position < first + kWeekRows; ++position) {
      const std::string id = platform::ToUtf8(diary.app.ActIds.At(static_cast<size_t>(position)));
      sqlite3_bind_text(select, 1, id.data(), static_cast<int>(id.size()), SQLITE_TRANSIENT);
      if (sqlite3_step(select) != SQLITE_ROW) std::abort();
      benchmark::DoNotOptimize(ReadRaw(select));
      sqlite3_reset(select);
    }
  }
  sqlite3_finalize(select);
  sqlite3_close(raw);
}

void CountAMonth(benchmark::State& state) {
  const core::CAppState& app = TheDiary(static_cast<int>(state.range(0))).app;
  for (auto _ : state) {
    if (views::CountMonth(app, 2000, 6).MonthTotal != 30 * kRows) std::abort();
  }
}

// The picture alone, two pixels a unit.
void Paint(benchmark::State& state, core::View view) {
  core::CAppState& app = TheDiary().app;
  app.InitView = view;
  mainwindow::CMainWnd window(app);
  window.resize(240, 320);
  window.show();
  QImage picture(480, 640, QImage::Format_RGB32);
  picture.setDevicePixelRatio(2);
  for (auto _ : state) window.render(&picture);
}

// A step forward or back and the picture of the whole window, which is `range` units high: a
// hand-held screen, and one that shows all 30 rows.
void StepAndPaint(benchmark::State& state, core::View view) {
  core::CAppState& app = TheDiary().app;
  app.InitView = view;
  mainwindow::CMainWnd window(app);
  window.resize(240, static_cast<int>(state.range(0)));
  window.show();
  QImage picture(window.size(), QImage::Format_RGB32);
  bool forward = false;
  for (auto _ : state) {
    forward = !forward;
    window.OnCommand(forward ? views::kStepForward : views::kStepBack);
    window.render(&picture);
  }
}

BENCHMARK(ReadDay)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadSpanningDay)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadMap)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadMapRaw)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadListPage)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadWeekAndLayOut)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadWeekRaw)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(CountAMonth)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Paint, week, core::kViewWeek)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Paint, month, core::kViewMonth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Paint, map, core::kViewMap)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAndPaint, week, core::kViewWeek)->Arg(320)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAndPaint, month, core::kViewMonth)->Arg(320)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAndPaint, map, core::kViewMap)->Arg(320)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAndPaint, day, core::kViewDay)
    ->Arg(320)
    ->Arg(860)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAndPaint, list, core::kViewList)
    ->Arg(320)
    ->Arg(860)
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  platform::qt::QtHost host;
  platform::SetHost(&host);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  openDiary.reset();
}
