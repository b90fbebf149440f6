// A day of 30 rows and a page of 30 of the list in a diary of 100,000 Actions, filled and painted:
// what a step to another day or page costs. A frame is 16 ms.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QApplication>
#include <QImage>
#include <filesystem>

#include "platform/device_paths.h"
#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"
#include "store/action_index.h"
#include "store/session.h"
#include "views/command_table.h"
#include "views/day_view.h"
#include "views/list_view.h"
#include "views/main_window_screen.h"

namespace {

constexpr int kRows = 30;

// 30 Actions of half an hour a day, from 2000/01/01 on.
constexpr char kFillSql[] =
    "with recursive n(i) as (select 0 union all select i + 1 from n where i < 99999),"
    " times(i, day, start, end) as (select i,"
    "  strftime('%Y/%m/%d', '2000-01-01', '+' || (i / 30) || ' days'),"
    "  printf('%02d:%02d:00', 8 + i % 30 / 2, i % 2 * 30),"
    "  printf('%02d:%02d:00', 8 + (i % 30 + 1) / 2, (i + 1) % 2 * 30) from n)"
    " insert into t_UserData (f_nchActId, f_dtLastUpdate, f_nchStaDateTime, f_nchEndDateTime,"
    "  f_nvcPlace, f_nvcCategory1, f_nvcMemo)"
    " select printf('ID%016d', i), '2010/06/23 10:45:30', day || ' ' || start, day || ' ' || end,"
    "  '東京都千代田区丸の内一丁目の喫茶店', '食事', '昼食にとんかつ定食を食べた。次は友人と。'"
    " from times";

class Diary {
 public:
  Diary() {
    const std::u16string path = *platform::FromHostPath(file_.string());
    store::CreateEmptyDataFile(path);
    store::DisconnectDataFile();
    sqlite3* raw = nullptr;
    sqlite3_open(file_.c_str(), &raw);
    if (sqlite3_exec(raw, kFillSql, nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
    sqlite3_close(raw);
    store::ConnectDataFile(path);
    store::ReloadActionIndex(app);
    app.SeqViewRng = kRows;
    core::MenuBarHeight = 26;
  }
  ~Diary() {
    store::DisconnectDataFile();
    std::filesystem::remove(file_);
  }

  core::CAppState app;

 private:
  std::filesystem::path file_ = std::filesystem::temp_directory_path() / "morvenly_views_bench.sdf";
};

Diary& TheDiary() {
  static Diary diary;
  core::SetCurDate(u"2004/06/23");
  diary.app.ListPage = 1000;
  return diary;
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

void ReadListPage(benchmark::State& state) {
  const core::CAppState& app = TheDiary().app;
  for (auto _ : state) {
    if (views::SetDataListView(app).cells.size() != kRows) std::abort();
  }
}

// A step forward or back and the picture of the whole window, which is `range` units high: a
// hand-held screen, and one that shows all 30 rows.
void StepAndPaint(benchmark::State& state, core::View view) {
  core::CAppState& app = TheDiary().app;
  app.InitView = view;
  views::CMainWnd window(app);
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
BENCHMARK(ReadListPage)->Unit(benchmark::kMillisecond);
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
}
