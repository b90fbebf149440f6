// How long a start takes, from making the process to the painted window, offscreen, with 100,000
// Actions in the data file and 30 of them today. Beside it the smallest program of Qt and SQLite
// that paints the same day out of the same file.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QApplication>
#include <QTreeWidget>
#include <filesystem>
#include <string>

#include "started_program.h"

namespace {

int RunSmallest(int argc, char** argv) {
  QApplication application(argc, argv);
  FirstPaint firstPaint;
  application.installEventFilter(&firstPaint);
  QTreeWidget list;
  list.setHeaderHidden(true);
  list.setColumnCount(4);
  sqlite3* database = nullptr;
  sqlite3_stmt* rows = nullptr;
  sqlite3_open("user.sdf", &database);
  sqlite3_prepare_v2(database,
                     "select f_nchStaDateTime, f_nchEndDateTime, f_nvcPlace, f_nvcCategory1 "
                     "from t_UserData where f_nchStaDateTime >= "
                     "strftime('%Y/%m/%d', 'now', 'localtime') order by f_nchStaDateTime",
                     -1, &rows, nullptr);
  while (sqlite3_step(rows) == SQLITE_ROW) {
    auto* item = new QTreeWidgetItem(&list);
    for (int column = 0; column < 4; ++column) {
      item->setText(column, QString::fromUtf8(
                                reinterpret_cast<const char*>(sqlite3_column_text(rows, column))));
    }
  }
  list.resize(240, 320);
  list.show();
  return QApplication::exec();
}

void Start(benchmark::State& state, const std::filesystem::path& folder, const char* mode) {
  double cpuSeconds = 0;
  for (auto _ : state) {
    const Cost cost = StartUntilPainted(folder, mode);
    state.SetIterationTime(cost.clockSeconds);
    cpuSeconds += cost.cpuSeconds;
  }
  // Of the started process; the library's own column is of this one, which waits.
  state.counters["cpu_ms"] =
      benchmark::Counter(cpuSeconds * 1000.0, benchmark::Counter::kAvgIterations);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode == "--program") return RunProgram(argc, argv);
  if (mode == "--smallest") return RunSmallest(argc, argv);

  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  platform::qt::QtHost host;
  platform::SetHost(&host);
  const QApplication application(argc, argv);  // for the wait cursor while the file is made
  const std::filesystem::path folder = MakeFolder(100'000);
  for (const char* program : {"--program", "--smallest"}) {
    benchmark::RegisterBenchmark((std::string("StartToPainted/") + (program + 2)).c_str(), Start,
                                 folder, program)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(20);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(folder);
}
