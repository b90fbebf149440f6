// How long a start takes, from making the process to the painted window, offscreen, with 100,000
// Actions in the data file and 30 of them today. Beside it the smallest program of Qt and SQLite
// that paints the same day out of the same file.
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QTimer>
#include <QTreeWidget>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/startup.h"
#include "datafile/data_file.h"
#include "platform/device_paths.h"
#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"
#include "store/session.h"

namespace {

constexpr int kReportHandle = 3;  // where a child reports that its window is painted

// Ends the process once the first paint of a window is through.
class FirstPaint : public QObject {
 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType()) {
      QTimer::singleShot(0, [] {
        [[maybe_unused]] const ssize_t written = write(kReportHandle, "!", 1);
        _exit(0);
      });
    }
    return false;
  }
};

int RunProgram(int argc, char** argv) {
  platform::qt::QtHost host;
  platform::SetHost(&host);
  const platform::ScreenPlan plan = platform::qt::ScaleToScreen(argc, argv);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  FirstPaint firstPaint;
  application.installEventFilter(&firstPaint);
  return app::WinMain(host, plan, app::FirstScreen::kBySetting);
}

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

// A folder as an installed program has it: this program, its settings and its data file.
std::filesystem::path MakeFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "morvenly-bench-XXXXXX";
  const std::filesystem::path folder = mkdtemp(pattern.data());
  std::filesystem::copy_file("/proc/self/exe", folder / "Morvenly");
  std::ofstream(folder / "Morvenly.dat") << "[System]\r\nVersion:3.2.2010.1114\r\n\r\n";

  const std::string dataFile = folder / "user.sdf";
  datafile::CreateDataFile(*platform::FromHostPath(dataFile));
  store::DisconnectDataFile();
  sqlite3* database = nullptr;
  sqlite3_open(dataFile.c_str(), &database);
  const int filled = sqlite3_exec(
      database,
      "insert into t_UserData with recursive n(i) as (select 0 union all select i + 1 from n where "
      "i < 99999), a(i, day, hour, minute) as (select i, strftime('%Y/%m/%d', 'now', 'localtime', "
      "'-' || (i / 30) || ' days'), 8 + i % 30 / 2, i % 2 * 30 from n) "
      "select printf('ID%016d', i), '2026/01/01 00:00:00', "
      "printf('%s %02d:%02d:00', day, hour, minute), "
      "printf('%s %02d:%02d:00', day, hour, minute + 25), null, null, null, '会社', '仕事', "
      "'打合せ', '次の版の相談', null from a order by day, hour, minute",
      nullptr, nullptr, nullptr);
  sqlite3_close(database);
  if (filled != SQLITE_OK) std::abort();
  return folder;
}

struct Cost {
  double clockSeconds;
  double cpuSeconds;
};

double SecondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

Cost StartUntilPainted(const std::filesystem::path& folder, const char* mode) {
  int report[2];
  if (pipe(report) != 0) std::abort();
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    dup2(report[1], kReportHandle);
    if (chdir(folder.c_str()) != 0) _exit(1);
    execl("./Morvenly", "Morvenly", mode, static_cast<char*>(nullptr));
    _exit(1);
  }
  close(report[1]);
  char mark = 0;
  const bool painted = read(report[0], &mark, 1) == 1;
  const auto end = std::chrono::steady_clock::now();
  close(report[0]);
  rusage used{};
  wait4(child, nullptr, 0, &used);
  if (!painted) std::abort();
  return {std::chrono::duration<double>(end - start).count(),
          SecondsOf(used.ru_utime) + SecondsOf(used.ru_stime)};
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
  const std::filesystem::path folder = MakeFolder();
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
